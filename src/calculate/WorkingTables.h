#pragma once

#include "calculate/CalculationDraft.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// The working tables of a calculation: `_Data` and what is derived from it.
namespace tessaro {

/// Told after each step of long work which one it was, and of how many.
using Progress = std::function<void(int step, int of)>;

/// Fills `_Data` with the data in view, when the view has changed since it was last filled. False when that failed: the
/// error is reported, and the next call tries again.
bool CreateDataTable(const Progress& progress = {});

/// The indicators and subgroups that take part, as SQL lists in brackets: ('a' , 'b'). A list without elements is
/// empty.
struct DistinctRecords {
    QString indicators;
    QString subpops;      ///< only when the items have subgroups
    QString pairs;        ///< of the items: indicator, {} and subgroup
    QString denominators; ///< the same of the denominators
    QString allPairs;
};
/// The lists for a draft. An item without a subgroup stands for all that `_Data` has for its indicator.
[[nodiscard]] DistinctRecords ListsOf(const CalculationDraft& draft);
/// The lists, and the tables that CreateDistinctTempTables makes of them; nothing when those failed.
[[nodiscard]] std::optional<DistinctRecords> SelectDistinctRecords(const CalculationDraft& draft,
                                                                   const Progress& progress = {});

/// Makes CalcTempNew2: of the rows of `_Data` for these indicators and subgroups, the one of the latest time for each
/// area, indicator and subgroup; among several of that time the one of the highest source, then of the highest unit, by
/// the order of their names. Rows that agree in all of these stay. `subpops` may be empty. False when a statement
/// failed, which is reported.
bool CreateDistinctTempTables(const QString& indicators, const QString& subpops, const Progress& progress = {});
/// The same rule for the rows of `_Data` in `pairs`, into FormulaTempNew2.
bool CreateFormulaTables(const QString& pairs, const Progress& progress = {});

/// Texts as an SQL list in brackets, made safe: ('a' , 'b'); empty without texts.
[[nodiscard]] QString BracketedList(const QStringList& texts);
/// The key under which an indicator and its subgroup, or their GIds, count as one: with {} between them.
[[nodiscard]] QString PairKey(const QString& first, const QString& second);

/// Runs statements on Connection so that all of them hold or none does. False when one failed, which is reported.
bool ExecuteTogether(const std::vector<QString>& statements);

/// Drops working tables; those that don't exist are no error.
void DropCalcTables();
void DropFormulaTables();
/// Whatever a calculation may have left.
void DropAllWorkingTables();
/// Drops one table, if it exists.
void DropWorkingTable(const char* name);

} // namespace tessaro
