#include "TestPlaces.h"
#include "controls/OfficeHost.h"
#include "gallery/PresentationList.h"
#include "gallery/PresentationPicture.h"
#include "gallery/TableSlides.h"
#include "gallery/frmGALMain.h"
#include "gallery/frmGalPPT.h"
#include "office/SpreadsheetApplication.h"
#include "support/BombFiles.h"
#include "support/GallerySession.h"
#include "support/ReadXls.h"
#include "support/TimeBound.h"

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <csignal>

namespace tessaro {

namespace {

/// What the independent reader finds in a slides file; a failure of the test when it refuses.
QJsonObject ReadPpt(const QString& file) {
    QProcess reader;
    reader.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral(TESSARO_TESTS "/support/read_ppt.py"), file});
    const bool read = reader.waitForFinished(60000) && reader.exitCode() == 0;
    EXPECT_TRUE(read) << reader.readAllStandardError().toStdString();
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

QJsonArray SlidesOf(const QString& file) {
    return ReadPpt(file).value(QLatin1String("slides")).toArray();
}

QByteArray Square() {
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// The colour at a place of a picture, told in parts of its width and height.
QColor ColourAt(const QImage& picture, double x, double y) {
    return picture.pixelColor(static_cast<int>(picture.width() * x), static_cast<int>(picture.height() * y));
}

/// The gallery on a display, with real workbooks of all three kinds. Where the tests have none, they are passed over.
class GalleryOnX11Test : public test::GallerySession {
  protected:
    void SetUp() override {
        test::GallerySession::SetUp();
        if (!OfficeHost::CanHost()) GTEST_SKIP() << "no X11 display";
        static const QTemporaryDir profile;
        static const bool set = (office::SpreadsheetApplication::SetProfileFolder(profile.path()), true);
        static_cast<void>(set);
        MakeBook(QStringLiteral("Table - health.Xls"), [](office::Worksheet) {});
        MakeBook(QStringLiteral("Graph - health.Xls"), [](office::Worksheet sheet) {
            sheet.AddChart(office::ChartKind::Column, sheet.Cells(1, 1, 3, 3), true, true, {10, 80, 300, 200});
        });
        MakeBook(QStringLiteral("Map - health.Xls"), [](office::Worksheet sheet) {
            sheet.AddPicture(QStringLiteral("Picture 1"), Square(), {10, 80, 300, 200});
        });
    }
    /// What stands in a cell of a file that each of the workbooks has.
    [[nodiscard]] double ValueIn(const QString& name) const {
        return test::ReadXls(Gallery() + QLatin1Char('/') + name).front().At(2, 2).toDouble();
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    template <class Fill> void MakeBook(const QString& name, Fill&& fill) const {
        office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook();
        office::Worksheet sheet = book.Sheet(1);
        sheet.Cells(1, 1).SetValues({{QStringLiteral("Area"), 1990.0, 2000.0},
                                     {QStringLiteral("India"), 1.5, 2.5},
                                     {QStringLiteral("China"), 3.5, 4.5}});
        fill(sheet);
        book.SaveAs(Gallery() + QLatin1Char('/') + name);
        book.Close(false);
    }

    struct Screen {
        Screen() {
            form.resize(1100, 680);
            form.show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
            form.Enter();
            EXPECT_TRUE(QTest::qWaitFor([this] { return !form.CurrentPresentation().isEmpty(); }));
        }
        template <class Control> [[nodiscard]] Control* Get(const char* name) const {
            auto* control = form.findChild<Control*>(QLatin1String(name));
            EXPECT_NE(control, nullptr) << name;
            return control;
        }
        [[nodiscard]] OfficeHost& Excel() const { return *Get<OfficeHost>("PicExcel"); }
        [[nodiscard]] OfficeHost& Slides() const { return *Get<OfficeHost>("PicPPT"); }
        void Show(const QString& file) { form.ShowCurrentPresentation(file, false); }
        /// Presses the button, and answers the question about the slides by `answer` when it comes.
        void Copy(const std::function<void(frmGalPPT&)>& answer = {}) {
            bool asked = false;
            QTimer timer;
            QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
                auto* dialog = qobject_cast<frmGalPPT*>(QApplication::activeModalWidget());
                if (!dialog || asked) return;
                asked = true;
                if (answer) answer(*dialog);
            });
            timer.start(20);
            Get<QPushButton>("cmdCopyToPPT")->click();
            EXPECT_EQ(asked, static_cast<bool>(answer));
        }
        void CopyToNew() {
            Copy([](frmGalPPT& dialog) { dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click(); });
        }
        void CopyToFile(const QString& file) {
            Copy([&](frmGalPPT& dialog) {
                dialog.findChild<QRadioButton*>(QStringLiteral("optOpen"))->click();
                dialog.findChild<QLineEdit*>(QStringLiteral("txtFileName"))->setText(file);
                dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
            });
        }
        [[nodiscard]] int SlideCount() const { return Slides().IsOpen() ? Slides().Slides().SlideCount() : 0; }

        frmGALMain form;
    };

    /// Copies what is on show to new slides and saves them as this file.
    void SaveNewSlides(Screen& screen, const QString& file) {
        screen.CopyToNew();
        SaveNewAs(screen, file);
    }
    void SaveNewAs(Screen& screen, const QString& file) {
        SetFileAnswerer([&](const FileQuestion&) { return file; });
        EXPECT_TRUE(screen.form.SavePPT());
    }
    [[nodiscard]] QString Ppt() const { return Folder() + QStringLiteral("/slides.ppt"); }
};

} // namespace

