#include "jet/columns/FileMark.h"

#include <array>
#include <sqlite3.h>
#include <sys/stat.h>

namespace jet {

namespace {

constexpr std::size_t kHeaderBytes = 100;
using Header = std::array<unsigned char, kHeaderBytes>;

std::uint32_t NumberAt(const Header& header, std::size_t at) {
    return static_cast<std::uint32_t>(header[at]) << 24U | static_cast<std::uint32_t>(header[at + 1]) << 16U |
           static_cast<std::uint32_t>(header[at + 2]) << 8U | header[at + 3];
}

/// Through the engine's own file: to open and close the file otherwise would drop the locks of this process.
std::optional<Header> HeaderOf(sqlite3* database, const std::string& schemaName, std::uint64_t& bytes) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, schemaName.c_str(), SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
    if (file == nullptr || file->pMethods == nullptr) return std::nullopt;
    sqlite3_int64 size = 0;
    Header header{};
    if (file->pMethods->xFileSize(file, &size) != SQLITE_OK) return std::nullopt;
    if (file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0) != SQLITE_OK)
        return std::nullopt;
    bytes = static_cast<std::uint64_t>(size);
    return header;
}

} // namespace

std::optional<FileMark> FileMark::Of(sqlite3* database, const std::string& schemaName) {
    constexpr std::size_t kWriteVersion = 18;
    constexpr std::size_t kReadVersion = 19;
    constexpr std::size_t kChanges = 24;
    constexpr std::size_t kSchema = 40;
    constexpr unsigned char kWriteAhead = 2;
    if (sqlite3_txn_state(database, schemaName.c_str()) == SQLITE_TXN_WRITE) return std::nullopt;
    const char* const path = sqlite3_db_filename(database, schemaName.c_str());
    struct stat found {};
    if (path == nullptr || *path == '\0' || ::stat(path, &found) != 0) return std::nullopt;
    FileMark mark;
    const auto header = HeaderOf(database, schemaName, mark.bytes);
    if (!header || (*header)[kWriteVersion] == kWriteAhead || (*header)[kReadVersion] == kWriteAhead)
        return std::nullopt;
    mark.device = found.st_dev;
    mark.inode = found.st_ino;
    mark.written = static_cast<std::int64_t>(found.st_mtim.tv_sec) * 1'000'000'000 + found.st_mtim.tv_nsec;
    mark.changes = NumberAt(*header, kChanges);
    mark.schema = NumberAt(*header, kSchema);
    return mark;
}

} // namespace jet
