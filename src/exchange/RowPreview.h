#pragma once

#include "exchange/AreaMatcher.h"
#include "exchange/FileSample.h"
#include "exchange/RowRules.h"

#include <array>
#include <memory>
#include <vector>

namespace tessaro {

/// A value of the first rows as it will be understood.
struct PreviewedValue {
    std::int64_t row = 0; ///< of the file
    /// Time, value and area as the database has them where they are known to it, other texts as they stand.
    std::array<QString, kRoles> texts;
    bool isRefused = false;
    QString remark; ///< why it is refused, or that the area is to be made
};

/// Shows what an import makes of the first rows of a file.
class RowPreview final {
  public:
    static constexpr std::size_t kMost = 200;

    /// Reads the lists of the database that values go into; see ReadTargetItems. Throws jet::Error.
    /// `areaTree`: a file with areas beside those of the database; see ReadAreaTree. May be empty.
    RowPreview(const QString& base, const QString& suffix, const QString& areaTree);

    /// The first values, at most kMost; none while the draft has no column of values. Places without a value are left
    /// out.
    [[nodiscard]] std::vector<PreviewedValue> Of(const FileSample& sample, const ImportDraft& draft);

  private:
    void UseChoices(const std::vector<AreaChoice>& choices);
    void FindArea(const Observation& one, bool makesAreas, PreviewedValue& value);

    TargetItems items_;
    std::vector<AreaChoice> choices_;
    std::unique_ptr<AreaMatcher> matcher_; ///< with these choices; it takes a moment to make
};

} // namespace tessaro
