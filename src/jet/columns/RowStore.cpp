#include "jet/columns/RowStore.h"

#include "jet/values/Error.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace jet {

namespace {

[[noreturn]] void Fail(const std::string& folder, const char* what) {
    throw Error(ErrorNumber::ReadOnly,
                "A file in '" + folder + "' can't be " + what + ": " + std::strerror(errno) + ".");
}

} // namespace

NamelessFile::~NamelessFile() {
    if (file_ >= 0) ::close(file_);
}

NamelessFile::NamelessFile(NamelessFile&& other) noexcept
    : folder_(std::move(other.folder_)), file_(std::exchange(other.file_, -1)), size_(std::exchange(other.size_, 0)) {}

NamelessFile& NamelessFile::operator=(NamelessFile&& other) noexcept {
    std::swap(folder_, other.folder_);
    std::swap(file_, other.file_);
    std::swap(size_, other.size_);
    return *this;
}

// Not every file system makes files without a name.
void NamelessFile::Open() {
    file_ = ::open(folder_.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (file_ >= 0) return;
    std::string name = folder_ + "/XXXXXX.making";
    file_ = ::mkostemps(name.data(), static_cast<int>(std::strlen(".making")), O_CLOEXEC);
    if (file_ < 0) Fail(folder_, "made");
    ::unlink(name.c_str());
}

void NamelessFile::Append(const void* bytes, std::size_t count) {
    if (file_ < 0) Open();
    const auto* next = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t done = ::write(file_, next, count);
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) Fail(folder_, "written");
        next += done;
        count -= static_cast<std::size_t>(done);
        size_ += static_cast<std::size_t>(done);
    }
}

void NamelessFile::Read(std::size_t from, void* bytes, std::size_t count) const {
    auto* next = static_cast<char*>(bytes);
    while (count > 0) {
        const ssize_t done = ::pread(file_, next, count, static_cast<off_t>(from));
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) Fail(folder_, "read");
        next += done;
        from += static_cast<std::size_t>(done);
        count -= static_cast<std::size_t>(done);
    }
}

} // namespace jet
