#include "jet/engine/ColumnStore.h"

#include "jet/values/Error.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <sqlite3.h>

namespace jet {

namespace {

constexpr std::size_t kBlockRows = 4096;
constexpr std::int64_t kMostTextBytes = 512LL << 20;

std::uint8_t WidthFor(std::uint64_t most) {
    if (most == 0) return 0;
    if (most <= UINT8_MAX) return 1;
    if (most <= UINT16_MAX) return 2;
    return most <= UINT32_MAX ? 4 : 8;
}

// Least byte first on every machine that we build for; the bytes never leave the process.
std::uint64_t ReadPacked(const std::string& numbers, std::size_t row, std::uint8_t width) {
    std::uint64_t number = 0;
    std::memcpy(&number, numbers.data() + row * width, width);
    return number;
}

std::uint64_t Distance(std::int64_t number, std::int64_t base) {
    return static_cast<std::uint64_t>(number) - static_cast<std::uint64_t>(base);
}

/// The engine computes beyond what a double can hold; the dialect calls that an overflow.
double Finite(double number) {
    if (std::isinf(number)) FailOverflow();
    return number;
}

} // namespace

Value ValueAt(sqlite3_stmt* row, int position, ColumnType type) {
    switch (sqlite3_column_type(row, position)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER: {
        const std::int64_t number = sqlite3_column_int64(row, position);
        if (type == ColumnType::YesNo) return number != 0 ? -1 : 0;
        if (type == ColumnType::Double) return static_cast<double>(number);
        return number;
    }
    case SQLITE_FLOAT:
        return Finite(sqlite3_column_double(row, position));
    default:
        break;
    }
    const auto* const start = static_cast<const char*>(sqlite3_column_blob(row, position));
    if (start == nullptr) return std::string();
    return std::string(start, static_cast<std::size_t>(sqlite3_column_bytes(row, position)));
}

void Column::Append(sqlite3_stmt* row, int position) {
    switch (sqlite3_column_type(row, position)) {
    case SQLITE_NULL:
        kinds_.push_back(Kind::Null);
        numbers_.push_back(kinds_.size() > 1 ? numbers_.back() : 0);
        break;
    case SQLITE_INTEGER:
        if (type_ != ColumnType::Double) {
            const std::int64_t number = sqlite3_column_int64(row, position);
            kinds_.push_back(Kind::Whole);
            numbers_.push_back(type_ != ColumnType::YesNo ? number : number != 0 ? -1 : 0);
            break;
        }
        [[fallthrough]];
    case SQLITE_FLOAT:
        kinds_.push_back(Kind::Real);
        numbers_.push_back(std::bit_cast<std::int64_t>(sqlite3_column_double(row, position)));
        break;
    default: {
        const auto* const start = static_cast<const char*>(sqlite3_column_blob(row, position));
        if (start != nullptr) bytes_.append(start, static_cast<std::size_t>(sqlite3_column_bytes(row, position)));
        kinds_.push_back(Kind::Text);
        numbers_.push_back(static_cast<std::int64_t>(bytes_.size()));
    }
    }
    if (kinds_.size() == kBlockRows) Pack();
}

// A text begins where the one before it ends; in a block of texts a Null has the same end as the text before it.
void Column::Pack() {
    Block block;
    const auto valued = std::ranges::find_if(kinds_, [](Kind kind) { return kind != Kind::Null; });
    block.kind = valued == kinds_.end() ? Kind::Null : *valued;
    block.mixed = std::ranges::any_of(kinds_, [&](Kind kind) { return kind != Kind::Null && kind != block.kind; });
    if (!block.mixed && block.kind != Kind::Null && std::ranges::find(kinds_, Kind::Null) != kinds_.end()) {
        block.nulls.resize(kinds_.size());
        for (std::size_t i = 0; i < kinds_.size(); ++i)
            block.nulls[i] = kinds_[i] == Kind::Null;
        // the numbers before the first value are of no kind yet
        const auto first = static_cast<std::size_t>(valued - kinds_.begin());
        std::fill_n(numbers_.begin(), first, block.kind == Kind::Text ? 0 : numbers_[first]);
    }
    if (block.kind != Kind::Null) PackNumbers(block);
    if (block.mixed) block.kinds = kinds_;
    block.bytes = std::move(bytes_);
    block.bytes.shrink_to_fit();
    packed_.push_back(std::move(block));
    kinds_.clear();
    numbers_.clear();
    bytes_.clear();
}

void Column::PackNumbers(Block& block) const {
    const bool asTheyAre = block.mixed || block.kind == Kind::Real;
    if (asTheyAre) {
        block.width = 8;
    } else {
        block.base = block.kind == Kind::Text ? 0 : *std::ranges::min_element(numbers_);
        block.width = WidthFor(Distance(*std::ranges::max_element(numbers_), block.base));
    }
    block.numbers.resize(numbers_.size() * block.width);
    for (std::size_t i = 0; i < numbers_.size(); ++i) {
        const std::uint64_t number = Distance(numbers_[i], block.base);
        std::memcpy(block.numbers.data() + i * block.width, &number, block.width);
    }
}

Value Column::At(const Block& block, std::size_t row) {
    const Kind kind = block.mixed ? block.kinds[row] : block.kind;
    if (kind == Kind::Null || (!block.nulls.empty() && block.nulls[row])) return {};
    const auto number =
        static_cast<std::int64_t>(ReadPacked(block.numbers, row, block.width) + static_cast<std::uint64_t>(block.base));
    if (kind == Kind::Whole) return number;
    if (kind == Kind::Real) return Finite(std::bit_cast<double>(number));
    std::size_t before = row;
    while (block.mixed && before > 0 && block.kinds[before - 1] != Kind::Text)
        --before;
    const std::size_t start = before == 0 ? 0 : ReadPacked(block.numbers, before - 1, block.width);
    return block.bytes.substr(start, static_cast<std::size_t>(number) - start);
}

Value Column::Get(std::size_t row) const {
    if (row / kBlockRows < packed_.size()) return At(packed_[row / kBlockRows], row % kBlockRows);
    const std::size_t open = row - packed_.size() * kBlockRows;
    switch (kinds_[open]) {
    case Kind::Null:
        return {};
    case Kind::Whole:
        return numbers_[open];
    case Kind::Real:
        return Finite(std::bit_cast<double>(numbers_[open]));
    case Kind::Text:
        break;
    }
    std::size_t before = open;
    while (before > 0 && kinds_[before - 1] != Kind::Text)
        --before;
    const auto start = static_cast<std::size_t>(before == 0 ? 0 : numbers_[before - 1]);
    return bytes_.substr(start, static_cast<std::size_t>(numbers_[open]) - start);
}

void Column::Finish() {
    if (!kinds_.empty()) Pack();
    kinds_.shrink_to_fit();
    numbers_.shrink_to_fit();
    bytes_.shrink_to_fit();
}

ColumnStore::ColumnStore(const std::vector<ColumnType>& types) {
    for (const ColumnType type : types)
        columns_.emplace_back(type);
}

void ColumnStore::AppendRow(sqlite3_stmt* row) {
    if (textBytes_ > kMostTextBytes)
        throw Error(ErrorNumber::TooLarge, "The result is too large: its texts take more than 512 MB.");
    for (int i = 0; i < sqlite3_column_count(row); ++i)
        if (sqlite3_column_type(row, i) == SQLITE_TEXT || sqlite3_column_type(row, i) == SQLITE_BLOB)
            textBytes_ += sqlite3_column_bytes(row, i);
    for (std::size_t i = 0; i < columns_.size(); ++i)
        columns_[i].Append(row, static_cast<int>(i));
    ++rows_;
}

void ColumnStore::Finish() {
    for (Column& column : columns_)
        column.Finish();
}

} // namespace jet
