#include "Figures.h"
#include "calculate/LogWorkbook.h"
#include "calculate/WorkingTables.h"
#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <cstdio>
#include <cstdlib>

namespace tessaro::bench {

namespace {

const std::string kSnapshot = "the data in view into _Data, a million values";
const std::string kOneRecord = "one record for each area and indicator of a million rows, all four tables";

void Need(bool done) {
    if (done) return;
    std::fprintf(stderr, "bench: a calculation can't be prepared\n");
    std::exit(2);
}

// --- Working tables. ---

const std::string kColumns = "IndicatorGId, Indicator, UnitGId, Unit, SubpopGId, Subpop, TimePeriod, AreaId, AreaName, "
                             "Source, RecommendedSource, DataValue";

void SnapshotByHand(HandWritten& hand) {
    hand.Run("DELETE FROM work._Data");
    hand.Run(
        "INSERT INTO work._Data (" + kColumns +
        ") SELECT S.IndicatorGId, S.Indicator, S.UnitGId, S.Unit, S.SubpopGId, S.Subpop, T.TimePeriod, A.AreaID, "
        "A.AreaName, S.Source, S.RecommendedSource, D.Datavalue FROM sel._SelIUSNId S JOIN Data D ON D.IUSNId = "
        "S.IUSNId AND D.SourceNId = S.SourceNId JOIN sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId JOIN "
        "sel._SelArea A ON A.AreaNId = D.AreaNId WHERE S.Deleted = 0");
}

/// Each table holds the rows of the one before that have the highest time, source and unit of their area, indicator and
/// subgroup.
void OneRecordByHand(HandWritten& hand) {
    const struct {
        const char *from, *into, *field;
    } steps[] = {{"CalcTemp", "CalcTempNew", "TimePeriod"},
                 {"CalcTempNew", "CalcTempNew1", "Source"},
                 {"CalcTempNew1", "CalcTempNew2", "Unit"}};
    hand.Run("DROP TABLE IF EXISTS work.CalcTemp");
    hand.Run("CREATE TABLE work.CalcTemp AS SELECT * FROM work._Data");
    for (const auto& step : steps) {
        const std::string into = std::string("work.") + step.into;
        hand.Run("DROP TABLE IF EXISTS " + into);
        hand.Run(
            "CREATE TABLE " + into + " AS SELECT " + kColumns + " FROM (SELECT *, max(" + step.field +
            ") OVER (PARTITION BY AreaId COLLATE NOCASE, Indicator COLLATE NOCASE, Subpop COLLATE NOCASE) AS highest "
            "FROM work." +
            step.from + ") WHERE " + step.field + " = highest");
    }
}

void MeasureTables(Report& report, const BenchSession& session) {
    if (!report.Wants(kSnapshot) && !report.Wants(kOneRecord)) return;
    SelectMillion();
    bDataChanged = true;
    Need(CreateDataTable());
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    report.Compare(
        kSnapshot,
        [] {
            bDataChanged = true;
            Need(CreateDataTable());
        },
        [&] { SnapshotByHand(hand); }, 1.3);
    QStringList indicators;
    Records rows = Select(QStringLiteral("SELECT DISTINCT [Indicator] FROM _Data"));
    for (; !rows.atEnd(); rows.MoveNext())
        indicators << rows.Text(std::size_t{0});
    report.Compare(
        kOneRecord, [&] { Need(CreateDistinctTempTables(BracketedList(indicators), {})); },
        [&] { OneRecordByHand(hand); }, 2);
    DropAllWorkingTables();
}

// --- Whole calculations. ---

/// `_Data` with one value for each of so many areas and indicators, in two years.
void FillData(int areas, int indicators) {
    Need(Execute(QStringLiteral("DELETE * FROM _Data")));
    Connection->Begin();
    for (int indicator = 0; indicator < indicators; ++indicator)
        for (int area = 0; area < areas; ++area)
            for (const int year : {1990, 2000})
                Connection->Execute(
                    QStringLiteral(
                        "INSERT INTO _Data VALUES ('-I%1', 'Indicator %1', '-U', 'Number', '-T', 'Total', '%3', "
                        "'A%2', 'Area %2', 'Region_Census', False, '%4')")
                        .arg(indicator)
                        .arg(area, 5, 10, QLatin1Char('0'))
                        .arg(year)
                        .arg(1 + (area * 7919 + indicator * 104729) % 100003)
                        .toStdString());
    Connection->Commit();
}

CalculationDraft DraftOf(CalcType type, int indicators) {
    CalculationDraft draft;
    draft.type = type;
    draft.showSubpop = true;
    const bool halves = type == CalcType::PerCent;
    for (int indicator = 0; indicator < indicators; ++indicator) {
        const CalculationItem item{QStringLiteral("Indicator %1").arg(indicator), QStringLiteral("Total")};
        (halves && indicator >= indicators / 2 ? draft.denominators : draft.items).push_back(item);
        draft.weights.push_back({QString::number(100.0 / indicators), indicator % 2 == 0});
        draft.formula += (indicator > 0 ? QStringLiteral(" + {") : QStringLiteral("{")) + item.indicator +
                         QStringLiteral("  ~  ") + item.subpop + QStringLiteral("} * 2");
    }
    draft.sector = draft.indicatorClass = QStringLiteral("Calculated");
    draft.indicator = QStringLiteral("Result");
    draft.subpop = QStringLiteral("Total");
    draft.unit = QStringLiteral("Number");
    draft.decimals = QStringLiteral("2");
    return draft;
}

/// From the choices to the log that is shown.
void ShowLog(OfficeHost& host, const CalculationDraft& draft) {
    const CalculationLog log = Calculate(draft);
    Need(log.failure.isEmpty());
    const WrittenWorkbook written = WriteLog(draft, log, true, LogResults::LeftToHost);
    Need(!written.file.isEmpty() && host.ShowWorkbook(written.file));
    QApplication::processEvents();
}

void MeasureLogs(Report& report) {
    const struct {
        const char* what;
        CalcType type;
        int areas, indicators;
    } cases[] = {{"per cent, 5,000 areas, 10 indicators, to the visible log", CalcType::PerCent, 5000, 10},
                 {"formula, 5,000 areas, 6 references, to the visible log", CalcType::Formula, 5000, 6},
                 {"composite index, 3,000 areas, 8 indicators, to the visible log", CalcType::CompositeIndex, 3000, 8}};
    if (std::ranges::none_of(cases, [&](const auto& one) { return report.Wants(one.what); })) return;
    const QTemporaryDir folder;
    office::SpreadsheetApplication::SetProfileFolder(folder.filePath(QStringLiteral("Office")));
    QWidget form;
    OfficeHost host;
    (new QVBoxLayout(&form))->addWidget(&host);
    form.resize(1040, 680);
    form.show();
    for (const auto& one : cases) {
        if (!report.Wants(one.what)) continue;
        FillData(one.areas, one.indicators);
        const CalculationDraft draft = DraftOf(one.type, one.indicators);
        ShowLog(host, draft); // starts both processes
        report.Bound(
            one.what,
            [&] {
                host.CloseHostedExcel(false); // as Back does, before another log is asked for
                return Milliseconds([&] { ShowLog(host, draft); });
            },
            5000, "ms");
    }
    host.CloseHostedExcel(false);
    office::SpreadsheetApplication::QuitAll();
}

} // namespace

void MeasureCalculations(Report& report, const BenchSession& session) {
    MeasureTables(report, session);
    MeasureLogs(report);
}

} // namespace tessaro::bench
