#include "formats/KeyedTable.h"

#include <algorithm>

namespace tessaro {

namespace {

bool IsFlag(std::string_view text) {
    return !text.empty() && text.size() <= 3 && std::ranges::all_of(text, [](char c) { return c >= 'a' && c <= 'z'; });
}

/// A value without what stands behind a blank.
std::string_view WithoutFlag(std::string_view value) {
    while (!value.empty() && value.back() == ' ')
        value.remove_suffix(1);
    const std::size_t blank = value.rfind(' ');
    if (blank == std::string_view::npos || !IsFlag(value.substr(blank + 1))) return value;
    return value.substr(0, blank);
}

} // namespace

bool IsKeyHead(std::string_view head) {
    const std::size_t slash = head.find('\\');
    return slash != std::string_view::npos && head.substr(0, slash).find(',') != std::string_view::npos;
}

bool KeyedTable::Next(TableRow& row) {
    if (begun_ && keys_ == 0) return table_->Next(row);
    if (!table_->Next(read_)) return false;
    if (!begun_ && read_.count > 0 && IsKeyHead(read_.fields[0])) {
        std::string& head = read_.fields[0];
        head.resize(head.find('\\'));
        keys_ = static_cast<std::size_t>(std::ranges::count(head, ',')) + 1;
    }
    begun_ = true;
    if (keys_ == 0)
        std::swap(row, read_);
    else
        TakeApart(row);
    return true;
}

void KeyedTable::TakeApart(TableRow& row) {
    row.Clear();
    row.number = read_.number;
    row.fault = read_.fault;
    std::string_view keys = read_.count > 0 ? std::string_view(read_.fields[0]) : std::string_view();
    for (std::size_t key = 0; key < keys_; ++key) {
        const std::size_t comma = key + 1 < keys_ ? std::min(keys.find(','), keys.size()) : keys.size();
        row.Add() = keys.substr(0, comma);
        keys.remove_prefix(std::min(comma + 1, keys.size()));
    }
    for (std::size_t field = 1; field < read_.count; ++field)
        row.Add() = WithoutFlag(read_.fields[field]);
}

} // namespace tessaro
