#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace jet {

/// A file of our own in memory, for reading. Another process may cut it at any time. What is read beyond its new end
/// would end the program (SIGBUS); here all of it reads as zeros from then on, and isIntact gives False.
class MappedFile final {
  public:
    /// Throws Error when there is no such file, it is empty, or too many are mapped already.
    explicit MappedFile(const std::string& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    [[nodiscard]] const unsigned char* start() const { return start_; }
    [[nodiscard]] std::size_t bytes() const { return bytes_; }
    /// False when somebody has cut or changed the file since it was mapped: what was read from it counts for nothing.
    [[nodiscard]] bool isIntact() const;
    /// True when it was read beyond its new end. Other changes aren't seen, and no system call is made.
    [[nodiscard]] bool wasCut() const;

  private:
    int file_ = -1;
    const unsigned char* start_ = nullptr;
    std::size_t bytes_ = 0;
    std::int64_t written_ = 0; ///< time of the file's last change
    std::size_t guard_ = 0;    ///< its place among the mapped files
};

} // namespace jet
