#include "controls/OfficeHost.h"

#include "controls/FileDialogs.h"
#include "office/Error.h"
#include "office/ProcessStart.h"
#include "office/Profile.h"
#include "office/SpreadsheetApplication.h"
#include "session/Strings.h"
#include "support/ReadXls.h"
#include "support/TestSession.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

namespace tessaro {

namespace {

using namespace std::chrono_literals;

/// A form with a field and a place for the spreadsheet. Where the tests have no X11 display, they are passed over.
class OfficeHostTest : public test::SessionTest {
  protected:
    void SetUp() override {
        test::SessionTest::SetUp();
        StartInstallation();
        if (!OfficeHost::CanHost()) GTEST_SKIP() << "no X11 display";
        static const QTemporaryDir profile;
        static const bool set = (office::SpreadsheetApplication::SetProfileFolder(profile.path()), true);
        static_cast<void>(set);
        auto* column = new QVBoxLayout(&form_);
        column->addWidget(&field_);
        column->addWidget(&host_);
        form_.resize(700, 500);
        form_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form_));
        MakeFile();
    }
    void MakeFile() {
        office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook();
        book.Sheet(1).Cells(1, 1).SetValue(QStringLiteral("shown"));
        book.SaveAs(file_);
        book.Close(false);
    }

    void TearDown() override {
        host_.CloseHostedExcel(false);
        test::SessionTest::TearDown();
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    /// Sends a signal to the hosted program, if it runs: the number 0 would mean all of us.
    static void Signal(int signal) {
        if (const qint64 process = office::SpreadsheetApplication::Hosted().ProcessId(); process > 0)
            ::kill(static_cast<pid_t>(process), signal);
    }
    /// The keys go to whatever has the keyboard on the display.
    static void Type(const QString& text) {
        QProcess::execute(QStringLiteral("xdotool"),
                          {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text});
        QTest::qWait(200);
    }
    static void Key(const char* key) {
        QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QLatin1String(key)});
        QTest::qWait(200);
    }
    static void ClickAt(const QPoint& place) {
        QProcess::execute(QStringLiteral("xdotool"),
                          {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                           QStringLiteral("click"), QStringLiteral("1")});
        QTest::qWait(300);
    }

    /// What stands below the menus, right of the selected cell.
    [[nodiscard]] QImage TopStrip() const {
        QTest::qWait(500);
        const QRect strip(host_.mapToGlobal(QPoint(300, 24)), QSize(host_.width() - 340, 60));
        const qreal scale = host_.devicePixelRatioF();
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage().copy(
            QRectF(strip.topLeft() * scale, QSizeF(strip.size()) * scale).toRect());
    }
    /// The foot of the place between two distances from its left edge.
    [[nodiscard]] QImage Foot(int from, int to) const {
        QTest::qWait(500);
        const QRect strip(host_.mapToGlobal(QPoint(from, host_.height() - 16)), QSize(to - from, 16));
        const qreal scale = host_.devicePixelRatioF();
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage().copy(
            QRectF(strip.topLeft() * scale, QSizeF(strip.size()) * scale).toRect());
    }
    /// What stands at the foot, right of the sheets' names: nothing.
    [[nodiscard]] QImage BottomStrip() const { return Foot(250, host_.width() - 20); }
    /// The same when it has come to rest: a loaded machine goes on drawing for a while.
    [[nodiscard]] QImage SettledBottomStrip() const {
        QImage strip = BottomStrip();
        const auto rests = [&] {
            const QImage last = std::exchange(strip, BottomStrip());
            return Alike(last, strip);
        };
        EXPECT_TRUE(QTest::qWaitFor(rests, 15000));
        return strip;
    }
    /// Something is written there: a line of pixels has several colours.
    static bool HasTexts(const QImage& image) {
        int different = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 1; x < image.width(); ++x)
                if (image.pixel(x, y) != image.pixel(0, y)) ++different;
        return different > 50;
    }
    /// The same but for single pixels, which a change of size may leave.
    static bool Alike(const QImage& a, const QImage& b) {
        int different = a.size() == b.size() ? 0 : a.width() * a.height();
        for (int y = 0; y < a.height() && different < 20; ++y)
            for (int x = 0; x < a.width(); ++x)
                if (a.pixel(x, y) != b.pixel(x, y)) ++different;
        return different < 20;
    }
    /// Sizes of the windows that are seen directly within a window.
    static std::vector<QSize> Children(WId window) {
        std::vector<QSize> sizes;
        auto* display = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        auto* tree = xcb_query_tree_reply(display, xcb_query_tree(display, static_cast<xcb_window_t>(window)), nullptr);
        for (int child = 0; tree && child < xcb_query_tree_children_length(tree); ++child) {
            const xcb_window_t id = xcb_query_tree_children(tree)[child];
            auto* looks = xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, id), nullptr);
            auto* place = xcb_get_geometry_reply(display, xcb_get_geometry(display, id), nullptr);
            if (looks && place && looks->map_state == XCB_MAP_STATE_VIEWABLE)
                sizes.emplace_back(place->width, place->height);
            std::free(looks);
            std::free(place);
        }
        std::free(tree);
        return sizes;
    }
    /// Windows on the display, those of other programs too.
    static std::size_t TopWindows() {
        auto* display = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        return Children(xcb_setup_roots_iterator(xcb_get_setup(display)).data->root).size();
    }
    /// Size of the foreign window within ours; nothing when there isn't one alone.
    [[nodiscard]] QSize HostedSize() const {
        const auto* place = host_.findChild<QWidget*>();
        const auto sizes = place ? Children(place->winId()) : std::vector<QSize>();
        return sizes.size() == 1 ? sizes.front() : QSize();
    }
    /// Numbers in the first sheet of the file, wherever they stand.
    [[nodiscard]] std::vector<double> NumbersOfFile() const {
        std::vector<double> numbers;
        const auto rows = test::ReadXls(file_).front().rows;
        for (const auto& row : rows) {
            const auto cells = row.toArray();
            for (const auto& cell : cells)
                if (cell.isDouble()) numbers.push_back(cell.toDouble());
        }
        return numbers;
    }

    QTemporaryDir folder_;
    QString file_ = folder_.filePath(QStringLiteral("shown.xls"));
    QWidget form_;
    QLineEdit field_;
    OfficeHost host_;
};

} // namespace

