#include "formats/PxReader.h"

#include "formats/ReadError.h"

#include <algorithm>

namespace tessaro {

PxReader::PxReader(const QString& path)
    : path_(path), signs_(std::make_unique<TextFile>(path, EncodingOfPx(path))), head_(ReadPxHead(signs_, path)),
      at_(head_.variables.size(), 0), fixed_(head_.IsKeyed() ? head_.rowVariables : 0) {}

void PxReader::WriteHeads(TableRow& row) const {
    for (const PxVariable& variable : head_.variables) {
        row.Add() = variable.name;
        if (!variable.codes.empty()) row.Add() = variable.name + " (code)";
    }
    for (const char* name : {"CONTENTS", "UNITS", "SOURCE"})
        row.Add() = name;
    if (!head_.cellNotes.empty()) row.Add() = "NOTE";
    row.Add() = "VALUE";
}

std::vector<ColumnKind> PxReader::Kinds() const {
    std::vector<ColumnKind> kinds;
    for (const PxVariable& variable : head_.variables) {
        kinds.push_back(variable.isTime       ? ColumnKind::Time
                        : variable.isArea     ? ColumnKind::Area
                        : variable.isContents ? ColumnKind::Indicator
                                              : ColumnKind::Dimension);
        if (!variable.codes.empty()) kinds.push_back(variable.isArea ? ColumnKind::AreaCode : ColumnKind::Unknown);
    }
    return kinds;
}

void PxReader::WriteRow(TableRow& row) const {
    const std::string* units = &head_.units;
    for (std::size_t i = 0; i < at_.size(); ++i) {
        const PxVariable& variable = head_.variables[i];
        row.Add() = variable.values[at_[i]];
        if (!variable.codes.empty()) row.Add() = variable.codes[at_[i]];
        if (!variable.isContents) continue;
        const auto own = head_.unitsOf.find(variable.values[at_[i]]);
        if (own != head_.unitsOf.end()) units = &own->second;
    }
    row.Add() = head_.contents;
    row.Add() = *units;
    row.Add() = head_.source;
    if (!head_.cellNotes.empty()) row.Add() = NoteHere();
}

std::string PxReader::NoteHere() const {
    std::vector<std::string> values;
    for (std::size_t i = 0; i < at_.size(); ++i)
        values.push_back(head_.variables[i].values[at_[i]]);
    const auto note = head_.cellNotes.find(values);
    return note != head_.cellNotes.end() ? note->second : std::string();
}

bool PxReader::Next(TableRow& row) {
    row.Clear();
    row.number = signs_.Line();
    if (!headsWritten_) {
        headsWritten_ = true;
        WriteHeads(row);
        return true;
    }
    if (ended_ || (atRowStart_ && fixed_ > 0 && !ReadKeys())) return false;
    std::string number;
    const bool read = ReadNumber(number);
    if (!read && fixed_ > 0 && atRowStart_) return false;
    row.number = signs_.Line();
    WriteRow(row);
    row.Add() = number;
    if (!read) {
        row.fault = RowFault::CutShort;
        ended_ = true;
    }
    Advance();
    return true;
}

/// The values, or their codes, that a line of a file with keys begins with; false at the end.
bool PxReader::ReadKeys() {
    std::string key;
    for (std::size_t i = 0; i < fixed_; ++i) {
        key.clear();
        if (!ReadNumber(key)) return false;
        const PxVariable& variable = head_.variables[i];
        auto found = std::ranges::find(variable.codes, key);
        std::size_t place = static_cast<std::size_t>(found - variable.codes.begin());
        if (found == variable.codes.end())
            place = static_cast<std::size_t>(std::ranges::find(variable.values, key) - variable.values.begin());
        if (place >= variable.values.size())
            throw ReadError(QStringLiteral("TS_ReadPx"), {path_, QString::number(signs_.Line())});
        at_[i] = place;
    }
    return true;
}

/// The next entry of the data, a number or a text in quotation marks; false at their end.
bool PxReader::ReadNumber(std::string& number) {
    for (char sign = signs_.Peek(); sign == ' ' || sign == ',' || (sign >= '\t' && sign <= '\r'); sign = signs_.Peek())
        signs_.Take();
    const char first = signs_.Peek();
    if (first == '\0' || first == ';') return false;
    if (first == '"') {
        signs_.Take();
        signs_.TakeQuoted(number);
        return true;
    }
    for (char sign = first; sign > ' ' && sign != ';' && sign != ',' && sign != '"'; sign = signs_.Peek()) {
        number += signs_.Take();
        if (number.size() > kLongestField) return false;
    }
    return !number.empty();
}

/// The last variable runs fastest.
void PxReader::Advance() {
    std::size_t i = at_.size();
    while (i > fixed_) {
        --i;
        if (++at_[i] < head_.variables[i].values.size()) {
            atRowStart_ = false;
            return;
        }
        at_[i] = 0;
    }
    atRowStart_ = true;
    ended_ = ended_ || fixed_ == 0;
}

} // namespace tessaro
