#pragma once

#include "calculate/CalculationSteps.h"

#include <QWidget>

class QLabel;

namespace tessaro {

/// A page of a calculation wizard. It shows a draft and gives back what the user has made of it; it decides nothing.
class CalculationPage : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

    /// The page comes to the front.
    virtual void ShowDraft(const CalculationDraft& draft) = 0;
    /// Writes what the page holds into the draft, and leaves all else there as it is.
    virtual void TakeInto(CalculationDraft& draft) const = 0;
    /// False while Next makes no sense yet.
    [[nodiscard]] virtual bool IsComplete() const { return true; }
    /// Gives the focus to a control of the page by its name; in a grid to the cell of that row to be typed into.
    virtual void FocusOn(const char* control, int row);

  Q_SIGNALS:
    /// The user has changed something.
    void Changed();
};

/// A line at the top of a page that says what is to be done; it wraps.
[[nodiscard]] QLabel* MakeHint(const QString& key);

} // namespace tessaro
