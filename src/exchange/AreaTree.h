#pragma once

#include "exchange/TargetItems.h"

#include <QString>

#include <string>
#include <vector>

namespace tessaro {

/// An area of a tree, with an id of the database's form: three characters a level after those of its parent.
struct TreeArea {
    std::string id;
    std::string code; ///< what the file calls it
    std::string name;
    std::string mapFile; ///< of the Maps folder; empty for none

    [[nodiscard]] int Level() const;
};

/// The areas of a new database.
struct AreaTree {
    std::vector<TreeArea> areas;            ///< in the order of the file
    QString map;                            ///< the shapefile that they come from; empty for another file
    bool mapHasIds = false;                 ///< its table has the ids that the areas have
    std::vector<std::size_t> areaOfFeature; ///< of that shapefile: places in `areas`
};

/// True for a text that is the id of an area by its form: three letters or digits a level, of at most ten levels.
[[nodiscard]] bool IsTreeId(const std::string& id);

/// Reads a table whose heads name an id or code, a name, and where it has them a parent (by its id) or a level (a row
/// belongs to the last one before it of the level above), and a map file; or the table of a shapefile. Ids that fit the
/// tree stay, others are made. Throws ReadError for a file that can't be read or names an unknown parent, one area
/// twice, or more than ten levels; office::Error.
[[nodiscard]] AreaTree ReadAreaTree(const QString& file);
/// Adds them to the areas of a database that are found by name, with the numbers -1, -2 ... of items to be made.
void AddTreeAreas(const AreaTree& tree, TargetItems& items);

} // namespace tessaro
