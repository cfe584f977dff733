#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3_stmt;

namespace jet {

/// The whole numbers of a long IN (…) list. A view's rows may be picked by millions of numbers; a statement that held
/// them all would be compiled for seconds, so they go beside it and each row asks here.
class NumberList final {
  public:
    /// From the text of a list for which NumberListLength holds, with or without blanks: "1, 2,-3".
    explicit NumberList(std::string_view text);

    [[nodiscard]] bool contains(std::int64_t number) const;
    /// Different numbers.
    [[nodiscard]] std::size_t size() const { return size_; }

  private:
    std::int64_t least_ = 0;
    std::int64_t greatest_ = -1;
    std::size_t size_ = 0;
    std::vector<std::int64_t> sorted_; ///< of numbers that lie far apart
    std::vector<std::uint64_t> bits_;  ///< of numbers that lie close: one bit for each from the least on
};

/// How long a list of whole numbers the text begins with, up to its closing bracket; 0 when it is no such list. Numbers
/// of more than 18 digits and those with zeros in front are none of these.
[[nodiscard]] std::size_t NumberListLength(std::string_view text);

/// A list that a statement names as a parameter: ?1 is the first of its translation.
struct ListParameter {
    std::shared_ptr<const NumberList> numbers; ///< for jet_listed(x, ?1)
    std::string json;                          ///< for json_each(?1), when there are no numbers
};

/// Hands the lists to those of the statement's parameters that stand for them.
void BindLists(sqlite3_stmt* statement, const std::vector<ListParameter>& lists);

/// The name by which the function and the parameter know that they speak of the same thing.
inline constexpr const char* kNumberListType = "jet_number_list";

} // namespace jet
