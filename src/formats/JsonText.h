#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <optional>

namespace tessaro {

/// A value as JSON text.
[[nodiscard]] QByteArray JsonText(const QJsonValue& value);
/// A number as formats write it, with a point; nothing for a text that is none.
[[nodiscard]] std::optional<QByteArray> NumberText(const QString& value);
/// A stored value in JSON: a number, or a text where it is none.
[[nodiscard]] QByteArray JsonNumber(const QString& value);

} // namespace tessaro
