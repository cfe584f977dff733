#include "controls/Printing.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>

#include <utility>

namespace tessaro {

namespace {

PrintTaker& TheTaker() {
    static PrintTaker taker;
    return taker;
}

PrinterAnswerer& TheAnswerer() {
    static PrinterAnswerer answerer;
    return answerer;
}

} // namespace

std::optional<PrintPlace> AskForPrinter(QWidget* parent) {
    if (TheAnswerer()) return TheAnswerer()();
    QPrinter printer;
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    if (printer.outputFormat() == QPrinter::PdfFormat) return PrintPlace{{}, printer.outputFileName()};
    return PrintPlace{printer.printerName(), {}};
}

void SetPrinterAnswerer(PrinterAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

bool PrintDocument(QWidget* parent, const QTextDocument& document) {
    if (TheTaker()) return TheTaker()(document);
    QPrinter printer;
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted) return false;
    document.print(&printer);
    return true;
}

void SetPrintTaker(PrintTaker taker) {
    TheTaker() = std::move(taker);
}

} // namespace tessaro
