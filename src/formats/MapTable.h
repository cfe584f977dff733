#pragma once

#include <QString>

#include <vector>

namespace tessaro {

/// A feature of a map: the id and the name of its area.
struct MapTableRow {
    QString id;
    QString name;
};

/// Writes the table of a layer (.dbf, with .cpg) with the fields "ID_" and "Name1_" for its features. `stem` is its
/// path without the ending. False when it can't be written.
[[nodiscard]] bool WriteMapTable(const QString& stem, const std::vector<MapTableRow>& rows);

/// A text of a dBase table in UTF-8, cut to what a field holds.
[[nodiscard]] QByteArray MapTableText(const QString& text);
constexpr int kLongestTableText = 254; ///< bytes

} // namespace tessaro