TEST_F(OfficeHostTest, ShowsAWorkbookAndKeepsEdits) {
    ASSERT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
    EXPECT_TRUE(host_.IsOpen());
    host_.xlBook().Sheet(1).Cells(2, 1).SetValue(4.5);
    form_.resize(900, 640);
    QTest::qWait(100);
    host_.CloseHostedExcel();
    EXPECT_FALSE(host_.IsOpen());
    EXPECT_EQ(test::ReadXls(file_).front().At(2, 1).toDouble(), 4.5);

    // Warm: the process is there.
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    EXPECT_LT(timer.elapsed(), 1000);
    host_.xlBook().Sheet(1).Cells(2, 1).SetValue(9.0);
    host_.CloseHostedExcel(false);
    EXPECT_EQ(test::ReadXls(file_).front().At(2, 1).toDouble(), 4.5);
}

TEST_F(OfficeHostTest, PaintsTheSheetEachTime) {
    office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook(3);
    book.Sheet(1).Cells(1, 1, 40, 8).SetValue(QStringLiteral("text"));
    book.Sheet(1).Cells(1, 1, 40, 8).SetStyle({.interiorColorIndex = 35});
    book.Sheet(1).FreezePanes(2, 1);
    book.ActivateSheet(1);
    book.SaveAs(file_);
    book.Close(false);
    for (int time = 0; time < 3; ++time) {
        ASSERT_TRUE(host_.ShowWorkbook(file_));
        const auto shade = [&] {
            const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
            const QPoint corner = host_.mapToGlobal(QPoint(0, 0));
            int found = 0;
            for (int x = 0; x < host_.width(); x += 4)
                for (int y = 0; y < host_.height(); y += 4)
                    if (screen.pixelColor(corner + QPoint(x, y)) == QColor(0xCC, 0xFF, 0xCC)) ++found;
            return found;
        };
        EXPECT_TRUE(QTest::qWaitFor([&] { return shade() > 1000; }, 3000)) << time << ": " << shade();
        host_.CloseHostedExcel(false);
    }
}

