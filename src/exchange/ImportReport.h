#pragma once

#include "exchange/ImportCheck.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace tessaro {

/// One table of the report of a check; its rows are made as they are asked for.
struct ImportTable {
    QString name;
    QStringList heads;
    std::size_t rows = 0;
    std::function<QStringList(std::size_t)> row;
    std::function<bool(std::size_t)> isRefused = {}; ///< rows that are shown as such; none when not given
    QList<int> numbers = {};                         ///< columns of rows, columns and counts: plain digits
};

/// The report of a check: the counts, what would be made, which values change, which rows are refused and why, and the
/// areas that were not found. It refers to the check.
[[nodiscard]] std::vector<ImportTable> ReportOf(const CheckedImport& checked);
/// The first table alone: what was counted, in words.
[[nodiscard]] QList<QStringList> CountsInWords(const CheckedImport& checked);
/// Writes the report as a workbook (.xls), or for any other name as separated values, table after table. False when the
/// file can't be written. Throws office::Error.
[[nodiscard]] bool SaveReport(const CheckedImport& checked, const QString& file);

} // namespace tessaro
