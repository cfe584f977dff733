#include "dataview/GridDelegate.h"

#include "controls/Theme.h"
#include "dataview/GridModel.h"
#include "dataview/GridQuery.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace tessaro {

namespace {

constexpr int kMarkWidth = 12; ///< kept free behind every value, so that numbers stay in line

bool HasMarkColumn(const QModelIndex& index) {
    return ShowFootnotes && index.column() + 1 == ColDatavalue;
}

QFont MarkFont(const QFont& font) {
    QFont mark = font;
    mark.setBold(true);
    if (mark.pointSizeF() > 0) mark.setPointSizeF(mark.pointSizeF() * 0.85);
    return mark;
}

} // namespace

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    NumberDelegate::initStyleOption(option, index);
    option->state &= ~QStyle::State_HasFocus; // the current cell is chosen as well; a dotted frame adds nothing
    if (index.column() == 0 && index.data(GridModel::SpareRole).toBool()) {
        option->text = LookupString(QStringLiteral("TS_Loading"));
        option->features |= QStyleOptionViewItem::HasDisplay;
        option->palette.setColor(QPalette::Text, theme::MutedText());
    }
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (!HasMarkColumn(index)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle* style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    cell.rect.adjust(0, 0, -kMarkWidth, 0);
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (!index.data(GridModel::FootnoteRole).toBool()) return;

    const bool chosen = (option.state & QStyle::State_Selected) != 0;
    painter->save();
    painter->setFont(MarkFont(option.font));
    painter->setPen(chosen ? option.palette.color(QPalette::HighlightedText) : theme::Accent());
    const QRect place(option.rect.right() - kMarkWidth, option.rect.top(), kMarkWidth, option.rect.height());
    painter->drawText(place, Qt::AlignLeft | Qt::AlignTop, QStringLiteral("*"));
    painter->restore();
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event == nullptr || view == nullptr || event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    constexpr qsizetype kLongest = 2000; // a name of a database may have a million characters
    const QString text = index.data(Qt::ToolTipRole).toString().left(kLongest);
    const bool cut = option.fontMetrics.horizontalAdvance(text) > option.rect.width() - 2 * (theme::kGrid / 2 + 1);
    if (index.data(GridModel::FootnoteRole).toBool()) {
        QToolTip::showText(event->globalPos(),
                           GetText(QStringLiteral("TS_FootnoteMark")).replace(QLatin1String("%1"), text), view);
    } else if (cut && !text.isEmpty()) {
        QToolTip::showText(event->globalPos(), text, view);
    } else {
        QToolTip::hideText();
    }
    return true;
}

} // namespace tessaro
