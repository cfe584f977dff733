#pragma once

#include <functional>

class QTextDocument;
class QWidget;

namespace tessaro {

/// Lets the user choose a printer and prints a document on it; false when that was cancelled.
bool PrintDocument(QWidget* parent, const QTextDocument& document);

/// Who takes what is to be printed instead of the printer (tests); an empty one brings the dialog back.
using PrintTaker = std::function<bool(const QTextDocument&)>;
void SetPrintTaker(PrintTaker taker);

} // namespace tessaro
