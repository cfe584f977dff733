#include "formats/CsvReader.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // what stands for unreadable bytes

bool IsBlank(const TableRow& row) {
    return std::all_of(row.fields.begin(), row.fields.begin() + static_cast<std::ptrdiff_t>(row.count),
                       [](const std::string& field) { return field.empty(); });
}

bool HasBadText(const TableRow& row) {
    return std::any_of(
        row.fields.begin(), row.fields.begin() + static_cast<std::ptrdiff_t>(row.count), [](const std::string& field) {
            return field.find(kReplacement) != std::string::npos || field.find('\0') != std::string::npos;
        });
}

} // namespace

bool CsvReader::Next(TableRow& row) {
    while (ReadRow(row)) {
        if (row.fault == RowFault::None && IsBlank(row)) continue;
        if (row.fault == RowFault::None && mayBeBad_ && HasBadText(row)) row.fault = RowFault::BadText;
        return true;
    }
    return false;
}

bool CsvReader::Fill() {
    if (at_ < piece_.size()) return true;
    at_ = 0;
    if (!text_->Read(piece_)) piece_.clear();
    isPieceBad_ = piece_.find('\0') != std::string::npos || piece_.find(kReplacement) != std::string::npos;
    mayBeBad_ = mayBeBad_ || isPieceBad_;
    return !piece_.empty();
}

bool CsvReader::ReadRow(TableRow& row) {
    row.Clear();
    if (passesNewline_ && Fill() && piece_[at_] == '\n') ++at_;
    passesNewline_ = false;
    if (stopped_ || !Fill()) return false;
    row.number = line_;
    mayBeBad_ = isPieceBad_;
    while (ReadField(row) == After::Field) {
    }
    return true;
}

CsvReader::After CsvReader::ReadField(TableRow& row) {
    const bool fits = row.count < kMostFields;
    if (!fits) {
        row.fault = RowFault::TooManyFields;
        left_.clear();
    }
    std::string& field = fits ? row.Add() : left_;
    if (!Fill()) return After::End;
    if (piece_[at_] == '"' && !ReadQuoted(field, row)) return After::End;
    return ReadPlain(field);
}

/// Reads what is between two quotation marks; false when the second one is missing.
bool CsvReader::ReadQuoted(std::string& field, TableRow& row) {
    ++at_;
    while (Fill()) {
        const std::size_t end = std::min(piece_.find('"', at_), piece_.size());
        line_ += std::count(piece_.begin() + static_cast<std::ptrdiff_t>(at_),
                            piece_.begin() + static_cast<std::ptrdiff_t>(end), '\n');
        field.append(piece_, at_, end - at_);
        at_ = end;
        if (field.size() > kLongestField) break;
        if (at_ == piece_.size()) continue;
        ++at_;
        if (!Fill() || piece_[at_] != '"') return true;
        field += '"';
        ++at_;
    }
    row.fault = RowFault::OpenQuote;
    field.resize(std::min<std::size_t>(field.size(), 200));
    stopped_ = true;
    return false;
}

CsvReader::After CsvReader::ReadPlain(std::string& field) {
    while (Fill()) {
        std::size_t end = at_;
        while (end < piece_.size() && piece_[end] != delimiter_ && piece_[end] != '\n' && piece_[end] != '\r')
            ++end;
        if (field.size() < kLongestField) field.append(piece_, at_, end - at_);
        at_ = end;
        if (at_ == piece_.size()) continue;
        const char sign = piece_[at_++];
        return sign == delimiter_ ? After::Field : EndLine(sign);
    }
    return After::End;
}

CsvReader::After CsvReader::EndLine(char end) {
    ++line_;
    passesNewline_ = end == '\r';
    return After::Row;
}

} // namespace tessaro
