#include "calculate/WorkingTables.h"

#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/ViewJoins.h"

#include <QMultiHash>

#include <algorithm>

namespace tessaro {

namespace {

constexpr const char* kCalcTables[] = {"CalcTemp", "CalcTempNew", "CalcTempNew1", "CalcTempNew2", "CalcTempNew3"};
constexpr const char* kFormulaTables[] = {"FormulaTemp", "FormulaTempNew", "FormulaTempNew1", "FormulaTempNew2",
                                          "TempCalculate"};

void Tell(const Progress& progress, int step, int of) {
    if (progress) progress(step, of);
}

/// One step of the rule that keeps one row for each area, indicator and subgroup.
struct HighestOf {
    const char* field;
    const char* from;
    const char* into;
    const char* further; ///< fields that the new table has besides
};

// The correlated query is the rule's own wording; the engine groups the table once instead of asking for each row.
bool KeepHighest(const HighestOf& step) {
    DropWorkingTable(step.into);
    return Execute(QStringLiteral("Select *%4 Into %3 From %2 pt Where pt.%1 = (Select Max(pt1.%1) From %2 pt1 Where "
                                  "pt.AreaId = pt1.areaId And pt.[Indicator] = pt1.[Indicator] And pt.Subpop = "
                                  "pt1.Subpop)")
                       .arg(QLatin1String(step.field), QLatin1String(step.from), QLatin1String(step.into),
                            QLatin1String(step.further)));
}

/// The same where each area has a single row of an indicator and subgroup: it stays when it has the field at all.
bool KeepKnown(const HighestOf& step) {
    DropWorkingTable(step.into);
    return Execute(QStringLiteral("Select *%4 Into %3 From %2 Where %1 Is Not Null")
                       .arg(QLatin1String(step.field), QLatin1String(step.from), QLatin1String(step.into),
                            QLatin1String(step.further)));
}

bool HasSingleRows(const char* table) {
    const Records several = Select(QStringLiteral("Select Top 1 AreaId From %1 Group By AreaId, [Indicator], Subpop "
                                                  "Having Count(*) > 1")
                                       .arg(QLatin1String(table)));
    return several.isOpen() && several.atEnd();
}

bool KeepOneRecord(const QString& first, const HighestOf (&steps)[3], const Progress& progress) {
    const int all = static_cast<int>(std::size(steps)) + 1;
    DropWorkingTable(steps[0].from);
    if (!Execute(first)) return false;
    Tell(progress, 1, all);
    bool single = false;
    for (int step = 0; step < all - 1; ++step) {
        if (!(single ? KeepKnown(steps[step]) : KeepHighest(steps[step]))) return false;
        if (step == 0) single = HasSingleRows(steps[step].into);
        Tell(progress, step + 2, all);
    }
    return true;
}

/// The subgroups that `_Data` has for each indicator (in small letters) that is chosen as a whole.
QMultiHash<QString, QString> SubpopsOfWholeItems(const std::vector<CalculationItem>& items) {
    QStringList whole;
    for (const CalculationItem& item : items)
        if (item.subpop.isEmpty()) whole << item.indicator;
    if (whole.isEmpty()) return {};
    QMultiHash<QString, QString> subpops;
    Records rows = Select(QStringLiteral("SELECT distinct [Indicator], Subpop FROM _Data WHERE [Indicator] In ") +
                          BracketedList(whole));
    for (; !rows.atEnd(); rows.MoveNext())
        subpops.insert(rows.Text(std::size_t{0}).trimmed().toLower(), rows.Text(std::size_t{1}));
    return subpops;
}

QStringList PairsOf(const std::vector<CalculationItem>& items) {
    const QMultiHash<QString, QString> subpopsOf = SubpopsOfWholeItems(items);
    QStringList pairs;
    for (const CalculationItem& item : items)
        for (const QString& subpop :
             item.subpop.isEmpty() ? subpopsOf.values(item.indicator.trimmed().toLower()) : QStringList{item.subpop})
            pairs << PairKey(item.indicator.trimmed(), subpop.trimmed());
    return pairs;
}

} // namespace

void DropWorkingTable(const char* name) {
    const ErrorTrap trap("DropWorkingTable");
    Execute(QStringLiteral("DROP TABLE %1 ;").arg(QLatin1String(name)));
}

bool CreateDataTable(const Progress& progress) {
    if (!bDataChanged) return true;
    ErrorTrap trap("CreateDataTable");
    if (!Execute(QStringLiteral("DELETE * from _Data"))) return false;
    Tell(progress, 1, 2);
    if (!Execute(
            QStringLiteral(
                " INSERT INTO _Data (IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop,  TimePeriod, AreaId, "
                "AreaName, Source, RecommendedSource, DataValue)  SELECT IUS.IndicatorGId, IUS.Indicator, IUS.UnitGId, "
                "IUS.Unit, IUS.SubPopGId, IUS.SubPop,  T.TimePeriod, A.AreaId, A.AreaName, IUS.Source,"
                "IUS.RecommendedSource, D.Datavalue") +
            QLatin1String(joins::kCalculations.from) + QLatin1String(joins::kCalculations.where)))
        return false;
    bDataChanged = false;
    Tell(progress, 2, 2);
    return true;
}

bool ExecuteTogether(const std::vector<QString>& statements) {
    ErrorTrap trap("ExecuteTogether");
    if (!trap.Try([] { Connection->Begin(); })) return false;
    const bool done = trap.Try([&] {
        for (const QString& statement : statements)
            Connection->Execute(statement.toStdString());
        Connection->Commit();
    });
    if (!done) trap.Try([] { Connection->Rollback(); });
    return done;
}

QString PairKey(const QString& first, const QString& second) {
    return first + QStringLiteral("{}") + second;
}

QString BracketedList(const QStringList& texts) {
    if (texts.isEmpty()) return {};
    QStringList quoted;
    for (const QString& text : texts)
        quoted << Quoted(text);
    return QLatin1Char('(') + quoted.join(QStringLiteral(" , ")) + QLatin1Char(')');
}

DistinctRecords ListsOf(const CalculationDraft& draft) {
    std::vector<CalculationItem> all = draft.items;
    if (draft.type == CalcType::PerCent) all.insert(all.end(), draft.denominators.begin(), draft.denominators.end());
    QStringList indicators;
    QStringList subpops;
    for (const CalculationItem& item : all) {
        indicators << item.indicator;
        if (!item.subpop.isEmpty()) subpops << item.subpop;
    }
    indicators.removeDuplicates();
    subpops.removeDuplicates();
    // An item that stands for all subgroups needs them all.
    const bool everywhere = draft.showSubpop && std::ranges::none_of(all, [](const CalculationItem& item) {
                                return item.subpop.isEmpty();
                            });
    const QStringList numerators = PairsOf(draft.items);
    const QStringList denominators = draft.type == CalcType::PerCent ? PairsOf(draft.denominators) : QStringList();
    return {BracketedList(indicators), everywhere ? BracketedList(subpops) : QString(), BracketedList(numerators),
            BracketedList(denominators), BracketedList(numerators + denominators)};
}

std::optional<DistinctRecords> SelectDistinctRecords(const CalculationDraft& draft, const Progress& progress) {
    DistinctRecords lists = ListsOf(draft);
    if (!CreateDistinctTempTables(lists.indicators, lists.subpops, progress)) return std::nullopt;
    return lists;
}

bool CreateDistinctTempTables(const QString& indicators, const QString& subpops, const Progress& progress) {
    const ErrorTrap trap("CreateDistinctTempTables");
    QString first = QStringLiteral("Select * Into CalcTemp From _Data d1 Where d1.[Indicator] In ") + indicators;
    if (!subpops.isEmpty()) first += QStringLiteral(" And d1.Subpop In ") + subpops;
    static constexpr HighestOf kSteps[] = {{"TimePeriod", "CalcTemp", "CalcTempNew", ""},
                                           {"[Source]", "CalcTempNew", "CalcTempNew1", ""},
                                           {"[Unit]", "CalcTempNew1", "CalcTempNew2", ", 0.00 as Calculate_1"}};
    return KeepOneRecord(first, kSteps, progress);
}

bool CreateFormulaTables(const QString& pairs, const Progress& progress) {
    const ErrorTrap trap("CreateFormulaTables");
    static constexpr HighestOf kSteps[] = {{"TimePeriod", "FormulaTemp", "FormulaTempNew", ""},
                                           {"[Source]", "FormulaTempNew", "FormulaTempNew1", ""},
                                           {"[Unit]", "FormulaTempNew1", "FormulaTempNew2", ", 0.00 as Formula"}};
    return KeepOneRecord(
        QStringLiteral("Select * Into FormulaTemp From _Data d1 Where d1.[Indicator] + '{}' + d1.Subpop In ") + pairs,
        kSteps, progress);
}

void DropCalcTables() {
    for (const char* table : kCalcTables)
        DropWorkingTable(table);
}

void DropFormulaTables() {
    for (const char* table : kFormulaTables)
        DropWorkingTable(table);
}

void DropAllWorkingTables() {
    DropCalcTables();
    DropFormulaTables();
    DropWorkingTable("TUnitWiz");
    DropWorkingTable("SubWiz");
}

} // namespace tessaro