TEST_F(GalleryOnX11Test, ShowsOneWorkbookAfterAnotherAndDropsEditsOnNo) {
    Screen screen;
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Graph - health.Xls"));
    ASSERT_TRUE(screen.Excel().IsOpen()) << screen.Excel().ErrorText().toStdString();
    EXPECT_TRUE(screen.Get<QPushButton>("cmdCopyToPPT")->isEnabled());
    screen.Show(QStringLiteral("Table - health.Xls"));
    screen.Excel().xlBook().Sheet(1).Cells(2, 2).SetValue(99.0);
    EXPECT_TRUE(screen.Excel().xlBook().IsModified());
    EXPECT_TRUE(messages.isEmpty()); // nothing had been changed until now
    answers = {0, 0};
    screen.Show(QStringLiteral("Map - health.Xls"));
    EXPECT_EQ(FileNameOf(screen.Excel().xlBook().FileName()), QStringLiteral("Map - health.Xls"));
    screen.Excel().xlBook().Sheet(1).Cells(2, 2).SetValue(99.0);
    EXPECT_TRUE(screen.form.MayLeave(true));
    EXPECT_FALSE(screen.Excel().IsOpen());
    EXPECT_EQ(messages.size(), 2);
    for (const char* name : {"Table - health.Xls", "Map - health.Xls"})
        EXPECT_EQ(ValueIn(QLatin1String(name)), 1.5);
}

TEST_F(GalleryOnX11Test, EditsAreSavedOnYesAndStayOnCancel) {
    Screen screen;
    const auto edit = [&](double value) { screen.Excel().xlBook().Sheet(1).Cells(2, 2).SetValue(value); };
    const QString table = QStringLiteral("Table - health.Xls");
    screen.Show(table);
    edit(99.0);
    answers = {MessageCode::Cancel, MessageCode::Cancel, MessageCode::Cancel};
    screen.Show(QStringLiteral("Map - health.Xls"));
    EXPECT_FALSE(screen.form.MayLeave(true));
    screen.form.GetPresentationsFromGallery();
    EXPECT_EQ(messages.size(), 3);
    EXPECT_EQ(screen.form.CurrentPresentation(), table);
    EXPECT_EQ(screen.Get<PresentationList>("lstPresentations")->currentIndex().data().toString(),
              QStringLiteral("Table - health"));
    EXPECT_TRUE(screen.Excel().xlBook().IsModified());
    answers = {MessageCode::Yes};
    screen.Show(QStringLiteral("Map - health.Xls"));
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Map - health.Xls"));
    EXPECT_EQ(ValueIn(table), 99.0);

    // Where the file can't be written, another may be named.
    edit(77.0);
    const QString map = Gallery() + QStringLiteral("/Map - health.Xls");
    const QString other = Folder() + QStringLiteral("/other.xls");
    QFile::remove(map);
    MakeFolder(QStringLiteral("Map - health.Xls"));
    messages.clear();
    QStringList given{QString(), other};
    SetFileAnswerer([&](const FileQuestion&) { return given.takeFirst(); });
    answers = {MessageCode::Yes, MessageCode::Ok, MessageCode::Yes, MessageCode::Ok};
    EXPECT_FALSE(screen.form.MayLeave(true)); // no name was given
    EXPECT_TRUE(screen.form.MayLeave(true));
    EXPECT_EQ(test::ReadXls(other).front().At(2, 2).toDouble(), 77.0);
    EXPECT_EQ(messages.size(), 4);
}

