#include "controls/Captions.h"
#include "controls/ColorDialogs.h"
#include "controls/Theme.h"
#include "map/classes/ClassColors.h"
#include "map/classes/ClassDialogs.h"
#include "map/classes/ClassLabels.h"
#include "map/classes/ClassesPage.h"
#include "map/classes/GridColumns.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "ui_ClassesPage.h"

#include <QHeaderView>
#include <QLocale>

#include <algorithm>

namespace tessaro {

namespace {

enum Column { ColLegend, ColFrom, ColTo, ColCount, ColColor, ColFirstSymbol };
enum class Symbol { Fill, Marker, Size };

/// The columns behind the colour for a kind of layers.
std::vector<Symbol> SymbolColumns(ThemeKind kind) {
    if (kind == ThemeKind::Points) return {Symbol::Marker, Symbol::Size};
    if (kind == ThemeKind::Both) return {Symbol::Fill, Symbol::Marker, Symbol::Size};
    return {Symbol::Fill};
}

const char* HeadOf(Symbol symbol) {
    return symbol == Symbol::Fill ? "Polygon" : symbol == Symbol::Marker ? "Point" : "Size";
}

QTableWidgetItem* NumberItem(const QString& text, bool editable) {
    auto* item = new QTableWidgetItem(NumberInReadingOrder(text));
    item->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    if (!editable) item->setForeground(QPalette().brush(QPalette::PlaceholderText));
    return item;
}

QTableWidgetItem* SymbolItem(const ClassLook& look, Symbol symbol, const QColor& ink) {
    if (symbol == Symbol::Size) return NumberItem(QLocale().toString(look.size), true);
    constexpr QSize picture(28, 16);
    auto* item = new QTableWidgetItem;
    const bool fill = symbol == Symbol::Fill;
    item->setIcon(QIcon(fill ? FillPicture(look.fill, ink, picture) : MarkerPicture(look.marker, ink, picture)));
    item->setToolTip(fill ? NameOfFill(look.fill) : NameOfMarker(look.marker));
    item->setData(Qt::AccessibleTextRole, item->toolTip());
    return item;
}

QTableWidgetItem* ColorItem(const QColor& color, const QString& name) {
    auto* item = new QTableWidgetItem;
    item->setBackground(color);
    item->setToolTip(name);
    item->setData(Qt::AccessibleTextRole, name);
    return item;
}

/// Rows for the classes, a low one, and missing data.
void SetRows(QTableWidget& grid, int classes) {
    grid.setRowCount(classes + 2);
    grid.verticalHeader()->hide();
    grid.verticalHeader()->setMinimumSectionSize(theme::kGrid);
    for (int row = 0; row < grid.rowCount(); ++row)
        grid.setRowHeight(row, row == classes ? theme::kGrid : grid.fontMetrics().height() + theme::kGrid);
}

/// The ground of a row that is lit up.
QColor LitSurface() {
    QColor ground = theme::Accent();
    ground.setAlpha(70);
    return ground;
}

} // namespace

void ClassesPage::ShowGrid() {
    QTableWidget& grid = *ui_->grdClassBreaks;
    const std::vector<Symbol> symbols = SymbolColumns(table_.kind);
    const int row = grid.currentRow();
    const int column = grid.currentColumn();
    grid.setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid.setTabKeyNavigation(false); // Tab leaves the grid
    grid.setSelectionMode(QAbstractItemView::SingleSelection);
    grid.setColumnCount(ColFirstSymbol + static_cast<int>(symbols.size()));
    SetRows(grid, static_cast<int>(table_.classes.size()));
    QStringList heads;
    for (const char* key : {"Legend", "From", "To", "Count", "COMM_Color"})
        heads << PlainText(QLatin1String(key));
    for (const Symbol symbol : symbols)
        heads << PlainText(QLatin1String(HeadOf(symbol)));
    grid.setHorizontalHeaderLabels(heads);
    for (int i = 0; i < static_cast<int>(table_.classes.size()); ++i)
        ShowRow(i);
    ShowMissing();
    FitColumns(grid, ColLegend);
    PaintLitRow();
    grid.setCurrentCell(row, column);
}

void ClassesPage::ShowRow(int row) {
    QTableWidget& grid = *ui_->grdClassBreaks;
    const ClassBreak& each = table_.classes[static_cast<std::size_t>(row)];
    const ClassLook& look = table_.looks[static_cast<std::size_t>(row)];
    auto* legend = new QTableWidgetItem(LegendInReadingOrder(look.legend));
    legend->setToolTip(legend->text()); // a narrow column cuts it
    if (look.font != QFont()) legend->setFont(look.font);
    grid.setItem(row, ColLegend, legend);
    grid.setItem(row, ColFrom, NumberItem(BoundText(each.from, table_.decimals), MayEdit(Choice(), Bound::From)));
    grid.setItem(row, ColTo, NumberItem(BoundText(each.to, table_.decimals), MayEdit(Choice(), Bound::To)));
    grid.setItem(row, ColCount, NumberItem(QLocale().toString(each.count), true));
    grid.setItem(row, ColColor, ColorItem(look.color, CaptionOfColor(row)));
    int column = ColFirstSymbol;
    for (const Symbol symbol : SymbolColumns(table_.kind))
        grid.setItem(row, column++, SymbolItem(look, symbol, palette().text().color()));
}

void ClassesPage::ShowMissing() {
    QTableWidget& grid = *ui_->grdClassBreaks;
    const int spacer = static_cast<int>(table_.classes.size());
    for (int column = 0; column < grid.columnCount(); ++column) {
        auto* item = new QTableWidgetItem;
        item->setFlags(Qt::NoItemFlags);
        grid.setItem(spacer, column, item);
        grid.setItem(spacer + 1, column, new QTableWidgetItem);
    }
    grid.setItem(spacer + 1, ColLegend, new QTableWidgetItem(table_.missing.legend));
    grid.setItem(spacer + 1, ColCount, NumberItem(QLocale().toString(CountMissing(table_, features_)), true));
    grid.setItem(spacer + 1, ColColor, ColorItem(table_.missing.color, table_.missing.legend));
    int column = ColFirstSymbol;
    for (const Symbol symbol : SymbolColumns(table_.kind))
        grid.setItem(spacer + 1, column++, SymbolItem(table_.missing, symbol, palette().text().color()));
}

void ClassesPage::PaintLitRow() {
    const QTableWidget& grid = *ui_->grdClassBreaks;
    for (int row = 0; row < grid.rowCount(); ++row)
        for (int column = 0; column < grid.columnCount(); ++column) {
            if (column == ColColor && HasLook(row)) continue;
            const bool lit = row == lit_;
            grid.item(row, column)->setData(Qt::BackgroundRole, lit ? QVariant(LitSurface()) : QVariant());
        }
}

void ClassesPage::ShowRowOf(int row) {
    if (!HasLook(row)) row = -1;
    if (row == lit_) return;
    lit_ = row;
    PaintLitRow();
    if (row >= 0) ui_->grdClassBreaks->scrollToItem(ui_->grdClassBreaks->item(row, ColLegend));
}

void ClassesPage::Hover(int row) {
    if (!HasLook(row)) row = -1;
    if (row == hovered_) return;
    hovered_ = row;
    Q_EMIT RowHovered(row);
}

bool ClassesPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Leave) Hover(-1);
    if (event->type() == QEvent::Resize) FitColumns(*ui_->grdClassBreaks, ColLegend);
    return QWidget::eventFilter(watched, event);
}

