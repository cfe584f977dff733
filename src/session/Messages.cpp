#include "session/Messages.h"

#include "session/Strings.h"

#include <utility>

namespace tessaro {

namespace {

/// The text of a key. A message may come before any language file is read, or from a file that lacks it: an empty box
/// tells nobody anything, so the key stands in, and the one message that ends the program has a text of its own.
QString TextOfMessage(const QString& key) {
    QString text = LookupString(key);
    if (!text.isEmpty()) return text;
    if (key == QLatin1String("002"))
        return QStringLiteral("The settings file TS.ini was not found in the application folder, or it can't be read.");
    return key;
}

/// In one pass over the text: a filling may hold such marks itself.
QString Filled(const QString& text, const QStringList& fillings) {
    QString filled;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const int place = text[at] == QLatin1Char('%') && at + 1 < text.size() ? text[at + 1].digitValue() : -1;
        if (place >= 1 && place <= fillings.size()) {
            filled += fillings[place - 1];
            ++at;
        } else {
            filled += text[at];
        }
    }
    return filled;
}

Message MessageOf(const QString& key, MessageType type, MessageIcon icon, const QString& title, bool isKey) {
    Message message;
    message.key = isKey ? key : QString();
    message.text = isKey ? TextOfMessage(key) : key;
    message.type = type;
    message.icon = icon;
    message.title = title;
    return message;
}

} // namespace

int ShowMessage(const QString& key, MessageType type, MessageIcon icon, const QString& title, bool isKey) {
    return AnswerMessage(MessageOf(key, type, icon, title, isKey));
}

int AskBeforeLoss(const QString& key, MessageType type, const QString& title, bool isKey) {
    Message message = MessageOf(key, type, MessageIcon::Question, title, isKey);
    message.careful = true;
    return AnswerMessage(std::move(message));
}

void ShowFilledMessage(const QString& key, const QStringList& fillings, MessageIcon icon) {
    Message message = MessageOf(key, MessageType::Ok, icon, {}, true);
    message.text = Filled(message.text, fillings);
    AnswerMessage(std::move(message));
}

void ShowMessageWithReason(const QString& key, const QString& reason, MessageIcon icon) {
    Message message = MessageOf(key, MessageType::Ok, icon, {}, true);
    if (!reason.isEmpty()) message.text += QLatin1String("\n\n") + reason;
    AnswerMessage(std::move(message));
}

QString FilledText(const QString& key, const QStringList& fillings) {
    return Filled(TextOfMessage(key), fillings);
}

} // namespace tessaro
