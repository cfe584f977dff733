#pragma once

#include <QString>

#include <memory>

namespace tessaro {

/// The player of the product's sound, which repeats it for as long as it isn't muted. It is made when there is
/// something to hear: a missing file or a machine without a sound device is no error.
class SoundLoop final {
  public:
    SoundLoop();
    ~SoundLoop();
    SoundLoop(const SoundLoop&) = delete;
    SoundLoop& operator=(const SoundLoop&) = delete;

    void Load(const QString& file);
    void SetMuted(bool muted);
    /// Loudness in per cent, as it is heard.
    void SetVolume(int percent);
    [[nodiscard]] int Volume() const { return volume_; }
    /// False on a machine that has nothing to play on.
    [[nodiscard]] static bool HasDevice();
    /// Each second: starts the sound again when it is at its end or isn't playing.
    void Tick();

  private:
    struct Player;
    std::unique_ptr<Player> player_;
    QString file_;
    bool muted_ = true;
    int volume_ = 100;
};

} // namespace tessaro
