#include "presentation/TableExport.h"

#include "PresentationTest.h"
#include "view/SourcesAndNotes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gmock/gmock.h>
#include <map>

namespace tessaro::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The sample's values as a table of areas and years by indicator and subgroup, with a note and texts like formulas.
class TableExportTest : public PresentationTest {
  protected:
    void SetUp() override {
        PresentationTest::SetUp();
        Run(QStringLiteral("UPDATE Area SET AreaName = '=1+1' WHERE AreaNId = 1"));
        SelectEverything();
        ShowFootnotes = true;
        options_.title = QStringLiteral("Land & \"people\"");
        options_.subTitle = QStringLiteral("@all");
        RowsColumns arrangement;
        arrangement.SetDefaultRowsColumns();
        ASSERT_EQ(ReadShownTable(arrangement, options_, shown_).result, ShowResult::Built);
    }
    [[nodiscard]] QString File(const char* name) const { return Folder() + QLatin1Char('/') + QLatin1String(name); }
    [[nodiscard]] std::string Text(const char* name) const {
        return ReadWholeFile(File(name)).value_or(QByteArray("no file")).toStdString();
    }
    /// How many values the selection has, by a statement of its own.
    [[nodiscard]] static int ValuesInView() {
        return static_cast<int>(
            Select(QStringLiteral("SELECT Count(*) FROM Data AS D, _SelTimePeriod AS T, _SelArea AS A, _SelIUSNId AS I "
                                  "WHERE D.TimePeriodNId = T.TimePeriodNId AND D.AreaNId = A.AreaNId AND D.IUSNId = "
                                  "I.IUSNId AND D.SourceNId = I.SourceNId"))
                .Number(std::size_t{0}));
    }

    TableOptions options_;
    ShownTable shown_;
};

TEST_F(TableExportTest, APageHasTitlesRowsNotesAndSources) {
    ASSERT_TRUE(SaveTablePage(File("Table.htm"), shown_));
    const std::string page = Text("Table.htm");
    EXPECT_THAT(page, HasSubstr("<h1>Land &amp; &quot;people&quot;</h1>"));
    EXPECT_THAT(page, HasSubstr("<p class=\"sub\">@all</p>"));
    EXPECT_THAT(page, HasSubstr("<th scope=\"row\">'=1+1</th>"));
    EXPECT_EQ(QByteArray::fromStdString(page).count("<tr>"), shown_.table.RowCount() + 1);
    EXPECT_EQ(QByteArray::fromStdString(page).count("<dt>"), SourcesOfSelection().size());
    ASSERT_TRUE(shown_.table.HasFootnotes());
    EXPECT_THAT(page, HasSubstr("<sup>1</sup></td>"));
    EXPECT_THAT(page, HasSubstr("<li><sup>1</sup> "));
    QProcess reader;
    reader.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral(TESSARO_TESTS "/support/read_html.py"), File("Table.htm")});
    ASSERT_TRUE(reader.waitForFinished(60000) && reader.exitCode() == 0);
    EXPECT_TRUE(QJsonDocument::fromJson(reader.readAllStandardOutput()).object().value("wrong").toArray().isEmpty());
    ShowFootnotes = false;
    RowsColumns arrangement;
    arrangement.SetDefaultRowsColumns();
    ShownTable plain;
    ASSERT_EQ(ReadShownTable(arrangement, options_, plain).result, ShowResult::Built);
    ASSERT_TRUE(SaveTablePage(File("Table.htm"), plain));
    EXPECT_THAT(Text("Table.htm"), Not(HasSubstr("<sup>")));
}

TEST_F(TableExportTest, APageHasTheColoursOfTheRanges) {
    shown_.options.addColor = true;
    shown_.options.ranges.records = InitColorRanges();
    ASSERT_FALSE(shown_.options.ranges.records.empty());
    ASSERT_TRUE(SaveTablePage(File("Table.htm"), shown_));
    const QByteArray page = QByteArray::fromStdString(Text("Table.htm"));
    EXPECT_EQ(page.count("<td class=\"n\" style=\"background:#"), ValuesInView()) << "every value lies in a range";
    for (const QColor& color : shown_.options.ranges.colors)
        EXPECT_GE(page.count("background:" + color.name().toLatin1()), 2) << "a value, and the legend";
}

