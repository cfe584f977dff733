#include "Figures.h"
#include "gallery/frmGALMain.h"
#include "session/Session.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

namespace tessaro::bench {

namespace {

constexpr int kWorkbooks = 2000;

void MakeWorkbooks(const QString& folder) {
    const QStringList kinds{QStringLiteral("Table"), QStringLiteral("Graph"), QStringLiteral("Map")};
    const QByteArray contents(20000, 'x');
    for (int n = 0; n < kWorkbooks; ++n) {
        QFile file(QStringLiteral("%1/%2 - Presentation %3.Xls").arg(folder, kinds.at(n % 3)).arg(n));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            std::fprintf(stderr, "bench: no workbooks can be made\n");
    }
}

/// The screen made, laid out and drawn.
double ShowList() {
    QElapsedTimer clock;
    clock.start();
    frmGALMain form;
    form.resize(1100, 680);
    form.grab();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

} // namespace

void MeasureGallery(Report& report) {
    const std::string what = "gallery folder with 2,000 workbooks, to a filled list";
    if (!report.Wants(what)) return;
    const QTemporaryDir folder;
    MakeWorkbooks(folder.path());
    GalleryCustomFolder = folder.path();
    report.Bound(what, ShowList, 300, "ms");
}

} // namespace tessaro::bench
