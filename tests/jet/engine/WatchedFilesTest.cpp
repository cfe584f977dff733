#include "jet/engine/WatchedFiles.h"

#include "jet/TestDatabase.h"
#include "jet/engine/Sqlite.h"

namespace jet::test {
namespace {

/// Sorts several times what the cache of the connection holds, so that it must be put into files.
constexpr auto kSort = "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c LIMIT 200000) SELECT x FROM c "
                       "ORDER BY x * 7919 % 200003, x";

class WatchedFilesTest : public testing::Test {
  protected:
    void SetUp() override {
        sqlite3* raw = nullptr;
        ASSERT_EQ(sqlite3_open_v2(folder.path("sorted.db").c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                                  files.name()),
                  SQLITE_OK);
        database.reset(raw);
        jet::Run(raw, "PRAGMA cache_size = 10");
    }
    /// Nobody is asked but by the files: the connection has no handler for its steps.
    void SayNoAt(int question) {
        asked = 0;
        watch.Set([this, question](std::optional<int>) { return ++asked != question; }, std::chrono::milliseconds(0));
    }

    TestFolder folder;
    WorkWatch watch;
    WatchedFiles files{watch};
    Handle database;
    int asked = 0;
};

TEST_F(WatchedFilesTest, ASortIsStoppedWhileItWritesAndWhileItMerges) {
    SayNoAt(0);
    const auto whole = Rows(database.get(), kSort);
    const int questions = asked;
    ASSERT_GT(questions, 20);
    for (const int question : {1, questions / 2, questions - 1}) {
        SayNoAt(question);
        EXPECT_EQ(FailureOf([&] { static_cast<void>(Rows(database.get(), kSort)); }), ErrorNumber::Interrupted);
        EXPECT_EQ(asked, question);
    }
    SayNoAt(0);
    EXPECT_EQ(Rows(database.get(), kSort), whole);
}

TEST_F(WatchedFilesTest, WhatUndoesAStatementIsNotStopped) {
    jet::Run(database.get(), "CREATE TABLE T (x UNIQUE)");
    jet::Run(database.get(), "INSERT INTO T VALUES (1)");
    jet::Run(database.get(), "BEGIN");
    SayNoAt(1);
    const auto insert = "WITH RECURSIVE c(x) AS (SELECT 1000 UNION ALL SELECT x - 1 FROM c LIMIT 1000) INSERT INTO T "
                        "SELECT x FROM c"; // fails at the last row
    EXPECT_EQ(FailureOf([&] { jet::Run(database.get(), insert); }), ErrorNumber::ConstraintFailed);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(Rows(database.get(), "SELECT count(*) FROM T")[0][0], Value(std::int64_t{1}));
}

} // namespace
} // namespace jet::test
