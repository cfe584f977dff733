#pragma once

#include <QStringList>
#include <QWidget>

class QCheckBox;
class QLabel;
class QSlider;

namespace tessaro {

/// Chooses by which period a map's values were known, with the mouse or the arrow keys, and whether its classes stay
/// the same meanwhile. Out of sight when there is only one period.
class PeriodSlider final : public QWidget {
    Q_OBJECT

  public:
    explicit PeriodSlider(QWidget* parent = nullptr);

    /// Periods in ascending order and the one that is shown; an empty one is the last. Nothing is emitted.
    void SetPeriods(const QStringList& periods, const QString& shown, bool sameClasses);
    void SetFormCaptions();

  Q_SIGNALS:
    void PeriodChosen(const QString& period);
    void SameClassesChosen(bool same);

  private:
    void ShowPeriod();

    QStringList periods_;
    QLabel* lblPeriod_;
    QSlider* sldPeriod_;
    QLabel* lblPeriodShown_;
    QCheckBox* chkSameClasses_;
};

} // namespace tessaro
