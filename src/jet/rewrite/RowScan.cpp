#include "jet/rewrite/RowScan.h"

#include "jet/rewrite/SideScan.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

using namespace tree;

class RowScan final : SideScan {
  public:
    RowScan(Select& select, std::vector<OrderItem>& orderBy, const Catalogue& catalogue)
        : SideScan(select, orderBy, catalogue), order_(orderBy) {}

    bool Apply() {
        if (!AsksForRows() || !ReadTables() || !FindLarge() || !AllConditionsArePlaced()) return false;
        if (!ReadItems() || !ReadOrder() || !ReadConditions() || !MustSeeAllRows()) return false;
        if (!MakeSides() || !FindImage() || !AreInImage(row_) || !PlaceOrder()) return false;
        if (!PlaceSides(select_.duplicates == Duplicates::Keep)) return false;
        Rewrite();
        return true;
    }

  private:
    [[nodiscard]] bool AsksForRows() const {
        const bool rows = select_.duplicates == Duplicates::DropEqualRows ||
                          (select_.duplicates == Duplicates::Keep && !order_.empty());
        return rows && !select_.top && select_.groupBy.empty() && !select_.having;
    }

    /// DISTINCTROW with fields of small tables tells their rows apart, too, and without any field no rows at all.
    bool ReadItems() {
        const bool large = select_.duplicates == Duplicates::DropEqualRows;
        const auto read = [&](const SelectItem& item) {
            return item.expression && (ReadRow(*item.expression, row_) || (!large && ReadSmall(*item.expression)));
        };
        return std::ranges::all_of(select_.items, read) && (!large || !row_.empty()) &&
               row_.size() <= kMostScanFigures && NamesDiffer();
    }

    bool ReadSmall(const Expression& expression) {
        const auto* column = std::get_if<ColumnName>(&expression.node);
        const std::size_t table = column == nullptr ? tables_.size() : TableOf(*column);
        if (!IsSmall(table)) return false;
        fields_.push_back({&expression, table, *column});
        return true;
    }

    bool ReadOrder() {
        return std::ranges::all_of(order_, [&](const OrderItem& item) {
            const auto* column = std::get_if<ColumnName>(&item.expression->node);
            if (column == nullptr || TableOf(*column) >= tables_.size()) return false;
            if (!IsSmall(TableOf(*column))) return IsValue(*item.expression) || IsWhole(InfoOf(*column)->type);
            return ReadSmall(*item.expression);
        });
    }

    /// Rows in the order of numbers and identifiers, whose indexes SQLite can use, come one by one.
    [[nodiscard]] bool MustSeeAllRows() const {
        if (select_.duplicates == Duplicates::DropEqualRows) return true;
        const ColumnInfo& first = *InfoOf(std::get<ColumnName>(order_.front().expression->node));
        const CompareKind kind = KindOfColumn(first.name, first.type);
        return kind == CompareKind::Text || kind == CompareKind::ValueText;
    }

    bool PlaceOrder() {
        for (const OrderItem& item : order_) {
            const auto& column = std::get<ColumnName>(item.expression->node);
            const auto place = [&] { return static_cast<std::size_t>(image_->find(InfoOf(column)->name)); };
            if (IsSmall(TableOf(column))) {
                plan_.order.push_back({ScanOrderKind::Field, sides_.PlaceOf(TableOf(column), column), item.descending});
            } else if (IsValue(*item.expression)) {
                plan_.order.push_back({ScanOrderKind::Value, 0, item.descending});
            } else if (image_->find(InfoOf(column)->name) < 0 || image_->columns()[place()].form == ColumnForm::Plain) {
                return false;
            } else {
                plan_.order.push_back({ScanOrderKind::Number, place(), item.descending});
            }
        }
        return true;
    }

    void Rewrite() {
        ScanTable scan{tables_[large_].name.alias, {}, {}, {}, {}, {}};
        for (SelectItem& item : select_.items)
            if (const auto* column = std::get_if<ColumnName>(&item.expression->node); column && item.alias.empty())
                item.alias = InfoOf(*column)->name;
        for (const Named& field : row_)
            ReadFromFirstRow(scan, field);
        MakeQueries(scan);
        ReplaceFields(scan);
        order_.clear();
        plan_.byRow = true;
        scan.plan = std::move(plan_);
        select_.duplicates = Duplicates::Keep;
        ReadFromScan(std::move(scan));
    }

    std::vector<OrderItem>& order_;
    std::vector<Named> row_; ///< of the large table
};

} // namespace

bool ScanInOrder(Select& select, std::vector<OrderItem>& orderBy, const Catalogue& catalogue) {
    return RowScan(select, orderBy, catalogue).Apply();
}

} // namespace jet
