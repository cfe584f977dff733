#include "session/Addresses.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "support/TestSession.h"

#include <QDir>

namespace tessaro::test {
namespace {

/// The data folder with Sample.mdb of the sample, and files put beside it.
class AddressesTest : public SessionTest {
  protected:
    void SetUp() override { StartSample(); }
    void Put(const char* name) const {
        ASSERT_TRUE(ReplaceFile(JoinPath({DataFolder(), QString::fromUtf8(name)}), "x"));
    }
};

TEST_F(AddressesTest, TheStartListTakesDatabasesButNotTheProgramsOwn) {
    for (const char* name : {"b.MDB", "InfoSel.mdb", "gallery.mdb", "notes.txt", "old.mdb.bak"})
        Put(name);
    EXPECT_EQ(ListOfDatabases(), (QStringList{"Local://Sample 1.0/b.MDB", "Local://Sample 1.0/old.mdb.bak",
                                              "Local://Sample 1.0/Sample.mdb"}));
}

TEST_F(AddressesTest, TheRescanAddsWithoutThatFilterAndDropsWhatIsGone) {
    Put("InfoSel.mdb");
    Put("new.MDB");
    Put("old.mdb.bak");
    const QStringList items = {"Local://Sample 1.0/sample.MDB", "Local://Sample 1.0/gone.mdb", "/elsewhere/mine.mdb"};
    const AddressChanges changes = RescanDataFolder(items);
    EXPECT_EQ(changes.added, (QStringList{"Local://Sample 1.0/InfoSel.mdb", "Local://Sample 1.0/new.MDB"}));
    EXPECT_EQ(changes.removed, QStringList{"Local://Sample 1.0/gone.mdb"});
}

TEST_F(AddressesTest, UsersOwnDatabasesBelowTheCacheFolderAreListedAndComeFirst) {
    const QString own = JoinPath({CacheFolder, "Data"});
    ASSERT_TRUE(ReplaceFile(own + "/mine.mdb", "x"));
    ASSERT_TRUE(ReplaceFile(own + "/sample.mdb", "x"));
    EXPECT_EQ(ListOfDatabases().size(), 2);
    EXPECT_EQ(PathOfAddress(AddressOfDatabase("Sample.mdb")), own + "/sample.mdb");
    EXPECT_TRUE(IsInDataFolder(own + "/mine.mdb"));
}

TEST_F(AddressesTest, TypedTextIsAnAddressANameOrAPath) {
    using Action = TypedDatabase::Action;
    const QString sample = JoinPath({DataFolder(), "Sample.mdb"});
    struct {
        const char* typed;
        Action action;
        QString text;
    } const cases[] = {
        {"   ", Action::Nothing, {}},
        {"sample", Action::SelectAddress, "Local://Sample 1.0/Sample.mdb"},
        {" SAMPLE.MDB ", Action::SelectAddress, "Local://Sample 1.0/Sample.mdb"},
        {"Local://Sample 1.0/Sample.mdb", Action::Load, sample},
        {"Local://Sample 0.9/sample", Action::Load, sample}, // an address of an older version
        {"/elsewhere/mine", Action::Load, "/elsewhere/mine.mdb"},
        {"Select a database", Action::Load, "Select a database.mdb"},
    };
    for (const auto& c : cases) {
        const TypedDatabase found = ResolveTypedDatabase(QString::fromLatin1(c.typed));
        EXPECT_EQ(found.action, c.action) << c.typed;
        EXPECT_EQ(found.text, c.text) << c.typed;
    }
}

TEST_F(AddressesTest, AChosenFileIsCheckedBeforeItIsOpened) {
    using Verdict = SelectedFile::Verdict;
    const QString sample = JoinPath({DataFolder(), "Sample.mdb"});
    EXPECT_EQ(CheckSelectedFile("/x/notes.txt", {}).verdict, Verdict::NoDatabaseFile);
    EXPECT_EQ(CheckSelectedFile(QString(), {}).verdict, Verdict::NoDatabaseFile);
    EXPECT_EQ(CheckSelectedFile(JoinPath({DataFolder(), "SAMPLE.MDB"}), {}).path, sample);
    EXPECT_EQ(CheckSelectedFile("/gone/Other.mdb", {}).verdict, Verdict::Missing);
    // The file went away, but the data folder has one of its name.
    const SelectedFile listed = CheckSelectedFile("/gone/sample.mdb", {"Local://Sample 1.0/Sample.mdb"});
    EXPECT_EQ(listed.verdict, Verdict::Good);
    EXPECT_EQ(listed.path, sample);
    EXPECT_EQ(listed.address, QString("Local://Sample 1.0/Sample.mdb"));
    EXPECT_EQ(CheckSelectedFile("/gone/sample.mdb", {}).verdict, Verdict::Missing);
}

TEST_F(AddressesTest, ShowsDatabasesOfTheDataFolderByAddressAndOthersByPath) {
    EXPECT_EQ(ShownAddress(JoinPath({DataFolder(), "Sample.mdb"})), QString("Local://Sample 1.0/Sample.mdb"));
    EXPECT_EQ(ShownAddress("/elsewhere/mine.mdb"), QString("/elsewhere/mine.mdb"));
    EXPECT_EQ(ShownAddress("Select a database"), QString("Select a database"));
    EXPECT_TRUE(IsNoDatabase("SELECT A DATABASE"));
    EXPECT_EQ(DefaultDatabaseFile(), QString()); // the sample names none
}

TEST_F(AddressesTest, AMissingDataFolderGivesEmptyLists) {
    QDir(DataFolder()).removeRecursively();
    EXPECT_TRUE(ListOfDatabases().isEmpty());
    EXPECT_TRUE(RescanDataFolder({}).added.isEmpty());
}

} // namespace
} // namespace tessaro::test
