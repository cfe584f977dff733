#include "Tour.h"

#include "Rows.h"
#include "controls/KeyedList.h"
#include "controls/KeyedTree.h"
#include "controls/OfficeHost.h"
#include "controls/StageScreen.h"
#include "dataview/frmData.h"
#include "gallery/GalleryFolder.h"
#include "layers/MapCanvas.h"
#include "platform/SingleInstance.h"
#include "session/Addresses.h"
#include "session/MessageAnswer.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/StageBanner.h"
#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QImage>
#include <QListWidget>
#include <QScreen>
#include <QSet>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTextStream>
#include <QTimer>

namespace tessaro {

namespace {

QString Counted(qint64 number, const char* what) {
    return QStringLiteral("%1 %2").arg(number).arg(QLatin1String(what));
}

QRect InPixels(const QWidget& widget) {
    const qreal scale = widget.devicePixelRatioF();
    return QRectF(widget.mapToGlobal(QPoint(0, 0)) * scale, QSizeF(widget.size()) * scale).toRect();
}

/// A sheet is seen there: its heads and cells at the top and left, where a hint in the middle doesn't reach.
bool IsDrawnOn(const QImage& screen, const QRect& place) {
    QSet<QRgb> colours;
    const QRect seen = QRect(place.topLeft(), QSize(place.width() / 4, place.height() / 4)) & screen.rect();
    for (int y = seen.top(); y < seen.bottom(); ++y)
        for (int x = seen.left(); x < seen.right(); ++x)
            colours.insert(screen.pixel(x, y));
    return colours.size() > 8;
}

/// Presses OK in the question of an automatic selection as soon as it is on the screen.
void SayOkTo(const QString& dialogName) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, dialogName] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog || dialog->objectName() != dialogName) return;
        timer->stop();
        timer->deleteLater();
        if (auto* ok = dialog->findChild<QAbstractButton*>(QStringLiteral("cmdOK"))) ok->click();
    });
    QTimer::singleShot(15000, timer, [timer] { timer->deleteLater(); });
    timer->start(20);
}

} // namespace

void AgreeToQuestions() {
    SetMessageAnswerer([](const Message& message) {
        QTextStream(stdout) << "message " << message.key << ": " << message.text << '\n';
        const bool question = message.type == MessageType::YesNo || message.type == MessageType::YesNoCancel;
        return question ? MessageCode::Yes : CodeOfClosing(message.type);
    });
}

Tour::Tour(frmMain& frame, QDir folder, QString language)
    : frame_(frame), folder_(std::move(folder)), language_(std::move(language)) {}

bool Tour::Walk(const QString& commandLine) {
    Visit(QStringLiteral("home"), [&] { return Home(commandLine); });
    if (good_) {
        Visit(QStringLiteral("indicators"), [this] { return Indicators(); });
        Visit(QStringLiteral("time"), [this] { return Time(); });
        Visit(QStringLiteral("area-map"), [this] { return AreaMap(); });
        Visit(QStringLiteral("areas"), [this] { return Areas(); });
        Visit(QStringLiteral("data"), [this] { return Data(); });
        Visit(QStringLiteral("sorted"), [this] { return Sorted(); });
        Visit(QStringLiteral("statistics"), [this] { return Statistics(); });
        Visit(
            QStringLiteral("filters"), [this] { return Filters(); }, false);
        Visit(
            QStringLiteral("exports"), [this] { return Exports(); }, false);
        Visit(
            QStringLiteral("classes"), [this] { return Classes(); }, false);
        for (int row = 0; row < 6; ++row)
            Visit(
                QStringLiteral("calculation-%1").arg(row + 1), [this, row] { return Calculation(row); }, false);
        Visit(
            QStringLiteral("table"), [this] { return Table(); }, false);
        Visit(
            QStringLiteral("graph"), [this] { return Graph(); }, false);
        for (const MapWalk& walk :
             {MapWalk{"map-world", "-LIFE_EXPECTANCY", 0, false}, MapWalk{"map-counties", "UNEMPLOYMENT", 2, false},
              MapWalk{"map-points", "-POP", 1, true}})
            Visit(
                QLatin1String(walk.name), [this, walk] { return Map(walk); }, false);
        Visit(
            QStringLiteral("host"), [this] { return Host(); }, false);
        Visit(
            QStringLiteral("selection-sheet"), [this] { return SelectionSheet(); }, false);
        Visit(
            QStringLiteral("summary-report"), [this] { return SummaryReport(); }, false);
        Visit(
            QStringLiteral("properties"), [this] { return Properties(); }, false);
        Visit(
            QStringLiteral("favourites"), [this] { return Favourites(); }, false);
        Visit(
            QStringLiteral("gallery"), [this] { return Gallery(); }, false);
        Visit(
            QStringLiteral("slides"), [this] { return Slides(); }, false);
        Visit(
            QStringLiteral("back-and-forward"), [this] { return BackAndForward(); }, false);
        Visit(QStringLiteral("right-to-left"), [this] { return RightToLeft(); });
        Visit(
            QStringLiteral("map-arabic"),
            [this] {
                return Map({"map-arabic", "-LIFE_EXPECTANCY", 0, false});
            },
            false);
        Visit(QStringLiteral("import"), [this] { return Import(); });
        Visit(
            QStringLiteral("exit"), [this] { return Closing(); }, false);
    }
    return WriteSummary() && good_;
}

