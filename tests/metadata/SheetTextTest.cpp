#include "metadata/SheetText.h"

#include "support/TestSession.h"

#include <QElapsedTimer>
#include <QTextDocument>

namespace tessaro::test {
namespace {

constexpr int kTooLongMilliseconds = 5000;

QString Repeated(const char* text, int times) {
    return QString::fromUtf8(text).repeated(times);
}

class SheetTextTest : public SessionTest {
  protected:
    SheetTextTest() { StartInstallation(); }
    static QString Html(const QString& sheet) {
        metadata::SheetBounds left;
        return metadata::SheetAsHtml(sheet, left);
    }
    static bool IsAsText(const QString& html) { return html.contains(QStringLiteral("its text.")); }
};

TEST_F(SheetTextTest, KeepsWhatAReaderWrote) {
    const struct {
        const char *sheet, *html;
    } cases[] = {
        {"<p>All <b>people</b></p>", "<p>All <b>people</b></p>"},
        {"<P ALIGN=center>One<P>Two", "<p ALIGN=\"center\">One</p><p>Two</p>"},
        {"<ul><li>a<li>b<ul><li>c</ul></ul>", "<ul><li>a</li><li>b<ul><li>c</li></ul></li></ul>"},
        {"<table><tr><td>1<td>2<tr><td>3</table>", "<table><tr><td>1</td><td>2</td></tr><tr><td>3</td></tr></table>"},
        {"<b>one<i>two</b>three</i>", "<b>one<i>two</i></b>three"},
        {"<p>a &amp; b &lt; c</p>", "<p>a &amp; b &lt; c</p>"},
        {"<p>5 < 6 and 7 > 6</p>", "<p>5 &lt; 6 and 7 &gt; 6</p>"},
        {"<a href='http://x.org/?a=\"1\"'>x</a>", "<a href=\"http://x.org/?a=&quot;1&quot;\">x</a>"},
        {"<p>a<!-- <b> --></p><script>if (a<b) c();</script><style>@import url(x);</style><br/>", "<p>a</p><br>"},
        {"<p>a</p><link rel=stylesheet href=/etc/passwd><base href='file:///'><br>", "<p>a</p><br>"},
        {"<p title='</p><table>'>a", "<p title=\"&lt;/p&gt;&lt;table&gt;\">a</p>"},
        {"<p>a<b unclosed='", "<p>a<b unclosed=\"\"></b></p>"},
        {"a < b & c", "<p>a &lt; b &amp; c</p>"},
        {"one\ntwo", "<p>one<br>\ntwo</p>"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Html(QString::fromUtf8(c.sheet)).toStdString(), c.html) << c.sheet;
}

TEST_F(SheetTextTest, ShowsTheTextOfASheetBeyondItsBoundsInTime) {
    const struct {
        const char* what;
        QString sheet;
    } cases[] = {
        {"nested tables", Repeated("<table><tr><td>word", 3000)},
        {"twenty tables, closed in comments", Repeated("<table><tr><td>word<!--</table>-->", 20)},
        {"many divisions", Repeated("<div>word</div>", 200000)},
        {"nested divisions", Repeated("<div>word", 150)},
        {"nested marks", Repeated("<b>word", 200000)},
        {"large tables within tables", Repeated("<table><tr><td>", 4) + Repeated("<tr><td>word", 5000)},
        {"wide cells", QStringLiteral("<table><tr>") + Repeated("<td colspan=99999>word", 2000)},
        {"widths whose sum overflows",
         QStringLiteral(
             "<table><tr><td colspan=1000000 aspan=9223372036854775807 bspan=9223372036853775817>word</table>")},
        {"the lowest width", QStringLiteral("<table><tr><td colspan=-9223372036854775808>word</table>")},
        {"a cell as wide as can be", QStringLiteral("<table><tr><td colspan=9223372036854775807>word</table>")},
        {"a long text", QStringLiteral("<p>word ") + Repeated("a ", 200000)},
        {"a long word", QStringLiteral("<p>word") + Repeated("a", 200000)},
        {"a long plain text", Repeated("a plain word\n", 20000)},
        {"tags without end", QStringLiteral("<p>word</p>") + Repeated("<", 300000)},
        {"attributes", QStringLiteral("<p>word<b ") + Repeated("a='b' ", 1000000) + QLatin1Char('>')},
    };
    for (const auto& c : cases) {
        QElapsedTimer clock;
        clock.start();
        const QString html = Html(c.sheet);
        EXPECT_TRUE(IsAsText(html)) << c.what;
        QTextDocument document;
        document.setHtml(html);
        (void)document.size();
        EXPECT_TRUE(document.toPlainText().contains(QStringLiteral("word"))) << c.what;
        EXPECT_LT(clock.elapsed(), kTooLongMilliseconds) << c.what;
    }
}

TEST_F(SheetTextTest, LaysLargeSheetsOutThatAreWithinBounds) {
    const struct {
        const char* what;
        QString sheet;
    } cases[] = {
        {"a long table", QStringLiteral("<table>") + Repeated("<tr><td>a<td>b<td>c", 4000)},
        {"many paragraphs", Repeated("<p>text", 15000)},
        {"tables within tables", Repeated("<table><tr><td>", 3) + Repeated("<tr><td>a<td>b", 1000)},
        {"a wide table", QStringLiteral("<table><tr>") + Repeated("<td colspan=2>a", 600)},
    };
    for (const auto& c : cases) {
        QElapsedTimer clock;
        clock.start();
        const QString html = Html(c.sheet);
        EXPECT_FALSE(IsAsText(html)) << c.what;
        QTextDocument document;
        document.setHtml(html);
        document.setTextWidth(600);
        (void)document.size();
        EXPECT_LT(clock.elapsed(), kTooLongMilliseconds) << c.what;
    }
}

TEST_F(SheetTextTest, SheetsOneBelowTheOtherShareTheirBounds) {
    metadata::SheetBounds left{1000, 10000, 50};
    const QString sheet = Repeated("<p>0123456789", 20);
    EXPECT_FALSE(IsAsText(metadata::SheetAsHtml(sheet, left)));
    EXPECT_EQ(left.work, 30);
    EXPECT_FALSE(IsAsText(metadata::SheetAsHtml(sheet, left)));
    EXPECT_TRUE(IsAsText(metadata::SheetAsHtml(sheet, left)));
    for (int more = 0; more < 100; ++more)
        EXPECT_LT(metadata::SheetAsHtml(sheet, left).size(), 1000);
    EXPECT_EQ(metadata::SheetAsHtml({}, left), QString());
    EXPECT_GE(left.characters, 0);
    EXPECT_GE(left.work, 0);
}

} // namespace
} // namespace tessaro::test
