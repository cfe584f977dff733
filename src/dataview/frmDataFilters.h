#pragma once

#include "dataview/DataFilters.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class frmDataFilters;
}

namespace tessaro {

/// The row filters of the data view: most recent data, a value range, missing data. Tells while one chooses how many
/// rows will stay.
class frmDataFilters final : public QDialog {
    Q_OBJECT

  public:
    explicit frmDataFilters(QWidget* parent = nullptr);
    ~frmDataFilters() override;

    void SetFilters(const DataFilters& filters);
    /// What was chosen, once the dialog was accepted.
    [[nodiscard]] const DataFilters& Filters() const { return filters_; }

  private:
    void ShowChoice();
    void CountRows();
    /// What the controls say; false (with the reason in place) when that isn't two numbers in order.
    bool ReadControls();
    void Tell(const QString& text, bool good);

    std::unique_ptr<Ui::frmDataFilters> ui_;
    DataFilters filters_;
    QTimer tmrCount_; ///< counts when the typing pauses
};

} // namespace tessaro
