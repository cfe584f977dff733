#include "dataview/NumberDelegate.h"

#include "controls/Theme.h"

namespace tessaro {

void NumberDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(Qt::ForegroundRole).isValid())
        option->palette.setColor(QPalette::Text, theme::TextColor(option->palette.color(QPalette::Text)));
    if (option->displayAlignment.testFlag(Qt::AlignAbsolute)) option->direction = Qt::LeftToRight;
}

} // namespace tessaro
