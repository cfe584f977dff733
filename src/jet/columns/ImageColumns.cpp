#include "jet/columns/ImageWriter.h"
#include "jet/values/Value.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>

namespace jet {

namespace {

constexpr std::size_t kMostCodes = 1U << 20U;
constexpr std::int64_t kNear = 1 << 20;

// A width that is known when it is compiled makes a copy one instruction.
void PutCode(std::vector<unsigned char>& codes, std::size_t row, std::uint8_t width, std::uint32_t code) {
    const auto narrow = static_cast<std::uint16_t>(code);
    if (width == 1) codes[row] = static_cast<unsigned char>(code);
    if (width == 2) std::memcpy(codes.data() + row * 2, &narrow, 2);
    if (width == 4) std::memcpy(codes.data() + row * 4, &code, 4);
}

/// The decimals of a number whose text is the one that its double is written with: no blanks, no sign +, no zeros in
/// front, at least one digit before the point and behind it, and no more digits than a double keeps. Nothing for
/// others.
std::optional<std::uint8_t> DecimalsOf(std::string_view text) {
    constexpr std::size_t kMostDigits = 15;
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const std::string_view rest = point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
    const auto digits = [](std::string_view part) {
        return std::ranges::all_of(part, [](char c) { return c >= '0' && c <= '9'; });
    };
    if (whole.empty() || (whole.size() > 1 && whole[0] == '0') || whole.size() + rest.size() > kMostDigits)
        return std::nullopt;
    if (!digits(whole) || !digits(rest) || (point != std::string_view::npos && rest.empty())) return std::nullopt;
    const bool zero = whole == "0" && rest.find_first_not_of('0') == std::string_view::npos;
    if (negative && zero) return std::nullopt;
    return static_cast<std::uint8_t>(rest.size());
}

} // namespace

void NumberColumn::Add(std::optional<std::int64_t> number) {
    if (form_ == ColumnForm::Consecutive) {
        if (rows_ == 0 && number) first_ = *number;
        if (number && *number - static_cast<std::int64_t>(rows_) == first_) {
            ++rows_;
            return;
        }
        BeginCodes();
    }
    if (form_ == ColumnForm::Plain) {
        fits_ = fits_ && number.has_value();
        plain_.Add(number.value_or(0));
    } else {
        AddCoded(number);
    }
    ++rows_;
}

// The numbers up to here were consecutive.
void NumberColumn::BeginCodes() {
    if (rows_ > kMostCodes) {
        form_ = ColumnForm::Plain;
        for (std::size_t row = 0; row < rows_; ++row)
            plain_.Add(first_ + static_cast<std::int64_t>(row));
        return;
    }
    form_ = ColumnForm::Coded;
    near_.assign(static_cast<std::size_t>(kNear), -1);
    for (std::size_t row = 0; row < rows_; ++row)
        Append(CodeOf(first_ + static_cast<std::int64_t>(row)));
}

void NumberColumn::AddCoded(std::optional<std::int64_t> number) {
    if (!number) {
        if (nullCode_ < 0) nullCode_ = NewCode(std::numeric_limits<std::int64_t>::min());
        return Append(static_cast<std::uint32_t>(nullCode_));
    }
    const std::uint32_t code = CodeOf(*number);
    if (numbers_.size() <= kMostCodes) return Append(code);
    BecomePlain();
    plain_.Add(*number);
}

std::uint32_t NumberColumn::CodeOf(std::int64_t number) {
    if (number >= 0 && number < kNear) {
        std::int32_t& code = near_[static_cast<std::size_t>(number)];
        if (code < 0) code = static_cast<std::int32_t>(NewCode(number));
        return static_cast<std::uint32_t>(code);
    }
    const auto known = far_.find(number);
    if (known != far_.end()) return known->second;
    return far_[number] = NewCode(number);
}

std::uint32_t NumberColumn::NewCode(std::int64_t number) {
    numbers_.push_back(number);
    counts_.push_back(0);
    return static_cast<std::uint32_t>(numbers_.size() - 1);
}

void NumberColumn::Append(std::uint32_t code) {
    while (width_ < 4 && code >> (8U * width_) != 0)
        width_ = static_cast<std::uint8_t>(width_ * 2);
    if (width_ == 1) narrow_.Add(static_cast<std::uint8_t>(code));
    if (width_ == 2) middle_.Add(static_cast<std::uint16_t>(code));
    if (width_ == 4) wide_.Add(code);
    ++counts_[code];
}

/// Calls `use` with the codes of some rows at a time.
template <class Use> void NumberColumn::EachCode(const Use& use) const {
    narrow_.EachBlock(use);
    middle_.EachBlock(use);
    wide_.EachBlock(use);
}

void NumberColumn::BecomePlain() {
    NumberColumn made(folder_);
    made.form_ = ColumnForm::Plain;
    made.fits_ = fits_ && nullCode_ < 0;
    made.rows_ = rows_;
    EachCode([&](const auto& codes) {
        for (const std::uint32_t code : codes)
            made.plain_.Add(numbers_[code]);
    });
    *this = std::move(made);
}

void NumberColumn::Finish() {
    near_ = {};
    far_ = {};
    if (form_ != ColumnForm::Coded) return;
    std::vector<std::uint32_t> order(numbers_.size());
    std::iota(order.begin(), order.end(), 0U);
    const auto null = static_cast<std::uint32_t>(nullCode_);
    std::ranges::sort(order, {},
                      [&](std::uint32_t code) { return std::pair(nullCode_ < 0 || code != null, numbers_[code]); });
    placeOf_.resize(order.size());
    std::vector<std::int64_t> numbers(order.size());
    std::vector<std::uint32_t> counts(order.size());
    for (std::uint32_t place = 0; place < order.size(); ++place) {
        placeOf_[order[place]] = place;
        numbers[place] = numbers_[order[place]];
        counts[place] = counts_[order[place]];
    }
    numbers_ = std::move(numbers);
    counts_ = std::move(counts);
}

void NumberColumn::EachBlockOfCodes(const std::function<void(std::span<const unsigned char>)>& put) const {
    std::vector<unsigned char> bytes;
    EachCode([&](const auto& codes) {
        bytes.resize(codes.size() * width_);
        for (std::size_t row = 0; row < codes.size(); ++row)
            PutCode(bytes, row, width_, placeOf_[codes[row]]);
        put(bytes);
    });
}

void ValueColumn::Add(std::optional<std::string_view> text) {
    const auto row = static_cast<std::uint32_t>(kinds_.size());
    const auto addKind = [this](auto kind) { kinds_.Add(static_cast<std::uint8_t>(kind)); };
    const std::optional<double> number = text ? ReadNumber(*text) : std::nullopt;
    values_.Add(number.value_or(0));
    if (!text) return addKind(ValueKind::Null);
    if (const std::optional<std::uint8_t> decimals = number ? DecimalsOf(*text) : std::nullopt)
        return addKind(static_cast<std::uint8_t>(ValueKind::FixedPoint) + *decimals);
    addKind(number ? ValueKind::OtherForm : ValueKind::Unreadable);
    textRows_.Add(row);
    textBytes_.Add(std::span<const char>(*text));
    textEnds_.Add(textBytes_.size());
}

} // namespace jet
