#include "controls/DataTable.h"

#include "controls/SharedWidths.h"
#include "controls/Theme.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

/// The chosen ranges as one frame, and its rows in order.
struct ChosenCells {
    std::vector<int> rows;
    std::vector<int> columns;
};

ChosenCells CellsOf(const QTableView& table) {
    ChosenCells cells;
    const QItemSelection ranges = table.selectionModel()->selection();
    int left = INT_MAX;
    int right = -1;
    std::vector<std::pair<int, int>> spans;
    for (const QItemSelectionRange& range : ranges) {
        left = std::min(left, range.left());
        right = std::max(right, range.right());
        spans.emplace_back(range.top(), range.bottom());
    }
    std::ranges::sort(spans);
    int next = 0;
    for (const auto& [top, bottom] : spans) {
        for (int row = std::max(top, next); row <= bottom; ++row) {
            if (cells.rows.size() >= static_cast<std::size_t>(DataTable::kMostCopiedRows)) break;
            cells.rows.push_back(row);
        }
        next = std::max(next, bottom + 1);
    }
    for (int visual = 0; visual < table.horizontalHeader()->count(); ++visual) {
        const int column = table.horizontalHeader()->logicalIndex(visual);
        if (column >= left && column <= right && !table.isColumnHidden(column)) cells.columns.push_back(column);
    }
    return cells;
}

/// Tabs and line feeds within a cell's text must not separate cells.
QString CellText(const QModelIndex& index) {
    QString text = index.data(Qt::DisplayRole).toString();
    for (QChar& c : text) {
        if (c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r')) c = QLatin1Char(' ');
    }
    return text;
}

} // namespace

DataTable::DataTable(QWidget* parent) : QTableView(parent) {
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setFrameShape(NoFrame);
    setAlternatingRowColors(true);

    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setMinimumSectionSize(theme::kGrid * 4);
    horizontalHeader()->setSortIndicatorShown(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    // A click on a head is a command; it doesn't choose the column.
    disconnect(horizontalHeader(), &QHeaderView::sectionPressed, this, nullptr);
    disconnect(horizontalHeader(), &QHeaderView::sectionEntered, this, nullptr);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        // The last column takes the remaining width, whether the user or the program changes the others.
        if (!sharing_ && column + 1 < static_cast<int>(wishes_.size())) widthsAreTheUsers_ = true;
    });
    FitToFont();
}

void DataTable::SetHint(const QString& hint) {
    hint_ = hint;
    viewport()->update();
}

void DataTable::FitToFont() {
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + theme::kGrid);
    // Row numbers up to the millions; the head measures only some of them.
    constexpr int kNumberDigits = 7;
    verticalHeader()->setMinimumWidth(
        verticalHeader()->fontMetrics().horizontalAdvance(QLatin1Char('0')) * kNumberDigits + theme::kGrid * 2);
}

void DataTable::SetColumnWishes(std::vector<Wish> wishes) {
    wishes_ = std::move(wishes);
    ShareWidth();
}

void DataTable::ShareWidth() {
    if (wishes_.empty() || widthsAreTheUsers_) return;
    std::vector<ColumnWish> wishes;
    for (const Wish& wish : wishes_) {
        const int column = static_cast<int>(wishes.size());
        const int head = horizontalHeader()->sectionSizeHint(column);
        const int least = std::max(wish.least + theme::kGrid * 2, head);
        wishes.push_back({std::max(wish.text + theme::kGrid * 2, least), least, wish.weight});
    }
    std::vector<int> widths = SharedWidths(wishes, viewport()->width());
    const int rest = viewport()->width() - std::accumulate(widths.begin(), widths.end(), 0);
    for (std::size_t column = 0; column < widths.size(); ++column)
        if (wishes_[column].takesRest) widths[column] += std::max(rest, 0);
    const QScopedValueRollback sharing(sharing_, true);
    for (std::size_t column = 0; column < widths.size(); ++column)
        setColumnWidth(static_cast<int>(column), widths[column]);
}

void DataTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    ShareWidth();
}

QString DataTable::SelectionAsText() const {
    QString text;
    if (selectionModel() == nullptr) return text;
    const ChosenCells cells = CellsOf(*this);
    for (const int row : cells.rows) {
        if (row != cells.rows.front()) text += QLatin1Char('\n');
        for (std::size_t place = 0; place < cells.columns.size(); ++place) {
            if (place > 0) text += QLatin1Char('\t');
            const QModelIndex index = model()->index(row, cells.columns[place]);
            if (selectionModel()->isSelected(index)) text += CellText(index);
        }
    }
    return text;
}

void DataTable::Copy() {
    const QString text = SelectionAsText();
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}

int DataTable::FirstVisibleRow() const {
    return rowAt(0);
}

int DataTable::LastVisibleRow() const {
    const int row = rowAt(viewport()->height() - 1);
    if (row < 0) return model() != nullptr ? model()->rowCount() - 1 : -1;
    const bool cut = rowViewportPosition(row) + rowHeight(row) > viewport()->height();
    return cut && row > FirstVisibleRow() ? row - 1 : row;
}

void DataTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        Copy();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void DataTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (hint_.isEmpty() || (model() != nullptr && model()->rowCount() > 0)) return;
    QPainter painter(viewport());
    painter.setPen(theme::MutedText());
    const QRect place =
        viewport()->rect().adjusted(theme::kGrid * 4, theme::kGrid * 4, -theme::kGrid * 4, -theme::kGrid * 4);
    painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

} // namespace tessaro