TEST_F(OfficeHostTest, GivesTheKeyboardToWhereTheUserClicks) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    QTest::qWait(500);
    ClickAt(host_.mapToGlobal(host_.rect().center()));
    Type(QStringLiteral("77"));
    Key("Return");
    ClickAt(field_.mapToGlobal(field_.rect().center()));
    Type(QStringLiteral("5"));
    Key("Return");
    EXPECT_EQ(field_.text(), QStringLiteral("5"));
    ClickAt(host_.mapToGlobal(host_.rect().center()));
    Type(QStringLiteral("88"));
    Key("Return");
    EXPECT_EQ(field_.text(), QStringLiteral("5"));
    host_.CloseHostedExcel();
    EXPECT_THAT(NumbersOfFile(), testing::UnorderedElementsAre(88.0)) << "in the one cell that was clicked twice";
}

TEST_F(OfficeHostTest, TakesOverWhatIsBeingTyped) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    ClickAt(host_.mapToGlobal(host_.rect().center()));
    Type(QStringLiteral("88"));
    host_.CloseHostedExcel();
    EXPECT_THAT(NumbersOfFile(), testing::Contains(88.0));
}

TEST_F(OfficeHostTest, IsEnteredAndLeftByKey) {
    QLineEdit after;
    form_.layout()->addWidget(&after);
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    ClickAt(field_.mapToGlobal(field_.rect().center()));
    Key("Tab");
    Type(QStringLiteral("55"));
    Key("Return");
    Key("F6");
    Type(QStringLiteral("after"));
    EXPECT_EQ(after.text(), QStringLiteral("after"));
    Key("shift+Tab");
    Type(QStringLiteral("66"));
    Key("Return");
    Key("shift+F6");
    Type(QStringLiteral("before"));
    EXPECT_EQ(field_.text(), QStringLiteral("before"));
    host_.CloseHostedExcel();
    EXPECT_THAT(NumbersOfFile(), testing::IsSupersetOf({55.0, 66.0}));
}

// The display gives keys to what lies under the pointer, the foreign window too, while the form has the focus.
TEST_F(OfficeHostTest, KeysGoToTheFormWhileThePointerRestsOnTheSheet) {
    QPushButton button(QStringLiteral("&Back"));
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
    form_.layout()->addWidget(&button);
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    ClickAt(field_.mapToGlobal(field_.rect().center()));
    const QPoint sheet = host_.mapToGlobal(host_.rect().center());
    QProcess::execute(QStringLiteral("xdotool"),
                      {QStringLiteral("mousemove"), QString::number(sheet.x()), QString::number(sheet.y())});
    QTest::qWait(300);
    Type(QStringLiteral("never clicked"));
    EXPECT_EQ(field_.text(), QStringLiteral("never clicked"));
    ClickAt(sheet);
    Type(QStringLiteral("44"));
    Key("Return");
    Key("shift+F6");
    Key("End"); // what a key comes into is selected
    Type(QStringLiteral(", left"));
    EXPECT_EQ(field_.text(), QStringLiteral("never clicked, left"));
    Key("alt+b");
    Key("Tab");
    button.setFocus();
    Key("space");
    Key("space");
    EXPECT_EQ(clicks, 3);
    ClickAt(sheet + QPoint(0, 80));
    Type(QStringLiteral("46"));
    Key("Return");
    EXPECT_EQ(clicks, 3);
    host_.CloseHostedExcel();
    EXPECT_THAT(NumbersOfFile(), testing::IsSupersetOf({44.0, 46.0}));
}

