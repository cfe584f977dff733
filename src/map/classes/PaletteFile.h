#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace tessaro {

/// One row of the grid of classes as a palette file (.plf) holds it. All are texts as they stand in the cells; the
/// colour is its decimal number, blue high.
struct PaletteRow {
    QString color;
    QString from;
    QString to;
    QString legend;
    QString fontName;
    QString fontSize;
    bool bold = false;
    bool italic = false;
    bool underline = false;

    bool operator==(const PaletteRow&) const = default;
};
/// The rows of the classes, a white spacer, and the row of missing data.
using PaletteRows = std::vector<PaletteRow>;

/// What a palette file is read for.
enum class PaletteMode { Labels = 0, Range = 2, Colors = 4 };

/// The bytes of a palette file in the code page of a character set (Session's FontCharset). Line breaks within cells
/// become blanks. A text that the code page doesn't have makes it a file in UTF-8 with a byte order mark, so that
/// nothing is lost.
[[nodiscard]] QByteArray PaletteBytes(const PaletteRows& rows, int charset);

struct PaletteContents {
    PaletteRows rows;     ///< the whole records, in order
    bool complete = true; ///< False when records are missing of those that the head tells of
};
/// Reads any bytes; what is cut off or is no number where one belongs is left out.
[[nodiscard]] PaletteContents ReadPalette(const QByteArray& bytes, int charset);

/// Copies what the mode asks for from the file's rows to the grid's, class by class, and from the last two rows to the
/// last two, whatever the number of classes of both. An empty value, or white, in a row of a class ends the classes.
/// The numbers of the grid's rows that were written, from 0.
std::vector<int> ApplyPalette(const PaletteContents& file, PaletteMode mode, PaletteRows& grid);

/// Writes a palette file; False after a report when it can't be written, and a former file stands.
[[nodiscard]] bool SavePalette(const QString& fileName, const PaletteRows& rows);
/// Reads one; nothing after a report when it can't be read. A file that ends early is reported too and gives the rows
/// before its end.
[[nodiscard]] std::optional<PaletteContents> LoadPalette(const QString& fileName);

} // namespace tessaro
