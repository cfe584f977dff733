// Any bytes as statements, one a line, run on a small database: each runs or fails with an Error, and the next one
// finds a file that still opens.

#include "jet/RandomStatements.h"
#include "jet/engine/Connection.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

std::string NewPath() {
    const std::string path = "/tmp/fuzz-" + std::to_string(::getpid()) + ".mdb";
    for (const char* const ending : {"", "-journal"})
        std::remove((path + ending).c_str());
    return path;
}

void Run(jet::Connection& connection, std::string_view sql) {
    try {
        connection.Execute(sql);
    } catch (const jet::Error&) {
        // refused, which is as good as run
    }
    try {
        static_cast<void>(connection.OpenRecordset(sql).RecordCount());
    } catch (const jet::Error&) {
        // a statement that gives no rows
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMostStatements = 8;
    const std::string path = NewPath();
    jet::Database::Create(path, "");
    {
        const auto connection = jet::Connection::Open(path, "");
        jet::RandomStatements::MakeTables(*connection);
        std::string_view rest(reinterpret_cast<const char*>(data), size);
        for (std::size_t i = 0; i < kMostStatements && !rest.empty(); ++i) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            Run(*connection, rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    static_cast<void>(jet::Connection::Open(path, ""));
    return 0;
}