// The menu gives the keyboard back while the workbook is already being opened.
TEST_F(OfficeHostTest, KeepsTheShortcutsOfAFormWhoseMenuOpensIt) {
    int pressed = 0;
    QMenuBar bar;
    form_.layout()->setMenuBar(&bar);
    QMenu* menu = bar.addMenu(QStringLiteral("&Tools"));
    menu->addAction(QStringLiteral("&Open"), &form_, [this] { host_.ShowWorkbook(file_); });
    const QShortcut shortcut(QKeySequence(QStringLiteral("Ctrl+K")), &form_, [&pressed] { ++pressed; });
    form_.activateWindow();
    field_.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form_));
    Key("ctrl+k");
    ASSERT_EQ(pressed, 1);
    Key("alt+t");
    Key("o");
    ASSERT_TRUE(QTest::qWaitFor([this] { return host_.IsOpen(); }, 20000)) << host_.ErrorText().toStdString();
    QTest::qWait(500);
    Key("ctrl+k");
    EXPECT_EQ(pressed, 2);
    Key("alt+t");
    EXPECT_TRUE(menu->isVisible());
    Key("Escape");
    Key("Escape");
    field_.setFocus();
    Type(QStringLiteral("typed"));
    EXPECT_EQ(field_.text(), QStringLiteral("typed"));
    form_.layout()->setMenuBar(nullptr);
}

// Ctrl+F is known to both: it goes to the one that has the keyboard, and to the other not.
TEST_F(OfficeHostTest, AKeyThatBothKnowHasOneReceiver) {
    int pressed = 0;
    const QShortcut shortcut(QKeySequence::Find, &form_, [&pressed] { ++pressed; });
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    const QImage sheet = SettledBottomStrip();
    const QPoint middle = host_.mapToGlobal(host_.rect().center());
    ClickAt(field_.mapToGlobal(field_.rect().center()));
    Key("ctrl+f");
    EXPECT_EQ(pressed, 1);
    EXPECT_TRUE(Alike(BottomStrip(), sheet)) << "the pointer in the form";
    QProcess::execute(QStringLiteral("xdotool"),
                      {QStringLiteral("mousemove"), QString::number(middle.x()), QString::number(middle.y())});
    Key("ctrl+f");
    EXPECT_EQ(pressed, 2);
    EXPECT_TRUE(Alike(BottomStrip(), sheet)) << "the pointer on the sheet";
    ClickAt(middle);
    Key("ctrl+f");
    EXPECT_EQ(pressed, 2) << "in the sheet";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Alike(BottomStrip(), sheet); }, 3000)) << "in the sheet";
    ClickAt(field_.mapToGlobal(field_.rect().center()));
    Key("ctrl+f");
    EXPECT_EQ(pressed, 3);
}

TEST_F(OfficeHostTest, HasNoStatusBarAfterSaving) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    const QImage before = SettledBottomStrip();
    host_.xlBook().Sheet(1).Cells(1, 1, 20000, 6).SetValue(QStringLiteral("a text"));
    static_cast<void>(host_.xlBook().SheetCount()); // it is written, with a progress bar
    ASSERT_TRUE(host_.Save());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Alike(BottomStrip(), before); }, 5000));
    host_.xlBook().Sheet(1).Cells(1, 1).SetValue(QStringLiteral("changed"));
    EXPECT_TRUE(host_.xlBook().IsModified());
    ClickAt(host_.mapToGlobal(QPoint(200, 150)));
    Key("ctrl+s");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !host_.xlBook().IsModified() && Alike(BottomStrip(), before); }, 5000))
        << "by the program's own command";
}

