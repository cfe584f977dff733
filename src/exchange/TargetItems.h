#pragma once

#include "exchange/ItemNames.h"

#include <QString>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace tessaro {

/// An area of the database.
struct TargetArea {
    int number = 0; ///< AreaNId
    std::string id;
    std::string gid;
    int level = 0;
    std::vector<std::string> names; ///< in every language, that of the session first
};

/// What a database has that values can refer to, and what a file adds to it. Indicators, units and subgroups, which go
/// by global identifiers, are numbered from 1 in the order of those.
struct TargetItems {
    ItemNames periods;
    ItemNames indicators;
    ItemNames units;
    ItemNames subgroups;
    ItemNames sources;
    ItemNames footnotes;
    std::vector<TargetArea> areas;
    std::vector<std::string> indicatorGIds;
    std::vector<std::string> unitGIds;
    std::vector<std::string> subgroupGIds;

    /// A combination of indicator, unit and subgroup that the file adds.
    struct Combination {
        int indicator = 0;
        int unit = 0;
        int subgroup = 0;
    };
    std::vector<Combination> madeCombinations;

    /// The number of a combination: above 0 in the database, below 0 one that is added.
    [[nodiscard]] int CombinationOf(const Combination& parts);
    [[nodiscard]] Combination PartsOf(int combination) const;

    struct Hash {
        std::size_t operator()(std::uint64_t key) const {
            return std::hash<std::uint64_t>()(key * 0x9E3779B97F4A7C15U);
        }
    };
    std::unordered_map<std::uint64_t, int, Hash> combinations;
    std::unordered_map<int, Combination> partsOf;
};

/// Reads the lists of a database, in all its languages, that with the suffix ("_en") first. Throws jet::Error.
[[nodiscard]] TargetItems ReadTargetItems(const QString& file, const QString& suffix);

} // namespace tessaro
