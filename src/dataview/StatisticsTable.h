#pragma once

#include "controls/DataTable.h"
#include "dataview/StatisticsModel.h"

namespace tessaro {

class ViewRows;

/// The table of the statistics (DataStats): indicators that open down to units and subpopulations, by the mark before
/// them, by double click and by key.
class StatisticsTable final : public DataTable {
    Q_OBJECT

  public:
    explicit StatisticsTable(QWidget* parent);

    /// DrawStats: reads the figures of the rows in view. Tells when they can't be read though the grid has rows.
    void Draw(const ViewRows& rows);
    /// Values in view that are no numbers, as the last Draw has found them.
    [[nodiscard]] const UnreadableValues& Unreadable() const { return unreadable_; }
    void SetFormCaptions();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    [[nodiscard]] bool TakesKey(const QKeyEvent& event);
    void FitColumns();

    StatisticsModel lines_;
    UnreadableValues unreadable_;
};

} // namespace tessaro