// The program's status bar tells the page. The user may also leave the preview by the program's own command.
TEST_F(OfficeHostTest, HasAStatusBarWithThePrintPreviewAlone) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    const QImage sheet = SettledBottomStrip();
    for (const bool byKey : {false, true}) {
        ASSERT_TRUE(host_.SetPrintPreview(true));
        EXPECT_TRUE(QTest::qWaitFor([&] { return HasTexts(Foot(0, 180)); }, 5000)) << byKey;
        if (byKey) {
            ClickAt(host_.mapToGlobal(host_.rect().center()));
            Key("ctrl+shift+o");
        } else {
            ASSERT_TRUE(host_.SetPrintPreview(false));
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return Alike(BottomStrip(), sheet); }, 5000)) << byKey;
        EXPECT_FALSE(host_.IsPrintPreview());
    }
}

TEST_F(OfficeHostTest, TellsByItselfOfAProcessThatHangs) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    QSignalSpy lost(&host_, &OfficeHost::Lost);
    Signal(SIGSTOP);
    ASSERT_TRUE(lost.wait(15000)) << "nobody has called meanwhile";
    EXPECT_EQ(host_.ErrorText(), GetText(QStringLiteral("TS_OfficeTimedOut")));
    EXPECT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
    Signal(SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    host_.CloseHostedExcel();
    EXPECT_LT(timer.elapsed(), 12000) << "the user closes a form with it";
}

TEST_F(OfficeHostTest, SurvivesTheDeathOfTheProcess) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    QSignalSpy lost(&host_, &OfficeHost::Lost);
    Signal(SIGKILL);
    ASSERT_TRUE(lost.wait(3000));
    EXPECT_FALSE(host_.IsOpen());
    EXPECT_FALSE(host_.ErrorText().isEmpty());
    ASSERT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
}

TEST_F(OfficeHostTest, GivesUpOnAProcessThatHangs) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    auto& hosted = office::SpreadsheetApplication::Hosted();
    hosted.SetTimeLimit(500ms);
    const auto hung = static_cast<pid_t>(hosted.ProcessId());
    ASSERT_GT(hung, 0);
    Signal(SIGSTOP);
    siginfo_t stopped{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(hung), &stopped, WSTOPPED | WNOWAIT), 0);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(host_.Save());
    host_.CloseHostedExcel();
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_NE(hosted.ProcessId(), hung);
    hosted.SetTimeLimit(30s);
    EXPECT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
}

TEST_F(OfficeHostTest, SurvivesADeathWhileItOpens) {
    auto& hosted = office::SpreadsheetApplication::Hosted();
    for (const int delay : {0, 40, 120, 250}) {
        hosted.Start();
        QTimer::singleShot(delay, &hosted, [] { Signal(SIGKILL); });
        const bool shown = host_.ShowWorkbook(file_);
        EXPECT_EQ(shown, host_.ErrorText().isEmpty());
        QTest::qWait(delay + 50);
    }
    EXPECT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
}

// The user's own program has another profile; it must outlive everything that happens to ours.
TEST_F(OfficeHostTest, LeavesTheUsersOwnProgramAlone) {
    const QTemporaryDir home;
    QProcess own;
    office::SetUp(own, office::PrepareStart(home.path(), true), QStringLiteral("svp"));
    const auto start = [&] {
        own.start(office::ProgramFolder() + QStringLiteral("/soffice.bin"),
                  {QStringLiteral("--headless"), QStringLiteral("--norestore"), QStringLiteral("--nodefault")});
        return own.waitForStarted();
    };
    ASSERT_TRUE(start());
    // A new profile ends its first start by itself.
    const bool again = own.waitForFinished(6000);
    ASSERT_TRUE(!again || start());
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    EXPECT_NE(office::SpreadsheetApplication::Hosted().ProcessId(), own.processId());
    Signal(SIGKILL);
    QTest::qWait(300);
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    host_.CloseHostedExcel();
    office::SpreadsheetApplication::QuitAll();
    EXPECT_FALSE(own.waitForFinished(500)) << "it was ended with ours";
    own.kill();
    own.waitForFinished();
    office::ForgetProcess(home.path()); // a killed program leaves its sockets behind
}

