#include "formats/JsonText.h"

#include "jet/values/Value.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tessaro {

QByteArray JsonText(const QJsonValue& value) {
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

std::optional<QByteArray> NumberText(const QString& value) {
    const auto number = jet::ReadNumber(value.toStdString());
    if (!number) return std::nullopt;
    return QByteArray::fromStdString(jet::ShortestText(*number));
}

QByteArray JsonNumber(const QString& value) {
    return NumberText(value).value_or(JsonText(value));
}

} // namespace tessaro
