#include "controls/FillDelegate.h"

#include <QLineEdit>
#include <QTimer>

namespace tessaro {

QWidget* FillDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& /*index*/) const {
    auto* txtFill = new QLineEdit(parent);
    txtFill->setObjectName(QStringLiteral("txtFill"));
    txtFill->setFrame(false);
    txtFill->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return txtFill;
}

void FillDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* txtFill = qobject_cast<QLineEdit*>(editor);
    if (!txtFill) return;
    txtFill->setText(index.data(Qt::EditRole).toString());
    // The view selects the whole text once the field is open.
    QTimer::singleShot(0, txtFill, [txtFill] {
        if (txtFill->hasSelectedText()) txtFill->end(false);
    });
}

} // namespace tessaro