TEST_F(OfficeHostTest, TellsThatTheProgramIsMissing) {
    office::SpreadsheetApplication::Hosted().Quit();
    qputenv("TESSARO_OFFICE", "/nowhere");
    EXPECT_FALSE(host_.ShowWorkbook(file_));
    EXPECT_EQ(host_.ErrorText(), GetText(QStringLiteral("TS_OfficeMissing")));
    qunsetenv("TESSARO_OFFICE");
    EXPECT_TRUE(host_.ShowWorkbook(file_));
}

TEST_F(OfficeHostTest, TakesItsOpenDialogsAway) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    const std::size_t windows = TopWindows();
    for (const char* key : {"ctrl+1", "ctrl+p"}) {
        ASSERT_TRUE(host_.ShowWorkbook(file_));
        ClickAt(host_.mapToGlobal(host_.rect().center()));
        Type(QStringLiteral("55"));
        Key("Return");
        Key(key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return TopWindows() > windows; }, 5000)) << key;
        host_.CloseHostedExcel();
        EXPECT_TRUE(QTest::qWaitFor([&] { return TopWindows() == windows; }, 3000)) << key;
        EXPECT_THAT(NumbersOfFile(), testing::Contains(55.0)) << key;
        MakeFile();
    }
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(OfficeHostTest, HasItsMenusWithAndWithoutBars) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    QTest::qWait(500);
    const std::size_t windows = TopWindows();
    const QPoint besideMenus = host_.mapToGlobal(QPoint(host_.width() - 30, 10)) * host_.devicePixelRatioF();
    EXPECT_EQ(QGuiApplication::primaryScreen()->grabWindow(0).toImage().pixelColor(besideMenus),
              host_.palette().color(QPalette::Window));
    for (const bool bars : {false, true, false}) {
        host_.SetToolBars(bars);
        QTest::qWait(300);
        ClickAt(host_.mapToGlobal(QPoint(14, 10)));
        EXPECT_TRUE(QTest::qWaitFor([&] { return TopWindows() > windows; }, 3000)) << bars;
        Key("Escape");
        Key("Escape");
        EXPECT_EQ(TopWindows(), windows);
    }
}

// Keys of commands that would open another document, close this one, leave our window or end the program.
TEST_F(OfficeHostTest, KnowsNoCommandThatLeadsOut) {
    for (const char* key :
         {"ctrl+n", "ctrl+o", "ctrl+w", "ctrl+q", "ctrl+F4", "ctrl+shift+s", "ctrl+shift+j", "ctrl+shift+m"}) {
        ASSERT_TRUE(host_.ShowWorkbook(file_));
        const std::size_t windows = TopWindows();
        ClickAt(host_.mapToGlobal(host_.rect().center()));
        Key(key);
        QTest::qWait(300);
        EXPECT_TRUE(host_.IsOpen()) << key;
        EXPECT_EQ(TopWindows(), windows) << key;
        Type(QStringLiteral("31"));
        Key("Return");
        host_.CloseHostedExcel();
        EXPECT_THAT(NumbersOfFile(), testing::Contains(31.0)) << key;
        host_.CloseHostedExcel();
        MakeFile();
    }
}

TEST_F(OfficeHostTest, FollowsItsSizeAndShowsTheSheetAlone) {
    const QImage empty = TopStrip();
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Alike(TopStrip(), empty); }, 3000)) << "nothing is seen of the sheet";
    for (const QSize& size : {QSize(900, 640), QSize(420, 300), QSize(1100, 700)}) {
        form_.resize(size);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return HostedSize() == (QSizeF(host_.size()) * host_.devicePixelRatioF()).toSize(); }, 3000))
            << size.width() << ": " << HostedSize().width();
    }
    // Bars take the sheet's top away and give it back, also when the profile remembers them.
    const QImage plain = TopStrip();
    host_.SetToolBars(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Alike(TopStrip(), plain); }, 3000));
    host_.CloseHostedExcel();
    host_.SetToolBars(false);
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Alike(TopStrip(), plain); }, 3000));
    ASSERT_TRUE(host_.SetPrintPreview(true));
    EXPECT_TRUE(QTest::qWaitFor([&] { return host_.IsOpen() && host_.IsPrintPreview(); }, 3000));
    ASSERT_TRUE(host_.SetPrintPreview(false));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !host_.IsPrintPreview(); }, 3000));
    const QRect heads(0, 0, plain.width(), 12);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Alike(TopStrip().copy(heads), plain.copy(heads)); }, 3000))
        << "bars have come with the sheet";
    host_.xlBook().Sheet(1).Cells(3, 1).SetValue(12.0);
    host_.CloseHostedExcel();
    EXPECT_THAT(NumbersOfFile(), testing::Contains(12.0));
}

