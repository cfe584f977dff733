#include "jet/values/NumberList.h"

#include <algorithm>
#include <charconv>
#include <sqlite3.h>

namespace jet {

namespace {

constexpr std::size_t kMostDigits = 18;
constexpr std::size_t kMostBitsANumber = 64; ///< above this the bits would take more room than the numbers

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::vector<std::int64_t> NumbersOf(std::string_view text) {
    std::vector<std::int64_t> numbers;
    numbers.reserve(static_cast<std::size_t>(std::ranges::count(text, ',')) + 1);
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        std::int64_t number = 0;
        const auto [next, failure] = std::from_chars(at, end, number);
        if (failure == std::errc{}) numbers.push_back(number);
        at = failure == std::errc{} ? next : at + 1; // a comma or a blank
    }
    return numbers;
}

template <class Held> void Free(void* held) {
    delete static_cast<std::shared_ptr<const Held>*>(held);
}

template <class Held>
void BindPointer(sqlite3_stmt* statement, int position, const std::shared_ptr<const Held>& held, const char* type) {
    sqlite3_bind_pointer(statement, position, new std::shared_ptr<const Held>(held), type, Free<Held>);
}

} // namespace

NumberList::NumberList(std::string_view text) : sorted_(NumbersOf(text)) {
    if (sorted_.empty()) return;
    if (!std::ranges::is_sorted(sorted_)) std::ranges::sort(sorted_);
    sorted_.erase(std::unique(sorted_.begin(), sorted_.end()), sorted_.end());
    size_ = sorted_.size();
    least_ = sorted_.front();
    greatest_ = sorted_.back();
    const auto span = static_cast<std::uint64_t>(greatest_) - static_cast<std::uint64_t>(least_);
    if (span / kMostBitsANumber >= size_) return;
    bits_.resize(static_cast<std::size_t>(span / 64) + 1);
    for (const std::int64_t number : sorted_) {
        const auto place = static_cast<std::size_t>(number - least_);
        bits_[place / 64] |= std::uint64_t{1} << (place % 64);
    }
    std::vector<std::int64_t>().swap(sorted_);
}

bool NumberList::contains(std::int64_t number) const {
    if (number < least_ || number > greatest_) return false;
    if (bits_.empty()) return std::ranges::binary_search(sorted_, number);
    const auto place = static_cast<std::size_t>(number - least_);
    return (bits_[place / 64] >> (place % 64) & 1U) != 0;
}

std::size_t NumberListLength(std::string_view text) {
    std::size_t at = 0;
    const auto here = [&] { return at < text.size() ? text[at] : '\0'; };
    const auto skipBlanks = [&] {
        while (IsBlank(here()))
            ++at;
    };
    for (;;) {
        skipBlanks();
        if (here() == '-') ++at;
        const std::size_t start = at;
        while (IsDigit(here()))
            ++at;
        const std::size_t digits = at - start;
        if (digits == 0 || digits > kMostDigits || (digits > 1 && text[start] == '0')) return 0;
        skipBlanks();
        if (here() == ')') return at;
        if (here() != ',') return 0;
        ++at;
    }
}

void BindLists(sqlite3_stmt* statement, const std::vector<ListParameter>& lists) {
    const auto parameters = static_cast<std::size_t>(sqlite3_bind_parameter_count(statement));
    for (std::size_t i = 0; i < std::min(parameters, lists.size()); ++i) {
        const int position = static_cast<int>(i) + 1;
        if (lists[i].numbers != nullptr) {
            BindPointer(statement, position, lists[i].numbers, kNumberListType);
        } else if (lists[i].scan != nullptr) {
            BindPointer(statement, position, lists[i].scan, kScanPlanType);
        } else {
            sqlite3_bind_text64(statement, position, lists[i].json.data(), lists[i].json.size(), SQLITE_TRANSIENT,
                                SQLITE_UTF8);
        }
    }
}

} // namespace jet