QString ClassesPage::CaptionOfColor(int row) {
    return FilledText(QStringLiteral("TS_RangeColor"), {QLocale().toString(row + 1)});
}

/// True for classes and missing data, not for the row between them.
bool ClassesPage::HasLook(int row) const {
    const auto classes = static_cast<int>(table_.looks.size());
    return row >= 0 && row <= classes + 1 && row != classes;
}

ClassLook* ClassesPage::LookOfRow(int row) {
    const auto classes = static_cast<int>(table_.looks.size());
    if (!HasLook(row)) return nullptr;
    return row > classes ? &table_.missing : &table_.looks[static_cast<std::size_t>(row)];
}

QPoint ClassesPage::BesideCell(int row, int column) const {
    const QTableWidget& grid = *ui_->grdClassBreaks;
    const QRect cell = grid.visualRect(grid.model()->index(row, column));
    return grid.viewport()->mapToGlobal(cell.bottomLeft());
}

void ClassesPage::CellChosen(int row, int column) {
    const ErrorTrap trap("grdClassBreaks_Click");
    const bool isClass = row < static_cast<int>(table_.classes.size());
    if (!LookOfRow(row) || (!isClass && column < ColColor)) return;
    if (column == ColFrom || column == ColTo)
        EditBoundCell(row, column);
    else if (column != ColCount)
        EditLook(row, column);
}

void ClassesPage::EditBoundCell(int row, int column) {
    const Bound bound = column == ColFrom ? Bound::From : Bound::To;
    if (!MayEdit(Choice(), bound)) return;
    const QString heading = PlainText(column == ColFrom ? QStringLiteral("From") : QStringLiteral("To"));
    const ClassBreak& each = table_.classes[static_cast<std::size_t>(row)];
    const auto typed =
        AskForBreak(this, heading, BoundText(bound == Bound::From ? each.from : each.to, table_.decimals));
    if (!typed) return;
    const auto number = NumberTyped(*typed);
    if (!number || !EditClass(table_, row, bound, *number, Choice(), values_)) {
        ShowMessage(FilledText(number ? QStringLiteral("TS_BoundRefused") : QStringLiteral("TS_NotANumber"), {*typed}),
                    MessageType::Ok, MessageIcon::Warning, {}, false);
        return;
    }
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::EditLook(int row, int column) {
    ClassLook& look = *LookOfRow(row);
    const ClassLook before = look;
    if (column == ColLegend) {
        if (const auto changed = AskForLegend(this, look)) look = *changed;
    } else if (column == ColColor) {
        const QColor chosen = AskForColor(this, PlainText(QStringLiteral("COMM_Color")), look.color);
        if (chosen.isValid()) look.color = ClassColor(chosen);
    } else {
        const Symbol symbol = SymbolColumns(table_.kind)[static_cast<std::size_t>(column - ColFirstSymbol)];
        if (symbol == Symbol::Fill)
            look.fill = AskForFill(this, BesideCell(row, column)).value_or(look.fill);
        else if (symbol == Symbol::Marker)
            look.marker = AskForMarker(this, BesideCell(row, column)).value_or(look.marker);
        else
            look.size = AskForMarkerSize(this, look.size).value_or(look.size);
    }
    if (look == before) return;
    ShowAll();
    Q_EMIT Changed();
}

} // namespace tessaro
