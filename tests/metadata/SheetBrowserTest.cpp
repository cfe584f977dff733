#include "metadata/SheetBrowser.h"

#include "platform/ShellOpen.h"
#include "support/TestSession.h"

#include <QBuffer>
#include <QImage>
#include <QTest>
#include <QTextDocument>
#include <QUrl>

#include <sys/stat.h>

namespace tessaro::test {
namespace {

class SheetBrowserTest : public SessionTest {
  protected:
    SheetBrowserTest() {
        StartInstallation();
        SetShellOpener([this](const QUrl& url) {
            opened << url.toString();
            return opens;
        });
    }
    ~SheetBrowserTest() override { SetShellOpener({}); }

    static QString DataImage(int side, const char* format = "PNG") {
        QImage picture(side, side, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        picture.save(&buffer, format);
        return QStringLiteral("data:image/") + QString::fromLatin1(format).toLower() + QStringLiteral(";base64,") +
               QString::fromLatin1(bytes.toBase64());
    }
    static int HeightOf(const QString& sheet) {
        SheetBrowser browser;
        browser.resize(800, 600);
        browser.ShowSheet(sheet);
        browser.show();
        (void)QTest::qWaitForWindowExposed(&browser);
        return static_cast<int>(browser.document()->size().height());
    }
    static QString Image(const QString& source) { return QStringLiteral("<p>x<img src='%1'></p>").arg(source); }

    QStringList opened;
    bool opens = true;
};

TEST_F(SheetBrowserTest, ShowsOnlyPicturesThatStandInTheSheet) {
    QImage picture(300, 300, QImage::Format_RGB32);
    const QString file = Folder() + QStringLiteral("/picture.png");
    ASSERT_TRUE(picture.save(file));
    const QString pipe = Folder() + QStringLiteral("/pipe.png");
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    EXPECT_GT(HeightOf(Image(DataImage(300))), 300);
    EXPECT_GT(HeightOf(Image(DataImage(300, "JPEG"))), 300);
    for (const QString& source :
         {file, QStringLiteral("file://") + file, pipe, QStringLiteral("/dev/zero"), DataImage(5000),
          QStringLiteral(":/qt-project.org/styles/commonstyle/images/file-128.png"),
          QStringLiteral("data:image/svg+xml;base64,PHN2ZyB3aWR0aD0iMzAwIiBoZWlnaHQ9IjMwMCIvPg=="),
          QStringLiteral("data:image/png;base64,nonsense"), QStringLiteral("data:"), QString()})
        EXPECT_LT(HeightOf(Image(source)), 150) << source.left(80).toStdString();
    EXPECT_LT(
        HeightOf(
            QStringLiteral("<table background='%1'><tr><td style=\"background-image:url(%1)\">x</table>").arg(pipe)),
        150)
        << "as a background either";
}

TEST_F(SheetBrowserTest, PicturesTogetherAreBounded) {
    QString sheet;
    for (int place = 0; place < 40; ++place)
        sheet += Image(DataImage(1001 + place));
    EXPECT_LT(HeightOf(sheet), 25 * HeightOf(Image(DataImage(1001)))) << "fifteen of them, not all forty";
}

TEST_F(SheetBrowserTest, ACopyForPrintingLoadsNoMoreThanTheSheet) {
    QImage picture(300, 300, QImage::Format_RGB32);
    const QString file = Folder() + QStringLiteral("/picture.png");
    ASSERT_TRUE(picture.save(file));
    SheetBrowser browser;
    browser.ShowSheet(Image(file));
    const std::unique_ptr<QTextDocument> copy(browser.document()->clone(browser.document()));
    copy->setTextWidth(600);
    EXPECT_LT(copy->size().height(), 150);
}

TEST_F(SheetBrowserTest, LinksOpenAfterAQuestionAndOnlySomeKinds) {
    const struct {
        const char* link;
        int answer;
        const char* opened;
    } cases[] = {
        {"https://example.org/a?b=c", MessageCode::Yes, "https://example.org/a?b=c"},
        {"http://example.org", MessageCode::No, ""},
        {"mailto:someone@example.org", MessageCode::Yes, "mailto:someone@example.org"},
        {"file:///etc/passwd", MessageCode::Yes, ""},
        {"/etc/passwd", MessageCode::Yes, ""},
        {"ftp://example.org/x", MessageCode::Yes, ""},
        {"javascript:alert(1)", MessageCode::Yes, ""},
        {"smb://host/share", MessageCode::Yes, ""},
    };
    for (const auto& c : cases) {
        opened.clear();
        messages.clear();
        answers = {c.answer};
        SheetBrowser browser;
        browser.ShowSheet(QStringLiteral("<p><a href='%1'>here</a></p>").arg(QLatin1String(c.link)));
        Q_EMIT browser.anchorClicked(QUrl(QLatin1String(c.link)));
        EXPECT_EQ(opened.join(QLatin1Char(' ')).toStdString(), c.opened) << c.link;
        ASSERT_EQ(messages.size(), 1) << c.link;
        EXPECT_TRUE(messages.front().contains(QLatin1String(c.link))) << messages.front().toStdString();
        EXPECT_EQ(browser.toPlainText(), QStringLiteral("here")) << "the sheet stays";
    }
    opens = false;
    answers = {MessageCode::Yes};
    SheetBrowser browser;
    Q_EMIT browser.anchorClicked(QUrl(QStringLiteral("https://example.org")));
    EXPECT_EQ(messages.size(), 3) << "and it is told when nothing opens it";
}

} // namespace
} // namespace tessaro::test
