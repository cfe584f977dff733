#include "Figures.h"
#include "Play.h"
#include "controls/DataTable.h"
#include "dataview/DataOptionStrip.h"
#include "dataview/FilterCounter.h"
#include "dataview/GridQuery.h"
#include "dataview/frmData.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/DatabaseOpener.h"
#include "shell/StageNavigator.h"
#include "shell/frmMain.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace tessaro::bench {

namespace {

constexpr auto kStart = "--play-start"; // --play-start INSTALLATION MICROSECONDS: says when the first frame is painted
constexpr auto kResident = "--play-resident";     // --play-resident INSTALLATION DATABASE: says how large it is
constexpr auto kStatistics = "--play-statistics"; // --play-statistics INSTALLATION DATABASE: says how long they take
constexpr int kStarts = 4;
constexpr double kImage = 80; ///< megabytes of the column image of 5 million values
constexpr int kClicks = 5;

/// A clock that all processes share.
qint64 Microseconds() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

// ---- What the playing process does. --------------------------------------------------------------------------------

/// Says when the window has been painted for the first time, and ends the program.
class FirstFrame final : public QObject {
  public:
    explicit FirstFrame(qint64 start) : start_(start) {}

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint && !seen_) {
            seen_ = true;
            // Behind the event that is being painted: what it drew is on the screen by then.
            QMetaObject::invokeMethod(
                this, [this] { Say(); }, Qt::QueuedConnection);
        }
        return false;
    }

  private:
    void Say() const {
        std::printf("start %f\n", static_cast<double>(Microseconds() - start_) / 1000);
        std::fflush(stdout);
        std::_Exit(0); // no exit question
    }

    qint64 start_;
    bool seen_ = false;
};

QString CommandLineFor(const QString& installation) {
    // The switch's value ends at the next "/", so the folder is handed over with backslashes.
    return QStringLiteral("tessaro /a") + QString(installation).replace(QLatin1Char('/'), QLatin1Char('\\'));
}

bool Load(frmMain& frame, const QString& installation) {
    SetMessageAnswerer([](const Message& message) { return CodeOfClosing(message.type); });
    return frame.MDIForm_Load(CommandLineFor(installation));
}

int PlayStart(const QString& installation, qint64 start) {
    frmMain frame;
    FirstFrame firstFrame(start);
    frame.installEventFilter(&firstFrame);
    return Load(frame, installation) ? QApplication::exec() : 3;
}

void Wait(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

/// What a user asks of millions of rows, answered from the column image, which is mapped whole then.
void AskMuch(frmData& screen) {
    WaitForColumns();
    screen.ShowThisDataOption(DataOptionStrip::Stats);
    screen.SetFilters({.MostRecentOn = true});
    screen.SetFilters({});
    screen.SortByColumn(ColDatavalue, false);
    FilterCounter counter;
    counter.Start();
    (void)counter.RowsLeft({.MissingDataOn = true});
    (void)counter.RowsLeft({.ValueRangeOn = true, .DataValueFrom = 10, .DataValueTo = 400});
    screen.Leave(); // as before any change of the selection
    ReadMillionAsCrosstab();
}

/// The data view of everything in a database, with its first pages; nullptr when it can't be opened.
frmData* OpenDataView(frmMain& frame, const QString& installation, const QString& database) {
    frame.resize(1280, 800);
    if (!Load(frame, installation)) return nullptr;
    frame.Databases().LoadNewMDB(database);
    if (!Connection) return nullptr;
    SelectEverything();
    SelectionChanged = true;
    frame.GoToDataView();
    auto* screen = qobject_cast<frmData*>(frame.Stages().ActiveScreen());
    return screen == nullptr || screen->grid().ValueRows() == 0 ? nullptr : screen;
}

/// The click on the statistics, to the painted table. The image is there, but nothing that was scanned is kept.
int PlayStatistics(const QString& installation, const QString& database) {
    frmMain frame;
    frmData* const screen = OpenDataView(frame, installation, database);
    if (screen == nullptr) return 5;
    WaitForColumns();
    Wait(500);
    const QString count = QStringLiteral("SELECT AreaNId, Count(*) AS Numbers FROM Data GROUP BY AreaNId, IUSNId");
    double best = kMissed;
    for (int click = 0; click < kClicks; ++click) {
        screen->ShowThisDataOption(DataOptionStrip::View);
        for (const char* other : {" HAVING Count(*) > 1", " HAVING Count(*) > 2"}) // two scans are kept
            (void)Select(count + QLatin1String(other));
        best = std::min(best, Milliseconds([&] {
                            screen->ShowThisDataOption(DataOptionStrip::Stats);
                            screen->repaint();
                        }));
    }
    std::printf("statistics %f\n", best);
    std::fflush(stdout);
    std::_Exit(0);
}

int PlayResident(const QString& installation, const QString& database) {
    frmMain frame;
    frmData* const screen = OpenDataView(frame, installation, database);
    if (screen == nullptr) return 5;
    Wait(2000);
    std::printf("resident %f\n", MemoryMegabytes("VmRSS:"));
    QKeyEvent end(QEvent::KeyPress, Qt::Key_End, Qt::ControlModifier);
    QApplication::sendEvent(screen->findChild<DataTable*>(QStringLiteral("DataGrid")), &end);
    Wait(2000);
    std::printf("rows %d\n", screen->grid().ValueRows());
    std::printf("resident-end %f\n", MemoryMegabytes("VmRSS:"));
    AskMuch(*screen);
    std::printf("resident-asked %f\n", MemoryMegabytes("VmHWM:"));
    std::printf("own-asked %f\n", MemoryMegabytes("RssAnon:"));
    std::printf("mapped-asked %f\n", MemoryMegabytes("RssFile:"));
    std::fflush(stdout);
    std::_Exit(0);
}

} // namespace

