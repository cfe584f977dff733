#include "Figures.h"
#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace tessaro::bench {

namespace {

constexpr int kRows = 1000;
constexpr int kColumns = 10;
constexpr int kRounds = 4;

void MakeWorkbook(const QString& file) {
    office::Block values(kRows, std::vector<office::Cell>(kColumns));
    for (int row = 0; row < kRows; ++row)
        for (int column = 0; column < kColumns; ++column)
            values[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = row * 1.5 + column;
    office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook();
    book.Sheet(1).Cells(1, 1).SetValues(values);
    book.SaveAs(file);
    book.Close(false);
}

/// From the click to the sheet on the screen.
double Show(OfficeHost& host, const QString& file) {
    QElapsedTimer clock;
    clock.start();
    if (!host.ShowWorkbook(file)) {
        std::fprintf(stderr, "bench: the workbook can't be shown: %s\n", qPrintable(host.ErrorText()));
        return std::numeric_limits<double>::infinity();
    }
    QApplication::processEvents();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

} // namespace

void MeasureHost(Report& report) {
    const auto named = [](const char* how) { return std::string("hosted workbook, click to visible, ") + how; };
    const std::string fresh = named("new profile");
    const std::string warmed = named("warm");
    const std::string cold = named("cold");
    if (!report.Wants(fresh) && !report.Wants(warmed) && !report.Wants(cold)) return;
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("bench.xls"));
    office::SpreadsheetApplication::SetProfileFolder(folder.filePath(QStringLiteral("Office")));
    QWidget form;
    OfficeHost host;
    (new QVBoxLayout(&form))->addWidget(&host);
    form.resize(1040, 680);
    form.show();
    try {
        MakeWorkbook(file);
    } catch (const office::Error& error) {
        std::fprintf(stderr, "bench: no workbook: %s\n", error.what());
    }
    report.Bound(fresh, Show(host, file), 4000, "ms");
    double warm = std::numeric_limits<double>::infinity();
    for (int round = 0; round < kRounds; ++round)
        warm = std::min(warm, Show(host, file));
    report.Bound(warmed, warm, 1000, "ms");
    host.CloseHostedExcel(false);
    office::SpreadsheetApplication::Hosted().Quit();
    report.Bound(cold, Show(host, file), 4000, "ms");
    host.CloseHostedExcel(false);
    office::SpreadsheetApplication::QuitAll();
}

} // namespace tessaro::bench
