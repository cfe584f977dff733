#pragma once

#include <QStyledItemDelegate>

namespace tessaro {

/// Lays the field txtFill over a cell that is edited, with the caret behind the text; numbers stand at the right.
class FillDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
};

} // namespace tessaro
