#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

#include <functional>

class QWidget;

namespace tessaro {

/// Lets the user choose a colour; an invalid one when the dialog was cancelled.
[[nodiscard]] QColor AskForColor(QWidget* parent, const QString& title, const QColor& current);

/// Who answers instead of the user (tests); an empty one brings the dialog back.
using ColorAnswerer = std::function<QColor(const QColor& current)>;
void SetColorAnswerer(ColorAnswerer answerer);

/// A square of a colour, to be set on a button or label.
[[nodiscard]] QPixmap ColorSquare(const QColor& color, int side);

} // namespace tessaro
