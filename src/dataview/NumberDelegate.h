#pragma once

#include <QStyledItemDelegate>

namespace tessaro {

/// Draws cells that the model aligns absolutely (its numbers) from left to right in every language. In right-to-left
/// text a minus sign would be drawn after the number.
class NumberDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tessaro
