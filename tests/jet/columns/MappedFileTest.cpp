#include "jet/columns/MappedFile.h"

#include "jet/columns/ScanDatabase.h"
#include "jet/engine/Sqlite.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <sys/mman.h>

namespace jet::test {
namespace {

void Put(const std::string& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

TEST(MappedFileTest, ACutFileReadsAsZeros) {
    const TestFolder folder;
    const std::string path = folder.path("mapped");
    Put(path, std::string(50'000, 'x'));
    const MappedFile file(path);
    EXPECT_EQ(file.start()[49'999], 'x');
    EXPECT_TRUE(file.isIntact());
    std::filesystem::resize_file(path, 5'000);
    EXPECT_FALSE(file.isIntact());
    EXPECT_EQ(file.start()[49'999], 0);
    std::filesystem::resize_file(path, 50'000);
    EXPECT_FALSE(file.isIntact());
}

TEST(MappedFileTest, TheFaultsOfOthersAreTheirs) {
    const TestFolder folder;
    const std::string path = folder.path("others");
    Put(path, std::string(50'000, 'x'));
    const auto fault = [&] {
        const MappedFile ours(path); // from here on our handler is there
        const int file = ::open(path.c_str(), O_RDONLY);
        const auto* const theirs =
            static_cast<const volatile char*>(::mmap(nullptr, 50'000, PROT_READ, MAP_SHARED, file, 0));
        std::filesystem::resize_file(path, 0);
        ::_exit(theirs[20'000]);
    };
    EXPECT_EXIT(fault(), testing::KilledBySignal(SIGBUS), "");
    const auto kill = [&] {
        const MappedFile ours(path);
        std::raise(SIGBUS);
        ::_exit(0);
    };
    Put(path, "x");
    EXPECT_EXIT(kill(), testing::KilledBySignal(SIGBUS), "");
}

/// What another process does to the image or to the database at the first question of the watch.
TEST(ColumnsUnderWayTest, StatementsGiveTheRowsOfBeforeOrAfter) {
    const std::string sql = "SELECT D.AreaNId, D.IUSNId, Count(*), Max(D.Datavalue), Sum(D.Datavalue) FROM Data D "
                            "GROUP BY D.AreaNId, D.IUSNId";
    const auto write = [](ScanDatabase& database) {
        sqlite3* raw = nullptr;
        sqlite3_open(database.dataFile().c_str(), &raw);
        const Handle other(raw); // waits for nobody: a statement that reads the file itself keeps it out
        sqlite3_exec(raw, "DELETE FROM Data WHERE RowNId % 3 = 0", nullptr, nullptr, nullptr);
    };
    const auto vanish = [](ScanDatabase& database) { std::filesystem::remove_all(database.imageFolder()); };
    for (const auto& happens : {std::function<void(ScanDatabase&)>(write), std::function<void(ScanDatabase&)>(vanish)})
        for (const bool scanned : {true, false}) {
            ScanDatabase database(11, 12'000, false);
            ASSERT_TRUE(database.Scans(sql));
            Connection& connection = scanned ? database.withImages() : database.plain();
            const auto before = ScanDatabase::Outcome(database.plain(), sql);
            int asked = 0;
            connection.Watch(
                [&](std::optional<int>) {
                    if (asked++ == 0) happens(database);
                    return true;
                },
                std::chrono::milliseconds(0));
            const auto found = ScanDatabase::Outcome(connection, sql);
            connection.Watch({});
            ASSERT_GT(asked, 0);
            const auto after = ScanDatabase::Outcome(database.plain(), sql);
            const bool asBefore = ScanDatabase::Difference(found, before).empty();
            EXPECT_TRUE(asBefore || ScanDatabase::Difference(found, after).empty());
            EXPECT_EQ(ScanDatabase::Difference(ScanDatabase::Outcome(connection, sql), after), "");
        }
}

// --- The image itself is cut or overwritten ---

const std::string kOrdered = "SELECT D.RowNId, D.AreaNId, D.Datavalue, A.AreaName FROM Data AS D INNER JOIN SelArea AS "
                             "A ON D.AreaNId = A.AreaNId ORDER BY D.Datavalue, D.RowNId";
const std::string kStatements[] = {
    "SELECT D.AreaNId, D.IUSNId, Count(*), Max(D.Datavalue), Sum(D.Datavalue) FROM Data D GROUP BY D.AreaNId, D.IUSNId",
    "SELECT A.AreaName, T.TimePeriod, First(D.Datavalue) FROM Data AS D INNER JOIN (SelArea AS A INNER JOIN SelTime AS "
    "T ON A.AreaLevel < 9 OR T.TimePeriodNId > 0) ON (D.AreaNId = A.AreaNId) AND (D.TimePeriodNId = T.TimePeriodNId) "
    "GROUP BY A.AreaName, T.TimePeriod",
    kOrdered,
    "SELECT D.RowNId, D.AreaNId, D.Datavalue, A.AreaName FROM Data AS D INNER JOIN SelArea AS A ON D.AreaNId = "
    "A.AreaNId "
    "ORDER BY A.AreaName DESC, D.Datavalue"};

struct Damage {
    const char* what;
    std::function<void(const std::string&)> work;
};
const Damage kDamages[] = {
    {"cut to nothing", [](const std::string& image) { std::filesystem::resize_file(image, 0); }},
    {"cut in the middle",
     [](const std::string& image) { std::filesystem::resize_file(image, std::filesystem::file_size(image) / 2); }},
    {"overwritten with zeros", [](const std::string& image) {
         const std::string zeros(std::filesystem::file_size(image), '\0');
         std::fstream(image, std::ios::in | std::ios::out | std::ios::binary) << zeros;
     }}};

/// Calls `test` with each statement and each damage; the image is made anew in between.
void EachDamage(const std::function<void(ScanDatabase&, const std::string&, const Damage&)>& test) {
    ScanDatabase database(11, 12'000, false);
    for (const std::string& sql : kStatements)
        for (const Damage& damage : kDamages) {
            SCOPED_TRACE(sql + "\n" + damage.what);
            ASSERT_TRUE(database.Scans(sql));
            database.log().clear();
            test(database, sql, damage);
            EXPECT_EQ(ScanDatabase::Difference(ScanDatabase::Outcome(database.withImages(), sql),
                                               ScanDatabase::Outcome(database.plain(), sql)),
                      "");
            EXPECT_FALSE(database.log().empty());
        }
}

TEST(ColumnsUnderWayTest, AnImageThatChangesWhileItIsScannedCountsForNothing) {
    EachDamage([](ScanDatabase& database, const std::string& sql, const Damage& damage) {
        const auto right = ScanDatabase::Outcome(database.plain(), sql);
        for (const int question : {2, 5, 8}) {
            database.OpenImages(database.imageFolder()); // nothing that was scanned before is kept
            ASSERT_TRUE(database.Scans(sql));
            const std::string image = database.imageFile();
            int asked = 0;
            database.withImages().Watch(
                [&](std::optional<int>) {
                    if (++asked == question) damage.work(image);
                    return true;
                },
                std::chrono::milliseconds(0));
            EXPECT_EQ(ScanDatabase::Difference(ScanDatabase::Outcome(database.withImages(), sql), right), "");
            database.withImages().Watch({});
        }
    });
}

/// Rows that have been given can't be taken back: one of the next sixteen is an error then.
TEST(ColumnsUnderWayTest, AnImageThatChangesBetweenTwoRowsEndsTheResult) {
    EachDamage([](ScanDatabase& database, const std::string& sql, const Damage& damage) {
        Recordset rows = database.withImages().OpenRecordset(sql, CursorType::ForwardOnly);
        Recordset right = database.withImages().OpenRecordset(sql);
        int wrong = 0;
        const auto compare = [&] {
            bool same = true;
            for (std::size_t i = 0; i < rows.FieldCount(); ++i)
                same = same && rows.Get(i) == right.Get(i);
            wrong += same ? 0 : 1;
            rows.MoveNext();
            right.MoveNext();
        };
        compare();
        EXPECT_EQ(wrong, 0);
        damage.work(database.imageFile());
        const auto failure = FailureOf([&] {
            while (!rows.atEnd())
                compare();
        });
        EXPECT_LE(wrong, 16);
        EXPECT_TRUE(wrong == 0 || failure);
        EXPECT_EQ(failure.value_or(ErrorNumber::EngineError), ErrorNumber::EngineError);
    });
}

} // namespace
} // namespace jet::test
