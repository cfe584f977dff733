#pragma once

#include "calculate/CalculationLog.h"
#include "calculate/DataEntry.h"
#include "office/Workbook.h"

#include <QString>

/// Writes the log of a calculation as a workbook, and reads its results back.
namespace tessaro {

/// A workbook of a calculation, or why there is none.
struct WrittenWorkbook {
    QString file;       ///< its path in TempFolder; empty when there is none
    QString messageKey; ///< of the message to show then
};

/// The sheets of Log_Calculate.xls. Those that a calculation has nothing for are taken out of its log.
enum LogSheetNumber { kWorkingSheet = 1, kDetailSheet, kRemarksSheet, kRanksSheet };

/// "Log_Per cent (2026-01-31 14.05.09).xls": the name of a calculation's log by its stamp.
[[nodiscard]] QString LogFileName(CalcType type, const QString& stamp);

/// Whether the formulas of a log are calculated as it is written. The program that shows it calculates them all the
/// same, so what is shown at once, and saved from there, may leave them.
enum class LogResults { Written, LeftToHost };

/// Writes a log into a copy of the template: the header, the rows of both sheets with their formulas, and what the
/// template has further sheets for. `isFirst`: the wizard has made none before. Throws office::Error.
[[nodiscard]] WrittenWorkbook WriteLog(const CalculationDraft& draft, const CalculationLog& log, bool isFirst,
                                       LogResults results = LogResults::Written);

/// What the data-entry sheet takes from an open log: the results of the calculation with the values that the cells hold
/// now, each written with the log's decimals. Results without a value are left out, and one that stands there twice
/// counts once. Throws office::Error.
[[nodiscard]] DataEntrySheet ReadResults(const office::Workbook& book, const CalculationDraft& draft,
                                         const CalculationLog& log);

} // namespace tessaro
