#pragma once

#include "exchange/ImportStage.h"

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
    /// `withExisting`: compare with the database; otherwise with nothing. Throws jet::Error.
    Comparison(ImportStage& stage, bool withExisting);
    bool Next(ComparedValue& next);

  private:
    void Read(ComparedValue& next) const;
    [[nodiscard]] static bool IsSameKey(const StagedValue& a, const StagedValue& b);

    bool withExisting_;
    jet::Recordset rows_;
    std::int64_t lastStage_ = 0;
    StagedValue first_;
};

} // namespace tessaro
