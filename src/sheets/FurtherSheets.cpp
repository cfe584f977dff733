#include "sheets/FurtherSheets.h"

namespace tessaro {

namespace {

/// The number must not be cut off where the name is as long as a name can be.
QString NumberedName(const QString& name, int number) {
    const QString ending = QStringLiteral(" %1").arg(number);
    return name.left(office::kMaxSheetName - ending.size()) + ending;
}

} // namespace

int FillSheets(office::Workbook& book, office::Worksheet first, const QString& name,
               const std::function<bool(office::Worksheet&)>& fill) {
    int sheets = 1;
    for (bool more = fill(first); more; ++sheets) {
        if (sheets == 1) first.SetName(name);
        office::Worksheet next = book.AddSheet(NumberedName(name, sheets + 1));
        more = fill(next);
    }
    return sheets;
}

} // namespace tessaro
