#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QProcess>
#include <QScreen>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <utility>

namespace tessaro::test {

inline constexpr int kTick = 20;        ///< milliseconds between looks
inline constexpr int kPatience = 60000; ///< milliseconds until what doesn't come is given up
inline constexpr int kMostKeys = 80;    ///< on the way to a control

/// Presses keys on the display one after the other, each when the one before has had its effect. Works on while forms
/// run event loops of their own.
class Keys final {
  public:
    using Condition = std::function<bool()>;

    Keys() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
        timer_.start(kTick);
    }
    // A key whose release is lost stays down on the display, and the next program's press of it is none.
    ~Keys() {
        timer_.stop();
        pressing_.waitForFinished();
    }
    Keys(const Keys&) = delete;
    Keys& operator=(const Keys&) = delete;

    /// Waits for a condition, then presses keys ("Return", "alt+n", or with a leading ":" a text to type).
    void When(const char* what, Condition condition, const QStringList& keys) {
        steps_.push_back({QString::fromUtf8(what), std::move(condition), keys, {}});
    }
    /// Presses a key again and again until a condition holds.
    void Until(const char* what, Condition condition, const char* key) {
        steps_.push_back({QString::fromUtf8(what), std::move(condition), {}, QString::fromUtf8(key)});
    }
    [[nodiscard]] bool AreDone() const {
        return steps_.empty() && queue_.empty() && pressing_.state() == QProcess::NotRunning;
    }
    /// Where the walk has got stuck; empty while it goes on.
    [[nodiscard]] QString Stuck() const { return stuck_; }
    void Stop() { timer_.stop(); }

  private:
    struct Step {
        QString what;
        Condition condition;
        QStringList keys;
        QString repeated;
    };

    void Look() {
        if (pressing_.state() != QProcess::NotRunning) return;
        if (!stuck_.isEmpty())
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        if (!queue_.empty()) return Press(std::exchange(queue_.front(), {}), true);
        if (steps_.empty() || !stuck_.isEmpty()) return;
        Step& step = steps_.front();
        if (step.condition()) {
            for (const QString& key : step.keys)
                queue_.push_back(key);
            steps_.pop_front();
            pressed_ = 0;
            waiting_.restart();
        } else if (!step.repeated.isEmpty() && pressed_ < kMostKeys) {
            if (pressed_ > 0 && QApplication::focusWidget() == before_ && waiting_.elapsed() < 1000) return;
            before_ = QApplication::focusWidget();
            ++pressed_;
            waiting_.restart();
            Press(step.repeated, false);
        } else if (!waiting_.isValid() || waiting_.elapsed() > kPatience) {
            if (waiting_.isValid()) GiveUp(step.what);
            waiting_.restart();
        }
    }
    void GiveUp(const QString& what) {
        stuck_ = what;
        if (const QString folder = qEnvironmentVariable("TESSARO_PICTURES"); !folder.isEmpty())
            QGuiApplication::primaryScreen()->grabWindow(0).save(folder + QString::fromUtf8("/stuck.png"));
    }
    void Press(const QString& key, bool fromQueue) {
        if (fromQueue) queue_.pop_front();
        if (key.startsWith(QLatin1Char(':')))
            pressing_.start(QStringLiteral("xdotool"), {QString::fromUtf8("type"), QString::fromUtf8("--delay"),
                                                        QString::fromUtf8("15"), key.mid(1)});
        else
            pressing_.start(QStringLiteral("xdotool"), {QString::fromUtf8("key"), key});
    }

    QTimer timer_;
    QProcess pressing_;
    std::deque<Step> steps_;
    std::deque<QString> queue_;
    QElapsedTimer waiting_;
    QWidget* before_ = nullptr;
    int pressed_ = 0;
    QString stuck_;
};

/// Whether a key has come to any window of the program.
class KeyWatch final : public QObject {
  public:
    KeyWatch() { qApp->installEventFilter(this); }
    [[nodiscard]] bool HasSeenOne() const { return seen_; }
    bool eventFilter(QObject* watched, QEvent* event) override {
        seen_ = seen_ || event->type() == QEvent::KeyPress;
        return QObject::eventFilter(watched, event);
    }

  private:
    bool seen_ = false;
};

} // namespace tessaro::test