TEST_F(OfficeHostTest, ASecondPlaceClosesTheFirst) {
    OfficeHost other;
    form_.layout()->addWidget(&other);
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    host_.xlBook().Sheet(1).Cells(2, 1).SetValue(21.0);
    ASSERT_TRUE(other.ShowWorkbook(file_));
    EXPECT_FALSE(host_.IsOpen());
    EXPECT_TRUE(other.IsOpen());
    EXPECT_EQ(other.xlBook().Sheet(1).Cells(2, 1).Value(), office::Cell(21.0));
    other.CloseHostedExcel(false);
}

TEST_F(OfficeHostTest, AnotherNameKeepsEditsThatCanNotBeSaved) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    host_.xlBook().Sheet(1).Cells(2, 1).SetValue(4.5);
    // A folder stands where the file was.
    ASSERT_TRUE(QFile::remove(file_));
    ASSERT_TRUE(QDir().mkpath(file_));
    const QString other = folder_.filePath(QStringLiteral("other.xls"));
    QStringList asked{other, file_}; // the second name is as bad as the first
    SetFileAnswerer([&](const FileQuestion&) { return asked.isEmpty() ? QString() : asked.takeLast(); });
    host_.CloseHostedExcel();
    SetFileAnswerer({});
    EXPECT_TRUE(asked.isEmpty());
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(test::ReadXls(other).front().At(2, 1).toDouble(), 4.5);
}

TEST_F(OfficeHostTest, TellsWhatItCanNotShow) {
    EXPECT_FALSE(host_.ShowWorkbook(folder_.filePath(QStringLiteral("none.xls"))));
    EXPECT_FALSE(host_.ErrorText().isEmpty());
    QFile junk(folder_.filePath(QStringLiteral("junk.xls")));
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write("not a workbook");
    junk.close();
    EXPECT_FALSE(host_.ShowWorkbook(junk.fileName()));
    EXPECT_TRUE(host_.ShowWorkbook(file_));
}

TEST_F(OfficeHostTest, ShowsSlidesBesideAWorkbook) {
    OfficeHost pane;
    form_.layout()->addWidget(&pane);
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    ASSERT_TRUE(pane.ShowSlides({})) << pane.ErrorText().toStdString();
    const QByteArray picture = host_.xlBook().Sheet(1).Cells(1, 1).AsPicture(QStringLiteral("image/x-emf"));
    EXPECT_EQ(pane.Slides().AppendPictures({picture}), 2);
    EXPECT_TRUE(host_.IsOpen());
    // The keyboard goes from the one to the other and back.
    const QPoint sheet = host_.mapToGlobal(host_.rect().center());
    for (const char* number : {"31", "32"}) {
        ClickAt(pane.mapToGlobal(pane.rect().center()));
        ClickAt(sheet);
        Type(QLatin1String(number));
        Key("Return");
    }
    ClickAt(field_.mapToGlobal(field_.rect().center()));
    Type(QStringLiteral("7"));
    EXPECT_EQ(field_.text(), QStringLiteral("7"));
    pane.CloseHostedExcel(false);
    EXPECT_TRUE(host_.IsOpen());
    Type(QStringLiteral("8"));
    Key("Return");
    EXPECT_EQ(field_.text(), QStringLiteral("78"));
    host_.CloseHostedExcel();
    EXPECT_THAT(NumbersOfFile(), testing::ElementsAre(32.0));
}

} // namespace tessaro
