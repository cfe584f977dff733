#pragma once

#include <QString>

#include <functional>
#include <optional>

class QTextDocument;
class QWidget;

namespace tessaro {

/// Where the user wants something printed: on a printer, or into a PDF file.
struct PrintPlace {
    QString printer;
    QString pdfFile; ///< takes the printer's place unless empty
};
/// Lets the user choose; nothing when that was cancelled.
[[nodiscard]] std::optional<PrintPlace> AskForPrinter(QWidget* parent);
/// Who answers instead of the user (tests); an empty one brings the dialog back.
using PrinterAnswerer = std::function<std::optional<PrintPlace>()>;
void SetPrinterAnswerer(PrinterAnswerer answerer);

/// Lets the user choose a printer and prints a document on it; false when that was cancelled.
bool PrintDocument(QWidget* parent, const QTextDocument& document);

/// Who takes what is to be printed instead of the printer (tests); an empty one brings the dialog back.
using PrintTaker = std::function<bool(const QTextDocument&)>;
void SetPrintTaker(PrintTaker taker);

} // namespace tessaro
