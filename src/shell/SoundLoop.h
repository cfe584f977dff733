#pragma once

#include <QString>

#include <memory>

namespace tessaro {

/// Plays a sound file again and again while it isn't muted. A missing file or a machine without a sound device is no
/// error.
class SoundLoop final {
  public:
    SoundLoop();
    ~SoundLoop();
    SoundLoop(const SoundLoop&) = delete;
    SoundLoop& operator=(const SoundLoop&) = delete;

    void Load(const QString& file);
    void SetMuted(bool muted);
    /// Loudness in per cent, on a logarithmic scale.
    void SetVolume(int percent);
    [[nodiscard]] int Volume() const { return volume_; }
    /// False on a machine that has nothing to play on.
    [[nodiscard]] static bool HasDevice();
    /// To be called each second: starts the sound when it isn't playing, and again at its end.
    void Tick();

  private:
    struct Player;
    std::unique_ptr<Player> player_;
    QString file_;
    bool muted_ = true;
    int volume_ = 100;
};

} // namespace tessaro
