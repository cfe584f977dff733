#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>

namespace tessaro::test {

/// Calls `drive` with each modal dialog that opens while it lives; one that is still open afterwards is cancelled, and
/// menus are closed.
class DialogAnswers final {
  public:
    explicit DialogAnswers(std::function<void(QDialog&)> drive) : drive_(std::move(drive)) {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] {
            if (QWidget* const menu = QApplication::activePopupWidget()) {
                menu->close();
                return;
            }
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || dialog->inherits("tessaro::WizardFrame")) return;
            ++seen;
            drive_(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
        look_.start(0);
    }

    int seen = 0;

  private:
    QTimer look_;
    std::function<void(QDialog&)> drive_;
};

} // namespace tessaro::test
