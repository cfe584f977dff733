#pragma once

#include "jet/engine/Connection.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

namespace jet {

/// A folder of its own for one test, gone afterwards, and databases in it.
class TestFolder {
  public:
    TestFolder() {
        std::string form = (std::filesystem::temp_directory_path() / "jetXXXXXX").string();
        folder_ = ::mkdtemp(form.data());
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }
    [[nodiscard]] std::shared_ptr<Connection> Make(const std::string& name,
                                                   const std::string& password = "secret") const {
        Database::Create(path(name), password);
        return Connection::Open(path(name), password);
    }
    /// A database that keeps links.
    [[nodiscard]] std::shared_ptr<Connection> MakeWorking(const std::string& name) const {
        Database::Create(path(name), "secret");
        return Connection::Open(path(name), "secret", Use::Working);
    }

  private:
    std::filesystem::path folder_;
};

/// The number of the error that `work` fails with, or nothing.
template <class Work> std::optional<ErrorNumber> FailureOf(const Work& work) {
    try {
        work();
    } catch (const Error& error) {
        EXPECT_STRNE(error.what(), "");
        return error.number();
    }
    return std::nullopt;
}

/// All rows as text: "1|a;2|b;".
inline std::string RowsOf(Connection& connection, std::string_view sql) {
    return connection.OpenRecordset(sql).GetString(-1, "|", ";", "-");
}

} // namespace jet
