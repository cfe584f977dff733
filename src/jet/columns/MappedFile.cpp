#include "jet/columns/MappedFile.h"

#include "jet/values/Error.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace jet {

namespace {

/// What the signal handler knows of a mapped file.
struct Guard {
    std::atomic<std::uintptr_t> start = 0; ///< 0: none
    std::atomic<std::size_t> bytes = 0;
    std::atomic<bool> cut = false;
};

constexpr std::size_t kMostMapped = 64;
std::array<Guard, kMostMapped> guards;
std::mutex guardsMutex;         ///< for taking a place and giving it up; the handler needs none
struct sigaction handlerBefore; ///< who deals with the faults of others

/// Puts zeros in the place of a file that was cut; the instruction that failed is tried again then. False for an
/// address that isn't one of ours.
bool ReplaceByZeros(std::uintptr_t address) {
    for (Guard& guard : guards) {
        const std::uintptr_t start = guard.start;
        const std::size_t bytes = guard.bytes;
        if (start == 0 || address < start || address - start >= bytes) continue;
        guard.cut = true;
        const int flags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED;
        return ::mmap(reinterpret_cast<void*>(start), bytes, PROT_READ, flags, -1, 0) != MAP_FAILED;
    }
    return false;
}

void OnBusError(int, siginfo_t* info, void*) {
    const int before = errno;
    const bool fault = info->si_code > 0; // not sent by a process
    if (!fault || !ReplaceByZeros(reinterpret_cast<std::uintptr_t>(info->si_addr))) {
        ::sigaction(SIGBUS, &handlerBefore, nullptr); // a fault comes again, to that one
        if (!fault) ::raise(SIGBUS);
    }
    errno = before;
}

void InstallHandler() {
    struct sigaction handler {};
    handler.sa_sigaction = OnBusError;
    handler.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&handler.sa_mask);
    ::sigaction(SIGBUS, &handler, &handlerBefore);
}

/// The place of a mapped file; kMostMapped when there is none left.
std::size_t TakeGuard(const void* start, std::size_t bytes) {
    const std::lock_guard lock(guardsMutex);
    static const bool installed = [] {
        InstallHandler();
        return true;
    }();
    static_cast<void>(installed);
    std::size_t place = 0;
    while (place < kMostMapped && guards[place].start != 0)
        ++place;
    if (place == kMostMapped) return place;
    guards[place].cut = false;
    guards[place].bytes = bytes;
    guards[place].start = reinterpret_cast<std::uintptr_t>(start);
    return place;
}

void GiveUpGuard(std::size_t place) {
    const std::lock_guard lock(guardsMutex);
    guards[place].start = 0;
}

std::int64_t TimeOf(const struct stat& found) {
    return static_cast<std::int64_t>(found.st_mtim.tv_sec) * 1'000'000'000 + found.st_mtim.tv_nsec;
}

int OpenRegular(const std::string& path, struct stat& found) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK); // not to wait at a pipe
    const bool fits = file >= 0 && ::fstat(file, &found) == 0 && S_ISREG(found.st_mode) && found.st_size > 0;
    if (fits) return file;
    if (file >= 0) ::close(file);
    throw Error(ErrorNumber::NotADatabase, "The file can't be opened, or is empty.");
}

} // namespace

MappedFile::MappedFile(const std::string& path) {
    struct stat found {};
    file_ = OpenRegular(path, found);
    bytes_ = static_cast<std::size_t>(found.st_size);
    written_ = TimeOf(found);
    void* const mapped = ::mmap(nullptr, bytes_, PROT_READ, MAP_SHARED, file_, 0);
    guard_ = mapped == MAP_FAILED ? kMostMapped : TakeGuard(mapped, bytes_);
    if (guard_ == kMostMapped) {
        if (mapped != MAP_FAILED) ::munmap(mapped, bytes_);
        ::close(file_);
        throw Error(ErrorNumber::NotADatabase, "The file can't be mapped into memory.");
    }
    start_ = static_cast<const unsigned char*>(mapped);
}

MappedFile::~MappedFile() {
    GiveUpGuard(guard_);
    ::munmap(const_cast<unsigned char*>(start_), bytes_);
    ::close(file_);
}

bool MappedFile::wasCut() const {
    return guards[guard_].cut;
}

bool MappedFile::isIntact() const {
    struct stat found {};
    return !wasCut() && ::fstat(file_, &found) == 0 && static_cast<std::size_t>(found.st_size) == bytes_ &&
           TimeOf(found) == written_;
}

} // namespace jet
