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
std::uint32_t CodeAt(const std::vector<unsigned char>& codes, std::size_t row, std::uint8_t width) {
    if (width == 1) return codes[row];
    std::uint16_t narrow = 0;
    std::uint32_t code = 0;
    if (width == 4) std::memcpy(&code, codes.data() + row * 4, 4);
    if (width == 2) std::memcpy(&narrow, codes.data() + row * 2, 2);
    return width == 2 ? narrow : code;
}

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
        plain_.push_back(number.value_or(0));
    } else {
        AddCoded(number);
    }
    ++rows_;
}

// The numbers up to here were consecutive.
void NumberColumn::BeginCodes() {
    if (rows_ > kMostCodes) {
        form_ = ColumnForm::Plain;
        plain_.resize(rows_);
        std::iota(plain_.begin(), plain_.end(), first_);
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
    plain_.push_back(*number);
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
        Widen();
    codes_.resize(codes_.size() + width_);
    PutCode(codes_, codes_.size() / width_ - 1, width_, code);
    ++counts_[code];
}

void NumberColumn::Widen() {
    const auto wider = static_cast<std::uint8_t>(width_ * 2);
    const std::size_t rows = codes_.size() / width_;
    std::vector<unsigned char> codes(rows * wider);
    for (std::size_t row = 0; row < rows; ++row)
        PutCode(codes, row, wider, CodeAt(codes_, row, width_));
    codes_ = std::move(codes);
    width_ = wider;
}

void NumberColumn::BecomePlain() {
    fits_ = fits_ && nullCode_ < 0;
    nullCode_ = -1;
    form_ = ColumnForm::Plain;
    const std::size_t rows = codes_.size() / width_;
    plain_.reserve(rows + 1);
    for (std::size_t row = 0; row < rows; ++row)
        plain_.push_back(numbers_[CodeAt(codes_, row, width_)]);
    *this = [&] {
        NumberColumn left;
        left.form_ = form_;
        left.fits_ = fits_;
        left.rows_ = rows_;
        left.plain_ = std::move(plain_);
        return left;
    }();
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
    std::vector<std::uint32_t> placeOf(order.size());
    std::vector<std::int64_t> numbers(order.size());
    std::vector<std::uint32_t> counts(order.size());
    for (std::uint32_t place = 0; place < order.size(); ++place) {
        placeOf[order[place]] = place;
        numbers[place] = numbers_[order[place]];
        counts[place] = counts_[order[place]];
    }
    for (std::size_t row = 0; row < codes_.size() / width_; ++row)
        PutCode(codes_, row, width_, placeOf[CodeAt(codes_, row, width_)]);
    numbers_ = std::move(numbers);
    counts_ = std::move(counts);
}

void ValueColumn::Add(std::optional<std::string_view> text) {
    const auto row = static_cast<std::uint32_t>(kinds_.size());
    const std::optional<double> number = text ? ReadNumber(*text) : std::nullopt;
    values_.push_back(number.value_or(0));
    if (!text) return kinds_.push_back(static_cast<std::uint8_t>(ValueKind::Null));
    const std::optional<std::uint8_t> decimals = number ? DecimalsOf(*text) : std::nullopt;
    if (decimals)
        return kinds_.push_back(
            static_cast<std::uint8_t>(static_cast<std::uint8_t>(ValueKind::FixedPoint) + *decimals));
    kinds_.push_back(static_cast<std::uint8_t>(number ? ValueKind::OtherForm : ValueKind::Unreadable));
    textRows_.push_back(row);
    textBytes_.insert(textBytes_.end(), text->begin(), text->end());
    textEnds_.push_back(textBytes_.size());
}

} // namespace jet
