#include "dataview/NumberDelegate.h"

namespace tessaro {

void NumberDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->displayAlignment.testFlag(Qt::AlignAbsolute)) option->direction = Qt::LeftToRight;
}

} // namespace tessaro
