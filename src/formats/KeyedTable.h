#pragma once

#include "formats/TableReader.h"

#include <memory>

namespace tessaro {

/// Takes apart tables whose first column holds several texts with commas between ("freq,unit,geo\\TIME_PERIOD" is its
/// head), and whose values have letters behind them that say how good they are ("8.7 b"). Other tables stay as they
/// are.
class KeyedTable final : public TableReader {
  public:
    explicit KeyedTable(std::unique_ptr<TableReader> table) : table_(std::move(table)) {}
    bool Next(TableRow& row) override;
    [[nodiscard]] int Percent() const override { return table_->Percent(); }
    [[nodiscard]] std::vector<ColumnKind> Kinds() const override { return {keys_, ColumnKind::Dimension}; }

  private:
    void TakeApart(TableRow& row);

    std::unique_ptr<TableReader> table_;
    TableRow read_;
    std::size_t keys_ = 0; ///< texts of the first column; 0 for a table of another form
    bool begun_ = false;
};

/// True for a head that names the texts of such a column.
[[nodiscard]] bool IsKeyHead(std::string_view head);

} // namespace tessaro
