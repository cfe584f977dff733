#include "OfficeHostTest.h"

#include "controls/FileDialogs.h"

#include <QElapsedTimer>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>

#include <gmock/gmock.h>

namespace tessaro {

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
