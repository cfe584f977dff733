#include "shell/EditCommands.h"

#include "controls/CopyText.h"
#include "controls/StageScreen.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

namespace tessaro {

namespace {

/// The text field that has the focus; null when it is another control.
QLineEdit* FieldInUse() {
    QWidget* focus = QApplication::focusWidget();
    if (const auto* box = qobject_cast<QComboBox*>(focus); box && box->isEditable()) return box->lineEdit();
    return qobject_cast<QLineEdit*>(focus);
}

void RunOnField(EditCommand command, QLineEdit& field) {
    switch (command) {
    case EditCommand::Cut:
        return field.cut();
    case EditCommand::Copy:
        return field.copy();
    case EditCommand::Paste:
        return field.paste();
    case EditCommand::SelectAll:
        return field.selectAll();
    }
}

} // namespace

void RunEditCommand(EditCommand command, StageScreen* screen) {
    if (QLineEdit* field = FieldInUse()) return RunOnField(command, *field);
    if (command == EditCommand::Copy && CopyFromControl(QApplication::focusWidget())) return;
    if (screen && command == EditCommand::Copy) screen->Copy();
    if (screen && command == EditCommand::SelectAll) screen->SelectAll();
}

} // namespace tessaro
