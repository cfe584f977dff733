#include "exchange/ImportSession.h"
#include "session/Messages.h"
#include "support/FullDisk.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaro::test {
namespace {

using testing::IsEmpty;

QByteArray Rows(int count, const char* indicator = "Population") {
    QByteArray bytes("Year,Area,Indicator,Unit,Subgroup,Source,Value\n");
    for (int year = 0; year < count; ++year)
        bytes += QByteArray::number(1100 + year % 900) + ",Asia," + indicator + ' ' + QByteArray::number(year / 900) +
                 ",Number,Total,Office," + QByteArray::number(year) + "\n";
    return bytes;
}

using ImportFailuresTest = ImportSession;

// Small files of each kind, cut after every byte: refused, or read so far; nothing else happens.
TEST_F(ImportFailuresTest, AFileOfAnyKindThatIsCutAnywhereIsReadSoFarOrRefused) {
    const struct {
        const char* name;
        QByteArray whole;
        std::int64_t values;
    } files[] = {
        {"long.csv", "Pays;Ann\xE9\x65;Valeur\r\nInde;2010;1,5\r\n\"Chine\";2010;2 000,5\r\n", 2},
        {"wide.csv",
         "\xEF\xBB\xBF\"Data Source\",\"x\",\n\n\"Country Name\",\"Country "
         "Code\",\"2009\",\"2010\",\n\"India\",\"IND\","
         "\"1.5\",\"\",\n\"China\",\"CHN\",\"2.5\",\"3.5\",\n",
         3},
        {"sdmx.csv",
         "DATAFLOW,REF_AREA,INDICATOR,TIME_PERIOD,OBS_VALUE,UNIT_MEASURE\nX:Y(1),IND,POP,2001,1.5,PS\n"
         "X:Y(1),CHN,POP,2001,2.5,PS\n",
         2},
        {"keyed.tsv", "freq,unit,geo\\TIME_PERIOD\t2001 \t2002 \nA,PC,IND\t7.9 b\t: \nA,PC,CHN\t: c\t8.7 bp\n", 2},
        {"table.px",
         "CHARSET=\"ANSI\";CONTENTS=\"Population\";UNITS=\"persons\";STUB=\"Area\";HEADING=\"Year\";VALUES(\"Area\")="
         "\"India\",\"China\";VALUES(\"Year\")=\"2001\",\"2002\";TIMEVAL(\"Year\")=TLIST(A1);DATA=\n1 2.5\n\"..\" 4;\n",
         3},
        {"set.json",
         R"({"class":"dataset","id":["geo","time"],"size":[2,1],"role":{"time":["time"],"geo":["geo"]},"dimension":{)"
         R"("geo":{"category":{"index":["IND","CHN"]}},"time":{"category":{"index":["2001"]}}},"value":[1.5,2]})",
         2},
    };
    const QByteArray before = Bytes(base_);
    for (const auto& file : files) {
        for (qsizetype bytes = 0; bytes <= file.whole.size(); ++bytes) {
            const QString path = Write(file.whole.left(bytes), QLatin1String(file.name));
            try {
                const ImportDraft draft = GuessDraft(path);
                if (!ProblemOf(draft).isEmpty()) continue;
                const ImportCounts& counts = CheckImport(path, draft, Into(ImportInto::Copy))->counts;
                EXPECT_LE(counts.fresh, file.values) << file.name << ' ' << bytes;
                EXPECT_TRUE(bytes < file.whole.size() || counts.fresh == file.values) << file.name;
            } catch (const ReadError& error) {
                EXPECT_STRNE(error.what(), "");
                EXPECT_LT(bytes, file.whole.size()) << file.name;
            }
        }
    }
    EXPECT_EQ(Bytes(base_), before);
    EXPECT_THAT(Stages(), IsEmpty());
}

TEST_F(ImportFailuresTest, AFileThatIsCutAnywhereIsReadSoFarOrRefused) {
    const QByteArray whole =
        "Year,Area,Indicator,Unit,Subgroup,Source,Value\n2010,\"Asia\",\"Pop \"\"x\"\"\",Number,Total,"
        "Office,1\n2011,\"In\nd\",P,Number,Total,Office,2\n";
    const QByteArray before = Bytes(base_);
    for (qsizetype bytes = 0; bytes <= whole.size(); ++bytes) {
        const QString file = Write(whole.left(bytes));
        const ImportDraft draft = GuessDraft(file);
        const auto checked = CheckImport(file, draft, Into(ImportInto::Copy));
        const ImportCounts& counts = checked->counts;
        EXPECT_LE(counts.fresh + counts.refused + counts.empty, 2 * std::max(draft.ValueColumns(), 1)) << bytes;
    }
    EXPECT_EQ(Bytes(base_), before);
    EXPECT_THAT(Stages(), IsEmpty());
}

TEST_F(ImportFailuresTest, AFullDiskLeavesWhatWasThere) {
    const QString file = Write(Rows(20'000));
    const auto checked = CheckImport(file, GuessDraft(file), Into(ImportInto::Itself));
    const QByteArray before = Bytes(base_);
    int failures = 0;
    for (const int part : {1, 20, 50, 80, 99}) {
        WrittenImport written;
        {
            const FullDisk full(static_cast<rlim_t>(QFileInfo(base_).size() * part / 100));
            written = WriteImport(*checked);
        }
        ASSERT_FALSE(written.made) << part;
        EXPECT_FALSE(written.message.isEmpty());
        EXPECT_EQ(Bytes(base_), before);
        ++failures;
    }
    EXPECT_EQ(failures, 5);
    EXPECT_FALSE(CanUndoImport(base_));
    ASSERT_TRUE(WriteImport(*checked).made) << "and with room again it goes on";
    {
        const FullDisk full(1000);
        EXPECT_ANY_THROW(static_cast<void>(CheckImport(file, GuessDraft(file), Into(ImportInto::Copy))));
    }
    EXPECT_THAT(Out(), IsEmpty());
}

// A process that is ended in the middle leaves the database whole, and the next import clears what it left.
TEST_F(ImportFailuresTest, AKillLeavesTheDatabaseWhole) {
    const QString file = Write(Rows(9'000));
    const std::vector<std::string> before = Values(base_);
    Connection.reset();
    for (const int percent : {0, 10, 30, 65, 80}) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const auto checked = CheckImport(file, GuessDraft(file), Into(ImportInto::Itself));
            static_cast<void>(WriteImport(*checked, [&](int done) {
                if (done >= percent) ::_exit(0);
            }));
            ::_exit(1);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(WEXITSTATUS(status), 0);
        EXPECT_EQ(Values(base_), before) << percent;
    }
    ASSERT_TRUE(WriteImport(*CheckImport(file, GuessDraft(file), Into(ImportInto::Itself))).made);
    EXPECT_THAT(QDir(Folder()).entryList({QStringLiteral("*.part*")}), IsEmpty());
}

TEST_F(ImportFailuresTest, RefusesTargetsInUseAndWhatIsOutOfDate) {
    const QString file = Write(Rows(3));
    ImportTarget target = Into(ImportInto::Copy);
    target.file = base_;
    EXPECT_EQ(WriteImport(*CheckImport(file, GuessDraft(file), target)).message, FilledText(QStringLiteral("012"), {}));
    target = Into(ImportInto::Copy);
    const auto checked = CheckImport(file, GuessDraft(file), target);
    static_cast<void>(Write(Rows(4)));
    EXPECT_EQ(WriteImport(*checked).message, FilledText(QStringLiteral("TS_ImportStale"), {}));
    // Another program changes the database while the import is being written.
    const auto itself = CheckImport(file, GuessDraft(file), Into(ImportInto::Itself));
    const WrittenImport late = WriteImport(*itself, [this](int percent) {
        QFile touched(base_);
        if (percent >= 65 && touched.open(QIODevice::ReadWrite))
            touched.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime);
    });
    EXPECT_FALSE(late.made);
    EXPECT_EQ(late.message, FilledText(QStringLiteral("TS_ImportStale"), {}));
    EXPECT_FALSE(CanUndoImport(base_));
    target.file = QStringLiteral("/proc/New.mdb");
    const WrittenImport nowhere = WriteImport(*CheckImport(file, GuessDraft(file), target));
    EXPECT_FALSE(nowhere.made);
    EXPECT_FALSE(nowhere.message.isEmpty());
    EXPECT_THAT(Out(), IsEmpty());
}

TEST_F(ImportFailuresTest, StopsWhenTheUserGivesUp) {
    const QString file = Write(Rows(20'000));
    const ImportProgress stop = [](int percent) {
        if (percent > 20) throw ImportGivenUp();
    };
    EXPECT_THROW(static_cast<void>(CheckImport(file, GuessDraft(file), Into(ImportInto::Copy), stop)), ImportGivenUp);
    const auto checked = CheckImport(file, GuessDraft(file), Into(ImportInto::Copy));
    const WrittenImport written = WriteImport(*checked, stop);
    EXPECT_FALSE(written.made);
    EXPECT_TRUE(written.message.isEmpty());
    EXPECT_THAT(Out(), IsEmpty());
}

TEST_F(ImportFailuresTest, NamesBeyondAColumnAreRefused) {
    const QByteArray name(300, 'x');
    const QString file = Write("Year,Area,Indicator,Unit,Subgroup,Source,Value\n2010,Asia," + name +
                               ",Number,Total,Office,1\n2010,Asia,Population,Number,Total," + name +
                               ",1\n2010,Asia,=1+1," + "Number,Total,Office,=2+2\n");
    const auto checked = CheckImport(file, GuessDraft(file), Into(ImportInto::Copy));
    EXPECT_EQ(CountsOf(*checked), "new 0, same 0, changed 0, empty 0, refused 3");
    EXPECT_EQ(checked->counts.by[static_cast<std::size_t>(Refusal::TooLong)], 2);
    EXPECT_EQ(checked->Additions().indicators, QStringList());
}

} // namespace
} // namespace tessaro::test
