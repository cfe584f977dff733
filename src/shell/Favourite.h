#pragma once

#include <QString>
#include <QStringList>

namespace tessaro {

/// Why a favourite can't be made.
enum class FavouriteResult {
    Made,
    BadName, ///< empty, or with characters that file names can't have: message "037"
    Taken,   ///< message "021"
    Failed   ///< the disk, or the database (reported); nothing is left behind
};

/// Characters that file names can't have turned into "_".
[[nodiscard]] QString CleanFileName(const QString& name);
/// A copy of the open database with only the rows that the data view shows, under this name in FavoritesFolder.
/// Progress goes to the frame's meter.
[[nodiscard]] FavouriteResult MakeFavourite(const QString& name);
/// Names of the files of FavoritesFolder that are databases.
[[nodiscard]] QStringList FavouriteFiles();
/// The path of a favourite by its file's name, with or without ".mdb".
[[nodiscard]] QString FavouritePath(const QString& name);

} // namespace tessaro
