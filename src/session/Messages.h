#pragma once

#include "session/MessageAnswer.h"

#include <QString>
#include <QStringList>

/// Shows messages of the string table.
namespace tessaro {

/// Shows a message of the string table (or, with isKey False, the text as given) and gives the button's code.
int ShowMessage(const QString& key, MessageType type = MessageType::Ok, MessageIcon icon = MessageIcon::Warning,
                const QString& title = {}, bool isKey = true);

/// A question whose Yes deletes, replaces or gives up something: as ShowMessage with the icon of a question, but Enter
/// gives the last button (No, or Cancel where there is one).
int AskBeforeLoss(const QString& key, MessageType type = MessageType::YesNo, const QString& title = {},
                  bool isKey = true);

/// Shows a message of the string table in whose text the fillings stand for %1, %2 …; with an OK button.
void ShowFilledMessage(const QString& key, const QStringList& fillings, MessageIcon icon = MessageIcon::Warning);

/// Shows a message of the string table with the reason of this case below it.
void ShowMessageWithReason(const QString& key, const QString& reason, MessageIcon icon = MessageIcon::Warning);
/// The text of a key with the fillings for %1, %2 …
[[nodiscard]] QString FilledText(const QString& key, const QStringList& fillings);

} // namespace tessaro
