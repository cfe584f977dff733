#include "TestPlaces.h"
#include "exchange/ImportSession.h"
#include "support/ReadXls.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::HasSubstr;

/// How a run of the program ended.
struct Ran {
    int status = -1;
    std::string out;
    std::string errors;
};

class ImportProgramTest : public ImportSession {
  protected:
    void SetUp() override {
        ImportSession::SetUp();
        Connection.reset();
    }

    static Ran Run(const QStringList& arguments) {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TESSARO_PROGRAMS "/tessaro-import"),
                      QStringList{QStringLiteral("--application"), QStringLiteral(TESSARO_INSTALLATION)} + arguments);
        EXPECT_TRUE(program.waitForFinished(120'000));
        return {program.exitCode(), program.readAllStandardOutput().toStdString(),
                program.readAllStandardError().toStdString()};
    }
    static QStringList Words(const char* text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); }
};

TEST_F(ImportProgramTest, ImportsWithAKeptMapping) {
    const QString file = Write("Year,Area,Population\n2010,Asia,4000\n2011,Atlantis,1\n");
    const QString mapping = Folder() + QStringLiteral("/kept.import");
    const QString report = Folder() + QStringLiteral("/report.csv");
    const QStringList base{QStringLiteral("--copy-of"), base_, QStringLiteral("--to"), Target()};
    const Ran looked =
        Run(base + QStringList{QStringLiteral("--check"), QStringLiteral("--keep-mapping"), mapping, file});
    EXPECT_EQ(looked.status, 3) << looked.errors;
    EXPECT_THAT(looked.out, HasSubstr("New values: 1"));
    EXPECT_EQ(Out(), QStringList());
    EXPECT_THAT(Bytes(mapping).toStdString(), HasSubstr("column=time;Year"));

    const QStringList with =
        base + QStringList{QStringLiteral("--mapping"), mapping, QStringLiteral("--report"), report};
    EXPECT_EQ(Run(with + QStringList{QStringLiteral("--strict"), file}).status, 3);
    EXPECT_EQ(Out(), QStringList());
    const Ran written = Run(with + QStringList{file});
    EXPECT_EQ(written.status, 3) << written.errors;
    EXPECT_THAT(Bytes(report).toStdString(), HasSubstr("3,3,Unknown area,Atlantis"));
    EXPECT_THAT(Values(Target()), testing::Contains(HasSubstr("Asia|2010|Population|Number|Total|Values|4000")));
    const QString book = Folder() + QStringLiteral("/report.xls");
    EXPECT_EQ(Run(base + QStringList{QStringLiteral("--check"), QStringLiteral("--report"), book, file}).status, 3);
    const std::vector<ReadSheet> sheets = ReadXls(book);
    ASSERT_EQ(sheets.size(), 5U);
    EXPECT_EQ(sheets[1].Text(2, 4), "Atlantis");
    const QString good = Write("Year,Area,Population\n2012,Asia,4100\n");
    EXPECT_EQ(Run({QStringLiteral("--into"), Target(), QStringLiteral("--mapping"), mapping, good}).status, 0);
    EXPECT_TRUE(CanUndoImport(Target()));
}

TEST_F(ImportProgramTest, TellsWrongArgumentsAndFiles) {
    EXPECT_EQ(Run({}).status, 2);
    EXPECT_EQ(Run(Words("--new a.mdb --into b.mdb x.csv")).status, 2);
    EXPECT_EQ(Run(Words("--copy-of a.mdb x.csv")).status, 2);
    const QString file = Write("Year,Area,Value\n2010,Asia,4000\n");
    const Ran none = Run({QStringLiteral("--new"), Target(), Folder() + QStringLiteral("/none.csv")});
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.errors, HasSubstr("none.csv"));
    EXPECT_EQ(Run({QStringLiteral("--into"), file, file}).status, 1) << "no database";
    EXPECT_EQ(Run({QStringLiteral("--new"), Target(), QStringLiteral("--mapping"), file, file}).status, 1);
    EXPECT_EQ(Out(), QStringList());
}

} // namespace
} // namespace tessaro::test
