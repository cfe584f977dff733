#include "Tour.h"
#include "controls/OfficeHost.h"
#include "dataview/StatisticsModel.h"
#include "dataview/frmData.h"
#include "dataview/frmDataFilters.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace tessaro {

namespace {

constexpr int kDialogLimit = 30000; ///< milliseconds

} // namespace

bool Tour::WithDialog(const QString& entry, const QString& dialog, const QString& picture, bool screen,
                      const std::function<bool(QWidget&)>& ready, const std::function<void(QWidget&)>& inspect) {
    auto* action = frame_.findChild<QAction*>(entry);
    if (!action || !action->isEnabled()) return false;
    bool seen = false;
    QElapsedTimer clock;
    clock.start();
    QTimer look;
    look.setInterval(50);
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        QWidget* shown = QApplication::activeModalWidget();
        if (!shown || shown->objectName() != dialog) {
            if (clock.elapsed() > kDialogLimit) look.stop();
            return;
        }
        if (!seen && !ready(*shown) && clock.elapsed() < kDialogLimit) return;
        look.stop();
        seen = ready(*shown);
        QTest::qWait(screen ? 1500 : 100);
        const QPixmap image = screen ? QGuiApplication::primaryScreen()->grabWindow(0) : shown->grab();
        if (!picture.isEmpty()) image.save(folder_.filePath(picture + QLatin1String(".png")));
        inspect(*shown);
        if (auto* box = qobject_cast<QDialog*>(shown)) box->reject();
    });
    look.start();
    action->trigger();
    return seen;
}

bool Tour::KeepWorkbook(const QString& entry, const QString& name, const QString& picture) {
    bool kept = false;
    const bool seen = WithDialog(
        entry, QStringLiteral("frmPrint"), picture, true,
        [](QWidget& dialog) { return dialog.findChild<OfficeHost*>()->IsOpen(); },
        [&](QWidget& dialog) {
            const QString file = dialog.findChild<OfficeHost*>()->xlBook().FileName();
            QFile::remove(folder_.filePath(name));
            kept = QFile::copy(file, folder_.filePath(name));
        });
    return seen && kept;
}

Tour::Finding Tour::Statistics() {
    auto* screen = qobject_cast<frmData*>(Find(QStringLiteral("frmData")));
    if (!screen || !Click(QStringLiteral("DATA_STATS"))) return {false, QStringLiteral("no statistics")};
    auto* grid = screen->findChild<QTableView*>(QStringLiteral("DataStats"));
    const int indicators = grid->model()->rowCount();
    // One indicator opened down to its subpopulations.
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(0, 0)).center());
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(1, 1)).center());
    const QString count = grid->model()->index(0, 4).data().toString();
    return {indicators > 0 && grid->model()->rowCount() > indicators && !count.isEmpty(),
            QStringLiteral("%1 indicators, the first with %2 values").arg(indicators).arg(count)};
}

Tour::Finding Tour::Filters() {
    auto* screen = qobject_cast<frmData*>(Find(QStringLiteral("frmData")));
    if (!screen || !Click(QStringLiteral("DATA_VIEW"))) return {false, QStringLiteral("no data view")};
    QTimer look;
    look.setInterval(100);
    QString stay;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        auto* dialog = qobject_cast<frmDataFilters*>(QApplication::activeModalWidget());
        if (!dialog) return;
        auto* recent = dialog->findChild<QCheckBox*>(QStringLiteral("chkMostRecent"));
        if (!recent->isChecked()) return recent->click();
        const auto* label = dialog->findChild<QWidget*>(QStringLiteral("lblRowsStay"));
        stay = label->property("text").toString();
        if (stay.isEmpty()) return;
        look.stop();
        QTest::qWait(100);
        QGuiApplication::primaryScreen()->grabWindow(0).save(folder_.filePath(QStringLiteral("filters.png")));
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    look.start();
    if (!Click(QStringLiteral("cmdFilters"))) return {false, QStringLiteral("no filters")};
    const bool shown = WaitUntil([&] { return screen->grid().ValueRows() > 0; });
    const bool on = screen->Filters().MostRecentOn;
    // Back to all rows for the stations to come.
    Click(QStringLiteral("chkFilters"));
    const bool back = WaitUntil([&] { return screen->grid().ValueRows() > 0 && !screen->Filters().AnyOn(); });
    return {shown && on && back, stay};
}

Tour::Finding Tour::Exports() {
    auto* screen = qobject_cast<frmData*>(Find(QStringLiteral("frmData")));
    if (!screen) return {false, QStringLiteral("no data view")};
    QStringList sizes;
    bool good = true;
    for (const char* name : {"DataView.htm", "DataView.txt", "DataView.xls"}) {
        const QString file = folder_.filePath(QLatin1String(name));
        good = screen->SaveDataView(file) && good;
        sizes << QStringLiteral("%1 %2 bytes").arg(QLatin1String(name)).arg(QFileInfo(file).size());
        good = good && QFileInfo(file).size() > 1000;
    }
    return {good, QStringLiteral("%1 rows: ").arg(screen->grid().ValueRows()) + sizes.join(QStringLiteral(", "))};
}

Tour::Finding Tour::SelectionSheet() {
    Click(QStringLiteral("picBannerButtons_0"));
    const bool kept = KeepWorkbook(QStringLiteral("mnuFilePrint"), QStringLiteral("selection.xls"), {});
    Click(QStringLiteral("picBannerButtons_3"));
    return {kept && CurrentStage == 3, QStringLiteral("the selected indicators as a workbook")};
}

Tour::Finding Tour::SummaryReport() {
    QElapsedTimer clock;
    clock.start();
    const bool kept =
        KeepWorkbook(QStringLiteral("mnuDBSummReport"), QStringLiteral("summary.xls"), QStringLiteral("summary"));
    return {kept, QStringLiteral("sixteen sheets in %1 ms").arg(clock.elapsed())};
}

Tour::Finding Tour::Properties() {
    const bool seen = WithDialog(
        QStringLiteral("mnuFilemnu_Properties"), QStringLiteral("frmProperties"), QStringLiteral("properties"), false,
        [](QWidget& dialog) { return dialog.isVisible(); }, [](QWidget&) {});
    return {seen, QStringLiteral("opened and left")};
}

Tour::Finding Tour::Favourites() {
    const auto fill = [](QWidget& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("txtFavoriteAddress"));
        if (name->text().isEmpty()) QTest::keyClicks(name, QStringLiteral("Tour"));
        return dialog.isVisible();
    };
    const bool seen =
        WithDialog(QStringLiteral("mnumnu_Favoritesmnu_AddFavorites"), QStringLiteral("frmFavourites"),
                   QStringLiteral("favourites"), false, fill, [](QWidget& dialog) {
                       QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
                   });
    const bool made = FileExists(JoinPath({FavoritesFolder, QStringLiteral("Tour.mdb")}));
    const bool listed = frame_.findChild<QAction*>(QStringLiteral("mnuCustomFavorites_1")) != nullptr;
    return {seen && made && listed, QStringLiteral("what is in view kept as a database of its own")};
}

} // namespace tessaro