TEST_F(GalleryOnX11Test, DeletingTheWorkbookOnShowClosesItFirst) {
    Screen screen;
    answers = {MessageCode::Yes};
    screen.form.cmdDelete_Click();
    EXPECT_FALSE(HasFile(QStringLiteral("Graph - health.Xls")));
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Map - health.Xls"));
    EXPECT_TRUE(screen.Excel().IsOpen());
}

namespace {

/// The workbook with a record that says it is enciphered, in the place of its author's name.
QByteArray AskingForAPassword(QByteArray book) {
    const QByteArray author("\x5c\x00\x70\x00", 4);
    const QByteArray cipher = QByteArray("\x2f\x00\x36\x00\x01\x00\x01\x00\x01\x00", 10) + QByteArray(48, '\x11');
    const QByteArray rest = QByteArray("\x5c\x00\x36\x00", 4) + QByteArray(54, ' ');
    const qsizetype at = book.indexOf(author);
    EXPECT_GT(at, 0);
    return book.replace(at, cipher.size() + rest.size(), cipher + rest);
}

} // namespace

TEST_F(GalleryOnX11Test, WhatIsNoWorkbookIsToldAndTheScreenStaysUsable) {
    MakeFile(QStringLiteral("a text.xls"), "Area\t1990\nIndia\t1.5\n");
    const QByteArray good = ReadWholeFile(Gallery() + QStringLiteral("/Table - health.Xls")).value_or(QByteArray());
    QByteArray damaged = good;
    damaged.replace(512, good.size() - 512, QByteArray(good.size() - 512, '\x5a'));
    MakeFile(QStringLiteral("damaged.xls"), damaged);
    MakeFile(QStringLiteral("empty.xls"), {});
    MakeFile(QStringLiteral("secret.xls"), AskingForAPassword(good));
    Screen screen;
    for (const char* name : {"a text.xls", "damaged.xls", "empty.xls", "secret.xls"}) {
        screen.Show(QLatin1String(name));
        EXPECT_FALSE(screen.Excel().IsOpen()) << name;
        EXPECT_TRUE(screen.Excel().accessibleDescription().contains(QLatin1String(name)))
            << screen.Excel().accessibleDescription().toStdString();
        EXPECT_FALSE(screen.Get<QPushButton>("cmdCopyToPPT")->isEnabled());
    }
    // One that breaks off in the middle may open or not; either way the screen goes on.
    MakeFile(QStringLiteral("cut.xls"), good.left(good.size() / 2));
    screen.Show(QStringLiteral("cut.xls"));
    screen.Show(QStringLiteral("Table - health.Xls"));
    EXPECT_TRUE(screen.Excel().IsOpen());
}

// A file of a stranger may unpack to gigabytes, or be none of its name's kind.
TEST_F(GalleryOnX11Test, FilesThatUnpackToGigabytesAreBounded) {
    const QByteArray map = ReadWholeFile(Gallery() + QStringLiteral("/Map - health.Xls")).value_or(QByteArray());
    test::WriteZipBomb(Gallery() + QStringLiteral("/zip bomb.xls"));
    MakeFile(QStringLiteral("a picture.xls"), Square());
    MakeFile(QStringLiteral("huge picture.xls"), test::WithHugePicture(map));
    const struct {
        const char* name;
        bool mayOpen; ///< with what can be read of it
    } cases[] = {{"zip bomb.xls", false}, {"a picture.xls", false}, {"huge picture.xls", true}};
    Screen screen;
    for (const auto& bad : cases) {
        QElapsedTimer clock;
        clock.start();
        screen.Show(QLatin1String(bad.name));
        EXPECT_LE(clock.elapsed(), test::TimeBound(10000)) << bad.name;
        EXPECT_NE(screen.Excel().IsOpen(), !screen.Excel().ErrorText().isEmpty()) << bad.name;
        EXPECT_TRUE(bad.mayOpen || !screen.Excel().IsOpen()) << bad.name;
        QTest::qWait(1000); // what is shown is drawn
        EXPECT_LT(test::PeakMemoryOf(office::SpreadsheetApplication::Hosted().ProcessId()), 1000) << bad.name;
        screen.Show(QStringLiteral("Table - health.Xls"));
        EXPECT_TRUE(screen.Excel().IsOpen()) << bad.name;
    }
    const qint64 process = office::SpreadsheetApplication::Hosted().ProcessId();
    office::SpreadsheetApplication::QuitAll();
    EXPECT_FALSE(QFile::exists(QStringLiteral("/proc/%1").arg(process)));
}

