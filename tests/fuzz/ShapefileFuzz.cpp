#include "map/shapefile/CShapeFile.h"
#include "map/shapefile/ShapefileError.h"
#include "session/Messages.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Reading a file never shows one.
int tessaro::ShowMessage(const QString&, MessageType, MessageIcon, const QString&, bool) {
    std::abort();
}

/// Any bytes as a shapefile: the first two tell how many of the rest are the index, the others are the main file. What
/// can't be read gives an error of the room, and the shapes that are read hold no more points than the file has bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaro;
    static const QTemporaryDir folder;
    if (size < 2) return 0;
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data) + 2, static_cast<int>(size) - 2);
    const qsizetype indexSize = data[0] * 256 + data[1];
    const auto write = [](const char* name, const QByteArray& contents) {
        QFile file(folder.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) std::abort();
    };
    write("a.shx", bytes.left(indexSize));
    write("a.shp", bytes.mid(indexSize));
    try {
        CShapeFile file;
        cFileName spec;
        spec.SetFileSpec(folder.filePath(QStringLiteral("a.shp")));
        file.SetFileSpec(spec, false);
        for (qint32 record = 1; record <= std::min(file.Count(), 100); ++record) {
            const auto polygon = std::dynamic_pointer_cast<CPolygon>(file.Item(record));
            if (!polygon) continue;
            std::size_t points = 0;
            for (const auto& part : *polygon)
                points += static_cast<std::size_t>(part->Count());
            if (points * 16 > size) std::abort();
        }
    } catch (const ShapefileError& error) {
        if (error.text.isEmpty() || error.source.isEmpty()) std::abort();
    }
    return 0;
}
