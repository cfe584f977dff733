#pragma once

#include "map/MapLayerList.h"
#include "map/custom/LayerListFile.h"

#include <QSet>

namespace tessaro {

/// The layers of a map as a list shows them, the topmost first, and what can be done with them there. A stack counts
/// from the lowest: only here one is turned into the other. Layers that are not of the theme have the tag
/// "Customize - " + folder.
class LayerRows final {
  public:
    explicit LayerRows(LayerStack& map) : map_(map) {}

    [[nodiscard]] int Count() const { return map_.Count(); }
    /// The number of a row's layer in the stack, and the row of a layer.
    [[nodiscard]] int LayerOf(int row) const { return map_.Count() - 1 - row; }
    [[nodiscard]] StackedLayer& At(int row) { return map_.At(LayerOf(row)); }
    [[nodiscard]] const StackedLayer& At(int row) const { return map_.At(LayerOf(row)); }
    [[nodiscard]] LayerStack& Map() { return map_; }

    /// Moves a row one place up or down, with all that belongs to its layer. False at the end of the list.
    bool Promote(int row);
    bool Demote(int row);

    /// Puts a shapefile on top, without labels. False when it can't be read: `reason` tells why.
    [[nodiscard]] bool Add(QString path, QString& reason);
    [[nodiscard]] bool MayRemove(int row) const; ///< only what is not of the theme
    void Remove(int row);

    [[nodiscard]] bool MayBuffer(int row) const; ///< only points of a file
    /// True when the layer of this layer's buffers is on the map already.
    [[nodiscard]] bool HasBuffer(int row) const;
    /// Makes the buffers of a layer and puts them on top. False when that fails: `reason` tells why.
    [[nodiscard]] bool AddBuffer(int row, float radius, QString& reason);

    /// Adds the layers remembered from former sessions that are not on the map. Those whose file is missing or can't be
    /// read are passed over.
    void Restore();
    [[nodiscard]] bool IsRemembered(int row) const;
    void SetRemembered(int row, bool remembered);
    /// Writes the remembered layers that are on the map, from the lowest. False, after a report, when that fails.
    [[nodiscard]] bool Save() const;

  private:
    [[nodiscard]] bool IsOnMap(const QString& name) const;

    LayerStack& map_;
    QSet<QString> remembered_; ///< files in capitals
};

/// Adds the layers that are remembered from former sessions, as LayerRows::Restore.
void RestoreLayerList(LayerStack& map);

} // namespace tessaro