void Tour::Visit(const QString& name, const std::function<Finding()>& station, bool picture) {
    QElapsedTimer time;
    time.start();
    const Finding finding = station();
    const qint64 took = time.elapsed();
    if (picture) TakePicture(name);
    good_ = good_ && finding.good;
    summary_ << QStringLiteral("%1: %2: %3 (%4 ms)")
                    .arg(name, finding.good ? QStringLiteral("ok") : QStringLiteral("FAILED"), finding.text)
                    .arg(took);
}

void Tour::TakePicture(const QString& name) const {
    QTest::qWait(150);
    frame_.grab().save(folder_.filePath(name + QLatin1String(".png")));
}

void Tour::TakeScreenPicture(const QString& name) const {
    QGuiApplication::primaryScreen()->grabWindow(0).save(folder_.filePath(name + QLatin1String(".png")));
}

bool Tour::WriteSummary() const {
    QFile file(folder_.filePath(QStringLiteral("summary.txt")));
    const QByteArray text = (summary_.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
    QTextStream(stdout) << text;
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

QWidget* Tour::Find(const QString& name) const {
    return frame_.findChild<QWidget*>(name);
}

bool Tour::Click(const QString& name) const {
    QWidget* control = Find(name);
    if (!control || !control->isEnabled() || !control->isVisible()) return false;
    QTest::mouseClick(control, Qt::LeftButton);
    return true;
}

bool Tour::ClickAutoSelect(const QString& screen, const QString& button) const {
    QWidget* form = Find(screen);
    auto* control = form ? form->findChild<QWidget*>(button) : nullptr;
    if (!control || !control->isEnabled()) return false;
    if (ShowAutoSelectForm) SayOkTo(QStringLiteral("frmAutoSelect"));
    QTest::mouseClick(control, Qt::LeftButton);
    return true;
}

bool Tour::WaitUntil(const std::function<bool()>& condition, int milliseconds) {
    return QTest::qWaitFor(condition, milliseconds);
}

qint64 Tour::RowsOf(const char* table) {
    const Records rows = Select(QStringLiteral("SELECT Count(*) AS N FROM ") + QLatin1String(table));
    return rows.atEnd() ? 0 : rows.Number(std::size_t{0});
}

Tour::Finding Tour::Home(const QString& commandLine) {
    QElapsedTimer start;
    start.start();
    frame_.resize(1280, 800);
    if (!frame_.MDIForm_Load(commandLine)) return {false, QStringLiteral("the program did not start")};
    const qint64 started = start.elapsed();
    // What is saved to the gallery stays with the tour.
    folder_.mkpath(QStringLiteral("Gallery"));
    SetGalleryFolder(folder_.absoluteFilePath(QStringLiteral("Gallery")));
    const auto* databases = frame_.findChild<QListWidget*>(QStringLiteral("lstDatabases"));
    if (!databases) return {false, QStringLiteral("no home page")};
    const bool open = WaitUntil([] { return Connection && DatabaseOpen && LanguageInDatabase; });
    if (!ChooseLanguage()) return {false, QStringLiteral("no language %1").arg(language_)};
    const bool listed = databases->count() > 0;
    return {open && listed && CurrentStage == -1,
            QStringLiteral("%1, %2 open, started in %3 ms")
                .arg(Counted(databases->count(), "databases listed"), ShownAddress(CurrentDatabase))
                .arg(started)};
}

bool Tour::ChooseLanguage() const {
    if (language_.isEmpty()) return true;
    const QString name = QStringLiteral("mnuLanguage_%1 [").arg(language_);
    for (QAction* entry : frame_.findChildren<QAction*>())
        if (entry->objectName().startsWith(name)) {
            entry->trigger();
            return WaitUntil([] { return Connection && DatabaseOpen && LanguageInDatabase; });
        }
    return false;
}

bool Tour::ChooseIndicators(int wanted) const {
    QWidget* form = Find(QStringLiteral("frmIndicators"));
    auto* available = form ? form->findChild<KeyedList*>(QStringLiteral("lstAvailable")) : nullptr;
    if (!available || !WaitUntil([&] { return available->model()->rowCount() > 0; })) return false;
    std::vector<int> rows = RowsByKey(available->Items());
    rows.resize(std::min(rows.size(), static_cast<std::size_t>(wanted)));
    SelectRows(*available, rows);
    auto* add = form->findChild<QWidget*>(QStringLiteral("cmdAdd"));
    if (!add || !add->isEnabled()) return false;
    QTest::mouseClick(add, Qt::LeftButton);
    return true;
}

Tour::Finding Tour::Indicators() {
    if (!Click(QStringLiteral("picIndicators_0"))) return {false, QStringLiteral("no way in from the home page")};
    if (!WaitUntil([this] { return CurrentStage == 0 && Find(QStringLiteral("frmIndicators")); }))
        return {false, QStringLiteral("the screen did not come")};
    if (!ChooseIndicators(12)) return {false, QStringLiteral("nothing could be added")};
    const QWidget* form = Find(QStringLiteral("frmIndicators"));
    const auto* available = form->findChild<KeyedList*>(QStringLiteral("lstAvailable"));
    const auto* selected = form->findChild<KeyedList*>(QStringLiteral("lstSelected"));
    const qint64 chosen = selected->Items().Count();
    const qint64 stored = RowsOf("_SelIUSNId");
    return {chosen == 12 && stored >= chosen,
            QStringLiteral("%1, %2, %3")
                .arg(Counted(available->Items().Count(), "available"), Counted(chosen, "added"),
                     Counted(stored, "rows in _SelIUSNId"))};
}

Tour::Finding Tour::Time() {
    if (!Click(QStringLiteral("picBannerButtons_1"))) return {false, QStringLiteral("no banner button")};
    if (!WaitUntil([this] { return CurrentStage == 1 && Find(QStringLiteral("frmTime")); }))
        return {false, QStringLiteral("the screen did not come")};
    if (!ClickAutoSelect(QStringLiteral("frmTime"), QStringLiteral("cmdAllFilter")))
        return {false, QStringLiteral("no automatic selection")};
    const auto* selected = Find(QStringLiteral("frmTime"))->findChild<KeyedList*>(QStringLiteral("lstSelected"));
    const bool found = WaitUntil([&] { return selected->Items().Count() > 0; });
    const qint64 stored = RowsOf("_SelTimePeriod");
    return {found && stored == selected->Items().Count(), Counted(stored, "periods selected automatically")};
}

Tour::Finding Tour::AreaMap() {
    if (!Click(QStringLiteral("picBannerButtons_2"))) return {false, QStringLiteral("no banner button")};
    if (!WaitUntil([this] { return CurrentStage == 2 && Find(QStringLiteral("frmAreas")); }))
        return {false, QStringLiteral("the screen did not come")};
    auto* tree = frame_.findChild<KeyedTree*>(QStringLiteral("TV_Areas"));
    auto* options = frame_.findChild<QTabBar*>(QStringLiteral("lblAreaOptions"));
    auto* map = frame_.findChild<MapCanvas*>(QStringLiteral("AreaMap"));
    if (!tree || !options || !map) return {false, QStringLiteral("no map is offered")};
    QTest::mouseClick(options, Qt::LeftButton, {}, options->tabRect(options->count() - 1).center());
    for (const char* const key : {"AAME", "AAMEUSA"}) {
        const QModelIndex node = tree->Nodes().IndexOfKey(QLatin1String(key));
        tree->expand(node);
        tree->scrollTo(node);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(node).center());
    }
    if (!WaitUntil([&] { return map->isVisible() && map->Layers().Count() == 1; }))
        return {false, QStringLiteral("the map did not come")};
    const std::size_t shown = map->Layers().At(0).data.features.size();
    QTest::mouseClick(map, Qt::LeftButton, {}, map->FromMapPoint({-105.5, 39}).toPoint());
    const auto* selected = frame_.findChild<KeyedList*>(QStringLiteral("lstSelected1"));
    const QStringList area = selected->Items().Count() == 1 ? selected->Items().ItemAt(0).cells : QStringList();
    const QString name = area.value(0);
    return {shown == 56 && area.contains(QLatin1String("AMEUSA008")) && RowsOf("_SelArea") == 1,
            QStringLiteral("%1, a click chose %2").arg(Counted(static_cast<qint64>(shown), "states on the map"), name)};
}

Tour::Finding Tour::Areas() {
    auto* options = frame_.findChild<QTabBar*>(QStringLiteral("lblAreaOptions"));
    if (!options) return {false, QStringLiteral("the screen did not come")};
    options->setCurrentIndex(0);
    if (!ClickAutoSelect(QStringLiteral("frmAreas"), QStringLiteral("cmdAllFilter")))
        return {false, QStringLiteral("no automatic selection")};
    const auto* selected = Find(QStringLiteral("frmAreas"))->findChild<KeyedList*>(QStringLiteral("lstSelected1"));
    const bool found = WaitUntil([&] { return selected->Items().Count() > 0; });
    const qint64 stored = RowsOf("_SelArea");
    return {found && stored == selected->Items().Count(), Counted(stored, "areas selected automatically")};
}

Tour::Finding Tour::Data() {
    QElapsedTimer time;
    time.start();
    if (!Click(QStringLiteral("picBannerButtons_3"))) return {false, QStringLiteral("no banner button")};
    auto* screen = qobject_cast<frmData*>(Find(QStringLiteral("frmData")));
    if (!screen) return {false, QStringLiteral("the screen did not come")};
    const bool first = WaitUntil([&] { return screen->grid().ValueRows() > 0; });
    const qint64 firstPage = time.elapsed();
    auto* grid = screen->findChild<QTableView*>(QStringLiteral("DataGrid"));
    QTest::keyClick(grid, Qt::Key_End, Qt::ControlModifier);
    const bool counted = WaitUntil([&] { return screen->paging().TotalKnown() || screen->paging().PagingComplete(); });
    QTest::keyClick(grid, Qt::Key_Home, Qt::ControlModifier);
    const QString cell = grid->model()->index(0, 3).data().toString();
    return {first && counted && screen->paging().TotalRows() > 0 && !cell.isEmpty(),
            QStringLiteral("%1, first page after %2 ms, first row of %3")
                .arg(Counted(screen->paging().TotalRows(), "rows"))
                .arg(firstPage)
                .arg(cell)};
}

Tour::Finding Tour::Sorted() {
    auto* grid = frame_.findChild<QTableView*>(QStringLiteral("DataGrid"));
    if (!grid) return {false, QStringLiteral("no grid")};
    QHeaderView* head = grid->horizontalHeader();
    const int column = 4; // the values
    const QPoint place(head->sectionViewportPosition(column) + head->sectionSize(column) / 2, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, place);
    const bool sorted =
        WaitUntil([&] { return head->sortIndicatorSection() == column && grid->model()->rowCount() > 2; });
    const QString least = grid->model()->index(0, column).data().toString();
    return {sorted && !least.isEmpty(), QStringLiteral("by value, the least is %1").arg(least)};
}

Tour::Finding Tour::Host() {
    auto* print = frame_.findChild<QAction*>(QStringLiteral("mnuFilePrint"));
    if (!print || !print->isEnabled()) return {false, QStringLiteral("printing is not offered")};
    Finding found{false, QStringLiteral("the form did not come")};
    QElapsedTimer limit;
    limit.start();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget* form = QApplication::activeModalWidget();
        auto* host = form ? form->findChild<OfficeHost*>(QStringLiteral("fraExcel")) : nullptr;
        const bool failed = host && !host->ErrorText().isEmpty();
        if (!host || (!host->IsOpen() && !failed && limit.elapsed() < 60000)) return;
        watch.stop();
        // The sheet draws itself, in a process of its own.
        const bool shown = !failed && WaitUntil([&] {
            return IsDrawnOn(QGuiApplication::primaryScreen()->grabWindow(0).toImage(), InPixels(*host));
        });
        QTest::qWait(300);
        TakeScreenPicture(QStringLiteral("host"));
        found = {shown, shown    ? QStringLiteral("the workbook stands in the window")
                        : failed ? host->ErrorText()
                                 : QStringLiteral("nothing is seen of the workbook")};
        form->close();
    });
    watch.start(50);
    print->trigger();
    return found;
}

