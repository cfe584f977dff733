#include "controls/OfficeHost.h"

#include "office/Error.h"
#include "office/SpreadsheetApplication.h"
#include "support/ReadXls.h"
#include "support/TestSession.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gmock/gmock.h>

#include <csignal>
#include <vector>

namespace tessaro {

namespace {

/// A form with a field and a place for the spreadsheet. Where the tests have no X11 display, they are passed over.
class OfficeHostTest : public test::SessionTest {
  protected:
    void SetUp() override {
        test::SessionTest::SetUp();
        StartInstallation();
        if (!OfficeHost::CanHost()) GTEST_SKIP() << "no X11 display";
        office::SpreadsheetApplication::SetProfileFolder(profile_.path());
        auto* column = new QVBoxLayout(&form_);
        column->addWidget(&field_);
        column->addWidget(&host_);
        form_.resize(700, 500);
        form_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form_));
        office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook();
        book.Sheet(1).Cells(1, 1).SetValue(QStringLiteral("shown"));
        book.SaveAs(file_);
        book.Close(false);
    }

    void TearDown() override {
        host_.CloseHostedExcel(false);
        office::SpreadsheetApplication::QuitAll();
        test::SessionTest::TearDown();
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

    QTemporaryDir profile_;
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
    Type(QStringLiteral("field"));
    EXPECT_EQ(field_.text(), QStringLiteral("field"));
    ClickAt(host_.mapToGlobal(host_.rect().center()));
    Type(QStringLiteral("88"));
    Key("Return");
    EXPECT_EQ(field_.text(), QStringLiteral("field"));
    host_.CloseHostedExcel();
    EXPECT_THAT(NumbersOfFile(), testing::Contains(88.0));
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

TEST_F(OfficeHostTest, SurvivesTheDeathOfTheProcess) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    QSignalSpy lost(&host_, &OfficeHost::Lost);
    ::kill(static_cast<pid_t>(office::SpreadsheetApplication::Hosted().ProcessId()), SIGKILL);
    ASSERT_TRUE(lost.wait(3000));
    EXPECT_FALSE(host_.IsOpen());
    EXPECT_FALSE(host_.ErrorText().isEmpty());
    ASSERT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
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
    EXPECT_EQ(pane.Slides().AppendPicture(picture, QStringLiteral("image/x-emf")), 2);
    EXPECT_TRUE(host_.IsOpen());
    pane.CloseHostedExcel(false);
    EXPECT_TRUE(host_.IsOpen());
}

} // namespace tessaro
