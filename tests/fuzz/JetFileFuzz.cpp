// Any bytes as a genuine Jet file, read as the import reads it: in a process of its own, which may crash, but neither
// hang nor take more memory than it is given. Begin with a folder of genuine files.

#include "database/JetFile.h"
#include "platform/Apart.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

using namespace tessaro;

namespace {

/// All rows of all tables that an import asks for first.
bool ReadTables(const std::string& path, ApartReport& report) {
    if (std::freopen("/dev/null", "w", stderr) == nullptr) return false;
    const JetFile file(path);
    std::int64_t rows = 0;
    for (const char* table : {"Language", "Data", "Indicator_en", "Indicator_Unit_Subpop", "Area_en"}) {
        report.Progress(0);
        const auto columns = file.Columns(table);
        (void)file.TextColumns(table);
        (void)file.ReadRows(table, columns, [&](const auto&) { return ++rows < 100000; });
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int file = ::memfd_create("jet", MFD_CLOEXEC);
    if (::write(file, data, size) != static_cast<ssize_t>(size)) std::abort();
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    ApartLimits limits;
    limits.whole = std::chrono::seconds(20);
    const auto start = std::chrono::steady_clock::now();
    (void)RunApart([&](ApartReport& report) { return ReadTables(path, report); }, limits, {});
    ::close(file);
    if (std::chrono::steady_clock::now() - start > std::chrono::seconds(10)) std::abort(); // a hang, to be looked at
    return 0;
}