TEST_F(TableExportTest, ACsvHasTheTableAndBesideItTitlesNotesAndSources) {
    const QString file = File("Table.table.csv");
    ASSERT_TRUE(IsTableCsvName(file));
    ASSERT_TRUE(SaveTableCsv(file, shown_));
    const QList<QByteArray> lines = QByteArray::fromStdString(Text("Table.table.csv")).split('\n');
    EXPECT_EQ(lines.size(), shown_.table.RowCount() + 2);
    int values = 0;
    for (const std::vector<PivotCell>& row : shown_.table.cells)
        for (const PivotCell& cell : row)
            values += cell.value.isEmpty() ? 0 : 1;
    EXPECT_EQ(values, ValuesInView()) << "nothing of the selection is missing";
    EXPECT_THAT(Text("Table.table.csv"), HasSubstr("'=1+1"));
    EXPECT_THAT(Text("Table.notes.csv"), HasSubstr("\"Land & \"\"people\"\"\"\r\n'@all\r\n"));
    const QString note = FootnoteText(1);
    ASSERT_FALSE(note.isEmpty());
    EXPECT_THAT(Text("Table.notes.csv"), HasSubstr(note.toStdString()));
    for (const QString& source : SourcesOfSelection())
        EXPECT_THAT(Text("Table.sources.csv"), HasSubstr(source.toStdString()));
}

TEST_F(TableExportTest, ATextHasAllOfItInOneFile) {
    ASSERT_TRUE(SaveTableText(File("Table.txt"), shown_));
    const QList<QByteArray> lines = QByteArray::fromStdString(Text("Table.txt")).split('\n');
    EXPECT_EQ(lines[0], QByteArray("Land & \"people\""));
    EXPECT_EQ(lines[1], QByteArray("'@all"));
    EXPECT_EQ(lines[3].count('\t'), shown_.table.FieldCount() + shown_.table.ColumnCount() - 1);
    EXPECT_EQ(lines[4].count('\t'), lines[3].count('\t'));
    EXPECT_THAT(Text("Table.txt"), HasSubstr(FootnoteText(1).toStdString()));
    EXPECT_FALSE(SaveTableText(QStringLiteral("/proc/Table.txt"), shown_));
}

TEST_F(TableExportTest, ItsValuesAreThoseInView) {
    const TableValues values;
    ASSERT_EQ(values.Count(), ValuesInView());
    std::multimap<QString, QString> told;
    for (int i = 0; i < values.Count(); ++i)
        told.emplace(values.At(i).areaId + values.At(i).period + values.At(i).indicator + values.At(i).subgroup +
                         values.At(i).source,
                     values.At(i).value);
    for (Records rows = Select(QStringLiteral(
             "SELECT A.AreaID, T.TimePeriod, I.[Indicator], I.Subpop, I.Source, D.Datavalue FROM Data AS D, "
             "_SelTimePeriod AS T, _SelArea AS A, _SelIUSNId AS I WHERE D.TimePeriodNId = T.TimePeriodNId AND "
             "D.AreaNId = A.AreaNId AND D.IUSNId = I.IUSNId AND D.SourceNId = I.SourceNId"));
         !rows.atEnd(); rows.MoveNext()) {
        const auto found =
            told.find(rows.Text(std::size_t{0}) + rows.Text(1) + rows.Text(2) + rows.Text(3) + rows.Text(4));
        ASSERT_NE(found, told.end());
        EXPECT_EQ(found->second, rows.Text(5));
        told.erase(found);
    }
    EXPECT_TRUE(told.empty());
}

} // namespace
} // namespace tessaro::test
