#pragma once

#include <QString>

#include <functional>

namespace tessaro {

/// The inventory of the open database as a workbook of sixteen sheets: written to TempFolder, its path is given. `done`
/// is told each finished sheet, from 1. A statement that fails leaves its sheet short. Throws office::Error.
[[nodiscard]] QString WriteSummaryReport(const std::function<void(int)>& done);
constexpr int kSummarySheets = 16;

enum class LogKind { Database, Template };
/// One of the two logs of the open database as a workbook made from the blank template. Empty after message "011" when
/// no database is open or the template is missing. Throws office::Error.
[[nodiscard]] QString WriteLogReport(LogKind kind);

} // namespace tessaro
