#include "map/custom/LayerRows.h"

#include "map/custom/Buffers.h"
#include "map/custom/LayerLooks.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"

#include <algorithm>

namespace tessaro {

namespace {

bool IsBuffer(const QString& file) {
    return FileNameOf(FolderOf(file)).compare(QLatin1String("Buffers"), Qt::CaseInsensitive) == 0;
}

QString NoOther(const QString& /*key*/, const QString& /*path*/) {
    return {};
}

} // namespace

bool LayerRows::Promote(int row) {
    if (row <= 0 || row >= Count()) return false;
    map_.Move(LayerOf(row), LayerOf(row - 1));
    return true;
}

bool LayerRows::Demote(int row) {
    return row >= 0 && Promote(row + 1);
}

bool LayerRows::Add(QString path, QString& reason) {
    const QString tag = QStringLiteral("Customize - ") + FolderOf(path);
    if (!AddLayer(map_, path, tag, &NoOther, reason)) return false;
    StackedLayer& added = At(0);
    added.symbols.symbols = {FirstLook(Count() - 1, IsBuffer(path))};
    return true;
}

bool LayerRows::MayRemove(int row) const {
    return row >= 0 && row < Count() && !IsOfTheme(At(row));
}

void LayerRows::Remove(int row) {
    if (!MayRemove(row)) return;
    SetRemembered(row, false);
    map_.Remove(LayerOf(row));
}

bool LayerRows::MayBuffer(int row) const {
    return row >= 0 && row < Count() && At(row).data.kind == LayerKind::Point && !At(row).file.isEmpty();
}

bool LayerRows::HasBuffer(int row) const {
    return IsOnMap(BufferNameOf(At(row).data.name));
}

bool LayerRows::AddBuffer(int row, float radius, QString& reason) {
    const StackedLayer& points = At(row);
    const BufferFile made = MakeBuffers(PlainLayerFile(points.file), points.data.name, radius);
    reason = made.reason;
    return !made.path.isEmpty() && Add(made.path, reason);
}

void LayerRows::Restore() {
    const ErrorTrap trap("RestoreLayerList");
    for (const RememberedLayer& each : LoadLayerList()) {
        const QString file = FileOf(each);
        QString reason;
        if (file.isEmpty() || (!IsOnMap(each.name) && !Add(file, reason))) continue;
        remembered_.insert(file.toUpper());
    }
}

bool LayerRows::IsRemembered(int row) const {
    return !IsOfTheme(At(row)) && remembered_.contains(At(row).file.toUpper());
}

void LayerRows::SetRemembered(int row, bool remembered) {
    const QString file = At(row).file.toUpper();
    if (remembered)
        remembered_.insert(file);
    else
        remembered_.remove(file);
}

bool LayerRows::Save() const {
    RememberedLayers layers;
    for (int row = Count() - 1; row >= 0; --row)
        if (IsRemembered(row)) layers.push_back(RememberedOf(At(row).file));
    return SaveLayerList(layers);
}

bool LayerRows::IsOnMap(const QString& name) const {
    for (int row = 0; row < Count(); ++row)
        if (At(row).data.name.trimmed().compare(name.trimmed(), Qt::CaseInsensitive) == 0) return true;
    return false;
}

void RestoreLayerList(LayerStack& map) {
    LayerRows(map).Restore();
}

} // namespace tessaro
