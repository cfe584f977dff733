#include "Figures.h"
#include "dataview/DataExport.h"
#include "dataview/GridQuery.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "session/Session.h"

#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace tessaro::bench {

namespace {

constexpr int kRows = 50000;

/// Rows of lengths as they are in the sample; three in four indicators and every area are global items.
std::vector<GridRow> MakeRows() {
    std::vector<GridRow> rows(kRows);
    for (int n = 0; n < kRows; ++n) {
        GridRow& row = rows[static_cast<std::size_t>(n)];
        row.timePeriod = QString::number(1950 + n % 68);
        row.areaId = QStringLiteral("ASI%1").arg(n / 68 % 200, 3, 10, QLatin1Char('0'));
        row.areaName = QStringLiteral("Area number %1").arg(n / 68 % 200);
        row.indicator = QStringLiteral("Real GDP at constant national prices %1").arg(n % 40);
        row.datavalue = QString::number(n * 1.25);
        row.unit = QStringLiteral("Million US dollars");
        row.subpop = QStringLiteral("Total");
        row.source = QStringLiteral("Penn World Table 9.1");
        row.globalCells = static_cast<quint16>(1U << ColAreaName | (n % 4 != 0 ? 1U << ColIndicator : 0U));
    }
    return rows;
}

bool ConvertByHand(const QString& csv, const QString& folder, const QString& profile) {
    return QProcess::execute(QStringLiteral("soffice"),
                             {QStringLiteral("-env:UserInstallation=file://") + profile, QStringLiteral("--headless"),
                              QStringLiteral("--convert-to"), QStringLiteral("xls"), QStringLiteral("--outdir"), folder,
                              csv}) == 0;
}

} // namespace

void MeasureExport(Report& report) {
    const std::string what = "50,000 rows into a styled workbook (by hand: convert from CSV)";
    if (!report.Wants(what)) return;
    const QTemporaryDir folder;
    const QString txt = folder.filePath(QStringLiteral("DataView.txt"));
    const QString csv = folder.filePath(QStringLiteral("DataView.csv"));
    const QString xls = folder.filePath(QStringLiteral("ours.xls"));
    const QString profile = folder.filePath(QStringLiteral("profile"));
    const std::vector<GridRow> made = MakeRows();
    const ExportRows rows{kRows, [&](int row) { return &made[static_cast<std::size_t>(row)]; }};
    ShowGlobalColor = true;
    office::SpreadsheetApplication::SetProfileFolder(folder.filePath(QStringLiteral("office")));
    // The same rows as the other side reads them; no cell of them holds a comma.
    if (!SaveDataViewTxt(txt, rows) ||
        !ReplaceFile(csv, ReadWholeFile(txt).value_or(QByteArray()).replace('\t', ',')) ||
        !ConvertByHand(csv, folder.path(), profile)) {
        std::fprintf(stderr, "bench: the spreadsheet program can't be run\n");
        std::exit(1);
    }
    report.Compare(
        what, [&] { (void)SaveDataViewXls(xls, rows); }, [&] { (void)ConvertByHand(csv, folder.path(), profile); },
        2.0);
    office::SpreadsheetApplication::QuitAll();
}

} // namespace tessaro::bench
