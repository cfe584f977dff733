#include "dataview/GridModel.h"

#include "dataview/DisplayValue.h"
#include "dataview/GridQuery.h"
#include "jet/Functions.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QBrush>
#include <QLocale>

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

// Few distinct texts stand in many rows, so the texts are put in order once and the rows then by their places. Texts
// that differ in case only share a place.
QHash<QString, int> PlacesInOrder(const std::vector<QString>& texts) {
    QHash<QString, int> places;
    for (const QString& text : texts)
        places.insert(text, 0);
    std::vector<std::pair<std::string, QString>> distinct;
    distinct.reserve(static_cast<std::size_t>(places.size()));
    for (auto text = places.cbegin(); text != places.cend(); ++text)
        distinct.emplace_back(text.key().toStdString(), text.key());
    std::ranges::sort(distinct, [](const auto& a, const auto& b) { return jet::CompareText(a.first, b.first) < 0; });
    int place = 0;
    for (std::size_t i = 0; i < distinct.size(); ++i) {
        if (i > 0 && jet::CompareText(distinct[i - 1].first, distinct[i].first) != 0) ++place;
        places[distinct[i].second] = place;
    }
    return places;
}

} // namespace

GridModel::GridModel(QObject* parent) : QAbstractTableModel(parent) {}

void GridModel::Clear() {
    beginResetModel();
    queryRows_ = 0;
    hasSpare_ = false;
    removed_.clear();
    extra_.clear();
    order_.clear();
    blocks_.clear();
    footnotes_.clear();
    endResetModel();
}

int GridModel::ValueRows() const {
    if (!order_.empty()) return static_cast<int>(order_.size());
    return RowsOfQueryShown() + static_cast<int>(extra_.size());
}

void GridModel::InsertRows(int count) {
    if (count <= 0) return;
    const int first = RowsOfQueryShown();
    beginInsertRows({}, first, first + count - 1);
    queryRows_ += count;
    endInsertRows();
    if (hasSpare_) return;
    beginInsertRows({}, ValueRows(), ValueRows());
    hasSpare_ = true;
    endInsertRows();
}

void GridModel::DeleteSpareRow() {
    if (!hasSpare_) return;
    beginRemoveRows({}, ValueRows(), ValueRows());
    hasSpare_ = false;
    endRemoveRows();
}

void GridModel::RemoveRows(const std::vector<int>& rows) {
    if (rows.empty()) return;
    const bool isRun = rows.back() - rows.front() + 1 == static_cast<int>(rows.size());
    // Many rows here and there cost less as a new grid than as one change each.
    isRun ? beginRemoveRows({}, rows.front(), rows.back()) : beginResetModel();
    order_.empty() ? RemoveInQueryOrder(rows) : RemoveFromOrder(rows);
    isRun ? endRemoveRows() : endResetModel();
}

void GridModel::RemoveFromOrder(const std::vector<int>& rows) {
    std::vector<qint32> left;
    std::size_t next = 0;
    for (int row = 0; row < static_cast<int>(order_.size()); ++row) {
        if (next < rows.size() && rows[next] == row)
            ++next;
        else
            left.push_back(order_[static_cast<std::size_t>(row)]);
    }
    order_ = std::move(left);
    if (!order_.empty()) return;
    // An order of no rows would read as none.
    queryRows_ = 0;
    removed_.clear();
    extra_.clear();
}

void GridModel::RemoveInQueryOrder(const std::vector<int>& rows) {
    std::vector<qint32> gone;
    std::vector<bool> extraGone(extra_.size());
    for (const int row : rows) {
        const qint64 source = SourceOf(row);
        if (source >= 0)
            gone.push_back(static_cast<qint32>(source));
        else
            extraGone[static_cast<std::size_t>(~source)] = true;
    }
    std::vector<qint32> merged;
    std::ranges::merge(removed_, gone, std::back_inserter(merged));
    removed_ = std::move(merged);
    std::vector<GridRow> left;
    for (std::size_t place = 0; place < extra_.size(); ++place)
        if (!extraGone[place]) left.push_back(std::move(extra_[place]));
    extra_ = std::move(left);
}

void GridModel::AppendRows(std::vector<GridRow> rows) {
    if (rows.empty()) return;
    const int first = ValueRows();
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    for (GridRow& row : rows) {
        if (!order_.empty()) order_.push_back(~static_cast<qint32>(extra_.size()));
        extra_.push_back(std::move(row));
    }
    endInsertRows();
}

// Row r of those that are left is query row r + k, where k rows were removed at or before it.
qint64 GridModel::SourceOf(int row) const {
    if (!order_.empty()) return order_[static_cast<std::size_t>(row)];
    if (row >= RowsOfQueryShown()) return ~static_cast<qint64>(row - RowsOfQueryShown());
    std::size_t low = 0;
    std::size_t high = removed_.size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (removed_[middle] - static_cast<qint32>(middle) <= row)
            low = middle + 1;
        else
            high = middle;
    }
    return row + static_cast<qint64>(low);
}

void GridModel::PutBlock(int first, std::vector<GridRow> rows) {
    if (rows.empty() || first < 0) return;
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const qint64 row = first + static_cast<qint64>(place);
        Block& block = BlockOf(row);
        block.rows.at(static_cast<std::size_t>(row % kBlockRows)) = std::move(rows[place]);
        block.filled |= quint64{1} << (row % kBlockRows);
    }
    const int shownFirst = std::max(first - static_cast<int>(removed_.size()), 0);
    const int last = std::min(first + static_cast<int>(rows.size()), ValueRows()) - 1;
    if (shownFirst <= last) Q_EMIT dataChanged(index(shownFirst, 0), index(last, MaxCols - 1));
}