TEST_F(GalleryOnX11Test, ALongTableGoesOverSeveralSlidesWhenTheUserWants) {
    MakeBook(QStringLiteral("Table - long.Xls"), [](office::Worksheet sheet) {
        office::Block rows;
        for (int row = 0; row < 150; ++row)
            rows.push_back({QStringLiteral("Area %1").arg(row), double(row), double(2 * row)});
        sheet.Cells(8, 1).SetValues(rows);
    });
    const struct {
        int answer;
        int least;
        int most;
    } cases[] = {{MessageCode::Yes, 3, 8}, {0, 1, 1}, {MessageCode::Cancel, 0, 0}};
    for (const auto& c : cases) {
        Screen screen;
        screen.Show(QStringLiteral("Table - long.Xls"));
        messages.clear();
        answers = {c.answer};
        screen.CopyToNew();
        ASSERT_EQ(messages.size(), 1);
        EXPECT_GE(screen.SlideCount(), c.least) << c.answer;
        EXPECT_LE(screen.SlideCount(), c.most) << c.answer;
        if (c.most > 0) SaveNewAs(screen, Ppt());
    }
    MakeBook(QStringLiteral("Table - endless.Xls"), [](office::Worksheet sheet) {
        office::Block rows;
        for (int row = 0; row < 5000; ++row)
            rows.push_back({QStringLiteral("Area %1").arg(row), double(row)});
        sheet.Cells(8, 1).SetValues(rows);
    });
    Screen screen;
    screen.Show(QStringLiteral("Table - endless.Xls"));
    messages.clear();
    answers = {MessageCode::No};
    screen.CopyToNew(); // that nothing could be read is told first
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(screen.SlideCount(), 0);
    screen.Show(QStringLiteral("Table - health.Xls"));
    messages.clear();
    screen.CopyToNew(); // a short one is not asked about
    EXPECT_TRUE(messages.isEmpty());
    SaveNewAs(screen, Ppt());
}

TEST_F(GalleryOnX11Test, EachPartOfAWideTableShowsItsHeads) {
    constexpr int kColumns = 60;
    MakeBook(QStringLiteral("Table - wide.Xls"), [](office::Worksheet sheet) {
        sheet.FreezePanes(4, 3);
        sheet.Cells(4, 1, 100, kColumns).SetValue(2017.5);
        sheet.Cells(1, 1, 3, kColumns).SetStyle({.interiorColorIndex = 4});
        sheet.Cells(4, 1, 100, 2).SetStyle({.interiorColorIndex = 3});
        sheet.HideColumns(40, 45); // what is hidden stays so
    });
    UseLanguage(QStringLiteral("ar")); // pictures in pixels
    Screen screen;
    screen.Show(QStringLiteral("Table - wide.Xls"));
    const office::Workbook& book = screen.Excel().xlBook();
    const SlidePlan plan = PlanSlides(SizesOf(book.ActiveSheet()));
    EXPECT_EQ(plan.heads.rows, 3);
    EXPECT_EQ(plan.heads.columns, 2);
    ASSERT_GE(plan.columns.size(), 4u);
    ASSERT_GE(plan.rows.size(), 2u);
    const QList<QByteArray> pictures = PicturesOfTable(book, plan);
    ASSERT_EQ(pictures.size(), plan.Count());
    for (const QByteArray& bytes : pictures) {
        const QImage picture = QImage::fromData(bytes, "PNG");
        ASSERT_GT(picture.width(), 300);
        ASSERT_GT(picture.height(), 200);
        EXPECT_EQ(ColourAt(picture, 0.9, 0.03), QColor(Qt::green));
        EXPECT_EQ(ColourAt(picture, 0.03, 0.95), QColor(Qt::red));
        EXPECT_NE(ColourAt(picture, 0.95, 0.95), QColor(Qt::red));
    }
    EXPECT_FALSE(book.IsModified());
}

