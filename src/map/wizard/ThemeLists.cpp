#include "map/wizard/ThemeLists.h"

#include "layers/MapFiles.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/DataFilters.h"
#include "view/ViewJoins.h"

namespace tessaro {

namespace {

constexpr auto kEnding = ".shp";

/// The distinct texts of a field of IUS in view, with a further condition.
QStringList TextsInView(const QString& field, const QString& condition) {
    QStringList texts;
    const QString column = QStringLiteral("IUS.[") + field + QLatin1Char(']');
    for (Records rows = Select(QStringLiteral("SELECT DISTINCT ") + column + QLatin1String(joins::kMapValues.from) +
                               QStringLiteral(" WHERE IUS.Deleted = False ") + condition + RowFilter +
                               QStringLiteral(" ORDER BY ") + column);
         !rows.atEnd(); rows.MoveNext())
        texts << rows.Text(std::size_t{0});
    return texts;
}

QString OfIndicator(const QString& indicator) {
    return QStringLiteral(" AND IUS.[Indicator] =") + Quoted(indicator) + QLatin1Char(' ');
}

QString FolderOfMaps() {
    return FindPath(JoinPath({AppPath, QStringLiteral("Maps")}));
}

} // namespace

QStringList IndicatorsInView() {
    return TextsInView(QStringLiteral("Indicator"), {});
}

QStringList SubpopsOf(const QString& indicator) {
    return TextsInView(QStringLiteral("Subpop"), OfIndicator(indicator));
}

QStringList UnitsOf(const QString& indicator, const QString& subpop) {
    const QString ofSubpop =
        subpop.isEmpty() ? QString() : QStringLiteral(" AND IUS.Subpop=") + Quoted(subpop) + QLatin1Char(' ');
    return TextsInView(QStringLiteral("Unit"), OfIndicator(indicator) + ofSubpop);
}

MapFiles InstalledMaps() {
    MapFiles maps;
    const QString folder = FolderOfMaps();
    for (const QString& file : FilesOf(folder))
        if (file.endsWith(QLatin1String(kEnding), Qt::CaseInsensitive)) maps.push_back({file, folder});
    return maps;
}

MapFile PointsOf(const MapFile& areas) {
    const QString name = areas.name.chopped(areas.name.endsWith(QLatin1String(kEnding), Qt::CaseInsensitive) ? 4 : 0) +
                         QStringLiteral("_Points.shp");
    const QString beside = FindPath(JoinPath({areas.folder, name}));
    const QString path = FileExists(beside) ? beside : MapPath(name);
    return path.isEmpty() ? MapFile{name, {}} : MapFile{FileNameOf(path), FolderOf(path)};
}

} // namespace tessaro
