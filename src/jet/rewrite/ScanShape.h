#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/functions/Functions.h"
#include "jet/rewrite/JoinedTables.h"
#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

/// What the steps share that run a SELECT on a column image: which table is the large one, what its conditions ask of
/// the scan, and where the fields stand in the image.
class ScanShape : protected JoinedTables {
  protected:
    ScanShape(tree::Select& select, const std::vector<tree::OrderItem>& orderBy, const Catalogue& catalogue)
        : JoinedTables(select, orderBy, catalogue) {}
    ~ScanShape() = default;

    /// "small.field = large.field", whole numbers both.
    struct Link {
        std::size_t table = 0;
        tree::ColumnName field;
        const ColumnInfo* large = nullptr;
    };

    // --- Fields ---

    /// The table that holds values, and its image; False when there is none, or several tables do.
    bool FindLarge();
    [[nodiscard]] const ColumnInfo* InfoOf(const tree::ColumnName& column) const;
    /// The field of the large table that a bare name means; nullptr for anything else.
    [[nodiscard]] const ColumnInfo* LargeField(const tree::Expression& expression) const;
    [[nodiscard]] bool IsValue(const tree::Expression& expression) const;
    /// Notes a field that tells groups apart; False when it can't.
    bool AddCode(const ColumnInfo& field);
    /// What stands for the least, the greatest or the count of a field of a small table.
    [[nodiscard]] tree::ScannedAggregate RankedAggregate(const std::string& function,
                                                         const tree::ColumnName& field) const;

    // --- Conditions ---

    /// Calls `take` for each part of WHERE and of the joins, in the order in which TakeConditions takes them.
    template <class Take> void EachCondition(const Take& take) const {
        if (select_.where) EachPart(*select_.where, take);
        for (const tree::TableReferencePtr& reference : select_.from)
            EachJoined(*reference, take);
    }
    [[nodiscard]] std::optional<Link> LinkIn(const tree::Expression& condition) const;
    /// Notes a condition on the large table for the scan; False when the scan can't test it.
    bool ReadPushed(const tree::Expression& condition);
    /// A list that would become a parameter, which the query of keys can't have.
    [[nodiscard]] static bool HoldsLongList(const tree::Expression& expression);

    // --- The image ---

    /// Finds the value, the codes and the lists in the image.
    bool FindImage();
    [[nodiscard]] std::optional<std::size_t> Coded(const std::string& field) const;

    std::size_t large_ = 0;
    std::vector<ColumnInfo> codes_;
    std::shared_ptr<const ColumnImage> image_;
    ScanPlan plan_;

  private:
    template <class Take> static void EachJoined(const tree::TableReference& reference, const Take& take) {
        const auto* join = std::get_if<tree::Join>(&reference.node);
        if (join == nullptr) return;
        if (join->on) EachPart(*join->on, take);
        EachJoined(*join->left, take);
        EachJoined(*join->right, take);
    }
    template <class Take> static void EachPart(const tree::Expression& condition, const Take& take) {
        const auto* chain = std::get_if<tree::Logical>(&condition.node);
        if (chain == nullptr || chain->op != tree::LogicalOperator::And) return take(condition);
        for (const tree::ExpressionPtr& operand : chain->operands)
            EachPart(*operand, take);
    }
    bool ReadValueTest(const tree::Expression& condition);
    bool ReadBetween(const tree::Expression& condition);
    bool ReadFilledTest(const tree::Expression& condition);
    bool ReadListTest(const tree::Expression& condition);
    bool AddList(const tree::Expression& operand, bool negated, const std::string& numbers);
    [[nodiscard]] bool IsLengthOfValue(const tree::Expression& condition) const;
    [[nodiscard]] bool MayHoldBlanks(const ImageColumn& value) const;
    bool PlaceCodes();
    bool PlaceLists();
    [[nodiscard]] bool FindsFewRows(const ImageColumn& column, const ScanListTest& test) const;

    std::vector<std::string> listed_;
    bool blanksCount_ = true; ///< no condition takes blank values for none
};

/// True for tables with a column of values.
[[nodiscard]] bool HoldsValues(const TableInfo& table);
/// The aggregate that an expression calls; nullptr for anything else.
[[nodiscard]] const FunctionInfo* AggregateOf(const tree::Expression& expression);
[[nodiscard]] bool IsWhole(ColumnType type);
/// True for the names of Min and Max.
[[nodiscard]] bool IsExtreme(std::string_view function);
/// The figure of the values that an aggregate is made of; nothing for those that need more.
[[nodiscard]] std::optional<ScanFigureKind> FigureOfValues(std::string_view function);

} // namespace jet
