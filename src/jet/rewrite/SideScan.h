#pragma once

#include "jet/rewrite/ScanShape.h"
#include "jet/rewrite/ScanSides.h"
#include "jet/sql/Tree.h"

#include <vector>

namespace jet {

/// What the steps share whose scan joins the small tables itself: each side, of small tables joined among themselves,
/// gives the numbers by which rows of the large table meet it, and fields. Of the statement the scan alone is left.
class SideScan : protected ScanShape {
  protected:
    using Side = SidesOf<Link>::Side;

    /// A name that stands for a field of a small table, or of the large one.
    struct Named {
        const tree::Expression* expression = nullptr;
        std::size_t table = 0;
        tree::ColumnName name;
    };

    using ScanShape::ScanShape;
    ~SideScan() = default;

    // --- Reading ---

    [[nodiscard]] bool IsSmall(std::size_t table) const { return table < tables_.size() && table != large_; }
    /// Notes the fields of the large table that an expression reads; False when it reads anything else.
    bool ReadRow(const tree::Expression& expression, std::vector<Named>& read);
    /// Shares the conditions out; False when the scan can't test one.
    bool ReadConditions();
    /// False when two items without a name of their own would be called the same: fields of one name are called after
    /// their tables, which are gone afterwards.
    [[nodiscard]] bool NamesDiffer() const;

    // --- Sides ---

    /// Makes the sides, with the fields noted; False when a small table isn't linked with the large one.
    bool MakeSides();
    /// `single`: the outcome would be another if the same keys came twice. False when the image can't serve a side.
    bool PlaceSides(bool single);
    [[nodiscard]] bool AreInImage(const std::vector<Named>& fields) const;

    // --- Rewriting ---

    // the select is ours to change; only the walk through it was a reading one
    static tree::Expression& Writable(const tree::Expression* expression) {
        return *const_cast<tree::Expression*>(expression);
    }
    /// The place of a figure in the plan, which gets each different one once.
    std::size_t PlaceOf(const ScanFigure& planned);
    /// The name reads what the first row of its group has in a field of the large table.
    void ReadFromFirstRow(tree::ScanTable& scan, const Named& field);
    /// Takes the conditions apart and makes the queries of the sides.
    void MakeQueries(tree::ScanTable& scan);
    /// The names of small tables read what the sides give.
    void ReplaceFields(tree::ScanTable& scan);
    /// The scan is all that the statement reads from; conditions without a field stay.
    void ReadFromScan(tree::ScanTable scan);

    SidesOf<Link> sides_;
    std::vector<Named> fields_; ///< of small tables

  private:
    bool ReadCondition(const tree::Expression& condition);
    /// An equality of whole numbers of two small tables; nullptr for anything else.
    [[nodiscard]] const tree::Comparison* EqualNumbers(const tree::Expression& condition) const;
    void LinkEqualNumbers();
    bool PlaceSide(const Side& side, bool single);
    [[nodiscard]] tree::QueryPtr QueryOfSide(const Side& side);

    std::vector<Link> links_;
    std::vector<const tree::Comparison*> equalNumbers_; ///< of two small tables
};

} // namespace jet
