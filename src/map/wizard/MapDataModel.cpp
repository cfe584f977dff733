#include "map/wizard/MapDataModel.h"

#include "session/DisplayValue.h"
#include "session/Strings.h"

#include <QCollator>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace tessaro {

namespace {

struct Column {
    const char* head;
    QString MapArea::*text;
};
constexpr int kValueColumn = 2;
constexpr std::array<Column, 6> kColumns{{{"Comm_Area Id", &MapArea::id},
                                          {"Comm_Area Name", &MapArea::name},
                                          {"Comm_Datavalue", &MapArea::value},
                                          {"Subpop", &MapArea::subpop},
                                          {"Comm_Unit", &MapArea::unit},
                                          {"Comm_Time", &MapArea::period}}};

const Column& At(int column) {
    return kColumns[static_cast<std::size_t>(column)];
}

} // namespace

void MapDataModel::SetAreas(const MapAreas& areas) {
    beginResetModel();
    rows_ = areas.Rows();
    order_.resize(rows_.size());
    std::iota(order_.begin(), order_.end(), 0);
    endResetModel();
}

int MapDataModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(order_.size());
}

int MapDataModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kColumns.size());
}

QVariant MapDataModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const bool value = index.column() == kValueColumn;
    if (role == Qt::TextAlignmentRole)
        return QVariant(value ? Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter
                              : Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    const QString& text = AreaAt(index.row()).*At(index.column()).text;
    return value ? DisplayedValue(text) : text;
}

QVariant MapDataModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || section < 0) return {};
    if (orientation == Qt::Vertical) return section + 1;
    return section < columnCount() ? PlainText(QLatin1String(At(section).head)) : QVariant();
}

void MapDataModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= columnCount()) return;
    Q_EMIT layoutAboutToBeChanged();
    const QCollator texts;
    const auto number = [this](int row) {
        return rows_[static_cast<std::size_t>(row)].number.value_or(-std::numeric_limits<double>::infinity());
    };
    const auto text = [&](int row) -> const QString& { return rows_[static_cast<std::size_t>(row)].*At(column).text; };
    const auto before = [&](int a, int b) {
        return column == kValueColumn ? number(a) < number(b) : texts.compare(text(a), text(b)) < 0;
    };
    std::stable_sort(order_.begin(), order_.end(),
                     [&](int a, int b) { return order == Qt::AscendingOrder ? before(a, b) : before(b, a); });
    Q_EMIT layoutChanged();
}

} // namespace tessaro
