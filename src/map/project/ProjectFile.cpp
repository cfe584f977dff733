#include "map/project/ProjectFile.h"

#include "map/output/MapWorkbook.h"
#include "map/project/LayerBlock.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr auto kEnding = ".apr";
constexpr auto kProcedure = "cmdExport_Click";

bool IsInDegrees(const LayerStack& layers) {
    for (int i = 0; i < layers.Count(); ++i)
        if (!layers.At(i).inDegrees) return false;
    return true;
}

/// What a map shows, within the world again: layers may have been moved across 180 degrees to be drawn.
MapBox ExtentOf(const MapPage& page) {
    constexpr double kHalfTurn = 180;
    MapBox extent = ShownExtent(page);
    if (!IsInDegrees(page.layers) || page.layers.FullExtent().left >= -kHalfTurn) return extent;
    if (extent.right < -kHalfTurn) {
        extent.left += 2 * kHalfTurn;
        extent.right += 2 * kHalfTurn;
    }
    extent.left = std::max(extent.left, -kHalfTurn);
    extent.right = std::min(extent.right, kHalfTurn);
    return extent;
}

/// True when the table of the project would take the place of a layer's own.
bool HidesLayer(const QString& path, const LayerStack& layers) {
    for (int i = 0; i < layers.Count(); ++i)
        if (SamePath(BesideProject(layers.At(i).file, ".dbf"), BesideProject(path, ".dbf"))) return true;
    return false;
}

QByteArray ProjectBytes(const MapPage& page, const QString& path, int records) {
    ProjectObjects objects;
    const int layers = page.layers.Count();
    const ProjectRefs refs = AnnounceObjects(objects, layers);
    PutHead(objects, refs, {path, Now(), records, ExtentOf(page)});
    for (int i = 0; i < layers; ++i)
        PutLayer(objects, refs, refs.themes[static_cast<std::size_t>(i)], page.layers.At(layers - 1 - i),
                 page.draft.classes);
    PutTail(objects, refs);
    return objects.Bytes(FontCharset);
}

} // namespace

QString ProjectPathOf(const QString& chosen) {
    QString name = FileNameOf(chosen);
    if (name.endsWith(QLatin1String(kEnding), Qt::CaseInsensitive)) name.chop(4);
    if (name.trimmed().isEmpty()) return {};
    return JoinPath({FolderOf(chosen), name.replace(QLatin1Char(' '), QLatin1Char('_')) + QLatin1String(kEnding)});
}

bool WriteProjectFile(const QString& path, const MapPage& page) {
    const ErrorTrap trap(kProcedure);
    std::vector<NewFile> files;
    if (!HidesLayer(path, page.layers)) {
        const auto records = ExportGeoProjTable(path, files);
        if (!records) return false;
        files.push_back({path, ProjectBytes(page, path, *records)});
        if (ReplaceFiles(files)) return true;
    }
    ReportError(FileError::NoAccess, QStringLiteral("Path/File access error: ") + path, QLatin1String(kProcedure));
    return false;
}

} // namespace tessaro
