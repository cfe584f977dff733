#include "session/MessageAnswer.h"

#include "session/Log.h"
#include "session/Settings.h"

#include <utility>

namespace tessaro {

namespace {

MessageAnswerer& TheAnswerer() {
    static MessageAnswerer answerer;
    return answerer;
}

} // namespace

int AnswerMessage(Message message) {
    if (message.title.isEmpty()) message.title = Setting(QStringLiteral("PRODUCT NAME"));
    if (TheAnswerer()) return TheAnswerer()(message);
    LogNote(QStringLiteral("message without a window: %1 %2").arg(message.key, message.text));
    return CodeOfClosing(message.type);
}

int CodeOfClosing(MessageType type) {
    switch (type) {
    case MessageType::Ok:
        return MessageCode::Ok;
    case MessageType::OkCancel:
        return MessageCode::Cancel;
    case MessageType::YesNo:
        return MessageCode::No;
    case MessageType::YesNoCancel:
        return MessageCode::Cancel;
    case MessageType::Done:
        return MessageCode::Done;
    case MessageType::LocateIgnore:
        return 0;
    }
    return 0;
}

void SetMessageAnswerer(MessageAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

} // namespace tessaro
