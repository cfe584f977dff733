#pragma once

#include "dataview/FilterCounter.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class frmDataFilters;
}

namespace tessaro {

/// The dialog of the data view's filters: bounds of the values, most recent data only, cells without a value. It shows
/// while the user types how many rows would stay, and what is wrong with a bound.
class frmDataFilters final : public QDialog {
    Q_OBJECT

  public:
    /// `hiddenRows` were removed one by one and come back with another filter.
    explicit frmDataFilters(const DataFilters& filters, qint64 hiddenRows = 0, QWidget* parent = nullptr);
    ~frmDataFilters() override;

    /// The filters as they stand in the dialog; a single bound is completed by the least or greatest value.
    [[nodiscard]] DataFilters Filters() const;

  private:
    void ConnectControls();
    void SetFormCaptions();
    void ReadOn();
    void chkMostRecent_Click();
    void cmdReset_Click();
    void cmdOK_Click();
    void ShowState();
    [[nodiscard]] DataFilters Typed() const;
    /// What is wrong with what was typed or ticked; nothing when it may be applied.
    [[nodiscard]] std::optional<QString> Problem() const;
    [[nodiscard]] QString RowsText() const;
    /// Hidden rows, as long as they stay hidden.
    [[nodiscard]] qint64 RowsStillHidden() const { return Filters() == before_ ? hiddenRows_ : 0; }
    [[nodiscard]] bool TooManyMissing() const;

    const DataFilters before_;
    const qint64 hiddenRows_;
    std::unique_ptr<Ui::frmDataFilters> ui_;
    FilterCounter counter_;
    QTimer reading_;
};

} // namespace tessaro
