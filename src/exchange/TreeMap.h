#pragma once

#include "exchange/AreaTree.h"

namespace tessaro {

/// The shapefile that a tree comes from as a map of the program: its shapes with a table of the ids and names that the
/// areas have. The files go again with the object unless they are kept.
class TreeMap final {
  public:
    /// Writes them into the folder, under a name that is free there; one that lies there and has the ids of the areas
    /// is used as it is. Throws std::runtime_error when that fails.
    TreeMap(const AreaTree& tree, const QString& folder);
    ~TreeMap();
    TreeMap(const TreeMap&) = delete;
    TreeMap& operator=(const TreeMap&) = delete;

    /// "Provinces.shp"; empty for a tree that comes from no shapefile.
    [[nodiscard]] QString Name() const;
    void Keep() { kept_ = true; }

  private:
    void Remove() const;

    QString stem_; ///< path without the ending; empty for no map
    bool kept_ = false;
};

} // namespace tessaro
