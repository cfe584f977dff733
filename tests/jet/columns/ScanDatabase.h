#pragma once

#include "jet/TestDatabase.h"
#include "jet/engine/ColumnImages.h"

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace jet::test {

/// A data database with a few thousand values and a working database with links to it and tables of selected rows,
/// opened once with column images and once without.
class ScanDatabase {
  public:
    /// The same seed gives the same rows. `unreadable`: some values are no numbers.
    ScanDatabase(std::uint64_t seed, int rows, bool unreadable);

    [[nodiscard]] Connection& withImages() { return *withImages_; }
    [[nodiscard]] Connection& plain() { return *plain_; }
    [[nodiscard]] ColumnImages& images() { return *images_; }
    [[nodiscard]] const TestFolder& folder() const { return folder_; }
    [[nodiscard]] std::string imageFolder() const { return folder_.path("images"); }
    [[nodiscard]] std::string dataFile() const { return folder_.path("data.mdb"); }
    /// The image file; empty when there is none.
    [[nodiscard]] std::string imageFile() const;
    [[nodiscard]] std::vector<std::string>& log() { return log_; }

    /// True when the statement would be run on the image, which is made first.
    [[nodiscard]] bool Scans(const std::string& sql);
    /// The rows of a statement in any order, or the number of its error; numbers to ten digits, and texts in lower
    /// case, since which of two spellings stands for a group hangs on the order in which SQLite joins. A SELECT … INTO
    /// gives the rows of the table that it makes, which is dropped again.
    [[nodiscard]] static std::vector<std::string> Outcome(Connection& connection, const std::string& sql);

    /// The first row of one outcome that the other doesn't have, with that one's row in its place; empty when both are
    /// the same. Numbers may differ in their tenth digit, to which outcomes are rounded.
    [[nodiscard]] static std::string Difference(const std::vector<std::string>& some,
                                                const std::vector<std::string>& others);

    /// Opens everything anew, with the images of a folder, as a new start of the program does.
    void OpenImages(const std::string& folder, std::uint64_t mostBytes = 1U << 30U);

  private:
    void Fill(int rows, bool unreadable);
    std::string Value(bool unreadable);

    std::mt19937_64 random_;
    TestFolder folder_;
    std::vector<std::string> log_;
    std::shared_ptr<ColumnImages> images_;
    std::shared_ptr<Connection> withImages_;
    std::shared_ptr<Connection> plain_;
};

} // namespace jet::test