TEST_F(GalleryOnX11Test, ANameOfTwoKindsGivesWhatTheWorkbookHas) {
    MakeBook(QStringLiteral("Table - World map - 2020.Xls"), [](office::Worksheet) {});
    MakeBook(QStringLiteral("Map - World - graph.Xls"), [](office::Worksheet sheet) {
        sheet.AddChart(office::ChartKind::Column, sheet.Cells(1, 1, 3, 3), true, true, {10, 80, 300, 200});
    });
    Screen screen;
    const struct {
        const char* name;
        char kind;
    } cases[] = {{"Table - World map - 2020.Xls", 'T'}, {"Map - World - graph.Xls", 'G'}, {"Map - health.Xls", 'M'}};
    for (const auto& c : cases) {
        screen.Show(QLatin1String(c.name));
        EXPECT_EQ(KindToCopy(screen.Excel().xlBook(), QLatin1String(c.name)), QLatin1Char(c.kind)) << c.name;
    }
    screen.Show(QStringLiteral("Table - World map - 2020.Xls"));
    screen.CopyToNew();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u' ').toStdString();
    EXPECT_EQ(screen.SlideCount(), 1);
}

TEST_F(GalleryOnX11Test, CopiesAllKindsToSlidesOfOnePresentation) {
    Screen screen;
    screen.Show(QStringLiteral("Table - health.Xls"));
    screen.CopyToNew();
    ASSERT_TRUE(screen.Slides().IsOpen()) << screen.Slides().ErrorText().toStdString();
    EXPECT_EQ(screen.SlideCount(), 1);
    EXPECT_TRUE(screen.Excel().IsOpen()); // both are on show
    EXPECT_EQ(screen.Get<QPushButton>("cmdCopyToPPT")->text(), GetText(QStringLiteral("GALLERY CLOSE PPT")));
    for (const char* name : {"Graph - health.Xls", "Map - health.Xls"}) {
        screen.Show(QLatin1String(name));
        EXPECT_EQ(screen.Get<QPushButton>("cmdCopyToPPT")->text(), GetText(QStringLiteral("GALLERY Copy To PPT")));
        screen.Copy(); // asks no more
    }
    EXPECT_EQ(screen.SlideCount(), 3);
    SetFileAnswerer([this](const FileQuestion&) { return Ppt().chopped(4); });
    QTest::mouseClick(screen.Get<QPushButton>("cmdSavePPT"), Qt::LeftButton);
    EXPECT_TRUE(screen.Get<QLabel>("lblPPT")->text().contains(QStringLiteral("slides.ppt")));
    screen.Get<QPushButton>("cmdCopyToPPT")->click();
    EXPECT_FALSE(screen.Slides().IsOpen());
    EXPECT_FALSE(screen.Get<QWidget>("framePPT")->isVisible());
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u' ').toStdString();

    const QJsonObject read = ReadPpt(Ppt());
    const QJsonArray size = read.value(QLatin1String("size")).toArray();
    EXPECT_EQ(size.at(0).toInt() * 3, size.at(1).toInt() * 4);
    const QJsonArray slides = read.value(QLatin1String("slides")).toArray();
    ASSERT_EQ(slides.size(), 3);
    for (const auto& slide : slides) {
        ASSERT_EQ(slide.toArray().size(), 1); // one picture, in the middle, with a margin
        const QJsonArray place = slide.toArray().at(0).toArray();
        const auto [left, top, right, bottom] =
            std::array{place.at(0).toInt(), place.at(1).toInt(), place.at(2).toInt(), place.at(3).toInt()};
        EXPECT_GT(left, 0);
        EXPECT_GT(top, 0);
        EXPECT_NEAR(left, size.at(0).toInt() - right, 4);
        EXPECT_NEAR(top, size.at(1).toInt() - bottom, 4);
        EXPECT_TRUE(left < size.at(0).toInt() / 10 || top < size.at(1).toInt() / 10) << "it is small";
    }
    const QJsonArray map = slides.at(2).toArray().at(0).toArray();
    EXPECT_NEAR(1.5,
                static_cast<double>(map.at(2).toInt() - map.at(0).toInt()) / (map.at(3).toInt() - map.at(1).toInt()),
                0.02);
}

