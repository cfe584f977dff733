#pragma once

#include "layers/LayerStack.h"

#include <QString>

#include <functional>
#include <vector>

namespace tessaro {

/// A row of MapLayerList: a shapefile's name with its ending, and the folder it lies in; the folder is empty when the
/// file was not found.
struct MapFile {
    QString name;
    QString folder;

    bool operator==(const MapFile&) const = default;
};
using MapFiles = std::vector<MapFile>;

/// The layers of a theme have this tag.
inline constexpr auto kDataTag = "Data";
[[nodiscard]] bool IsOfTheme(const StackedLayer& layer);

/// The map files of the selected areas, those of the higher levels first, each once although several levels name it.
[[nodiscard]] MapFiles Collect_Maps_As_Per_Data();

/// The file of a layer as it can be read: a restored copy when ENCRYPT_DECRYPT_FILES is on, else the file itself. Empty
/// when it can't be copied.
[[nodiscard]] QString PlainLayerFile(const QString& path);

/// Asks the user for the file of a layer that was not found, with the message of that key ("234" for a folder, "235"
/// for a file). Empty when the user goes on without it.
using LayerLocator = std::function<QString(const QString& key, const QString& path)>;

/// Reads a shapefile, from a restored copy when ENCRYPT_DECRYPT_FILES is on, and puts it on top of the map. `path`
/// becomes the file that the user located. False when there is none or it can't be read: the log tells why, `reason`
/// too in the current language, and the map is as it was.
[[nodiscard]] bool AddLayer(LayerStack& map, QString& path, const QString& tag, const LayerLocator& locate,
                            QString& reason);

/// What the layers of a theme show, by the system's numbers; None without any.
enum class ThemeKind { None = 0, Polygons = 1, Points = 2, Both = 3 };
[[nodiscard]] ThemeKind KindOf(const LayerStack& map);

/// Puts all listed files on the map as layers of the theme, in place of those that the map has. A file that the user
/// located takes the place of the one in the list. A layer whose file can't be read again stays as it was; a message
/// tells which, and which files are left out. With nothing on the map after that, message "222" with the reason of the
/// last file. Gives the kind.
ThemeKind LoadLayers(LayerStack& map, MapFiles& files, const LayerLocator& locate);

/// The number of features in the layers of the theme.
[[nodiscard]] int FeaturesOfTheme(const LayerStack& map);

} // namespace tessaro
