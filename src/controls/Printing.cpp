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

} // namespace

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