TEST_F(GalleryOnX11Test, OnlyThePictureOfAMapGoesToSlides) {
    MakeBook(QStringLiteral("Map - page.Xls"), [](office::Worksheet sheet) {
        sheet.SetPageSetup({.header = office::PageLine(QStringLiteral("a header far above the map"))});
        sheet.AddPicture(QStringLiteral("Picture 1"), Square(), {10, 80, 300, 200});
        sheet.AddShapes({{QStringLiteral("Legend 1"), office::ShapeKind::Rectangle, {10, 320, 30, 30}, {Qt::red}}});
    });
    Screen screen;
    screen.Show(QStringLiteral("Map - page.Xls"));
    screen.CopyToNew();
    EXPECT_TRUE(messages.isEmpty());
    SaveNewAs(screen, Ppt());
    const QJsonArray slides = SlidesOf(Ppt());
    ASSERT_EQ(slides.size(), 1);
    ASSERT_EQ(slides.at(0).toArray().size(), 1);
    const QJsonArray place = slides.at(0).toArray().at(0).toArray();
    EXPECT_NEAR(1.5,
                static_cast<double>(place.at(2).toInt() - place.at(0).toInt()) /
                    (place.at(3).toInt() - place.at(1).toInt()),
                0.02);
    EXPECT_FALSE(screen.Excel().xlBook().IsModified());
}

TEST_F(GalleryOnX11Test, AMapWithoutItsPictureIsToldAndNothingIsLost) {
    MakeBook(QStringLiteral("Map - plain.Xls"), [](office::Worksheet) {});
    Screen screen;
    screen.Show(QStringLiteral("Table - health.Xls"));
    screen.CopyToNew();
    screen.Show(QStringLiteral("Map - plain.Xls"));
    screen.Copy();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages.front(), GetText(QStringLiteral("TS_OfficeCall")));
    EXPECT_EQ(screen.SlideCount(), 1);
    EXPECT_TRUE(screen.Excel().IsOpen());
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Map - plain.Xls"));
}

TEST_F(GalleryOnX11Test, SavingUnderAnotherNameKeepsTheFirstFile) {
    Screen screen;
    EXPECT_FALSE(screen.form.SavePPTAs()); // there are none
    SaveNewSlides(screen, Ppt());
    const QByteArray first = ReadWholeFile(Ppt()).value_or(QByteArray());
    SetFileAnswerer([](const FileQuestion&) { return QString(); });
    EXPECT_FALSE(screen.form.SavePPTAs());
    EXPECT_TRUE(screen.Get<QLabel>("lblPPT")->text().contains(QStringLiteral("slides.ppt")));
    SetFileAnswerer([this](const FileQuestion&) { return Folder() + QStringLiteral("/other"); });
    screen.Get<QPushButton>("cmdSavePPTAs")->click();
    EXPECT_TRUE(screen.Get<QLabel>("lblPPT")->text().contains(QStringLiteral("other.ppt")));
    EXPECT_TRUE(FileExists(Folder() + QStringLiteral("/other.ppt")));
    EXPECT_EQ(ReadWholeFile(Ppt()).value_or(QByteArray()), first);
}

TEST_F(GalleryOnX11Test, AnExistingFileGrowsByASlide) {
    Screen screen;
    SaveNewSlides(screen, Ppt());
    EXPECT_TRUE(screen.form.QuitPPT());
    EXPECT_TRUE(messages.isEmpty()); // nothing was unsaved
    screen.Show(QStringLiteral("Map - health.Xls"));
    screen.CopyToFile(Ppt());
    EXPECT_EQ(screen.SlideCount(), 2);
    EXPECT_TRUE(screen.form.SavePPT()); // under its own name
    EXPECT_EQ(SlidesOf(Ppt()).size(), 2);
}

