#include "formats/CsvText.h"
#include "formats/FilesBeside.h"
#include "formats/JsonStatReader.h"
#include "formats/PxReader.h"
#include "formats/ReadRows.h"
#include "platform/Files.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::HasSubstr;
using testing::Not;

const QString kLongNote = QStringLiteral("Régions \"nord\" ") + QString(300, QLatin1Char('x'));

class ValueFilesTest : public FilesTest {
  protected:
    [[nodiscard]] static ValueTable Table() {
        static const std::vector<ValueRow> rows{
            {"2001", "AAA", "Land", "Pop", "Number", "Total", "Census", "1.50", kLongNote},
            {"2002", "AAA", "Land", "Pop", "Number", "Total", "=Survey", "2", {}},
            {"2002", "BBB", "Isle", "Pop", "Number", "Total", "Census", "-3", "=2+3"}};
        ValueTable table{static_cast<int>(rows.size()), [](int row) { return rows[static_cast<std::size_t>(row)]; }};
        table.aboutSource = [](const QString& source) { return QStringLiteral("About ") + source; };
        table.title = QStringLiteral("People");
        table.subTitle = QStringLiteral("Both years");
        return table;
    }
    [[nodiscard]] std::string Text(const char* name) const {
        return ReadWholeFile(Path(name)).value_or(QByteArray("no file")).toStdString();
    }
    [[nodiscard]] QStringList Names() const { return QDir(folder_.path()).entryList(QDir::Files); }
};

TEST_F(ValueFilesTest, NotesAndSourcesStandBesideACsv) {
    struct Case {
        const char* name;
        bool (*save)(const QString&, const ValueTable&);
    };
    for (const auto& [name, save] : {Case{"All.csv", SaveLongCsv}, Case{"All.wide.csv", SaveWideCsv}}) {
        QFile::remove(Path("All.notes.csv"));
        QFile::remove(Path("All.sources.csv"));
        ASSERT_TRUE(save(Path(name), Table()));
        const std::string notes = Text("All.notes.csv");
        EXPECT_THAT(notes, HasSubstr("People\r\nBoth years\r\n"));
        EXPECT_THAT(notes, HasSubstr("2001,AAA,Land,Pop,1.50,Number,Total,Census,\"Régions \"\"nord\"\" xxx"));
        EXPECT_THAT(notes, HasSubstr("2002,BBB,Isle,Pop,-3,Number,Total,Census,'=2+3\r\n"));
        EXPECT_THAT(notes, Not(HasSubstr("Survey")));
        EXPECT_THAT(Text("All.sources.csv"), HasSubstr("Census,About Census\r\n'=Survey,About =Survey\r\n"));
    }
}

TEST_F(ValueFilesTest, NotesOfAnEarlierTimeDoNotStay) {
    ASSERT_TRUE(SaveLongCsv(Path("All.csv"), Table()));
    const ValueTable plain{1, [](int) { return ValueRow{"2001", "A", "A", "P", "N", "T", "S", "1", {}}; }};
    ASSERT_TRUE(SaveLongCsv(Path("All.csv"), plain));
    EXPECT_THAT(Text("All.notes.csv"), Not(HasSubstr("nord")));
    EXPECT_THAT(Text("All.sources.csv"), Not(HasSubstr("Census")));
    ASSERT_TRUE(SaveLongCsv(Path("Other.csv"), plain));
    EXPECT_FALSE(QFile::exists(Path("Other.notes.csv"))) << "nothing to put into it";
}

// The disk fills up while the notes are written, or their place is taken: the old files stand.
TEST_F(ValueFilesTest, AllFilesAreWrittenOrNone) {
    const QByteArray old("old");
    for (const char* name : {"All.csv", "All.notes.csv", "All.sources.csv", "All.px", "All.json", "All.geojson"})
        ASSERT_TRUE(ReplaceFile(Path(name), old));
    const QStringList before = Names();
    {
        const FullDisk full(300); // the values fit, the notes don't
        for (const ValueForm& form : ValueForms())
            EXPECT_FALSE(form.save(folder_.filePath(QStringLiteral("All") + QLatin1String(form.ending)), Table()))
                << form.ending;
    }
    ASSERT_TRUE(QFile::remove(Path("All.sources.csv")) && QDir(folder_.path()).mkdir("All.sources.csv"));
    EXPECT_FALSE(SaveLongCsv(Path("All.csv"), Table()));
    EXPECT_TRUE(QDir(folder_.path()).rmdir("All.sources.csv") && ReplaceFile(Path("All.sources.csv"), old));
    EXPECT_EQ(Names(), before) << "nothing half made";
    for (const QString& name : before)
        EXPECT_EQ(ReadWholeFile(folder_.filePath(name)), old) << name.toStdString();
}

TEST_F(ValueFilesTest, APxFileHasTitlesSourcesAndNotesOfCells) {
    ASSERT_TRUE(SavePx(Path("All.px"), Table()));
    const std::string text = Text("All.px");
    EXPECT_THAT(text, HasSubstr("TITLE=\"People\";"));
    EXPECT_THAT(text, HasSubstr("SOURCE=\"Census; =Survey\";"));
    EXPECT_THAT(text, HasSubstr("NOTE=\"Both years#Census: About Census#=Survey: About =Survey\";"));
    EXPECT_THAT(text, HasSubstr("CELLNOTE(\"Isle\",\"Pop\",\"Number\",\"Total\",\"Census\",\"2002\")=\"=2+3\";"));
    EXPECT_THAT(text, HasSubstr("\"Régions 'nord' xxx"));
    for (const QByteArray& line : QByteArray::fromStdString(text).split('\n'))
        EXPECT_LE(line.size(), 256) << line.constData();
    PxReader reader(Path("All.px"));
    EXPECT_THAT(RowsOf(reader), testing::Contains("Isle|BBB|Pop|Number|Total|Census|2002|People|Number|"
                                                  "Census; =Survey|=2+3|-3"));
}

TEST_F(ValueFilesTest, AJsonStatFileHasTitlesSourcesAndNotesOfCells) {
    ASSERT_TRUE(SaveJsonStat(Path("All.json"), Table()));
    const QJsonObject set = QJsonDocument::fromJson(QByteArray::fromStdString(Text("All.json"))).object();
    EXPECT_EQ(set.value("label").toString(), "People");
    EXPECT_EQ(set.value("source").toString(), "Census; =Survey");
    EXPECT_EQ(set.value("note").toArray(), (QJsonArray{"Both years", kLongNote, "=2+3"}));
    const QJsonObject more = set.value("extension").toObject();
    EXPECT_EQ(more.value("sources").toArray()[1].toObject().value("about").toString(), "About =Survey");
    const QJsonObject cells = more.value("cellnotes").toObject();
    ASSERT_EQ(cells.size(), 2);
    for (auto cell = cells.begin(); cell != cells.end(); ++cell) {
        const double value = set.value("value").toObject().value(cell.key()).toDouble();
        EXPECT_EQ(value, cell.value().toInt() == 1 ? 1.5 : -3) << "the note stands at its value";
    }
    JsonStatReader reader(Path("All.json"));
    EXPECT_THAT(RowsOf(reader), testing::Contains(testing::EndsWith("||Census; =Survey||=2+3|-3")));
}

} // namespace
} // namespace tessaro::test
