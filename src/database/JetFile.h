#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

/// A genuine Jet database, opened for reading by the foreign library that knows the format. Its password only keeps
/// other programs out and is not asked for. Damaged files can bring the library down: read them apart (RunApart).
class JetFile final {
  public:
    explicit JetFile(const std::string& path);
    ~JetFile();
    JetFile(const JetFile&) = delete;
    JetFile& operator=(const JetFile&) = delete;

    [[nodiscard]] bool isOpen() const;
    /// True when the file has a table of the user's with this name, ignoring case.
    [[nodiscard]] bool HasTable(std::string_view name) const;

    /// A column of texts, with the characters that it holds at most; 0 for a memo, which has no bound.
    struct TextColumn {
        std::string name;
        int width = 0;
    };
    [[nodiscard]] std::vector<TextColumn> TextColumns(std::string_view table) const;
    /// Names of all columns of a table.
    [[nodiscard]] std::vector<std::string> Columns(std::string_view table) const;
    /// Rows that the table claims to have; 0 when there is no such table.
    [[nodiscard]] std::int64_t RowCount(std::string_view table) const;

    /// One field of a row: its text in UTF-8 (numbers with "." whatever the locale, Yes/No as -1 or 0, GUIDs in
    /// braces), or Null, which an empty text gives too.
    struct Field {
        std::string_view text;
        bool isNull = true;
    };
    /// Gives each row of a table to `take`, with the fields of `columns` in that order; columns that the table lacks
    /// are Null. False when there is no such table, or as soon as `take` gives False.
    bool ReadRows(std::string_view table, const std::vector<std::string>& columns,
                  const std::function<bool(const std::vector<Field>&)>& take) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tessaro
