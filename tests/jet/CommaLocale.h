#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace jet {

/// A locale that writes 1,5, for as long as the object lives. It is made in a folder of its own, not installed.
class CommaLocale {
  public:
    CommaLocale() : before_(std::setlocale(LC_ALL, nullptr)) {
        std::string form = (std::filesystem::temp_directory_path() / "localeXXXXXX").string();
        folder_ = ::mkdtemp(form.data());
        ::setenv("LOCPATH", folder_.c_str(), 1);
        made_ = std::system("localedef --no-archive -i de_DE -f UTF-8 \"$LOCPATH/de_DE.UTF-8\" 2>/dev/null") == 0;
        made_ = made_ && std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~CommaLocale() {
        std::setlocale(LC_ALL, before_.c_str());
        ::unsetenv("LOCPATH");
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    /// False when it can't be made, or writes a point all the same.
    [[nodiscard]] bool works() const { return made_ && std::localeconv()->decimal_point == std::string(","); }

  private:
    std::string before_;
    std::filesystem::path folder_;
    bool made_ = false;
};

} // namespace jet
