#include "exchange/TreeMap.h"

#include "formats/MapTable.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFileInfo>

#include <stdexcept>

namespace tessaro {

namespace {

constexpr const char* kEndings[] = {".shp", ".shx", ".dbf", ".cpg", ".prj"};

QString FreeStem(const QString& folder, const QString& name) {
    QString stem = JoinPath({folder, name});
    for (int number = 2; FileExists(FindPath(stem + QStringLiteral(".shp"))); ++number)
        stem = JoinPath({folder, QStringLiteral("%1_%2").arg(name).arg(number)});
    return stem;
}

} // namespace

TreeMap::TreeMap(const AreaTree& tree, const QString& folder) {
    if (tree.map.isEmpty()) return;
    if (tree.mapHasIds && SamePath(FolderOf(tree.map), folder)) {
        stem_ = tree.map.chopped(4);
        kept_ = true;
        return;
    }
    QDir().mkpath(folder);
    stem_ = FreeStem(folder, QFileInfo(tree.map).completeBaseName());
    std::vector<MapTableRow> rows;
    for (const std::size_t area : tree.areaOfFeature)
        rows.push_back({QString::fromStdString(tree.areas[area].id), QString::fromStdString(tree.areas[area].name)});
    bool made = WriteMapTable(stem_, rows);
    const QString from = tree.map.chopped(4);
    for (const char* ending : {".shp", ".shx", ".prj"}) {
        const QString part = FindPath(from + QLatin1String(ending));
        const bool isNeeded = QByteArray(ending) == ".shp";
        if (FileExists(part) || isNeeded) made = made && CopyFileOver(part, stem_ + QLatin1String(ending));
    }
    if (made) return;
    Remove();
    throw std::runtime_error("The map can't be written: " + stem_.toStdString());
}

TreeMap::~TreeMap() {
    if (!kept_) Remove();
}

void TreeMap::Remove() const {
    for (const char* ending : kEndings)
        if (!stem_.isEmpty()) QFile::remove(stem_ + QLatin1String(ending));
}

QString TreeMap::Name() const {
    return stem_.isEmpty() ? QString() : QFileInfo(stem_).fileName() + QStringLiteral(".shp");
}

} // namespace tessaro
