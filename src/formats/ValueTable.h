#pragma once

#include <QString>

#include <functional>
#include <optional>

/// Writes values with what they belong to in the forms of others. Each function gives False when the file can't be
/// written; the old file stays then, and also when a row throws.
namespace tessaro {

struct ValueRow {
    QString period;
    QString areaId;
    QString areaName;
    QString indicator;
    QString unit;
    QString subgroup;
    QString source;
    QString value;
    QString footnote;
};

/// Rows by their number from 0; nothing for one that is left out. Read twice by forms that list their values first.
struct ValueTable {
    int count = 0;
    std::function<std::optional<ValueRow>(int)> at;
};

/// One row a value, comma-separated, UTF-8 with its mark, heads in the language of the program; footnotes in the last
/// column. Values as they are stored.
[[nodiscard]] bool SaveLongCsv(const QString& file, const ValueTable& table);
/// One row for each area, indicator, unit, subgroup and source; one column a period, in their order. Footnotes are left
/// out.
[[nodiscard]] bool SaveWideCsv(const QString& file, const ValueTable& table);
/// SDMX-CSV, version 1, with the usual concepts as columns.
[[nodiscard]] bool SaveSdmxCsv(const QString& file, const ValueTable& table);
/// A JSON-stat 2 data set of six dimensions that names the cells it has. Footnotes are left out; of two values for one
/// cell the last one stands.
[[nodiscard]] bool SaveJsonStat(const QString& file, const ValueTable& table);
/// A PX file with keys: one row for each combination that has values, periods across. Footnotes, and values that are no
/// numbers, are left out; of two values for one cell the last one stands.
[[nodiscard]] bool SavePx(const QString& file, const ValueTable& table);

} // namespace tessaro