Tour::Finding Tour::BackAndForward() {
    const auto stageAfter = [this](const QString& button) {
        Click(button);
        return CurrentStage;
    };
    const int back = stageAfter(QStringLiteral("Toolbar1_0"));
    const int further = stageAfter(QStringLiteral("Toolbar1_0"));
    const int forward = stageAfter(QStringLiteral("Toolbar1_1"));
    return {back == 2 && further == 1 && forward == 2,
            QStringLiteral("stages %1, %2, %3").arg(back).arg(further).arg(forward)};
}

Tour::Finding Tour::RightToLeft() {
    auto* language = frame_.findChild<QAction*>(QStringLiteral("mnuLanguage_Arabic [ar]"));
    if (!language) return {false, QStringLiteral("no Arabic language file")};
    const int stage = CurrentStage;
    const qint64 areas = RowsOf("_SelArea");
    language->trigger();
    if (!WaitUntil([&] { return CurrentStage == stage && RowsOf("_SelArea") == areas; }))
        return {false, QStringLiteral("the stage and what was selected did not stay")};
    const bool chosen = Click(QStringLiteral("picBannerButtons_3"));
    auto* screen = qobject_cast<frmData*>(Find(QStringLiteral("frmData")));
    if (!chosen || !screen) return {false, QStringLiteral("the way to the data failed")};
    const bool rows = WaitUntil([&] { return screen->grid().ValueRows() > 0; });
    const auto* grid = screen->findChild<QTableView*>(QStringLiteral("DataGrid"));
    const bool mirrored = grid->layoutDirection() == Qt::RightToLeft && screen->layoutDirection() == Qt::RightToLeft;
    const QString head = grid->model()->headerData(2, Qt::Horizontal).toString();
    const bool arabic = !head.isEmpty() && head.at(0).script() == QChar::Script_Arabic;
    return {rows && mirrored && arabic, QStringLiteral("%1, grid from right to left, heads in Arabic")
                                            .arg(Counted(screen->grid().ValueRows(), "rows"))};
}

Tour::Finding Tour::Closing() {
    const bool closed = frame_.close();
    return {closed && !Connection, QStringLiteral("closed, preferences saved")};
}

} // namespace tessaro
