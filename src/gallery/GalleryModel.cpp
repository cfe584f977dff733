#include "gallery/GalleryModel.h"

#include "platform/Paths.h"

#include <QFileInfo>

#include <algorithm>

namespace tessaro {

void GalleryModel::SetEntries(std::vector<GalleryEntry> entries) {
    beginResetModel();
    entries_ = std::move(entries);
    endResetModel();
}

int GalleryModel::PresentationCount() const {
    return static_cast<int>(
        std::count_if(entries_.begin(), entries_.end(), [](const GalleryEntry& entry) { return !entry.IsFolder(); }));
}

int GalleryModel::RowOfFile(const QString& file) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const GalleryEntry& entry) { return !entry.IsFolder() && entry.file == file; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

void GalleryModel::Remove(int row) {
    beginRemoveRows({}, row, row);
    entries_.erase(entries_.begin() + row);
    endRemoveRows();
}

void GalleryModel::ReadFileAgain(int row, const QString& folder) {
    GalleryEntry& entry = entries_.at(static_cast<std::size_t>(row));
    const QFileInfo info(JoinPath({folder, entry.file}));
    entry.size = info.size();
    entry.modified = info.lastModified();
    Q_EMIT dataChanged(index(row), index(row));
}

void GalleryModel::TellKindsAgain() {
    const KindTeller kinds;
    for (GalleryEntry& entry : entries_)
        if (!entry.IsFolder()) entry.kind = kinds.KindOf(entry.file);
    if (!entries_.empty()) Q_EMIT dataChanged(index(0), index(Count() - 1));
}

int GalleryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

QVariant GalleryModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= Count()) return {};
    const GalleryEntry& entry = At(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return entry.text;
    case Qt::AccessibleTextRole:
        return entry.kind.isNull() ? entry.text : entry.text + QStringLiteral(", ") + KindWord(entry.kind);
    case KeyRole:
        return entry.key;
    case RowRole:
        return index.row();
    default:
        return {};
    }
}

} // namespace tessaro