GridModel::Block& GridModel::BlockOf(qint64 queryRow) const {
    std::unique_ptr<Block>& block = blocks_[queryRow / kBlockRows];
    if (!block) {
        block = std::make_unique<Block>();
        block->used = ++clock_;
        Block& made = *block;
        if (blocks_.size() > kMostBlocks) DropOldest();
        return made;
    }
    block->used = ++clock_;
    return *block;
}

void GridModel::DropOldest() const {
    const auto oldest =
        std::ranges::min_element(blocks_, [](const auto& a, const auto& b) { return a.second->used < b.second->used; });
    blocks_.erase(oldest);
}

// A row that could not be made stays blank instead of being asked for with every painting.
void GridModel::FetchBlock(Block& block, qint64 queryRow) const {
    const qint64 first = queryRow - queryRow % kBlockRows;
    const int count = static_cast<int>(std::min<qint64>(kBlockRows, queryRows_ - first));
    std::vector<GridRow> rows = fetch_ ? fetch_(first, count) : std::vector<GridRow>();
    rows.resize(static_cast<std::size_t>(count));
    for (int place = 0; place < count; ++place) {
        if ((block.filled >> place & 1) == 0)
            block.rows.at(static_cast<std::size_t>(place)) = std::move(rows[static_cast<std::size_t>(place)]);
        block.filled |= quint64{1} << place;
    }
}

const GridRow* GridModel::RowAt(int row) const {
    if (row < 0 || row >= ValueRows()) return nullptr;
    const qint64 queryRow = SourceOf(row);
    if (queryRow < 0) return &extra_[static_cast<std::size_t>(~queryRow)];
    Block& block = BlockOf(queryRow);
    if ((block.filled >> (queryRow % kBlockRows) & 1) == 0) FetchBlock(block, queryRow);
    return &block.rows.at(static_cast<std::size_t>(queryRow % kBlockRows));
}

void GridModel::SortInGrid(int column, bool ascending) {
    const auto count = static_cast<std::size_t>(ValueRows());
    if (column < 1 || column > MaxCols || count >= kInGridSortLimit) return;
    std::vector<QString> texts(count);
    for (std::size_t row = 0; row < count; ++row)
        texts[row] = RowAt(static_cast<int>(row))->Text(column);
    const QHash<QString, int> places = PlacesInOrder(texts);

    std::vector<std::pair<int, qint32>> rows(count); // place of the text, query row
    for (std::size_t row = 0; row < count; ++row)
        rows[row] = {places.value(texts[row]), static_cast<qint32>(SourceOf(static_cast<int>(row)))};
    std::ranges::stable_sort(
        rows, [ascending](const auto& a, const auto& b) { return ascending ? a.first < b.first : a.first > b.first; });

    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    order_.resize(count);
    std::ranges::transform(rows, order_.begin(), [](const auto& row) { return row.second; });
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : MaxRows();
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : MaxCols;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int column = index.column() + 1;
    if (role == SpareRole) return hasSpare_ && index.row() == MaxRows() - 1;
    if (role != Qt::DisplayRole && role != Qt::TextAlignmentRole && role != Qt::ForegroundRole &&
        role != Qt::ToolTipRole && role != FootnoteRole)
        return {};
    const GridRow* row = RowAt(index.row());
    if (row == nullptr) return {};
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(*row, column);
    case Qt::TextAlignmentRole:
        // Digits run from left to right in every script, so numbers keep to the right edge there too.
        return column == ColDatavalue && ReadsAsNumber(row->datavalue)
                   ? QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter)
                   : QVariant::fromValue(Qt::AlignLeading | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        return ShowGlobalColor && row->IsGlobal(column) ? QBrush(ColorFromNumber(GlobalColor)) : QVariant();
    case Qt::ToolTipRole:
        return ToolTipOf(*row, column);
    default:
        return ShowFootnotes && column == ColDatavalue && row->footNId != 0;
    }
}

QVariant GridModel::TextOf(const GridRow& row, int column) const {
    if (column == ColDatavalue && SysNumFormat) return WithSeparators(row.datavalue, QLocale::system());
    return row.Text(column);
}

QVariant GridModel::ToolTipOf(const GridRow& row, int column) const {
    if (ShowFootnotes && column == ColDatavalue && row.footNId != 0) return FootnoteText(row.footNId);
    return TextOf(row, column);
}

QString GridModel::FootnoteText(qint64 footNId) const {
    const auto known = footnotes_.constFind(footNId);
    if (known != footnotes_.constEnd()) return *known;
    Records rows =
        Select(QStringLiteral("SELECT FootNote FROM FootNote WHERE FootNoteNId = ") + QString::number(footNId));
    return *footnotes_.insert(footNId, rows.atEnd() ? QString() : GetText(rows.Text(std::size_t{0}), true));
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
        return section < ValueRows() ? QVariant(section + 1) : QVariant(QString());
    }
    if (section < 0 || section >= MaxCols) return {};
    const GridColumn& column = GridColumns().at(static_cast<std::size_t>(section));
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return *column.headerKey != '\0' ? GetText(QLatin1String(column.headerKey)) : QLatin1String(column.field);
    if (role == Qt::TextAlignmentRole && section + 1 == ColDatavalue)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignLeading | Qt::AlignVCenter);
    return {};
}

void GridModel::Refresh() {
    footnotes_.clear();
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, MaxCols - 1);
    if (MaxRows() > 0) Q_EMIT dataChanged(index(0, 0), index(MaxRows() - 1, MaxCols - 1));
}

} // namespace tessaro
