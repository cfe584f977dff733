#include "Figures.h"
#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"
#include "presentation/GraphWorkbook.h"
#include "session/Query.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace tessaro::bench {

namespace {

constexpr int kRounds = 3;
constexpr int kValues = 10000;

/// Leaves this many areas and combinations selected, with all periods; the number of values.
int SelectFew(int areas, int combinations) {
    const QString statements[] = {
        QStringLiteral("DELETE * FROM _SelArea WHERE AreaNId NOT IN (SELECT TOP %1 AreaNId FROM Area ORDER BY AreaNId)")
            .arg(areas),
        QStringLiteral("DELETE * FROM _SelIUSNId WHERE IUSNId NOT IN (SELECT TOP %1 IUSNId FROM Indicator_Unit_Subpop "
                       "ORDER BY IUSNId)")
            .arg(combinations)};
    for (const QString& statement : statements)
        if (!Execute(statement)) std::fprintf(stderr, "bench: the selection can't be made smaller\n");
    return CountValues();
}

/// From the click on the options page to the workbook in its place.
double Preview(OfficeHost& host, const std::function<ShowOutcome()>& build) {
    host.CloseHostedExcel(false);
    QElapsedTimer clock;
    clock.start();
    try {
        const ShowOutcome outcome = build();
        if (outcome.result == ShowResult::Built && host.ShowWorkbook(outcome.WorkbookFile)) {
            QApplication::processEvents();
            return static_cast<double>(clock.nsecsElapsed()) / 1e6;
        }
    } catch (const office::Error& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
    }
    return std::numeric_limits<double>::infinity();
}

double BestPreview(OfficeHost& host, const std::function<ShowOutcome()>& build) {
    double best = Preview(host, build); // starts both processes
    for (int round = 0; round < kRounds; ++round)
        best = std::min(best, Preview(host, build));
    return best;
}

} // namespace

void MeasurePresentations(Report& report) {
    const std::string table = "table wizard, 10,000 values, click to preview, warm";
    const std::string graph = "graph wizard, 500 values, click to preview, warm";
    if (!report.Wants(table) && !report.Wants(graph)) return;
    const QTemporaryDir folder;
    office::SpreadsheetApplication::SetProfileFolder(folder.filePath(QStringLiteral("Office")));
    const int values = SelectFew(40, 5);
    if (values < kValues / 2 || values > kValues * 2) std::fprintf(stderr, "bench: %d values are selected\n", values);
    QWidget form;
    OfficeHost host;
    (new QVBoxLayout(&form))->addWidget(&host);
    form.resize(1040, 680);
    form.show();
    RowsColumns arrangement;
    arrangement.SetDefaultRowsColumns();
    TableOptions options;
    options.addColor = true;
    options.ranges.records = InitColorRanges();
    const auto asTable = [&] { return ShowXLS(arrangement, options); };
    const auto asGraph = [&] { return ShowGraphXLS(arrangement, {}); };
    report.Bound(
        table, [&] { return BestPreview(host, asTable); }, 3000, "ms");
    SelectFew(10, 1);
    arrangement.SetDefaultAxes();
    report.Bound(
        graph, [&] { return BestPreview(host, asGraph); }, 3000, "ms");
    host.CloseHostedExcel(false);
    office::SpreadsheetApplication::QuitAll();
}

} // namespace tessaro::bench
