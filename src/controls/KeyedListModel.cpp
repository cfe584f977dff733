#include "controls/KeyedListModel.h"

#include "platform/NaturalOrder.h"

#include <QMimeData>

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

/// Up to this many new rows are put in their places one by one; more are appended and sorted together.
constexpr std::size_t kFewItems = 64;
constexpr const char* kSourceProperty = "tessaroSource";

const QString& CellOf(const KeyedItem& item, int column) {
    static const QString none;
    return column < item.cells.size() ? item.cells[column] : none;
}

} // namespace

KeyedListModel::KeyedListModel(QObject* parent) : QAbstractTableModel(parent), collator_(NaturalOrder()) {}

std::vector<KeyedItem> KeyedListModel::ShownItems() const {
    if (!IsFiltered()) return items_;
    std::vector<KeyedItem> items;
    items.reserve(shown_.size());
    for (const int row : shown_)
        items.push_back(items_[static_cast<std::size_t>(row)]);
    return items;
}

const KeyedItem& KeyedListModel::ItemAt(int shownRow) const {
    const auto row = static_cast<std::size_t>(shownRow);
    return IsFiltered() ? items_[static_cast<std::size_t>(shown_[row])] : items_[row];
}

int KeyedListModel::RowOfKey(const QString& key) const {
    if (!keys_.contains(key)) return -1;
    for (int row = 0; row < rowCount(); ++row)
        if (ItemAt(row).key == key) return row;
    return -1;
}

void KeyedListModel::KeepUnique(std::vector<KeyedItem>& items) {
    std::erase_if(items, [this](const KeyedItem& item) {
        if (keys_.contains(item.key)) return true;
        keys_.insert(item.key);
        return false;
    });
}

void KeyedListModel::Replace(std::vector<KeyedItem> items) {
    beginResetModel();
    keys_.clear();
    keys_.reserve(static_cast<qsizetype>(items.size()));
    KeepUnique(items);
    items_ = std::move(items);
    SortItems();
    RebuildShown();
    endResetModel();
    Q_EMIT CountChanged();
}

void KeyedListModel::SetItems(std::vector<KeyedItem> items) {
    sortColumn_ = 0;
    sortOrder_ = Qt::AscendingOrder;
    Replace(std::move(items));
}

void KeyedListModel::SetItemsInOrder(std::vector<KeyedItem> items) {
    sortColumn_ = -1;
    Replace(std::move(items));
}

int KeyedListModel::AddItems(std::vector<KeyedItem> items) {
    KeepUnique(items);
    if (items.empty()) return 0;
    const int added = static_cast<int>(items.size());
    if (!IsFiltered() && items.size() <= kFewItems) {
        for (KeyedItem& item : items)
            InsertOne(std::move(item));
    } else {
        beginResetModel();
        std::move(items.begin(), items.end(), std::back_inserter(items_));
        SortItems();
        RebuildShown();
        endResetModel();
    }
    Q_EMIT CountChanged();
    return added;
}

void KeyedListModel::InsertOne(KeyedItem item) {
    auto place = items_.end();
    if (sortColumn_ >= 0)
        place = std::upper_bound(items_.begin(), items_.end(), item,
                                 [this](const KeyedItem& a, const KeyedItem& b) { return Before(a, b); });
    const int row = static_cast<int>(place - items_.begin());
    beginInsertRows({}, row, row);
    items_.insert(place, std::move(item));
    endInsertRows();
}

void KeyedListModel::RemoveKeys(const QSet<QString>& keys) {
    if (keys.isEmpty()) return;
    beginResetModel();
    std::erase_if(items_, [&](const KeyedItem& item) { return keys.contains(item.key); });
    for (const QString& key : keys)
        keys_.remove(key);
    RebuildShown();
    endResetModel();
    Q_EMIT CountChanged();
}

void KeyedListModel::SetColumns(const QStringList& heads) {
    if (heads == heads_) return;
    beginResetModel();
    heads_ = heads;
    endResetModel();
}

void KeyedListModel::SetMarkedIcon(const QIcon& icon) {
    markedIcon_ = icon;
}

void KeyedListModel::SetMarked(const QString& key, bool marked) {
    for (KeyedItem& item : items_)
        if (item.key == key) item.marked = marked;
    if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0));
}

void KeyedListModel::SetColumnIcons(const QList<QIcon>& icons) {
    icons_ = icons;
}

void KeyedListModel::MoveKeys(const QSet<QString>& keys, int step) {
    if (keys.isEmpty() || (step != -1 && step != 1)) return;
    beginResetModel();
    // Moving up begins with the top row and moving down with the last one, so that neighbouring rows keep their order.
    const auto count = static_cast<int>(items_.size());
    for (int n = 1; n < count; ++n) {
        const auto from = static_cast<std::size_t>(step < 0 ? n : count - 1 - n);
        const auto to = static_cast<std::size_t>(static_cast<int>(from) + step);
        if (keys.contains(items_[from].key) && !keys.contains(items_[to].key)) std::swap(items_[from], items_[to]);
    }
    sortColumn_ = -1;
    RebuildShown();
    endResetModel();
}

void KeyedListModel::SetGlobalColor(const QColor& color) {
    globalColor_ = color;
}

bool KeyedListModel::Before(const KeyedItem& a, const KeyedItem& b) const {
    int order = collator_.compare(CellOf(a, sortColumn_), CellOf(b, sortColumn_));
    if (order == 0) // rows that are equal in this column are ordered by the next columns: by indicator, then by unit
        for (int column = 0; order == 0 && column < a.cells.size(); ++column)
            order = collator_.compare(CellOf(a, column), CellOf(b, column));
    return sortOrder_ == Qt::AscendingOrder ? order < 0 : order > 0;
}

