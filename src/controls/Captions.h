#pragma once

#include "session/Strings.h"

#include <QFont>
#include <QString>

class QAbstractButton;
class QAction;
class QLabel;
class QWidget;

/// Captions of controls from the string table, and the language's font and direction.
namespace tessaro {

/// Sets the text of a key on a control and as its accessible name (without the mnemonic).
void SetCaption(QAbstractButton* control, const QString& key);
void SetCaption(QLabel* control, const QString& key);
void SetCaption(QAction* action, const QString& key);
void SetToolTip(QWidget* control, const QString& key);
/// The text with a direction mark before it, so that it runs in the language's direction even when it begins with a
/// name or number in another script.
[[nodiscard]] QString InReadingOrder(const QString& text);
/// A number, file or name to be put into a text: isolated, so that it stays in one piece with its sign or ending.
/// Numbers run from left to right, names as their first letter does.
[[nodiscard]] QString InOnePiece(const QString& text);
/// The side where reading begins, for labels whose own text (a name, a number) would give the wrong one.
[[nodiscard]] Qt::Alignment ReadingSide();

/// Gives the language's font (ProductFont, size, style) to a form and all its controls, sets the layout direction of
/// the form from the language, and leaves out toolbars.
void SetFormFonts(QWidget* form);
/// The font of the language, and the product's base font (DEFAULT FONT).
[[nodiscard]] QFont LanguageFont();
[[nodiscard]] QFont DefaultFont();

} // namespace tessaro
