#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3_stmt;

namespace jet {

struct ScanPlan;

/// The whole numbers of a long IN (…) list. A statement may have millions of them; with all in its text SQLite would
/// take seconds to compile it. So the list is handed over as a parameter, and a function searches it for each row.
class NumberList final {
  public:
    /// From the text of a list for which NumberListLength holds, with or without blanks: "1, 2,-3".
    explicit NumberList(std::string_view text);

    [[nodiscard]] bool contains(std::int64_t number) const;
    /// How many different numbers the list has.
    [[nodiscard]] std::size_t size() const { return size_; }

  private:
    std::int64_t least_ = 0;
    std::int64_t greatest_ = -1;
    std::size_t size_ = 0;
    std::vector<std::int64_t> sorted_; ///< used when the numbers lie far apart
    std::vector<std::uint64_t> bits_;  ///< used when they lie close: one bit for each number from the smallest on
};

/// How long a list of whole numbers the text begins with, up to its closing bracket; 0 when it is no such list. Numbers
/// of more than 18 digits and those with leading zeros make it no such list.
[[nodiscard]] std::size_t NumberListLength(std::string_view text);

/// A list that a statement names as a parameter: ?1 is the first of its translation.
struct ListParameter {
    std::shared_ptr<const NumberList> numbers; ///< for jet_listed(x, ?1)
    std::string json;                          ///< for json_each(?1), when there are no numbers
    std::shared_ptr<const ScanPlan> scan = {}; ///< for jet_scan(?1), when there is neither
};

/// Binds the lists to the parameters of the statement.
void BindLists(sqlite3_stmt* statement, const std::vector<ListParameter>& lists);

/// The type name by which SQLite lets the function read the pointer that was bound to the parameter.
inline constexpr const char* kNumberListType = "jet_number_list";
inline constexpr const char* kScanPlanType = "jet_scan_plan";

} // namespace jet
