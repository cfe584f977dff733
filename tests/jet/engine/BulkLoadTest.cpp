#include "jet/engine/BulkLoad.h"

#include "jet/engine/Connection.h"
#include "jet/values/Error.h"
#include "support/PlainReader.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace jet {

using tessaro::test::PlainReader;
using Row = std::vector<Value>;

namespace {

/// A database with one empty table.
class BulkLoadTest : public testing::Test {
  protected:
    BulkLoadTest() {
        std::filesystem::remove(path_);
        Database::Create(path_, "secret");
        Connection::Open(path_, "secret")
            ->Execute("CREATE TABLE Items (Id COUNTER PRIMARY KEY, Name TEXT(50), Size DOUBLE)");
    }
    ~BulkLoadTest() override { std::filesystem::remove(path_); }
    [[nodiscard]] std::vector<std::string> Items() const { return PlainReader(path_).Rows("SELECT * FROM Items"); }

    const std::string path_ =
        (std::filesystem::temp_directory_path() / ("bulkload-" + std::to_string(getpid()) + ".mdb")).string();
};

} // namespace

TEST_F(BulkLoadTest, RefusesWhatDoesNotFit) {
    EXPECT_THROW(BulkLoad("/nowhere/made.mdb"), Error);
    BulkLoad load(path_);
    EXPECT_THROW(load.Add(Row{"before any table"}), Error);
    EXPECT_THROW(load.Into("Items", {"NoSuchColumn"}), Error);
    EXPECT_THROW(load.Into("No\"Table", {"Name"}), Error);
    load.Into("Items", {"Id", "Name"});
    EXPECT_THROW(load.Add(Row{1}), Error);
    load.Add(Row{1, "once"});
    EXPECT_THROW(load.Add(Row{1, "the key again"}), Error);
    load.Finish();
    EXPECT_EQ(Items(), std::vector<std::string>{"1|once|"});
}

TEST_F(BulkLoadTest, ALoadThatBreaksOffLeavesNothing) {
    {
        BulkLoad load(path_);
        load.Into("Items", {"Name"});
        load.Add(Row{"lost"});
    }
    EXPECT_EQ(Items(), std::vector<std::string>{});
}

TEST_F(BulkLoadTest, WritesEveryKindOfValue) {
    BulkLoad load(path_);
    load.Into("Items", {"Name", "Size"});
    load.Add(Row{"it's \"one\"", 0.25});
    load.Add(Row{Value(), Value()});
    load.Add(Row{"\u0416", 7});
    load.Finish();
    EXPECT_EQ(Items(), (std::vector<std::string>{"1|it's \"one\"|0.25", "2||", "3|\u0416|7.0"}));
}

TEST_F(BulkLoadTest, AnalyzeTellsTheSizes) {
    BulkLoad load(path_);
    load.Into("Items", {"Name"});
    for (int i = 0; i < 50; ++i)
        load.Add(Row{std::to_string(i)});
    load.Finish();
    Connection::Open(path_, "secret")->Execute("CREATE INDEX IX_Items ON Items (Name)");
    Analyze(path_);
    EXPECT_EQ(PlainReader(path_).Rows("SELECT stat FROM sqlite_stat1 WHERE idx = 'Items.IX_Items'"),
              std::vector<std::string>{"50 1"});
}

} // namespace jet
