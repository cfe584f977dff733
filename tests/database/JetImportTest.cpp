#include "database/JetImport.h"

#include "JetFileWriter.h"
#include "TestPlaces.h"
#include "database/Database.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/JetCopies.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/Locales.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>

namespace tessaro::test {
namespace {

class JetImportTest : public SessionTest {
  protected:
    void SetUp() override {
        StartSample();
        genuine_ = Folder() + "/Genuine [en].mdb";
        Write({});
    }
    /// The sample, changed by statements, as a genuine file.
    void Write(const QStringList& statements) const {
        const QString ours = Folder() + "/ours.mdb";
        QFile::remove(ours);
        MakeSampleDatabase(ours);
        const auto connection = CreateTheConnection(ours);
        for (const QString& sql : statements)
            ASSERT_TRUE(Execute(sql, connection.get())) << sql.toStdString();
        WriteJetFile(genuine_, *connection);
    }
    /// A file that another program made: several pages a table, indexes, long identifiers, memos of several pages.
    [[nodiscard]] QString Odd() const {
        const QString path = Folder() + "/odd.mdb";
        const auto packed = ReadWholeFile(FindPath(QStringLiteral(TESSARO_TESTS "/database/data/odd.mdb.z")));
        EXPECT_TRUE(packed && ReplaceFile(path, qUncompress(*packed)));
        return path;
    }
    [[nodiscard]] static QStringList Copies() { return QDir(DataCacheFolder + "/Imported").entryList(QDir::Files); }
    /// Null and the empty text look alike: the library tells no difference.
    [[nodiscard]] static std::string Rows(const QString& sql) { return Select(sql).rows().GetString(-1, "|", ";"); }
    QString genuine_;
};

TEST_F(JetImportTest, KnowsAGenuineFile) {
    EXPECT_TRUE(IsGenuineJetFile(genuine_));
    EXPECT_FALSE(IsGenuineJetFile(Folder() + "/ours.mdb"));
    EXPECT_FALSE(IsGenuineJetFile(Folder() + "/missing.mdb"));
    EXPECT_EQ(FileToOpen(genuine_), genuine_); // no copy yet
}

TEST_F(JetImportTest, OpensThroughACopyWithTheSameContents) {
    ASSERT_TRUE(OpenDatabaseFile(genuine_));
    EXPECT_EQ(CurrentDatabase, genuine_);
    const QString questions[] = {
        "SELECT RowNId, TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue FROM Data ORDER BY RowNId",
        "SELECT * FROM Area ORDER BY AreaNId",
        "SELECT * FROM Indicator ORDER BY IndicatorGId",
        "SELECT * FROM Indicator_Unit_Subpop ORDER BY IUSNId",
        "SELECT * FROM [Language] ORDER BY LanguageCode",
        "SELECT * FROM Indicator_Source ORDER BY IUSNId, SourceNId",
    };
    std::vector<std::string> copied;
    for (const QString& sql : questions)
        copied.push_back(Rows(sql));
    ASSERT_TRUE(OpenDatabaseFile(Folder() + "/ours.mdb"));
    for (std::size_t i = 0; i < copied.size(); ++i)
        EXPECT_EQ(copied[i], Rows(questions[i])) << questions[i].toStdString();
    EXPECT_EQ(std::ranges::count(copied[0], ';'), 17);
}

TEST_F(JetImportTest, CopiesOnceAndAgainOnlyWhenTheFileChanged) {
    ASSERT_EQ(ImportJetFile(genuine_).outcome, JetImport::Copied);
    const QStringList first = Copies();
    ASSERT_EQ(first.size(), 1);
    const QDateTime made = QFileInfo(FileToOpen(genuine_)).lastModified();
    ASSERT_EQ(ImportJetFile(genuine_).outcome, JetImport::Copied);
    EXPECT_EQ(QFileInfo(FileToOpen(genuine_)).lastModified(), made);

    Write({"DELETE * FROM Data WHERE IUSNId > 1", "DROP TABLE Template_Log"});
    ASSERT_TRUE(OpenDatabaseFile(genuine_));
    EXPECT_EQ(Rows("SELECT Count(*) FROM Data"), "11;");
    EXPECT_EQ(Copies().size(), 1);
    EXPECT_NE(Copies(), first);
}

TEST_F(JetImportTest, TextsKeepTheWidthsAndNumbersThePointThatTheFileHas) {
    const CommaLocale german;
    ASSERT_TRUE(german.works());
    ASSERT_TRUE(OpenDatabaseFile(Odd()));
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT Count(*) FROM Data", "4033;"},
        {"SELECT Max(Len(UnitGId)) FROM Unit", "121;"},
        {"SELECT Count(*) FROM Indicator_Unit_Subpop WHERE Len(UnitGId) = 121 AND UnitGId IN (SELECT UnitGId FROM "
         "Unit)",
         "18;"},
        {"SELECT Max(Len(Datavalue)) FROM Data", "71;"},
        {"SELECT Count(*) FROM Indicator WHERE Len(Info) > 4096", "5;"},
        {"SELECT Count(*) FROM Indicator_Unit_Subpop WHERE Min_Value <> Int(Min_Value)", "60;"},
        {"SELECT Count(*) FROM Indicator_Unit_Subpop WHERE Min_Value > Max_Value", "0;"},
    };
    for (const auto& [sql, rows] : cases)
        EXPECT_EQ(Rows(QLatin1String(sql)), rows) << sql;
    EXPECT_TRUE(Execute("INSERT INTO _SelIUSNId (IUSNId, UnitGId) SELECT IUSNId, UnitGId FROM Indicator_Unit_Subpop"));
}

TEST_F(JetImportTest, TheCallerIsToldHowFarItIsAndCanStopIt) {
    const QString odd = Odd();
    QList<int> told;
    EXPECT_FALSE(OpenDatabaseFile(odd, [&](int percent) {
        told << percent;
        return false;
    }));
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(messages, QStringList());
    EXPECT_EQ(Copies(), QStringList());
    told.clear();
    const auto note = [&](int percent) {
        told << percent;
        return true;
    };
    ASSERT_TRUE(OpenDatabaseFile(odd, note));
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_GE(told.last(), 80); // all rows are read
    told.clear();
    ASSERT_TRUE(OpenDatabaseFile(odd, note));
    EXPECT_EQ(told, QList<int>()) << "the copy is there";
}

TEST_F(JetImportTest, TheMessageTellsWhy) {
    QStringList texts;
    SetMessageAnswerer([&](const Message& message) {
        texts << message.text;
        return MessageCode::Ok;
    });
    const std::pair<QStringList, QString> cases[] = {
        {{"DROP TABLE Region", "DROP TABLE Goal"}, "TS_TablesMissing"},
        {{"UPDATE [Language] SET LanguageDefault = False"}, "TS_NoDefaultLanguage"},
        {{"UPDATE [Language] SET LanguageCode = 'e]'"}, "TS_JetRow"},
    };
    for (const auto& [statements, key] : cases) {
        Write(statements);
        EXPECT_FALSE(OpenDatabaseFile(genuine_));
        EXPECT_TRUE(texts.last().endsWith(key)) << texts.last().toStdString(); // the sample has no text for it
        EXPECT_EQ(Copies().filter(".part"), QStringList());
    }
}

TEST_F(JetImportTest, AFileCutAtAnyPageIsRefusedSoon) {
    const QByteArray whole = *ReadWholeFile(Odd());
    constexpr int kPage = 4096;
    const auto inFile = static_cast<int>(whole.size() / kPage);
    std::vector<int> cuts;
    for (int pages = 1; pages < inFile; ++pages)
        if (pages % 37 == 1 || pages > inFile - 10) cuts.push_back(pages);
    for (const int pages : cuts) {
        ASSERT_TRUE(ReplaceFile(genuine_, whole.left(pages * kPage)));
        const QDeadlineTimer limit(5000);
        EXPECT_FALSE(OpenDatabaseFile(genuine_)) << pages << " pages";
        EXPECT_FALSE(limit.hasExpired()) << pages << " pages";
        EXPECT_EQ(Copies().filter(".part"), QStringList()) << pages;
    }
}

TEST_F(JetImportTest, AGenuineFileThatIsNoDataDatabaseIsRefused) {
    Write({"DROP TABLE Region"});
    EXPECT_FALSE(OpenDatabaseFile(genuine_));
    EXPECT_EQ(messages, QStringList{"316"});
    Write({"DROP TABLE [Language]"});
    EXPECT_FALSE(OpenDatabaseFile(genuine_));
    EXPECT_EQ(messages, (QStringList{"316", "316"}));
}

TEST_F(JetImportTest, DamagedFilesAreRefusedAndLeaveNothingBehind) {
    const QByteArray good = *ReadWholeFile(genuine_);
    QRandomGenerator random(7);
    for (int round = 0; round < 12; ++round) {
        QByteArray bad = round == 0 ? good.left(5000) : good;
        for (int i = 0; i < 200; ++i)
            bad[random.bounded(static_cast<int>(bad.size() - 32)) + 32] = static_cast<char>(random.bounded(256));
        ASSERT_TRUE(ReplaceFile(genuine_, bad));
        (void)OpenDatabaseFile(genuine_); // good or refused, but here we still are
    }
    const QStringList left = Copies();
    for (const QString& name : left)
        EXPECT_FALSE(name.endsWith(".part")) << name.toStdString();
}

} // namespace
} // namespace tessaro::test
