#include "jet/columns/ScanDatabase.h"
#include "jet/engine/Sqlite.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>

namespace jet::test {
namespace {

const std::string kCount = "SELECT D.AreaNId, Count(*), Max(D.Datavalue) FROM Data D GROUP BY D.AreaNId";

/// The rows of the plain way, and at least one line in the log.
void ExpectRightRowsAndALine(ScanDatabase& database) {
    EXPECT_EQ(ScanDatabase::Outcome(database.withImages(), kCount), ScanDatabase::Outcome(database.plain(), kCount));
    EXPECT_FALSE(database.log().empty());
}

TEST(ColumnImageTest, ABadFileIsMadeAnew) {
    ScanDatabase database(1, 500, false);
    ASSERT_TRUE(database.Scans(kCount));
    const std::string file = database.imageFile();
    const auto size = std::filesystem::file_size(file);
    const std::function<void()> damages[] = {
        [&] { std::filesystem::resize_file(file, size / 2); },
        [&] { std::filesystem::resize_file(file, 10); },
        [&] { std::filesystem::resize_file(file, size + 64); },
        [&] { std::ofstream(file) << "no image at all"; },
        [&] {
            std::fstream changed(file, std::ios::in | std::ios::out | std::ios::binary);
            changed.seekp(static_cast<std::streamoff>(size - 100));
            changed.put('\x55').put('\x2A');
        },
        [&] {
            std::filesystem::remove(file);
            std::filesystem::create_symlink("/dev/zero", file);
        },
    };
    for (const auto& damage : damages) {
        damage();
        database.log().clear();
        database.OpenImages(database.imageFolder());
        EXPECT_TRUE(database.Scans(kCount));
        ExpectRightRowsAndALine(database);
        EXPECT_EQ(std::filesystem::file_size(file), size);
    }
}

TEST(ColumnImageTest, AFileThatIsCutWhileInUseIsNotRead) {
    ScanDatabase database(1, 500, false);
    ASSERT_TRUE(database.Scans(kCount));
    std::filesystem::resize_file(database.imageFile(), 0);
    ExpectRightRowsAndALine(database);
    EXPECT_TRUE(database.Scans(kCount));
}

TEST(ColumnImageTest, AWrittenDatabaseIsReadItself) {
    ScanDatabase database(1, 500, false);
    ASSERT_TRUE(database.Scans(kCount));
    const auto other = Connection::Open(database.dataFile(), "secret");
    for (const char* change : {"INSERT INTO Data (AreaNId, Datavalue) VALUES (99, '12345')",
                               "UPDATE Data SET Datavalue = '777' WHERE AreaNId = 3",
                               "DELETE FROM Data WHERE AreaNId = 4", "CREATE INDEX Further ON Data (AreaNId)"}) {
        const auto before = ScanDatabase::Outcome(database.withImages(), kCount);
        other->Execute(change);
        database.log().clear();
        ExpectRightRowsAndALine(database);
        EXPECT_TRUE(database.Scans(kCount)) << change;
        EXPECT_EQ(ScanDatabase::Outcome(database.withImages(), kCount),
                  ScanDatabase::Outcome(database.plain(), kCount));
        const bool same = ScanDatabase::Outcome(database.plain(), kCount) == before;
        EXPECT_EQ(same, change[0] == 'C') << change;
    }
}

TEST(ColumnImageTest, AnotherDatabaseAtTheSamePathIsSeen) {
    ScanDatabase database(1, 500, false);
    ASSERT_TRUE(database.Scans(kCount));
    ScanDatabase other(2, 500, false);
    std::filesystem::copy_file(other.dataFile(), database.dataFile(),
                               std::filesystem::copy_options::overwrite_existing);
    database.OpenImages(database.imageFolder());
    EXPECT_TRUE(database.Scans(kCount));
    ExpectRightRowsAndALine(database);
}

TEST(ColumnImageTest, WithoutAFolderStatementsRunThePlainWay) {
    ScanDatabase database(1, 500, false);
    const std::string noFolder = database.folder().path("data.mdb") + "/images";
    database.OpenImages(noFolder);
    EXPECT_FALSE(database.Scans(kCount));
    ExpectRightRowsAndALine(database);
}

TEST(ColumnImageTest, WhatWasLeftHalfMadeGoesAndTheFolderStaysWithinItsBound) {
    ScanDatabase database(1, 500, false);
    ASSERT_TRUE(database.Scans(kCount));
    const std::string image = database.imageFile();
    const std::string leftBehind = image + ".1.making";
    const std::string old = database.imageFolder() + "/old.columns";
    std::ofstream(leftBehind) << "half";
    std::filesystem::last_write_time(leftBehind, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    std::ofstream(old) << std::string(10'000, 'x');
    std::filesystem::remove(image);
    database.OpenImages(database.imageFolder(), 9'000);
    static_cast<void>(database.Scans(kCount));
    EXPECT_FALSE(std::filesystem::exists(leftBehind));
    EXPECT_FALSE(std::filesystem::exists(old));
}

TEST(ColumnImageTest, ValuesOfAnotherTypeGetNoImage) {
    ScanDatabase database(1, 50, false);
    const Handle raw = [&] {
        sqlite3* opened = nullptr;
        sqlite3_open(database.dataFile().c_str(), &opened);
        return Handle(opened);
    }();
    jet::Run(raw.get(), "UPDATE Data SET IUSNId = 1.5 WHERE RowNId = 20");
    EXPECT_FALSE(database.Scans(kCount));
    ExpectRightRowsAndALine(database);
}

} // namespace
} // namespace jet::test
