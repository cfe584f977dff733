#include "jet/columns/ImageFormat.h"
#include "jet/columns/Scan.h"
#include "jet/columns/ScanDatabase.h"
#include "jet/engine/Sqlite.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>

namespace jet::test {
namespace {

const std::string kCount = "SELECT D.AreaNId, Count(*), Max(D.Datavalue) FROM Data D GROUP BY D.AreaNId";

std::string BytesOf(const std::string& file) {
    std::ifstream read(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(read), {}};
}

void Put(const std::string& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

/// The bytes with the sum that belongs to them.
std::string WithSum(std::string bytes) {
    const std::uint64_t sum = image::SumOfFile(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    std::memcpy(bytes.data() + sizeof(image::Head::magic), &sum, sizeof(sum));
    return bytes;
}

class ImageDamageTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(database.Scans(kCount));
        whole = BytesOf(database.imageFile());
        ASSERT_GT(whole.size(), sizeof(image::Head));
    }
    std::shared_ptr<const ColumnImage> OpenWith(const std::string& bytes) {
        Put(other, bytes);
        return ColumnImage::Open(other, {database.dataFile(), "Data"});
    }

    ScanDatabase database{1, 300, true};
    std::string whole;
    std::string other = database.folder().path("other.columns");
};

TEST_F(ImageDamageTest, NoByteCanChangeUnnoticed) {
    ASSERT_NE(OpenWith(whole), nullptr);
    for (std::size_t at = 0; at < whole.size(); at += at < 2000 ? 1 : 3) {
        std::string changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ (1 << at % 8));
        ASSERT_EQ(FailureOf([&] { OpenWith(changed); }), ErrorNumber::NotADatabase) << "byte " << at;
    }
    for (std::size_t length = 0; length < whole.size(); length += 17)
        ASSERT_EQ(FailureOf([&] { OpenWith(whole.substr(0, length)); }), ErrorNumber::NotADatabase) << length;
}

/// A head or an entry that lies, under a right sum, is refused or harmless: nothing beyond the file is read.
TEST_F(ImageDamageTest, WhatTheHeadSaysIsCheckedBeforeItIsUsed) {
    const std::size_t heads = sizeof(image::Head) + 7 * sizeof(image::Entry);
    ASSERT_LT(heads, whole.size());
    int refused = 0;
    for (std::size_t at = sizeof(image::Head::magic) + sizeof(image::Head::sum); at < heads; ++at)
        for (const int change : {0x01, 0x80}) {
            std::string changed = whole;
            changed[at] = static_cast<char>(changed[at] ^ change);
            try {
                const auto image = OpenWith(WithSum(changed));
                for (std::size_t column = 0; column < image->columns().size(); ++column) {
                    const ImageColumn& each = image->columns()[column];
                    if (each.form != ColumnForm::Values) continue;
                    ScanPlan plan;
                    plan.value = column;
                    plan.figures = {{ScanFigureKind::Sum}, {ScanFigureKind::Least}, {ScanFigureKind::Greatest}};
                    WorkWatch watch;
                    static_cast<void>(ScanRows(*image, plan, {}, watch));
                }
            } catch (const Error&) {
                ++refused;
            }
        }
    EXPECT_GT(refused, 500);
}

/// What can be in the way of an image: the plain way's rows, a line in the log, and nothing left in the folder.
TEST_F(ImageDamageTest, WhereNoImageCanBeStatementsRunThePlainWay) {
    const std::string file = database.imageFile();
    const auto restart = [&] { database.OpenImages(database.imageFolder()); };
    struct rlimit unlimited {};
    ::getrlimit(RLIMIT_FSIZE, &unlimited);
    const struct {
        const char* what;
        std::function<void()> begin, end;
    } cases[] = {
        {"a folder has its name",
         [&] {
             std::filesystem::create_directory(file);
             Put(file + "/x", "x");
         },
         [&] { std::filesystem::remove_all(file); }},
        {"the disk is full",
         [&] {
             std::signal(SIGXFSZ, SIG_IGN);
             struct rlimit few = unlimited;
             few.rlim_cur = 2000;
             ::setrlimit(RLIMIT_FSIZE, &few);
         },
         [&] {
             ::setrlimit(RLIMIT_FSIZE, &unlimited);
             std::signal(SIGXFSZ, SIG_DFL);
         }},
        {"the folder is a file",
         [&] {
             std::filesystem::remove_all(database.imageFolder());
             Put(database.imageFolder(), "x");
         },
         [&] { std::filesystem::remove(database.imageFolder()); }},
    };
    for (const auto& each : cases) {
        std::filesystem::remove(file);
        restart();
        database.log().clear();
        each.begin();
        EXPECT_FALSE(database.Scans(kCount)) << each.what;
        EXPECT_EQ(ScanDatabase::Outcome(database.withImages(), kCount),
                  ScanDatabase::Outcome(database.plain(), kCount));
        each.end();
        EXPECT_FALSE(database.log().empty()) << each.what;
        std::error_code none;
        for (const auto& left : std::filesystem::directory_iterator(database.imageFolder(), none))
            ADD_FAILURE() << each.what << " leaves " << left.path();
        restart();
        EXPECT_TRUE(database.Scans(kCount)) << "afterwards: " << each.what;
    }
}

TEST_F(ImageDamageTest, APipeIsNotWaitedFor) {
    const std::string file = database.imageFile();
    std::filesystem::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    database.OpenImages(database.imageFolder());
    EXPECT_TRUE(database.Scans(kCount));
    EXPECT_FALSE(database.log().empty());
    EXPECT_EQ(BytesOf(file).size(), whole.size());
}

ImageOrder OrderOf(const ScanDatabase& database) {
    sqlite3* raw = nullptr;
    sqlite3_open(database.dataFile().c_str(), &raw);
    const Handle handle(raw);
    const auto mark = FileMark::Of(raw, "main");
    return {{database.dataFile(), "Data"}, mark.value_or(FileMark()), {{"AreaNId", false}, {"Datavalue", true}}};
}

TEST_F(ImageDamageTest, AnImageThatIsGivenUpLeavesNothing) {
    const std::string target = database.folder().path("target.making");
    ImageOrder order = OrderOf(database);
    const std::atomic<bool> stop = true;
    const std::atomic<bool> goOn = false;
    EXPECT_EQ(FailureOf([&] { MakeImage(order, target, stop); }), ErrorNumber::Interrupted);
    EXPECT_FALSE(std::filesystem::exists(target));
    MakeImage(order, target, goOn);
    EXPECT_EQ(ColumnImage::Open(target, order.subject)->rows(), 300U);
    std::filesystem::remove(target);
    ++order.mark.changes; // another program has written meanwhile
    EXPECT_EQ(FailureOf([&] { MakeImage(order, target, goOn); }), ErrorNumber::Busy);
    EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(ImageDamageTest, SeveralMayMakeTheSameImageAtOnce) {
    std::filesystem::remove(database.imageFile());
    const ImageOrder order = OrderOf(database);
    for (int round = 0; round < 20; ++round) {
        std::vector<std::string> log;
        std::mutex mutex;
        ColumnImages::Settings settings;
        settings.folder = database.imageFolder();
        settings.log = [&](const std::string& line) {
            const std::lock_guard lock(mutex);
            log.push_back(line);
        };
        ColumnImages one(settings);
        ColumnImages two(settings);
        static_cast<void>(one.Want(order));
        static_cast<void>(two.Want(order));
        one.Wait();
        two.Wait();
        for (ColumnImages* const each : {&one, &two}) {
            const auto image = each->Want(order);
            ASSERT_NE(image, nullptr) << (log.empty() ? "" : log.front());
            EXPECT_EQ(image->rows(), 300U);
        }
        std::filesystem::remove(database.imageFile());
    }
    EXPECT_TRUE(std::filesystem::is_empty(database.imageFolder()));
}

// --- The room they take ---

/// Orders for the images of so many databases of 300 values each.
std::vector<ImageOrder> SeveralDatabases(std::vector<std::unique_ptr<ScanDatabase>>& databases, int count) {
    std::vector<ImageOrder> orders;
    for (int i = 0; i < count; ++i) {
        databases.push_back(std::make_unique<ScanDatabase>(static_cast<std::uint64_t>(i), 300, false));
        orders.push_back(OrderOf(*databases.back()));
    }
    return orders;
}

class ImagesOfSeveralTest : public testing::Test {
  protected:
    /// All of them may take so many bytes.
    std::unique_ptr<ColumnImages> Open(std::uint64_t mostBytes) {
        ColumnImages::Settings settings;
        settings.folder = folder.path("images");
        settings.leastRows = 1;
        settings.mostBytes = mostBytes;
        settings.log = [this](const std::string& line) { log.push_back(line); };
        return std::make_unique<ColumnImages>(std::move(settings));
    }
    static std::shared_ptr<const ColumnImage> Made(ColumnImages& images, const ImageOrder& order) {
        static_cast<void>(images.Want(order));
        images.Wait();
        return images.Want(order);
    }
    [[nodiscard]] std::size_t Files() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.path("images")), {}));
    }

    TestFolder folder;
    std::vector<std::string> log;
    std::vector<std::unique_ptr<ScanDatabase>> databases;
    std::vector<ImageOrder> orders = SeveralDatabases(databases, 6);
};

