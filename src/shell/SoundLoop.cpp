#include "shell/SoundLoop.h"

#include "platform/Paths.h"

#include <QAudio>
#include <QAudioDevice>
#include <QAudioOutput>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QUrl>

namespace tessaro {

struct SoundLoop::Player {
    QAudioOutput output;
    QMediaPlayer media;
};

namespace {

/// The player takes a linear factor, loudness is heard logarithmically.
float LinearVolume(int percent) {
    return static_cast<float>(QAudio::convertVolume(static_cast<float>(percent) / 100, QAudio::LogarithmicVolumeScale,
                                                    QAudio::LinearVolumeScale));
}

} // namespace

SoundLoop::SoundLoop() = default;
SoundLoop::~SoundLoop() = default;

void SoundLoop::Load(const QString& file) {
    file_ = FileExists(file) ? FindPath(file) : QString();
    player_.reset();
}

void SoundLoop::SetMuted(bool muted) {
    muted_ = muted;
    if (player_) player_->output.setMuted(muted);
}

void SoundLoop::SetVolume(int percent) {
    volume_ = qBound(0, percent, 100);
    if (player_) player_->output.setVolume(LinearVolume(volume_));
}

bool SoundLoop::HasDevice() {
    return !QMediaDevices::audioOutputs().isEmpty();
}

void SoundLoop::Tick() {
    if (file_.isEmpty()) return;
    if (!player_) {
        // Starting the player takes long, so it is not started while muted.
        if (muted_ || !HasDevice()) return;
        player_ = std::make_unique<Player>();
        player_->media.setAudioOutput(&player_->output);
        player_->media.setSource(QUrl::fromLocalFile(file_));
        player_->output.setMuted(muted_);
        player_->output.setVolume(LinearVolume(volume_));
    }
    QMediaPlayer& media = player_->media;
    if (media.error() != QMediaPlayer::NoError) {
        file_.clear();
        return;
    }
    const bool playing = media.playbackState() == QMediaPlayer::PlayingState;
    const bool atEnd = playing && media.duration() > 0 && media.position() + 1000 >= media.duration();
    if (atEnd) media.setPosition(0);
    if (!playing) media.play();
}

} // namespace tessaro
