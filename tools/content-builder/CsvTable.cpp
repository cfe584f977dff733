#include "CsvTable.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tessaro::content {

namespace {

/// Cuts a text into rows of cells; a quoted cell may hold commas, line ends and doubled quotes.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    std::vector<std::vector<std::string>> Rows() {
        std::vector<std::vector<std::string>> rows;
        while (!rest_.empty()) {
            std::vector<std::string> row = Row();
            if (row.size() > 1 || !row.front().empty()) rows.push_back(std::move(row)); // blank lines say nothing
        }
        return rows;
    }

  private:
    std::vector<std::string> Row() {
        std::vector<std::string> row;
        while (true) {
            row.push_back(!rest_.empty() && rest_.front() == '"' ? QuotedCell() : PlainCell());
            if (rest_.empty()) return row;
            const char end = rest_.front();
            rest_.remove_prefix(1);
            if (end == '\r' && !rest_.empty() && rest_.front() == '\n') rest_.remove_prefix(1);
            if (end != ',') return row;
        }
    }

    std::string PlainCell() {
        const std::size_t length = std::min(rest_.find_first_of(",\r\n"), rest_.size());
        std::string cell(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return cell;
    }

    std::string QuotedCell() {
        std::string cell;
        rest_.remove_prefix(1);
        while (true) {
            const std::size_t length = rest_.find('"');
            if (length == std::string_view::npos) throw std::runtime_error("a quoted cell doesn't end");
            cell += rest_.substr(0, length);
            rest_.remove_prefix(length + 1);
            if (rest_.empty() || rest_.front() != '"') break;
            cell += '"';
            rest_.remove_prefix(1);
        }
        return cell + PlainCell();
    }

    std::string_view rest_;
};

} // namespace

CsvTable CsvTable::Read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("can't read " + file.string());
    const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    try {
        return Parse(text);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + ": " + error.what());
    }
}

CsvTable CsvTable::Parse(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    CsvTable table;
    table.rows_ = Reader(text).Rows();
    if (table.rows_.empty()) throw std::runtime_error("there is no head line");
    table.head_ = std::move(table.rows_.front());
    table.rows_.erase(table.rows_.begin());
    return table;
}

const std::string& CsvTable::Cell(std::size_t row, std::size_t column) const {
    static const std::string empty;
    return column < rows_[row].size() ? rows_[row][column] : empty;
}

const std::string& CsvTable::Cell(std::size_t row, std::string_view column) const {
    const auto index = ColumnIndex(column);
    if (!index) throw std::runtime_error("there is no column " + std::string(column));
    return Cell(row, *index);
}

std::optional<std::size_t> CsvTable::ColumnIndex(std::string_view column) const {
    const auto found = std::ranges::find(head_, column);
    if (found == head_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - head_.begin());
}

std::vector<std::string> Words(std::string_view cell) {
    std::vector<std::string> words;
    while (!cell.empty()) {
        const std::size_t length = std::min(cell.find(' '), cell.size());
        if (length > 0) words.emplace_back(cell.substr(0, length));
        cell.remove_prefix(std::min(length + 1, cell.size()));
    }
    return words;
}

} // namespace tessaro::content
