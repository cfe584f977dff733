#include "map/custom/Buffers.h"

#include "map/custom/LayerListFile.h"
#include "map/shapefile/CShapeFile.h"
#include "map/shapefile/ShapefileError.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>

namespace tessaro {

namespace {

constexpr double kPi = 3.14285714285714; ///< 22/7, as the buffers in use have it
constexpr double kDegrees = 0.005;       ///< for one unit of the radius
constexpr int kStep = 10;                ///< degrees between two points of a circle
constexpr qint32 kPoints = 1;
constexpr const char* kCompanions[] = {".dbf", ".cpg", ".prj"};
const char* const kSource = "cmdBuffer_Click";

/// The files of a shapefile by the path of its .shp without the ending.
QString BaseOf(const QString& shapeFile) {
    return shapeFile.left(shapeFile.lastIndexOf(QLatin1Char('.')));
}

/// From the right downwards and round, clockwise. With this pi the last point isn't quite the first one.
std::shared_ptr<CPart> CircleAround(const CPoint& middle, float radius) {
    auto part = std::make_shared<CPart>();
    for (int angle = 0; angle <= 360; angle += kStep)
        part->Add(std::make_shared<CPoint>(
            static_cast<double>(radius) * std::cos(angle * kPi / 180) * kDegrees + middle.X(),
            middle.Y() - static_cast<double>(radius) * std::sin(angle * kPi / 180) * kDegrees));
    return part;
}

cFileName Named(const QString& path) {
    cFileName name;
    name.SetFileSpec(path);
    return name;
}

void WriteCircles(const QString& source, const QString& target, float radius) {
    CShapeFile points;
    points.SetFileSpec(Named(source), false);
    CShapeFile circles;
    circles.SetFileSpec(Named(target), true, points.FileType());
    if (points.FileType() != kPoints) return;
    for (qint32 i = 1; i <= points.Count(); ++i) {
        const auto point = std::dynamic_pointer_cast<CPoint>(points.Item(i));
        if (!point) return;
        const auto polygon = std::make_shared<CPolygon>();
        if (!point->IsNull()) polygon->Add(CircleAround(*point, radius));
        circles.Add(polygon);
    }
}

/// False when a file that is there can't be copied.
bool CopyCompanions(const QString& source, const QString& target) {
    for (const char* ending : kCompanions) {
        const QString file = FindPath(BaseOf(source) + QLatin1String(ending));
        if (FileExists(file) && !CopyFileOver(file, target + QLatin1String(ending))) return false;
    }
    return true;
}

void RemoveFiles(const QString& base) {
    for (const char* ending : {".shp", ".shx", ".dbf", ".cpg", ".prj"})
        QFile::remove(base + QLatin1String(ending));
}

/// Puts the files that were made in place of former ones.
bool PutAllInPlace(const QString& made, const QString& target) {
    for (const char* ending : kCompanions)
        if (!FileExists(made + QLatin1String(ending))) QFile::remove(target + QLatin1String(ending));
    for (const char* ending : {".shx", ".dbf", ".cpg", ".prj", ".shp"})
        if (FileExists(made + QLatin1String(ending)) &&
            !PutInPlace(made + QLatin1String(ending), target + QLatin1String(ending)))
            return false;
    return true;
}

/// What a failure leaves behind: nothing, but the circles made before a record that can't be read.
BufferFile AfterError(const ShapefileError& error, const QString& made, const QString& target) {
    ReportError(error.number, error.text + QStringLiteral(" (") + error.origin + QLatin1Char(')'),
                QLatin1String(kSource));
    if (error.source == QLatin1String("CShapeFile::Item")) (void)PutAllInPlace(made, target);
    RemoveFiles(made);
    const bool full = error.number == ShapefileErrors::DiskFull || error.number == ShapefileErrors::PathFileAccess;
    return {{},
            full ? GetText(QStringLiteral("TS_BufferNotWritten"))
                 : FilledText(QStringLiteral("TS_BufferUnreadable"), {error.text})};
}

BufferFile CannotWrite(const QString& made) {
    return AfterError(ShapefileError(ShapefileErrors::PathFileAccess, QStringLiteral("Path/File access error: ") + made,
                                     QLatin1String(kSource)),
                      made, {});
}

} // namespace

TypedRadius CheckRadius(const QString& typed) {
    const auto number = NumberTyped(typed);
    if (!number) return {0, "228"};
    if (*number < kLeastRadius) return {kLeastRadius, "229"};
    if (*number > kMostRadius) return {kMostRadius, "229"};
    return {static_cast<float>(*number)};
}

QString BufferNameOf(const QString& layerName) {
    return QStringLiteral("Buffer_") + layerName;
}

QString BuffersFolder() {
    const QString inside = JoinPath({MapsFolder(), QStringLiteral("Buffers"), QStringLiteral("-")});
    return FolderOf(WritablePlace(inside, AppPath, CacheFolder));
}

BufferFile MakeBuffers(const QString& pointFile, const QString& layerName, float radius) {
    const QString folder = BuffersFolder();
    const QString target = JoinPath({folder, BufferNameOf(layerName)});
    const QString made = JoinPath({folder, QStringLiteral("~") + BufferNameOf(layerName)});
    RemoveFiles(made);
    if (!CopyCompanions(pointFile, made)) return CannotWrite(made);
    try {
        WriteCircles(pointFile, made + QStringLiteral(".shp"), radius);
    } catch (const ShapefileError& error) {
        return AfterError(error, made, target);
    }
    if (!PutAllInPlace(made, target)) return CannotWrite(made);
    return {target + QStringLiteral(".shp"), {}};
}

} // namespace tessaro
