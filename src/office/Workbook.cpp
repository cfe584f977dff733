#include "office/Workbook.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/SheetAccess.h"
#include "office/Transfer.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <com/sun/star/view/XPrintable.hpp>

namespace tessaro::office {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using Model = Document::Model;

namespace {

auto SheetsOf(const Model& model) {
    return Need<com::sun::star::sheet::XSpreadsheetDocument>(model)->getSheets();
}

int CountOf(const Model& model) {
    return model.Sheets()->getCount();
}

/// Whether formulas are calculated as their cells are needed, or not at all.
void Calculate(const Model& model, bool on) {
    const auto calculatable = Need<com::sun::star::sheet::XCalculatable>(model);
    if (calculatable->isAutomaticCalculationEnabled() != static_cast<sal_Bool>(on))
        calculatable->enableAutomaticCalculation(on);
}

QString PrinterOf(const Reference<com::sun::star::view::XPrintable>& printable) {
    const auto settings = printable->getPrinter();
    for (const auto& setting : settings)
        if (rtl::OUString name; setting.Name == "Name" && (setting.Value >>= name)) return FromUno(name);
    return {};
}

/// What the format would cut without a word.
void CheckLimits(const Model& model) {
    for (int number = 1; number <= CountOf(model); ++number) {
        const auto sheet = SheetOf(model, number);
        const QString name = FromUno(Need<com::sun::star::container::XNamed>(sheet)->getName());
        const auto cursor = sheet->createCursor();
        Need<com::sun::star::sheet::XUsedAreaCursor>(cursor)->gotoEndOfUsedArea(false);
        const auto end = Need<com::sun::star::sheet::XCellRangeAddressable>(cursor)->getRangeAddress();
        if (end.EndRow >= kMaxRows || end.EndColumn >= kMaxColumns || name.size() > kMaxSheetName)
            throw Error(Failure::Limit, QStringLiteral("sheet \"%1\" is larger than the file format holds").arg(name));
    }
}

} // namespace

Workbook::Workbook(std::shared_ptr<Document> document) : document_(std::move(document)) {}

bool Workbook::IsOpen() const {
    return document_ && document_->IsOpen();
}

QString Workbook::FileName() const {
    return document_ ? document_->FileName() : QString();
}

int Workbook::SheetCount() const {
    int count = 0;
    Known(document_).Run([&](const Model& model) { count = CountOf(model); });
    return count;
}

Worksheet Workbook::Sheet(int number) const {
    Known(document_).Run([&](const Model& model) { static_cast<void>(SheetOf(model, number)); });
    return {document_, number};
}

Worksheet Workbook::Sheet(const QString& name) const {
    int found = 0;
    Known(document_).Run([&](const Model& model) {
        for (int number = 1; number <= CountOf(model) && !found; ++number)
            if (FromUno(Need<com::sun::star::container::XNamed>(SheetOf(model, number))->getName())
                    .compare(name, Qt::CaseInsensitive) == 0)
                found = number;
    });
    if (!found) throw Error(Failure::Call, QStringLiteral("there is no sheet \"%1\"").arg(name));
    return {document_, found};
}

Worksheet Workbook::AddSheet(const QString& name) {
    int number = 0;
    Known(document_).Run([&](const Model& model) {
        number = CountOf(model) + 1;
        const rtl::OUString own = ToUno(CleanSheetName(name));
        const auto sheets = SheetsOf(model);
        if (sheets->hasByName(own)) throw Error(Failure::Call, QStringLiteral("there is a sheet \"%1\"").arg(name));
        sheets->insertNewByName(own, static_cast<sal_Int16>(number - 1));
    });
    return {document_, number};
}

void Workbook::RemoveSheet(int number) {
    Known(document_).Run([&](const Model& model) {
        if (CountOf(model) == 1) throw Error(Failure::Call, QStringLiteral("a workbook has at least one sheet"));
        SheetsOf(model)->removeByName(Need<com::sun::star::container::XNamed>(SheetOf(model, number))->getName());
    });
}

void Workbook::ActivateSheet(int number) {
    Known(document_).Run([&](const Model& model) {
        KeepView(model);
        Need<com::sun::star::sheet::XSpreadsheetView>(model->getCurrentController())
            ->setActiveSheet(SheetOf(model, number));
    });
}

Worksheet Workbook::ActiveSheet() const {
    int number = 1;
    Known(document_).Run([&](const Model& model) {
        const auto sheet =
            Need<com::sun::star::sheet::XSpreadsheetView>(model->getCurrentController())->getActiveSheet();
        number = Need<com::sun::star::sheet::XCellRangeAddressable>(sheet)->getRangeAddress().Sheet + 1;
    });
    return {document_, number};
}

QColor Workbook::Colors(int slot) const {
    return Known(document_).ColorAt(slot);
}

void Workbook::SetColors(int slot, const QColor& colour) {
    Known(document_).SetColor(slot, colour);
}

void Workbook::SetDefaultFont(const QString& name, double points) {
    Known(document_).Run([&](const Model& model) {
        const auto families = Need<com::sun::star::style::XStyleFamiliesSupplier>(model)->getStyleFamilies();
        Reference<com::sun::star::container::XNameAccess> styles;
        families->getByName("CellStyles") >>= styles;
        Reference<com::sun::star::beans::XPropertySet> style;
        styles->getByName("Default") >>= style;
        for (const char* script : {"", "Asian", "Complex"}) {
            style->setPropertyValue(Ascii("CharFontName") + Ascii(script), Any(ToUno(name)));
            style->setPropertyValue(Ascii("CharHeight") + Ascii(script), Any(static_cast<float>(points)));
        }
    });
}

void Workbook::PauseCalculation() {
    Known(document_).Run([](const Model& model) { Calculate(model, false); });
}

void Workbook::SaveWithoutResults() {
    Known(document_).Run(CheckLimits);
    Known(document_).Store(Known(document_).FileName());
}

void Workbook::Save() {
    SaveAs(Known(document_).FileName());
}

void Workbook::SaveAs(const QString& file) {
    Known(document_).Run([](const Model& model) {
        CheckLimits(model);
        Calculate(model, true);
    });
    Known(document_).Store(file);
}

void Workbook::SaveCopy(const QString& file) const {
    Known(document_).Export(file, Document::kWorkbook);
}

void Workbook::ExportPdf(const QString& file) {
    Known(document_).Export(file, "calc_pdf_Export");
}

void Workbook::Print(const QString& printer) {
    Known(document_).Run([&](const Model& model) {
        const auto printable = Need<com::sun::star::view::XPrintable>(model);
        if (!printer.isEmpty()) {
            printable->setPrinter(Properties({Property("Name", Any(ToUno(printer)))}));
            // An unknown one is passed over without a word, and the pages would go nowhere.
            if (PrinterOf(printable) != printer)
                throw Error(Failure::Printer, QStringLiteral("there is no printer \"%1\"").arg(printer));
        }
        printable->print(Properties({Property("Wait", Any(true))}));
    });
}

bool Workbook::IsModified() const {
    bool modified = false;
    Known(document_).Run(
        [&](const Model& model) { modified = Need<com::sun::star::util::XModifiable>(model)->isModified(); });
    return modified;
}

void Workbook::Close(bool save) {
    if (!document_) return;
    if (save && document_->IsOpen()) Save();
    document_->Close();
}

} // namespace tessaro::office
