#pragma once

#include <QString>

#include <functional>

/// Types, icons and answers of messages, and who answers them.
namespace tessaro {

/// The button sets of a message and the codes they give.
enum class MessageType { Ok = 1, OkCancel = 2, YesNo = 3, YesNoCancel = 4, Done = 5, LocateIgnore = 6 };
namespace MessageCode {
constexpr int Yes = 1, No = 2, Ok = 3, Cancel = 4, Done = 5; // YesNoCancel: No gives 0; LocateIgnore: 3, 4, closing 0
}

/// The picture of a message, by the system's numbers.
enum class MessageIcon { Refused = 101, Note = 102, Warning = 103, Question = 104 };

/// What a message box is asked to show. `text` is the looked-up text.
struct Message {
    QString key; ///< the key given, empty for a literal text
    QString text;
    MessageType type = MessageType::Ok;
    MessageIcon icon = MessageIcon::Warning;
    QString title;        ///< empty: the product's name
    bool careful = false; ///< Enter presses the last button, which changes nothing, instead of the first
};

/// Who answers messages: the frame installs the window, tests install an answer. Without one, a message is logged and
/// gives what closing the box would.
using MessageAnswerer = std::function<int(const Message&)>;
void SetMessageAnswerer(MessageAnswerer answerer);
/// The code that closing the box gives.
[[nodiscard]] int CodeOfClosing(MessageType type);
/// Shows the message and gives the code of its button.
int AnswerMessage(Message message);

} // namespace tessaro
