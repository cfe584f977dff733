#include "presentation/RowsColumnsFile.h"

#include "PresentationTest.h"
#include "platform/Files.h"
#include "support/WriteLimit.h"

#include <QDir>
#include <QFile>

#include <random>

namespace tessaro {

namespace {

using F = PivotField;
using Fields = RowsColumns::FieldList;

class RowsColumnsFileTest : public test::SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        StartSample();
        saved_.Place(F::TimePeriod, Placement::Row);
        saved_.Place(F::AreaName, Placement::Row);
        saved_.Place(F::Indicator, Placement::Column);
    }
    RowsColumns saved_;
};

} // namespace

TEST_F(RowsColumnsFileTest, BytesOfBothWizards) {
    EXPECT_EQ(LayoutBytes(saved_, WizardKind::Table), QByteArray("[TableWizard Selection]\r\n"
                                                                 " \r\n"
                                                                 " \r\n"
                                                                 "Rows | Columns\r\n"
                                                                 "Rows             : T.TimePeriod\r\n"
                                                                 "Rows             : A.AreaName\r\n"
                                                                 "Columns          : IUS.[Indicator]\r\n"));
    EXPECT_TRUE(LayoutBytes(saved_, WizardKind::Graph).startsWith("[GraphWizard Selection]\r\n"));
    EXPECT_EQ(LayoutBytes({}, WizardKind::Table).count('\n'), 4);
}

TEST_F(RowsColumnsFileTest, AShortFileGivesWhatItHas) {
    RowsColumns loaded;
    loaded.Place(F::Source, Placement::Column);
    EXPECT_EQ(ReadLayout(LayoutBytes(saved_, WizardKind::Table), loaded), LayoutRead::Short); // three of seven
    EXPECT_EQ(loaded, saved_);
    for (const F field : saved_.Available())
        saved_.Place(field, Placement::Column);
    EXPECT_EQ(ReadLayout(LayoutBytes(saved_, WizardKind::Table), loaded), LayoutRead::Whole);
    EXPECT_EQ(loaded, saved_);
}

TEST_F(RowsColumnsFileTest, ACutFileGivesWholeLinesOrIsDamaged) {
    const QByteArray whole = LayoutBytes(saved_, WizardKind::Table);
    RowsColumns before;
    before.Place(F::Source, Placement::Column);
    int damaged = 0;
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        RowsColumns loaded = before;
        if (ReadLayout(whole.left(length), loaded) == LayoutRead::Damaged) {
            EXPECT_EQ(loaded, before) << length;
            ++damaged;
            continue;
        }
        const Fields& rows = loaded.Rows();
        ASSERT_LE(rows.size(), saved_.Rows().size());
        EXPECT_TRUE(std::equal(rows.begin(), rows.end(), saved_.Rows().begin())) << length;
        EXPECT_TRUE(loaded.Columns().empty() || loaded == saved_) << length;
    }
    EXPECT_GT(damaged, whole.size() / 2);
}

TEST_F(RowsColumnsFileTest, OddLines) {
    constexpr const char* head = "x\n\n\n\n";
    const struct {
        const char* what;
        QByteArray lines;
        Fields rows;
        Fields columns;
    } cases[] = {
        {"case and ends of lines",
         "ROWS             : t.timeperiod\ncolumns          : IUS.UNIT",
         {F::TimePeriod},
         {F::Unit}},
        {"blanks about the key", "  Rows             :    A.AreaID  \r\n", {F::AreaID}, {}},
        {"a field twice", "Rows             : IUS.Unit\nColumns          : IUS.Unit\n", {F::Unit}, {}},
        {"an eighth line isn't read",
         QByteArray("Rows             : IUS.Unit\n\n\n\n\n\n\n") + "rubbish\n",
         {F::Unit},
         {}},
    };
    for (const auto& c : cases) {
        RowsColumns loaded;
        EXPECT_NE(ReadLayout(head + c.lines, loaded), LayoutRead::Damaged) << c.what;
        EXPECT_EQ(loaded.Rows(), c.rows) << c.what;
        EXPECT_EQ(loaded.Columns(), c.columns) << c.what;
    }
}

TEST_F(RowsColumnsFileTest, DamagedFilesChangeNothing) {
    const QByteArray good = "Rows             : IUS.Unit\n";
    for (const QByteArray& lines :
         {QByteArray(), QByteArray("Pages            : IUS.Unit\n"), QByteArray("Rows             : IUS.Colour\n"),
          QByteArray("Rows            : IUS.Unit\n"), QByteArray(good + "\x01\x02\x03"),
          QByteArray(good + "Columns          : IUS.[Indic")}) {
        RowsColumns loaded = saved_;
        EXPECT_EQ(ReadLayout("x\n\n\n\n" + lines, loaded), LayoutRead::Damaged) << lines.toStdString();
        EXPECT_EQ(loaded, saved_);
    }
}

TEST_F(RowsColumnsFileTest, AnyBytesGiveAnArrangement) {
    std::mt19937 random(20);
    const QByteArray whole = LayoutBytes(saved_, WizardKind::Graph);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes = whole;
        for (int change = 0; change < 12; ++change)
            bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] = static_cast<char>(random());
        RowsColumns loaded;
        static_cast<void>(ReadLayout(bytes, loaded));
        ASSERT_EQ(loaded.Rows().size() + loaded.Columns().size() + loaded.Available().size(), 7u);
    }
}

TEST_F(RowsColumnsFileTest, FilesAreReplacedAndMissingOnesLeaveAllAsItWas) {
    const QString file = LayoutFolderForWriting() + QStringLiteral("/Default.twf");
    ASSERT_TRUE(SaveRowsColumns(file, {}, WizardKind::Table));
    ASSERT_TRUE(SaveRowsColumns(file, saved_, WizardKind::Table));
    EXPECT_EQ(*ReadWholeFile(file), LayoutBytes(saved_, WizardKind::Table));
    RowsColumns loaded;
    EXPECT_TRUE(LoadRowsColumns(file, loaded));
    EXPECT_EQ(loaded, saved_);
    EXPECT_FALSE(LoadRowsColumns(Folder() + QStringLiteral("/none.twf"), loaded));
    EXPECT_EQ(loaded, saved_);
    EXPECT_FALSE(SaveRowsColumns(Folder() + QStringLiteral("/none/none.twf"), saved_, WizardKind::Table));
}

TEST_F(RowsColumnsFileTest, AFullDiskKeepsTheOldFile) {
    const QString file = LayoutFolderForWriting() + QStringLiteral("/Default.twf");
    ASSERT_TRUE(SaveRowsColumns(file, {}, WizardKind::Table));
    {
        const test::WriteLimit full(100);
        EXPECT_FALSE(SaveRowsColumns(file, saved_, WizardKind::Table));
    }
    EXPECT_EQ(*ReadWholeFile(file), LayoutBytes({}, WizardKind::Table));
    EXPECT_EQ(QDir(LayoutFolderForWriting()).entryList({QStringLiteral("Default*")}, QDir::Files).size(), 1);
}

TEST_F(RowsColumnsFileTest, AnApplicationFolderThatCannotBeWrittenSendsLayoutsToTheUsersOwn) {
    if (geteuid() == 0) GTEST_SKIP() << "root writes everywhere";
    QFile::setPermissions(AppPath, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    EXPECT_TRUE(LayoutFolderForWriting().startsWith(CacheFolder));
    QFile::setPermissions(AppPath, QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::WriteOwner);
}

} // namespace tessaro
