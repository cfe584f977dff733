#include "jet/engine/WatchedFiles.h"

#include <atomic>
#include <new>

namespace jet {

namespace {

/// A sorting file; the file of the default way lies behind it.
struct SortingFile : sqlite3_file {
    WorkWatch* watch = nullptr;
    [[nodiscard]] sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* RealOf(sqlite3_file* file) {
    return static_cast<SortingFile*>(file)->real();
}

bool GoesOn(sqlite3_file* file) {
    return static_cast<SortingFile*>(file)->watch->GoesOn();
}

int Close(sqlite3_file* file) {
    return RealOf(file)->pMethods->xClose(RealOf(file));
}
int Read(sqlite3_file* file, void* into, int bytes, sqlite3_int64 from) {
    if (!GoesOn(file)) return SQLITE_INTERRUPT;
    return RealOf(file)->pMethods->xRead(RealOf(file), into, bytes, from);
}
int Write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 at) {
    if (!GoesOn(file)) return SQLITE_INTERRUPT;
    return RealOf(file)->pMethods->xWrite(RealOf(file), bytes, count, at);
}
int Truncate(sqlite3_file* file, sqlite3_int64 bytes) {
    return RealOf(file)->pMethods->xTruncate(RealOf(file), bytes);
}
int Sync(sqlite3_file* file, int flags) {
    return RealOf(file)->pMethods->xSync(RealOf(file), flags);
}
int FileSize(sqlite3_file* file, sqlite3_int64* bytes) {
    return RealOf(file)->pMethods->xFileSize(RealOf(file), bytes);
}
int Lock(sqlite3_file* file, int kind) {
    return RealOf(file)->pMethods->xLock(RealOf(file), kind);
}
int Unlock(sqlite3_file* file, int kind) {
    return RealOf(file)->pMethods->xUnlock(RealOf(file), kind);
}
int CheckReservedLock(sqlite3_file* file, int* reserved) {
    return RealOf(file)->pMethods->xCheckReservedLock(RealOf(file), reserved);
}
int FileControl(sqlite3_file* file, int what, void* argument) {
    return RealOf(file)->pMethods->xFileControl(RealOf(file), what, argument);
}
int SectorSize(sqlite3_file* file) {
    return RealOf(file)->pMethods->xSectorSize(RealOf(file));
}
int Characteristics(sqlite3_file* file) {
    return RealOf(file)->pMethods->xDeviceCharacteristics(RealOf(file));
}

/// Version 1: SQLite then reads the file, and doesn't map it.
sqlite3_io_methods MakeMethods() {
    sqlite3_io_methods made{};
    made.iVersion = 1;
    made.xClose = Close;
    made.xRead = Read;
    made.xWrite = Write;
    made.xTruncate = Truncate;
    made.xSync = Sync;
    made.xFileSize = FileSize;
    made.xLock = Lock;
    made.xUnlock = Unlock;
    made.xCheckReservedLock = CheckReservedLock;
    made.xFileControl = FileControl;
    made.xSectorSize = SectorSize;
    made.xDeviceCharacteristics = Characteristics;
    return made;
}

/// Files to sort in have no name and are opened as journals of temporary files. What undoes a statement is opened
/// otherwise, and must not be stopped.
bool IsForSorting(const char* path, int flags) {
    return path == nullptr && (flags & SQLITE_OPEN_TEMP_JOURNAL) != 0;
}

int Open(sqlite3_vfs* files, const char* path, sqlite3_file* file, int flags, int* given) {
    static const sqlite3_io_methods methods = MakeMethods();
    sqlite3_vfs* const real = sqlite3_vfs_find(nullptr);
    if (!IsForSorting(path, flags)) return real->xOpen(real, path, file, flags, given);
    auto* const sorting = new (file) SortingFile{};
    sorting->watch = static_cast<WorkWatch*>(files->pAppData);
    const int code = real->xOpen(real, path, sorting->real(), flags, given);
    sorting->pMethods = sorting->real()->pMethods == nullptr ? nullptr : &methods;
    return code;
}

} // namespace

WatchedFiles::WatchedFiles(WorkWatch& watch) {
    static std::atomic<unsigned> made = 0;
    name_ = "watched-" + std::to_string(++made);
    files_ = *sqlite3_vfs_find(nullptr);
    files_.zName = name_.c_str();
    files_.pNext = nullptr;
    files_.pAppData = &watch;
    files_.szOsFile += static_cast<int>(sizeof(SortingFile));
    files_.xOpen = Open;
    sqlite3_vfs_register(&files_, 0);
}

WatchedFiles::~WatchedFiles() {
    sqlite3_vfs_unregister(&files_);
}

} // namespace jet
