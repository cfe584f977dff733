#pragma once

#include <QFont>
#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace tessaro {

/// Lets the user choose a font; nothing when the dialog was cancelled.
[[nodiscard]] std::optional<QFont> AskForFont(QWidget* parent, const QString& title, const QFont& current);

/// Who answers instead of the user (tests); an empty one brings the dialog back.
using FontAnswerer = std::function<std::optional<QFont>(const QFont& current)>;
void SetFontAnswerer(FontAnswerer answerer);

} // namespace tessaro