TEST_F(GalleryOnX11Test, AFileThatHasGoneOrIsDamagedIsTold) {
    Screen screen;
    MakeFile(QStringLiteral("bad.ppt"), "no slides");
    for (const QString& file : {Ppt(), Gallery() + QStringLiteral("/bad.ppt")}) {
        messages.clear();
        screen.CopyToFile(file);
        EXPECT_EQ(messages.size(), 1);
        EXPECT_FALSE(screen.Slides().IsOpen());
        EXPECT_FALSE(screen.Get<QWidget>("framePPT")->isVisible());
        EXPECT_TRUE(screen.Excel().IsOpen());
    }
    screen.CopyToNew();
    EXPECT_EQ(screen.SlideCount(), 1);
}

TEST_F(GalleryOnX11Test, UnsavedSlidesAreAskedAbout) {
    Screen screen;
    screen.CopyToNew();
    answers = {MessageCode::Cancel, MessageCode::Yes, MessageCode::Yes, 0};
    EXPECT_FALSE(screen.form.MayLeave(true));
    SetFileAnswerer([](const FileQuestion&) { return QString(); });
    EXPECT_FALSE(screen.form.MayLeave(true)); // the name was not given
    EXPECT_EQ(screen.SlideCount(), 1);
    SetFileAnswerer([this](const FileQuestion&) { return Ppt(); });
    EXPECT_TRUE(screen.form.MayLeave(true));
    EXPECT_EQ(SlidesOf(Ppt()).size(), 1);
    screen.Show(QStringLiteral("Map - health.Xls"));
    screen.CopyToNew();
    EXPECT_TRUE(screen.form.MayLeave(true)); // No
    EXPECT_EQ(messages.count(QStringLiteral("TS_SlidesUnsaved")), 4);
}

TEST_F(GalleryOnX11Test, SlidesThatCanNotBeSavedStay) {
    Screen screen;
    screen.CopyToNew();
    SetFileAnswerer([this](const FileQuestion&) { return Folder() + QStringLiteral("/no/such/folder.ppt"); });
    EXPECT_FALSE(screen.form.SavePPT());
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(screen.SlideCount(), 1);
    SetFileAnswerer([this](const FileQuestion&) { return Ppt(); });
    EXPECT_TRUE(screen.form.SavePPT()); // the name that failed isn't kept
    EXPECT_EQ(SlidesOf(Ppt()).size(), 1);
}

TEST_F(GalleryOnX11Test, TheSlidesProgramsOwnSaveKeySaves) {
    Screen screen;
    screen.CopyToNew();
    SetFileAnswerer([this](const FileQuestion&) { return Ppt(); });
    QTest::qWait(1000);
    const QPoint place = screen.Slides().mapToGlobal(screen.Slides().rect().center());
    QProcess::execute(QStringLiteral("xdotool"),
                      {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                       QStringLiteral("click"), QStringLiteral("1")});
    QTest::qWait(500);
    QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("ctrl+s")});
    EXPECT_TRUE(QTest::qWaitFor([this] { return QFile::exists(Ppt()); }));
    EXPECT_EQ(SlidesOf(Ppt()).size(), 1);
    EXPECT_TRUE(screen.form.MayLeave(true));
    EXPECT_TRUE(messages.isEmpty()); // nothing was unsaved
}

TEST_F(GalleryOnX11Test, WhenTheProgramDiesTheNextCopyStartsOver) {
    Screen screen;
    screen.CopyToNew();
    const qint64 process = office::SpreadsheetApplication::Hosted().ProcessId();
    ASSERT_GT(process, 0);
    ::kill(static_cast<pid_t>(process), SIGKILL);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !screen.Slides().IsOpen() && !screen.Excel().IsOpen(); }));
    QTest::qWait(50);
    EXPECT_FALSE(screen.Get<QPushButton>("cmdCopyToPPT")->isEnabled());
    screen.Show(QStringLiteral("Table - health.Xls"));
    ASSERT_TRUE(screen.Excel().IsOpen()) << screen.Excel().ErrorText().toStdString();
    screen.CopyToNew();
    EXPECT_EQ(screen.SlideCount(), 1);
}

} // namespace tessaro
