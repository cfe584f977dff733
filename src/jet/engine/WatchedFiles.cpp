#include "jet/engine/WatchedFiles.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace jet {

namespace {

/// A sorting file. It has no name any more, so that it is gone when it is closed.
struct SortingFile : sqlite3_file {
    WorkWatch* watch = nullptr;
    int file = -1;
};

SortingFile& Of(sqlite3_file* file) {
    return *static_cast<SortingFile*>(file);
}

std::int64_t SizeOf(int file) {
    struct stat found {};
    return ::fstat(file, &found) == 0 ? found.st_size : -1;
}

/// The pages of a large file are given back by a thread of its own, since that takes longer than a user who has stopped
/// a statement should wait.
int Close(sqlite3_file* sorting) {
    constexpr std::int64_t kLarge = 4U << 20U;
    const int file = std::exchange(Of(sorting).file, -1);
    if (SizeOf(file) >= kLarge) {
        try {
            std::thread([file] { ::close(file); }).detach();
            return SQLITE_OK;
        } catch (const std::system_error&) { // there can't be one more thread
        }
    }
    ::close(file);
    return SQLITE_OK;
}

int Read(sqlite3_file* sorting, void* into, int bytes, sqlite3_int64 from) {
    if (!Of(sorting).watch->GoesOn()) return SQLITE_INTERRUPT;
    auto* next = static_cast<char*>(into);
    for (auto left = static_cast<std::size_t>(bytes); left > 0;) {
        const ssize_t done = ::pread(Of(sorting).file, next, left, from);
        if (done < 0 && errno == EINTR) continue;
        if (done < 0) return SQLITE_IOERR_READ;
        if (done == 0) {
            std::fill_n(next, left, '\0');
            return SQLITE_IOERR_SHORT_READ;
        }
        next += done;
        from += done;
        left -= static_cast<std::size_t>(done);
    }
    return SQLITE_OK;
}

int Write(sqlite3_file* sorting, const void* bytes, int count, sqlite3_int64 at) {
    if (!Of(sorting).watch->GoesOn()) return SQLITE_INTERRUPT;
    const auto* next = static_cast<const char*>(bytes);
    for (auto left = static_cast<std::size_t>(count); left > 0;) {
        const ssize_t done = ::pwrite(Of(sorting).file, next, left, at);
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return done < 0 && errno == ENOSPC ? SQLITE_FULL : SQLITE_IOERR_WRITE;
        next += done;
        at += done;
        left -= static_cast<std::size_t>(done);
    }
    return SQLITE_OK;
}

int Truncate(sqlite3_file* sorting, sqlite3_int64 bytes) {
    return ::ftruncate(Of(sorting).file, bytes) == 0 ? SQLITE_OK : SQLITE_IOERR_TRUNCATE;
}

int FileSize(sqlite3_file* sorting, sqlite3_int64* bytes) {
    *bytes = SizeOf(Of(sorting).file);
    return *bytes >= 0 ? SQLITE_OK : SQLITE_IOERR_FSTAT;
}

/// Version 1: SQLite then reads the file, and doesn't map it. Nobody else can know of the file, so there is nothing to
/// lock, and nothing that must be on the disk.
sqlite3_io_methods MakeMethods() {
    sqlite3_io_methods made{};
    made.iVersion = 1;
    made.xClose = Close;
    made.xRead = Read;
    made.xWrite = Write;
    made.xTruncate = Truncate;
    made.xSync = [](sqlite3_file*, int) { return SQLITE_OK; };
    made.xFileSize = FileSize;
    made.xLock = [](sqlite3_file*, int) { return SQLITE_OK; };
    made.xUnlock = [](sqlite3_file*, int) { return SQLITE_OK; };
    made.xCheckReservedLock = [](sqlite3_file*, int* reserved) { return *reserved = 0; };
    made.xFileControl = [](sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; };
    made.xSectorSize = [](sqlite3_file*) { return 4096; };
    made.xDeviceCharacteristics = [](sqlite3_file*) { return 0; };
    return made;
}

/// Files to sort in have no name and are opened as journals of temporary files. What undoes a statement is opened
/// otherwise, and must not be stopped.
bool IsForSorting(const char* path, int flags) {
    return path == nullptr && (flags & SQLITE_OPEN_TEMP_JOURNAL) != 0;
}

/// A new file without a name in the folder that SQLite would take; below 0 when there can be none.
int OpenNameless(sqlite3_vfs* real, sqlite3_file* room, int flags) {
    if (real->xOpen(real, nullptr, room, flags, nullptr) != SQLITE_OK) return -1;
    char* name = nullptr;
    room->pMethods->xFileControl(room, SQLITE_FCNTL_TEMPFILENAME, static_cast<void*>(&name));
    room->pMethods->xClose(room);
    if (name == nullptr) return -1;
    const int file = ::open(name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file >= 0) ::unlink(name);
    sqlite3_free(name);
    return file;
}

int Open(sqlite3_vfs* files, const char* path, sqlite3_file* file, int flags, int* given) {
    static const sqlite3_io_methods methods = MakeMethods();
    sqlite3_vfs* const real = sqlite3_vfs_find(nullptr);
    if (!IsForSorting(path, flags)) return real->xOpen(real, path, file, flags, given);
    const int opened = OpenNameless(real, file, flags);
    auto* const sorting = new (file) SortingFile{};
    if (opened < 0) return SQLITE_CANTOPEN;
    sorting->pMethods = &methods;
    sorting->watch = static_cast<WorkWatch*>(files->pAppData);
    sorting->file = opened;
    if (given != nullptr) *given = flags;
    return SQLITE_OK;
}

} // namespace

WatchedFiles::WatchedFiles(WorkWatch& watch) {
    static std::atomic<unsigned> made = 0;
    name_ = "watched-" + std::to_string(++made);
    files_ = *sqlite3_vfs_find(nullptr);
    files_.zName = name_.c_str();
    files_.pNext = nullptr;
    files_.pAppData = &watch;
    files_.szOsFile = std::max(files_.szOsFile, static_cast<int>(sizeof(SortingFile)));
    files_.xOpen = Open;
    sqlite3_vfs_register(&files_, 0);
}

WatchedFiles::~WatchedFiles() {
    sqlite3_vfs_unregister(&files_);
}

} // namespace jet
