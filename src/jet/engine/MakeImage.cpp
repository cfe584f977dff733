#include "jet/columns/WorkWatch.h"
#include "jet/engine/ColumnImages.h"
#include "jet/engine/DatabaseFile.h"
#include "jet/engine/Guard.h"
#include "jet/engine/Sqlite.h"
#include "jet/values/Quoting.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace jet {

namespace {

constexpr int kBusyMilliseconds = 500;
constexpr int kRowsAtOnce = 100'000;

Handle OpenForReading(const std::string& path) {
    const DatabaseFile file = DatabaseFile::Inspect(path);
    RefuseReachingOut(path);
    sqlite3* raw = nullptr;
    const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(file.uriForReading().c_str(), &raw, flags, nullptr);
    Handle handle(raw);
    if (code != SQLITE_OK) throw ErrorOf(handle.get());
    Harden(handle.get());
    sqlite3_busy_timeout(handle.get(), kBusyMilliseconds);
    return handle;
}

/// Takes the next rows into the image within one transaction. False at the end.
class Reading {
  public:
    Reading(sqlite3* database, const ImageOrder& order, ImageWriter& image)
        : database_(database), order_(order), image_(image) {
        std::string fields = "rowid";
        for (const ImageField& field : order.fields)
            fields += ", " + QuotedName(field.name);
        rows_ = Prepare(database, "SELECT " + fields + " FROM main." + QuotedName(order.subject.table) +
                                      " WHERE rowid > ? ORDER BY rowid LIMIT ?");
        sqlite3_bind_int64(rows_.get(), 1, INT64_MIN);
        sqlite3_bind_int(rows_.get(), 2, kRowsAtOnce);
    }

    bool Next() {
        std::int64_t last = INT64_MIN;
        int count = 0;
        for (; Step(database_, rows_.get()); ++count) {
            if (count == 0) CheckState(); // the file is locked for reading from the first row on
            last = sqlite3_column_int64(rows_.get(), 0);
            image_.AddRow(rows_.get(), 1);
        }
        sqlite3_reset(rows_.get());
        sqlite3_bind_int64(rows_.get(), 1, last);
        return count == kRowsAtOnce;
    }

  private:
    void CheckState() {
        const auto now = FileMark::Of(database_, "main");
        if (!now || *now != order_.mark) throw Error(ErrorNumber::Busy, "The database was written meanwhile.");
    }

    sqlite3* database_;
    const ImageOrder& order_;
    ImageWriter& image_;
    Statement rows_;
};

/// True when no process writes to the file any more, nor has just begun to or is about to put it in place.
bool IsLeftBehind(const std::filesystem::path& path, const struct stat& found) {
    constexpr std::time_t kGrace = 60; // seconds
    if (std::time(nullptr) - found.st_mtim.tv_sec < kGrace) return false;
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0) return false;
    const bool free = ::flock(file, LOCK_EX | LOCK_NB) == 0;
    ::close(file);
    return free;
}

struct Found {
    std::filesystem::path path;
    std::uint64_t bytes = 0;
    std::int64_t used = 0;
};

std::vector<Found> ImagesIn(const std::string& folder) {
    std::vector<Found> images;
    std::error_code failure;
    for (auto each = std::filesystem::directory_iterator(folder, failure);
         !failure && each != std::filesystem::directory_iterator(); each.increment(failure)) {
        const std::filesystem::path& path = each->path();
        struct stat found {};
        if (::lstat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) continue;
        std::error_code ignored;
        if (path.extension() == ".making" && IsLeftBehind(path, found)) std::filesystem::remove(path, ignored);
        if (path.extension() == ".columns")
            images.push_back({path, static_cast<std::uint64_t>(found.st_size),
                              static_cast<std::int64_t>(found.st_atim.tv_sec) * 1'000'000'000 + found.st_atim.tv_nsec});
    }
    return images;
}

} // namespace

void MakeImage(const ImageOrder& order, const std::string& target, const std::atomic<bool>& stop) {
    const Handle database = OpenForReading(order.subject.file);
    ImageWriter image(order.fields, std::filesystem::path(target).parent_path());
    Reading reading(database.get(), order, image);
    while (reading.Next())
        if (stop) FailInterrupted();
    image.Write(target, order.subject, order.mark, stop);
}

void TidyImages(const std::string& folder, std::uint64_t mostBytes) {
    std::vector<Found> images = ImagesIn(folder);
    std::ranges::sort(images, std::ranges::greater{}, &Found::used);
    std::uint64_t bytes = 0;
    for (const Found& image : images) {
        bytes += image.bytes;
        std::error_code ignored;
        if (bytes > mostBytes) std::filesystem::remove(image.path, ignored);
    }
}

void TouchImage(const std::string& path) {
    const std::array<timespec, 2> times = {timespec{0, UTIME_NOW}, timespec{0, UTIME_OMIT}};
    ::utimensat(AT_FDCWD, path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
}

} // namespace jet
