#include "formats/CsvLook.h"
#include "formats/Encodings.h"
#include "formats/ReadError.h"
#include "formats/ReadRows.h"

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::SizeIs;

class CsvReaderTest : public FilesTest {
  protected:
    std::vector<std::string> Read(const QByteArray& bytes) {
        const QString path = Write(bytes);
        return RowsOf(*OpenCsv(path, FindCsvForm(path)));
    }
};

TEST_F(CsvReaderTest, ReadsQuotesLineEndsAndBlanks) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"a,b\n1,2\n", {"a|b", "1|2"}},
        {"a,b\r\n1,2\r\n", {"a|b", "1|2"}},
        {"a,b\r1,2", {"a|b", "1|2"}},
        {"a,b\n\n\n1,2\n\n", {"a|b", "1|2"}},
        {"a,b\n\"x, y\",\"say \"\"yes\"\"\"\n", {"a|b", "x, y|say \"yes\""}},
        {"a,b\n\"two\nlines\",2\n", {"a|b", "two\nlines|2"}},
        {"a,b\nfeet 5\" high,2\n", {"a|b", "feet 5\" high|2"}},
        {"a,b\n\"x\"y,2\n", {"a|b", "xy|2"}},
        {"a,b\n1\n1,2,3\n", {"a|b", "1", "1|2|3"}},
        {"a,b\n1,", {"a|b", "1|"}},
        {"a,b\n1,\"never closed\n2,3\n", {"a|b", "1|never closed\n2,3\n[open quote]"}},
        {"", {}}};
    for (const auto& [bytes, rows] : cases)
        EXPECT_THAT(Read(bytes), ElementsAreArray(rows)) << bytes;
}

TEST_F(CsvReaderTest, FindsDelimiterAndEncoding) {
    const struct {
        QByteArray bytes;
        const char* encoding;
        char delimiter;
        std::string second;
    } cases[] = {
        {"Pays;Valeur\nC\xC3\xB4te d'Ivoire;1,5\n", "UTF-8", ';', "Côte d'Ivoire|1,5"},
        {"\xEF\xBB\xBFPays\tValeur\nB\xC3\xA9nin\t1\n", "UTF-8", '\t', "Bénin|1"},
        {"Pays;Valeur;Ann\xE9\x65\nB\xE9nin;1,5;1\nC\xF4te d'Ivoire;2,5;2\nS\xE9n\xE9gal;3,0;3\n", "windows-1252", ';',
         "Bénin|1,5|1"},
        {QByteArray("\xFF\xFE"
                    "a\0,\0b\0\n\0\xE9\0,\0"
                    "2\0\n\0",
                    18),
         "UTF-16LE", ',', "é|2"},
        {QByteArray("\0a\0,\0b\0\n\0x\0,\0"
                    "2\0\n",
                    16),
         "UTF-16BE", ',', "x|2"},
        {"a,b\nC\xC3\xB4te,1\nB\xC3\xA9nin,2\nS\xE9n\xE9gal,3\n", "UTF-8", ',', "S\uFFFDn\uFFFDgal|3[bad text]"},
        {"a|b|c\n1,5|2|3\n", "UTF-8", '|', "1,5|2|3"}};
    for (const auto& one : cases) {
        const QString path = Write(one.bytes);
        const CsvForm form = FindCsvForm(path);
        EXPECT_EQ(form.encoding, one.encoding);
        EXPECT_EQ(form.delimiter, one.delimiter);
        const std::vector<std::string> rows = RowsOf(*OpenCsv(path, form));
        ASSERT_THAT(rows, testing::Contains(one.second));
    }
}

TEST_F(CsvReaderTest, TellsBytesOfAnotherEncodingAndTooManyFields) {
    const QString mixed = Write("a,b\nB\xE9nin,1\nx,2\n");
    EXPECT_THAT(RowsOf(*OpenCsv(mixed, {"UTF-8", ','})), ElementsAre("a|b", "B\uFFFDnin|1[bad text]", "x|2"));
    const QString wide = Write(QByteArray(1'000'000, ',') + "\n1,2\n");
    const std::vector<std::string> rows = RowsOf(*OpenCsv(wide, {"UTF-8", ','}));
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[0], std::string(kMostFields - 1, '|') + "[too many]");
    EXPECT_EQ(rows[1], "1|2");
}

// Pieces of a file end anywhere: within letters, quotes and line ends.
TEST_F(CsvReaderTest, ReadsTheSameWhereverPiecesEnd) {
    QByteArray bytes("n,text\r\n");
    std::vector<std::string> expected{"n|text"};
    for (int i = 0; i < 60'000; ++i) {
        const QByteArray number = QByteArray::number(i);
        bytes += number + ",\"\xC3\xA9\"\"" + number + "\r\n\xE2\x82\xAC\"\r\n";
        expected.push_back(number.toStdString() + "|\u00E9\"" + number.toStdString() + "\r\n\u20AC");
    }
    EXPECT_EQ(RowsOf(*OpenCsv(Write(bytes), {"UTF-8", ','})), expected);
}

TEST_F(CsvReaderTest, SaysWhyAFileIsNotRead) {
    EXPECT_THROW(static_cast<void>(FindCsvForm(folder_.filePath(QStringLiteral("none")))), ReadError);
    EXPECT_THROW(static_cast<void>(OpenCsv(Write("a"), {"no-such", ','})), ReadError);
    for (const QByteArray& name : OfferedEncodings())
        EXPECT_TRUE(IsEncoding(name)) << name.constData();
}

} // namespace
} // namespace tessaro::test
