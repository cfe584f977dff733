#pragma once

#include "view/DataFilters.h"

#include <QString>
#include <QStringList>

/// Makes and finds favourites: databases with what the data view shows.
namespace tessaro {

/// Why a favourite can't be made.
enum class FavouriteResult {
    Made,
    BadName, ///< empty, or with characters that file names can't have: message "037"
    Taken,   ///< message "021"
    Failed   ///< an error of the disk or the database; it is in the log, and no file is left
};

/// Makes a copy of the open database with only the rows that the data view shows, under this name in FavoritesFolder.
/// The file appears when it is complete. `rows` are the view's filters; combinations without a value that the view
/// shows become rows without a value. Progress is shown in the status bar.
[[nodiscard]] FavouriteResult MakeFavourite(const QString& name, const RowsInView& rows = {});

/// Names of the files of FavoritesFolder that are databases.
[[nodiscard]] QStringList FavouriteFiles();
/// Paths of all favourites that can be opened: the user's ones, then those that came with the product.
[[nodiscard]] QStringList FavouritePaths();
/// The path of a favourite by its file's name; ".mdb" is added when the name doesn't end in it.
[[nodiscard]] QString FavouritePath(const QString& name);
/// True when the favourite of this file name is the database that is open.
[[nodiscard]] bool IsOpenFavourite(const QString& fileName);
/// False when its file is still there afterwards.
[[nodiscard]] bool RemoveFavourite(const QString& fileName);

} // namespace tessaro
