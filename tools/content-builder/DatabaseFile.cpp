#include "DatabaseFile.h"

#include "session/Query.h"

#include <unistd.h>

namespace tessaro::content {

namespace fs = std::filesystem;

void MakeDatabase(const fs::path& file, const std::function<void(const std::string& workFile)>& fill) {
    fs::create_directories(file.parent_path());
    const fs::path work = file.string() + "." + std::to_string(getpid()) + ".new";
    fs::remove(work);
    try {
        jet::Database::Create(work.string(), DatabasePassword());
        fill(work.string());
        fs::rename(work, file);
    } catch (...) {
        std::error_code ignored;
        fs::remove(work, ignored);
        throw;
    }
}

std::shared_ptr<jet::Connection> OpenWorkFile(const std::string& workFile) {
    return jet::Connection::Open(workFile, DatabasePassword());
}

} // namespace tessaro::content
