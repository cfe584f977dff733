#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <unistd.h>

namespace tessaro::test {

/// Compiles a locale ("de_DE") into a folder, as `name`.UTF-8, because the machine needn't have it; LOCPATH must name
/// the folder then. False when it can't be made. Without Qt, for the tests of rooms that have none.
inline bool MakeLocale(const std::string& name, const std::string& folder) {
    const std::string file = folder + "/" + name + ".UTF-8";
    if (std::filesystem::exists(file)) return true;
    const std::string make = "localedef --no-archive -i " + name + " -f UTF-8 '" + file + "' 2>/dev/null";
    return std::system(make.c_str()) == 0;
}

/// While it lives, the C library of this process writes numbers as German does: "1,5".
class CommaLocale final {
  public:
    CommaLocale() : before_(std::setlocale(LC_ALL, nullptr)) {
        if (const char* path = std::getenv("LOCPATH")) pathBefore_ = path;
        std::string form = (std::filesystem::temp_directory_path() / "localeXXXXXX").string();
        folder_ = ::mkdtemp(form.data());
        ::setenv("LOCPATH", folder_.c_str(), 1);
        made_ = MakeLocale("de_DE", folder_.string()) && std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~CommaLocale() {
        // The path first: the locale of before may lie in it.
        if (pathBefore_)
            ::setenv("LOCPATH", pathBefore_->c_str(), 1);
        else
            ::unsetenv("LOCPATH");
        std::setlocale(LC_ALL, before_.c_str());
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    /// False when it can't be made, or writes a point all the same.
    [[nodiscard]] bool works() const { return made_ && std::localeconv()->decimal_point == std::string(","); }

  private:
    std::string before_;
    std::optional<std::string> pathBefore_;
    std::filesystem::path folder_;
    bool made_ = false;
};

} // namespace tessaro::test
