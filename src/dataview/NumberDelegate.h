#pragma once

#include <QStyledItemDelegate>

namespace tessaro {

/// Draws numbers, which the model tells by their absolute alignment, from left to right in every language: beside
/// letters of the other direction a minus would change its side.
class NumberDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tessaro
