#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro::content {

/// A table of comma-separated values (RFC 4180, UTF-8) with a head line. Short rows read as if filled with empty cells.
class CsvTable final {
  public:
    /// Throws std::runtime_error for a file that can't be read or whose quotes don't close.
    [[nodiscard]] static CsvTable Read(const std::filesystem::path& file);
    [[nodiscard]] static CsvTable Parse(std::string_view text);

    [[nodiscard]] const std::vector<std::string>& head() const { return head_; }
    [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }
    [[nodiscard]] const std::string& Cell(std::size_t row, std::size_t column) const;
    /// The cell of the named column; throws std::runtime_error when the table has no such column.
    [[nodiscard]] const std::string& Cell(std::size_t row, std::string_view column) const;
    [[nodiscard]] std::optional<std::size_t> ColumnIndex(std::string_view column) const;

  private:
    std::vector<std::string> head_;
    std::vector<std::vector<std::string>> rows_;
};

/// The words of a cell that holds a list.
[[nodiscard]] std::vector<std::string> Words(std::string_view cell);

} // namespace tessaro::content
