#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tessaro::content {

/// How large a made-up database is to be. The same numbers give the same rows in every run.
struct RandomDatabaseSize {
    int areas = 200;
    int ius = 60;
    int periods = 20;
    int sources = 5;
    std::int64_t rows = -1; ///< rows of Data; -1: one for each area, IUS and period
    std::uint64_t seed = 1;
    std::vector<std::string> languages = {"en"}; ///< codes; the first one is the default

    /// As many rows as there are areas, IUS, periods and sources to tell them apart.
    [[nodiscard]] std::int64_t MostRows() const;
};

/// What is wrong with the numbers, as a sentence; empty when they will do.
[[nodiscard]] std::string ProblemOf(const RandomDatabaseSize& size);

/// Makes a database of the given size: areas of four levels, all seven classifications, sources and footnotes, flags as
/// the data have them. Replaces `file`.
void MakeRandomDatabase(const std::filesystem::path& file, const RandomDatabaseSize& size);

} // namespace tessaro::content
