#include "map/classes/PaletteFile.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// What only opening a file needs.
namespace tessaro {

int FontCharset = 0;

void ReportError(unsigned /*number*/, const QString& /*description*/, const QString& /*procedureName*/,
                 bool /*alwaysShow*/) {
    std::abort();
}
void ReportError(FileError /*number*/, const QString& /*description*/, const QString& /*procedureName*/,
                 bool /*alwaysShow*/) {
    std::abort();
}

} // namespace tessaro

namespace {

using namespace tessaro;

void Require(bool holds) {
    if (!holds) std::abort();
}

/// A grid of so many classes with a spacer and a row of missing data.
PaletteRows GridOf(int classes) {
    PaletteRows grid(static_cast<std::size_t>(classes) + 2);
    for (PaletteRow& row : grid)
        row.color = QStringLiteral("255");
    return grid;
}

/// Every mode changes only rows that the grid has, and says which.
void Apply(const PaletteContents& file, int classes) {
    for (const PaletteMode mode : {PaletteMode::Labels, PaletteMode::Range, PaletteMode::Colors}) {
        PaletteRows grid = GridOf(classes);
        const std::size_t before = grid.size();
        for (const int row : ApplyPalette(file, mode, grid))
            Require(row >= 0 && static_cast<std::size_t>(row) < before);
        Require(grid.size() == before);
    }
}

} // namespace

/// Any bytes as a palette: the first tells the size of the grid, the second the code page, the rest is the file. What
/// was read is written and read again as the same rows.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    constexpr int kCharsets[] = {0, 178, 204, 238};
    const int charset = kCharsets[data[1] % 4];
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 2, static_cast<qsizetype>(size - 2));
    const PaletteContents file = ReadPalette(bytes, charset);
    Apply(file, data[0] % 32);
    const PaletteContents again = ReadPalette(PaletteBytes(file.rows, charset), charset);
    Require(again.complete && again.rows.size() == file.rows.size());
    return 0;
}
