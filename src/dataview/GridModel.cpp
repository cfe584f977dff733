#include "dataview/GridModel.h"

#include "controls/KeyedItem.h"
#include "dataview/GridQuery.h"
#include "jet/values/Collation.h"
#include "session/DisplayValue.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "view/SourcesAndNotes.h"

#include <QBrush>
#include <QLocale>

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

// Many rows share few distinct texts, so the distinct texts are sorted once, and the rows by the rank of their text.
// Texts that differ in case only have the same rank.
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
    maxRows_ = 0;
    hasSpare_ = false;
    order_.clear();
    removed_.clear();
    blocks_.clear();
    footnotes_.clear();
    endResetModel();
}

void GridModel::InsertRows(int count) {
    if (count <= 0) return;
    const int added = count + (hasSpare_ ? 0 : 1);
    beginInsertRows({}, ValueRows(), ValueRows() + added - 1);
    maxRows_ += added;
    hasSpare_ = true;
    endInsertRows();
}

void GridModel::DeleteSpareRow() {
    if (!hasSpare_) return;
    beginRemoveRows({}, maxRows_ - 1, maxRows_ - 1);
    --maxRows_;
    hasSpare_ = false;
    endRemoveRows();
}

void GridModel::AppendRows(int count) {
    if (count <= 0 || hasSpare_) return;
    const int queryRows = QueryRows();
    beginInsertRows({}, maxRows_, maxRows_ + count - 1);
    maxRows_ += count;
    for (int row = queryRows; !order_.empty() && row < queryRows + count; ++row)
        order_.push_back(row);
    // The last block was read when it was shorter; it is read again with the new rows.
    if (const auto block = blocks_.find(queryRows / kBlockRows); block != blocks_.end()) blocks_.erase(block);
    endInsertRows();
}

void GridModel::RemoveRows(std::vector<int> rows) {
    std::erase_if(rows, [this](int row) { return row < 0 || row >= ValueRows(); });
    std::ranges::sort(rows, std::greater());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::vector<std::pair<int, int>> runs; // first and last row, from the bottom up
    for (const int row : rows) {
        if (!runs.empty() && runs.back().first == row + 1)
            runs.back().first = row;
        else
            runs.emplace_back(row, row);
    }
    // With very many runs, resetting the view is faster than announcing each of them.
    constexpr std::size_t kMostRuns = 100;
    const bool oneByOne = runs.size() <= kMostRuns;
    if (!oneByOne) beginResetModel();
    for (const auto& [first, last] : runs) {
        if (oneByOne) beginRemoveRows({}, first, last);
        TakeAway(first, last);
        if (oneByOne) endRemoveRows();
    }
    if (!oneByOne) endResetModel();
}

void GridModel::TakeAway(int first, int last) {
    std::vector<qint32> taken;
    for (int row = first; row <= last; ++row)
        taken.push_back(static_cast<qint32>(QueryRowOf(row)));
    if (!order_.empty()) order_.erase(order_.begin() + first, order_.begin() + last + 1);
    std::ranges::sort(taken);
    const auto middle = static_cast<std::ptrdiff_t>(removed_.size());
    removed_.insert(removed_.end(), taken.begin(), taken.end());
    std::inplace_merge(removed_.begin(), removed_.begin() + middle, removed_.end());
    maxRows_ -= last - first + 1;
}

// Binary search for the number of removed rows before a grid row: the i-th removed row (from 0) lies before it when its
// query row minus i is not greater than the grid row.
qint64 GridModel::QueryRowOf(int row) const {
    const auto place = static_cast<std::size_t>(row);
    if (!order_.empty()) return place < order_.size() ? order_[place] : row;
    std::size_t low = 0;
    std::size_t high = removed_.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (removed_[middle] - static_cast<qint64>(middle) <= row)
            low = middle + 1;
        else
            high = middle;
    }
    return row + static_cast<qint64>(low);
}

int GridModel::GridRowOf(qint64 queryRow) const {
    const auto before = std::ranges::lower_bound(removed_, queryRow) - removed_.begin();
    return static_cast<int>(queryRow - before);
}

void GridModel::PutBlock(qint64 first, std::vector<GridRow> rows) {
    if (rows.empty() || first < 0) return;
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const qint64 row = first + static_cast<qint64>(place);
        Block& block = BlockOf(row);
        block.rows.at(static_cast<std::size_t>(row % kBlockRows)) = std::move(rows[place]);
        block.filled |= quint64{1} << (row % kBlockRows);
    }
    const int top = GridRowOf(first);
    const int last = std::min(GridRowOf(first + static_cast<qint64>(rows.size())), maxRows_) - 1;
    if (top <= last) Q_EMIT dataChanged(index(top, 0), index(last, MaxCols - 1));
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

// A row that can't be read stays blank; otherwise each painting would try to read it.
void GridModel::FetchBlock(Block& block, qint64 queryRow) const {
    const qint64 first = queryRow - queryRow % kBlockRows;
    const int count = static_cast<int>(std::min<qint64>(kBlockRows, QueryRows() - first));
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
    const qint64 queryRow = QueryRowOf(row);
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
        rows[row] = {places.value(texts[row]), static_cast<qint32>(QueryRowOf(static_cast<int>(row)))};
    std::ranges::stable_sort(
        rows, [ascending](const auto& a, const auto& b) { return ascending ? a.first < b.first : a.first > b.first; });

    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    order_.resize(count);
    std::ranges::transform(rows, order_.begin(), [](const auto& row) { return row.second; });
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : maxRows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : MaxCols;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int column = index.column() + 1;
    if (role == SpareRole) return hasSpare_ && index.row() == maxRows_ - 1;
    if (role != Qt::DisplayRole && role != Qt::TextAlignmentRole && role != Qt::ForegroundRole &&
        role != Qt::ToolTipRole && role != FootnoteRole)
        return {};
    const GridRow* row = RowAt(index.row());
    if (row == nullptr) return {};
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(*row, column);
    case Qt::TextAlignmentRole:
        // Numbers are written from left to right in every script, so they are aligned to the right in each.
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
    if (column == ColDatavalue && SysNumFormat) return DisplayedValue(row.datavalue);
    return row.Text(column);
}

QVariant GridModel::ToolTipOf(const GridRow& row, int column) const {
    if (ShowFootnotes && column == ColDatavalue && row.footNId != 0) return TipOf(FootnoteText(row.footNId));
    return TipOf(TextOf(row, column).toString());
}

QString GridModel::FootnoteText(qint64 footNId) const {
    const auto known = footnotes_.constFind(footNId);
    if (known != footnotes_.constEnd()) return *known;
    const QString text = tessaro::FootnoteText(footNId);
    return *footnotes_.insert(footNId, text.isNull() ? QString() : GetText(text, true));
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
    if (maxRows_ > 0) Q_EMIT dataChanged(index(0, 0), index(maxRows_ - 1, MaxCols - 1));
}

} // namespace tessaro
