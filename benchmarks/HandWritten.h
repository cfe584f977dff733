#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;

namespace tessaro::bench {

/// A plain SQLite connection as one would open it by hand: the data file, with the selections attached as "sel" and the
/// working database as "work".
class HandWritten final {
  public:
    HandWritten(const std::string& dataFile, const std::string& selections, const std::string& working);
    ~HandWritten();
    HandWritten(const HandWritten&) = delete;
    HandWritten& operator=(const HandWritten&) = delete;

    /// Runs statements; a failure ends the program, since the figures would mean nothing.
    void Run(const std::string& sql);
    /// Steps through the rows of a query (at most `most`) and takes out every column; gives the number of rows.
    std::int64_t Walk(const std::string& sql, std::int64_t most = INT64_MAX);
    /// The numbers of one column of all rows.
    [[nodiscard]] std::vector<std::int64_t> Numbers(const std::string& sql, int column);
    /// The first column of all rows.
    [[nodiscard]] std::vector<double> Doubles(const std::string& sql);

  private:
    sqlite3* database_ = nullptr;
};

/// What opening a database comes to when written by hand: the template copied, the three files opened, their catalogues
/// read with every column, the default language looked up and the links noted down in one transaction. Ours reads
/// columns, and opens the selections, when they are first asked for; it checks the password and the tables on top.
void OpenByHand(const std::string& dataFile, const std::string& selections, const std::string& workingTemplate,
                const std::string& working);

} // namespace tessaro::bench
