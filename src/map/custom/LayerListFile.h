#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// The layers that are remembered for the next session: the file LoadChkSHP.chk of the folder of maps.
namespace tessaro {

/// A remembered layer: the name of its shapefile without the ending, and the folder, empty for the folder of maps.
struct RememberedLayer {
    QString name;
    QString folder;

    bool operator==(const RememberedLayer&) const = default;
};
using RememberedLayers = std::vector<RememberedLayer>;

/// The file's bytes, in the code page of a character set. A layer whose name or folder can't stand on one line is left
/// out.
[[nodiscard]] QByteArray LayerListBytes(const RememberedLayers& layers, int charset);
/// Reads any bytes: at most as many layers as the second line tells, those that are whole and have a name.
[[nodiscard]] RememberedLayers ReadLayerList(const QByteArray& bytes, int charset);

/// The folder of maps of the installation. What the user puts there stands in a folder of their own when it can't be
/// written to.
[[nodiscard]] QString MapsFolder();
/// Where the user last took a layer from, as long as the program runs; at first MapsFolder.
[[nodiscard]] QString LastLayerFolder();
void SetLastLayerFolder(const QString& folder);
/// The file of a remembered layer, the user's own before the installation's; empty when it is missing.
[[nodiscard]] QString FileOf(const RememberedLayer& layer);
/// A layer's file as it is remembered.
[[nodiscard]] RememberedLayer RememberedOf(const QString& shapeFile);

/// The layers of the file; none when there is no file.
[[nodiscard]] RememberedLayers LoadLayerList();
/// Replaces the file, the user's beside the installation's when that can't be written. Without layers it is deleted.
/// False, after a report, when that fails.
[[nodiscard]] bool SaveLayerList(const RememberedLayers& layers);

} // namespace tessaro
