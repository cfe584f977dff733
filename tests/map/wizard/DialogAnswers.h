#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>

namespace tessaro::test {

/// Calls `drive` with each modal dialog that opens while it lives, also those that a dialog opens meanwhile; one that
/// is still open afterwards is cancelled, and menus are closed.
class DialogAnswers final {
  public:
    explicit DialogAnswers(std::function<void(QDialog&)> drive) : drive_(std::move(drive)) { LookSoon(); }

    int seen = 0;

  private:
    /// A timer of its own for each look: one doesn't go off again while what it called still runs.
    void LookSoon() {
        QTimer::singleShot(1, &life_, [this] {
            LookSoon();
            Look();
        });
    }
    void Look() {
        if (QWidget* const menu = QApplication::activePopupWidget()) {
            menu->close();
            return;
        }
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || dialog == driven_ || dialog->inherits("tessaro::WizardFrame")) return;
        ++seen;
        QDialog* const outer = std::exchange(driven_, dialog);
        drive_(*dialog);
        driven_ = outer;
        if (dialog->isVisible()) dialog->reject();
    }

    QObject life_;
    std::function<void(QDialog&)> drive_;
    QDialog* driven_ = nullptr; ///< the one that `drive` is at work on
};

} // namespace tessaro::test