TEST_F(ImagesOfSeveralTest, OneThatHadToGoIsUsedAsLongAsItIsOpen) {
    const std::size_t bytes = [&] {
        const auto images = Open(1U << 30U);
        static_cast<void>(Made(*images, orders[0]));
        return static_cast<std::size_t>(std::filesystem::directory_iterator(folder.path("images"))->file_size());
    }();
    const auto images = Open(bytes * 5 / 2);
    for (int each = 0; each < 3; ++each)
        ASSERT_NE(Made(*images, orders[static_cast<std::size_t>(each)]), nullptr);
    EXPECT_EQ(Files(), 2U);
    const auto first = images->Want(orders[0]);
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isIntact());
    EXPECT_TRUE(log.empty());
}

TEST_F(ImagesOfSeveralTest, OnlyAFewStayOpen) {
    const auto images = Open(1U << 30U);
    std::vector<std::weak_ptr<const ColumnImage>> seen;
    for (const ImageOrder& order : orders)
        seen.push_back(Made(*images, order));
    EXPECT_EQ(Files(), orders.size());
    EXPECT_TRUE(seen[0].expired());
    EXPECT_FALSE(seen[4].expired());
    EXPECT_NE(Made(*images, orders[0]), nullptr);
}

TEST_F(ImagesOfSeveralTest, OneThatIsLargerThanAllMayBeIsNotKept) {
    const auto images = Open(1000);
    EXPECT_EQ(Made(*images, orders[0]), nullptr);
    EXPECT_EQ(Files(), 0U);
    EXPECT_EQ(log.size(), 1U);
    EXPECT_EQ(Made(*images, orders[0]), nullptr); // known now, and not made once more
    EXPECT_EQ(log.size(), 1U);
}

TEST(TidyImagesTest, ThoseUsedLongestAgoGo) {
    const TestFolder folder;
    std::filesystem::create_directory(folder.path("images"));
    const auto path = [&](const std::string& name) { return folder.path("images/" + name + ".columns"); };
    const auto put = [&](const std::string& name, time_t used) {
        Put(path(name), std::string(100, 'x'));
        const std::array<timespec, 2> times = {timespec{used, 0}, timespec{used, 0}};
        ::utimensat(AT_FDCWD, path(name).c_str(), times.data(), 0);
    };
    for (const char* name : {"a", "b", "c", "d"})
        put(name, 1000 + name[0]);
    TouchImage(path("a"));
    TidyImages(folder.path("images"), 250);
    std::string left;
    for (const char* name : {"a", "b", "c", "d"})
        left += std::filesystem::exists(path(name)) ? name : "";
    EXPECT_EQ(left, "ad");
    TidyImages(folder.path("images"), 0);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("images")));
}

} // namespace
} // namespace jet::test
