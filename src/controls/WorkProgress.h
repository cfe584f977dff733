#pragma once

#include "controls/CancelWatch.h"

#include <QElapsedTimer>
#include <QProgressDialog>

#include <optional>

class QPushButton;

namespace tessaro {

/// A window over a long piece of work: how far it is, and a button that stops it. It shows itself when the work takes
/// longer than a moment; while it stands, nothing else of the program takes input.
class WorkProgress final : public QProgressDialog {
    Q_OBJECT

  public:
    /// Milliseconds of work before the window shows itself.
    static inline qint64 FirstShown = 400;

    WorkProgress(const QString& text, QWidget* parent);
    ~WorkProgress() override;

    /// Shows that `done` of `total` rows are done (of a number not known yet when it is 0) and lets events through.
    /// False when the user has stopped the work.
    [[nodiscard]] bool Show(qint64 done, qint64 total);

  private:
    void ShowRows(qint64 done, qint64 total);
    void ShowWindow();

    QString text_;
    QPushButton* cmdCancel_;
    QElapsedTimer clock_;
    qint64 nextLook_ = 0;              ///< milliseconds on the clock when the numbers are shown next
    std::optional<CancelWatch> watch_; ///< since the window stands; the wait pointer is away as long
};

} // namespace tessaro
