#include "gallery/Thumbnails.h"

#include "office/SpreadsheetApplication.h"
#include "support/BombFiles.h"
#include "support/GallerySession.h"
#include "support/TimeBound.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace tessaro {

namespace {

class ThumbnailsTest : public test::GallerySession {
  protected:
    void SetUp() override {
        test::GallerySession::SetUp();
        office::SpreadsheetApplication::SetProfileFolder(Folder() + QStringLiteral("/Office"));
    }
    void TearDown() override {
        office::SpreadsheetApplication::QuitAll();
        test::GallerySession::TearDown();
    }
    void MakeBook(const QString& name, const QByteArray& picture = {}) const {
        office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook();
        book.Sheet(1).Cells(1, 1).SetValues({{QStringLiteral("Area"), 1990.0}, {QStringLiteral("India"), 1.5}});
        if (!picture.isEmpty()) book.Sheet(1).AddPicture(QStringLiteral("Picture 1"), picture, {10, 80, 300, 200});
        book.SaveAs(Gallery() + QLatin1Char('/') + name);
        book.Close(false);
    }
    [[nodiscard]] QString Kept() const { return Folder() + QStringLiteral("/Thumbnails"); }
    [[nodiscard]] QString Profile() const { return Folder() + QStringLiteral("/Office/Pictures"); }
    [[nodiscard]] GalleryEntry EntryOf(const QString& file) const {
        for (const GalleryEntry& entry : EntriesOf(Gallery()))
            if (entry.file == file) return entry;
        ADD_FAILURE() << file.toStdString();
        return {};
    }
};

bool IsBlank(const QImage& picture) {
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qGray(picture.pixel(x, y)) < 200) return false;
    return true;
}

} // namespace

TEST_F(ThumbnailsTest, IsDrawnOnceInTheBackgroundAndKept) {
    MakeBook(QStringLiteral("-a strange name.Xls")); // no option of the program that draws it
    MakeFile(QStringLiteral("damaged.xls"), "no workbook");
    const GalleryEntry good = EntryOf(QStringLiteral("-a strange name.Xls"));
    const GalleryEntry bad = EntryOf(QStringLiteral("damaged.xls"));
    {
        Thumbnails thumbnails(Kept(), Profile());
        QElapsedTimer clock;
        clock.start();
        EXPECT_TRUE(thumbnails.Picture(Gallery(), good).isNull());
        EXPECT_TRUE(thumbnails.Picture(Gallery(), bad).isNull());
        EXPECT_LE(clock.elapsed(), test::TimeBound(50));
        QSignalSpy changed(&thumbnails, &Thumbnails::Changed);
        ASSERT_TRUE(changed.wait(30000));
        const QImage picture = thumbnails.Picture(Gallery(), good);
        EXPECT_EQ(picture.size(), Thumbnails::Size);
        EXPECT_FALSE(IsBlank(picture));
        // What can't be drawn isn't tried again.
        EXPECT_TRUE(thumbnails.Picture(Gallery(), bad).isNull());
        EXPECT_FALSE(changed.wait(1500));
    }
    Thumbnails again(Kept(), Profile());
    EXPECT_FALSE(again.Picture(Gallery(), good).isNull());
}

// The process that draws is watched all the time: it must not grow, nor last.
TEST_F(ThumbnailsTest, FilesThatUnpackToGigabytesAreBounded) {
    test::WriteZipBomb(Gallery() + QStringLiteral("/zip.xls"));
    QImage square(30, 20, QImage::Format_RGB32);
    square.fill(Qt::darkGreen);
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly) && square.save(&buffer, "PNG"));
    MakeBook(QStringLiteral("good.Xls"), png);
    MakeFile(QStringLiteral("huge.xls"),
             test::WithHugePicture(ReadWholeFile(Gallery() + QStringLiteral("/good.Xls")).value_or(QByteArray())));
    Thumbnails thumbnails(Kept(), Profile());
    const auto drawing = [this] {
        QFile note(Profile() + QStringLiteral("/process"));
        return note.open(QIODevice::ReadOnly) ? note.readLine().trimmed().toLongLong() : 0;
    };
    const GalleryEntry good = EntryOf(QStringLiteral("good.Xls"));
    for (const char* name : {"zip.xls", "huge.xls"})
        EXPECT_TRUE(thumbnails.Picture(Gallery(), EntryOf(QLatin1String(name))).isNull());
    qint64 peak = 0;
    const auto drawn = [&] {
        peak = std::max(peak, test::PeakMemoryOf(drawing()));
        return !thumbnails.Picture(Gallery(), good).isNull();
    };
    EXPECT_TRUE(QTest::qWaitFor(drawn, test::TimeBound(20000)));
    EXPECT_GT(peak, 0);
    EXPECT_LT(peak, 1000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawing() == 0; }, 5000)) << "nothing is left running";
    EXPECT_TRUE(thumbnails.Picture(Gallery(), EntryOf(QStringLiteral("zip.xls"))).isNull());
}

TEST_F(ThumbnailsTest, AnotherStateOfTheFileIsAnotherPicture) {
    const GalleryEntry entry{QStringLiteral("Xa"),
                             QStringLiteral("a"),
                             QStringLiteral("a.xls"),
                             {},
                             10,
                             QDateTime::fromMSecsSinceEpoch(1000)};
    GalleryEntry later = entry;
    later.modified = QDateTime::fromMSecsSinceEpoch(2000);
    GalleryEntry larger = entry;
    larger.size = 11;
    const QString key = Thumbnails::KeyOf(QStringLiteral("/g/a.xls"), entry);
    EXPECT_EQ(key, Thumbnails::KeyOf(QStringLiteral("/g/a.xls"), entry));
    EXPECT_NE(key, Thumbnails::KeyOf(QStringLiteral("/h/a.xls"), entry));
    EXPECT_NE(key, Thumbnails::KeyOf(QStringLiteral("/g/a.xls"), later));
    EXPECT_NE(key, Thumbnails::KeyOf(QStringLiteral("/g/a.xls"), larger));
}

TEST_F(ThumbnailsTest, ShowsTheHeadOfWhatIsOnThePage) {
    QImage page(800, 1100, QImage::Format_ARGB32);
    page.fill(Qt::transparent);
    EXPECT_TRUE(IsBlank(Thumbnails::Cut(page)));
    {
        QPainter painter(&page);
        painter.fillRect(100, 100, 60, 600, Qt::black); // a narrow, long table
    }
    const QImage picture = Thumbnails::Cut(page);
    EXPECT_EQ(picture.size(), Thumbnails::Size);
    EXPECT_LT(qGray(picture.pixel(picture.width() / 2, picture.height() - 2)), 50);
    EXPECT_TRUE(IsBlank(Thumbnails::Cut(QImage())));
}

TEST_F(ThumbnailsTest, GoesAwayInTheMidstOfItsWork) {
    MakeBook(QStringLiteral("a.Xls"));
    const GalleryEntry entry = EntryOf(QStringLiteral("a.Xls"));
    for (const int wait : {0, 450, 600}) {
        Thumbnails thumbnails(Folder() + QStringLiteral("/T%1").arg(wait), Profile());
        EXPECT_TRUE(thumbnails.Picture(Gallery(), entry).isNull());
        QTest::qWait(wait);
    }
}

} // namespace tessaro
