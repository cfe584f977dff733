#pragma once

#include "exchange/ImportStage.h"

#include <optional>

namespace tessaro {

enum class ValueState {
    Fresh, ///< the database has no such value
    Same,  ///< it has the same one
    Changed,
    Double ///< the file has had one for the same indicator, source, area and period
};

struct ComparedValue {
    StagedValue value;
    ValueState state = ValueState::Fresh;
    std::int64_t existingRow = 0; ///< RowNId of the value that the database has; 0 for none
    int existingFootnote = 0;
    std::string existingValue;
    std::int64_t firstRow = 0;   ///< of a double: the row of the file that has the value first
    std::string firstValue = {}; ///< and that value
};

/// Goes over the staged values in the order of what they belong to, and compares them with those of the database.
class Comparison final {
  public:
    /// Borrows the stage. Throws jet::Error, ReadError.
    explicit Comparison(const ImportStage& stage);
    bool Next(ComparedValue& next);

  private:
    void FindExisting(ComparedValue& next);

    ValueSorter::Reader values_;
    std::optional<jet::Recordset> existing_;
    std::int64_t key_ = 0; ///< of the last value of known items
    StagedValue first_;    ///< of the last key
};

} // namespace tessaro