void MeasureProgram(Report& report, const QString& self, const QString& database, const QString& installation) {
    const QTemporaryDir home;
    const auto start = [&] {
        double best = kMissed;
        for (int round = 0; round < kStarts; ++round) {
            const QStringList arguments{QLatin1String(kStart), installation, QString::number(Microseconds())};
            const double once = FigureOr(Play(self, arguments, home.path()), "start", kMissed);
            if (round > 0) best = std::min(best, once); // the first one makes the user's folders
        }
        return best;
    };
    report.Bound("start to first painted frame, warm", start, 1000, "ms");
    const auto statistics = [&] {
        const QString sample = installation + QStringLiteral("/Data/Tessaro World.mdb");
        return FigureOr(Play(self, {QLatin1String(kStatistics), installation, sample}, home.path()), "statistics",
                        kMissed);
    };
    report.Bound("sample database: the click on the statistics of everything", statistics, 100, "ms");

    const std::string shown = "resident, first pages of all rows shown";
    const std::string atEnd = "resident, after Ctrl+End";
    const std::string asked = "resident at most, with the image made and asked for everything";
    const std::string own = "of that outside of files, in the end";
    if (!report.Wants(shown) && !report.Wants(atEnd) && !report.Wants(asked) && !report.Wants(own)) return;
    const auto sizes = Play(self, {QLatin1String(kResident), installation, database}, home.path());
    const double image = report.isLarge() ? report.OfAllValues(kImage) : 0; // it is mapped, and small otherwise
    report.Bound(shown, FigureOr(sizes, "resident", kMissed), 300, "MB");
    report.Bound(atEnd, FigureOr(sizes, "resident-end", kMissed), 300 + image, "MB");
    report.Bound(asked, FigureOr(sizes, "resident-asked", kMissed), 300 + image, "MB");
    report.Bound(own, FigureOr(sizes, "own-asked", kMissed), report.isLarge() ? 300 : 200, "MB");
}

bool PlayProgram(int argc, char** argv, int& status) {
    if (argc != 4) return false;
    const QByteArray part = argv[1];
    if (part != kStart && part != kResident && part != kStatistics) return false;
    const QApplication application(argc, argv);
    const QString installation = QString::fromLocal8Bit(argv[2]);
    const QString last = QString::fromLocal8Bit(argv[3]);
    if (part == kStart) status = PlayStart(installation, last.toLongLong());
    if (part == kResident) status = PlayResident(installation, last);
    if (part == kStatistics) status = PlayStatistics(installation, last);
    return true;
}

} // namespace tessaro::bench