void KeyedListModel::SortItems() {
    if (sortColumn_ < 0 || items_.size() < 2) return;
    // Most lists come sorted from their query. Checking that is one pass, and saves the making of sort keys.
    const auto before = [this](const KeyedItem& a, const KeyedItem& b) { return Before(a, b); };
    if (std::is_sorted(items_.begin(), items_.end(), before)) return;
    const auto keysOf = [this](int column) {
        std::vector<QCollatorSortKey> keys;
        keys.reserve(items_.size());
        for (const KeyedItem& item : items_)
            keys.push_back(collator_.sortKey(CellOf(item, column)));
        return keys;
    };
    const std::vector<QCollatorSortKey> keys = keysOf(sortColumn_);
    const std::vector<QCollatorSortKey> tieKeys = sortColumn_ == 0 ? keys : keysOf(0);
    std::vector<std::size_t> order(items_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        int compared = keys[a].compare(keys[b]);
        if (compared == 0) compared = tieKeys[a].compare(tieKeys[b]);
        if (compared == 0) return Before(items_[a], items_[b]);
        return sortOrder_ == Qt::AscendingOrder ? compared < 0 : compared > 0;
    });
    std::vector<KeyedItem> sorted;
    sorted.reserve(items_.size());
    for (const std::size_t position : order)
        sorted.push_back(std::move(items_[position]));
    items_ = std::move(sorted);
}

void KeyedListModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || (column == sortColumn_ && order == sortOrder_)) return;
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QStringList keys;
    for (const QModelIndex& index : before)
        keys << ItemAt(index.row()).key;
    sortColumn_ = column;
    sortOrder_ = order;
    SortItems();
    RebuildShown();
    if (!before.isEmpty()) {
        QHash<QString, int> rows;
        const QSet<QString> wanted(keys.begin(), keys.end());
        for (int row = 0; row < rowCount(); ++row)
            if (wanted.contains(ItemAt(row).key)) rows.insert(ItemAt(row).key, row);
        QModelIndexList after;
        for (qsizetype i = 0; i < before.size(); ++i)
            after << index(rows.value(keys[i], -1), before[i].column());
        changePersistentIndexList(before, after);
    }
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void KeyedListModel::SetFilter(const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words == filterWords_) return;
    beginResetModel();
    filterWords_ = words;
    RebuildShown();
    endResetModel();
    Q_EMIT CountChanged();
}

bool KeyedListModel::Matches(const KeyedItem& item) const {
    return std::all_of(filterWords_.begin(), filterWords_.end(), [&](const QString& word) {
        return std::any_of(item.cells.begin(), item.cells.end(),
                           [&](const QString& cell) { return cell.contains(word, Qt::CaseInsensitive); });
    });
}

void KeyedListModel::RebuildShown() {
    shown_.clear();
    if (!IsFiltered()) return;
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (Matches(items_[i])) shown_.push_back(static_cast<int>(i));
}

int KeyedListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    return static_cast<int>(IsFiltered() ? shown_.size() : items_.size());
}

int KeyedListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(std::max<qsizetype>(heads_.size(), 1));
}

QVariant KeyedListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const KeyedItem& item = ItemAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return CellTextOf(CellOf(item, index.column()));
    case Qt::ToolTipRole:
        return TipOf(CellOf(item, index.column()));
    case Qt::DecorationRole:
        if (index.column() == 0 && ItemAt(index.row()).marked && !markedIcon_.isNull()) return markedIcon_;
        return index.column() < icons_.size() ? QVariant(icons_[index.column()]) : QVariant();
    case Qt::ForegroundRole:
        return globalColor_.isValid() && (item.globalCells >> index.column() & 1) != 0 ? QVariant(globalColor_)
                                                                                       : QVariant();
    case Qt::UserRole:
        return item.key;
    default:
        return {};
    }
}

QVariant KeyedListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return {};
    if (role == Qt::DisplayRole) return heads_.value(section);
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeading | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags KeyedListModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags drop = Qt::ItemIsDropEnabled;
    return index.isValid() ? QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled | drop : drop;
}

QStringList KeyedListModel::mimeTypes() const {
    return {QString::fromLatin1(kMimeType)};
}

QMimeData* KeyedListModel::mimeData(const QModelIndexList& indexes) const {
    std::vector<int> rows;
    for (const QModelIndex& index : indexes)
        if (rows.empty() || rows.back() != index.row()) rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    QStringList keys;
    for (const int row : rows)
        keys << ItemAt(row).key;
    auto data = std::make_unique<QMimeData>();
    data->setData(QString::fromLatin1(kMimeType), keys.join(QLatin1Char('\n')).toUtf8());
    data->setText(TextOfRows(rows));
    data->setProperty(kSourceProperty, QVariant::fromValue<QObject*>(const_cast<KeyedListModel*>(this)));
    return data.release();
}

const QObject* KeyedListModel::SourceOf(const QMimeData& data) {
    return data.property(kSourceProperty).value<QObject*>();
}

QString KeyedListModel::TextOfRows(const std::vector<int>& shownRows) const {
    QString text;
    for (const int row : shownRows) {
        QStringList cells;
        for (const QString& cell : ItemAt(row).cells)
            cells << CellTextOf(cell);
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

} // namespace tessaro
