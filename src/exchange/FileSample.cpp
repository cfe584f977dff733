#include "exchange/FileSample.h"

#include "exchange/ItemNames.h"

namespace tessaro {

FileSample SampleOf(TableReader& reader) {
    FileSample sample;
    TableRow row;
    std::size_t cells = 0;
    while (sample.rows.size() < FileSample::kRows && cells < FileSample::kCells && reader.Next(row)) {
        cells += row.count;
        std::vector<std::string>& kept = sample.rows.emplace_back();
        for (std::size_t i = 0; i < row.count; ++i)
            kept.emplace_back(WithoutBlanks(row.fields[i]));
        sample.places.push_back({row.number, row.fault});
    }
    sample.kinds = reader.Kinds();
    return sample;
}

bool SampleReader::Next(TableRow& row) {
    row.Clear();
    if (next_ == sample_.rows.size()) return false;
    row.number = sample_.places[next_].number;
    row.fault = sample_.places[next_].fault;
    for (const std::string& field : sample_.rows[next_++])
        row.Add() = field;
    return true;
}

} // namespace tessaro
