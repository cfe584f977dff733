#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace tessaro {

/// The button sets of a message and the codes they give.
enum class MessageType { Ok = 1, OkCancel = 2, YesNo = 3, YesNoCancel = 4, Done = 5, LocateIgnore = 6 };
namespace MessageCode {
constexpr int Yes = 1, No = 2, Ok = 3, Cancel = 4, Done = 5; // YesNoCancel: No gives 0; LocateIgnore: 3, 4, closing 0
}

/// What a message box is asked to show. `text` is the looked-up text.
struct Message {
    QString key; ///< the key given, empty for a literal text
    QString text;
    MessageType type = MessageType::Ok;
    int icon = 103; ///< 101 to 104
    QString title;
    bool careful = false; ///< Enter presses the last button, which changes nothing, instead of the first
};

/// Shows a message of the string table (or, with isKey False, the text as given) and gives the button's code.
int ShowMessage(const QString& key, MessageType type = MessageType::Ok, int icon = 103, const QString& title = {},
                bool isKey = true);

/// A question whose Yes deletes, replaces or gives up something: as ShowMessage with the icon of a question, but Enter
/// gives the last button (No, or Cancel where there is one).
int AskBeforeLoss(const QString& key, MessageType type = MessageType::YesNo, const QString& title = {},
                  bool isKey = true);

/// Shows a message of the string table in whose text the fillings stand for %1, %2 …; with an OK button.
void ShowFilledMessage(const QString& key, const QStringList& fillings, int icon = 103);

/// Shows a message of the string table with the reason of this case below it.
void ShowMessageWithReason(const QString& key, const QString& reason, int icon = 103);
/// The text of a key with the fillings for %1, %2 …
[[nodiscard]] QString FilledText(const QString& key, const QStringList& fillings);

/// Who answers messages: the frame installs the window, tests install an answer. Without one, a message is logged and
/// gives what closing the box would.
using MessageAnswerer = std::function<int(const Message&)>;
void SetMessageAnswerer(MessageAnswerer answerer);
/// The code that closing the box gives.
[[nodiscard]] int CodeOfClosing(MessageType type);

} // namespace tessaro
