#include "office/Worksheet.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/SheetAccess.h"
#include "office/Transfer.h"

#include <QRegularExpression>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/sheet/XViewFreezable.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/WritingMode2.hpp>
#include <thread>

namespace tessaro::office {

using com::sun::star::uno::Any;
using Model = Document::Model;

namespace {

/// Width of one character of the standard font, in 1/100 mm.
constexpr double kCharacterWidth = 2540.0 * 7 / 96;

int ColumnNumber(const QString& letters) {
    int number = 0;
    for (const QChar letter : letters.toUpper())
        number = number * 26 + (letter.unicode() - u'A' + 1);
    return number;
}

/// Brings a sheet to view while its view is changed, and the one of before back.
class SheetInView final {
  public:
    SheetInView(const Model& model, int number)
        : controller(Kept(model)), view_(Need<View>(controller)), sheet_(SheetOf(model, number)) {
        before_ = view_->getActiveSheet();
        Show();
    }
    ~SheetInView() {
        try {
            view_->setActiveSheet(before_);
        } catch (const com::sun::star::uno::Exception&) {
            // The process has ended, which the call itself tells.
        }
    }
    SheetInView(const SheetInView&) = delete;
    SheetInView& operator=(const SheetInView&) = delete;

    void Show() { view_->setActiveSheet(sheet_); }
    [[nodiscard]] bool IsThere() const { return NumberOf(view_->getActiveSheet()) == NumberOf(sheet_); }

    const com::sun::star::uno::Reference<com::sun::star::frame::XController> controller;

  private:
    using View = com::sun::star::sheet::XSpreadsheetView;
    using Sheet = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;

    static sal_Int16 NumberOf(const Sheet& sheet) {
        return Need<com::sun::star::sheet::XCellRangeAddressable>(sheet)->getRangeAddress().Sheet;
    }
    static com::sun::star::uno::Reference<com::sun::star::frame::XController> Kept(const Model& model) {
        KeepView(model);
        return model->getCurrentController();
    }

    const com::sun::star::uno::Reference<View> view_;
    const Sheet sheet_;
    Sheet before_;
};

/// The value of this name among named ones; nothing when there is none.
Any ValueNamed(const Any& values, const char* name) {
    com::sun::star::uno::Sequence<com::sun::star::beans::PropertyValue> list;
    values >>= list;
    for (const auto& value : list)
        if (value.Name.equalsAscii(name)) return value.Value;
    return {};
}

/// True when a sheet's own setting shows grid lines.
bool ShowsGridLines(const com::sun::star::uno::Reference<com::sun::star::frame::XController>& controller,
                    const rtl::OUString& sheetName) {
    com::sun::star::uno::Reference<com::sun::star::container::XNameAccess> sheets;
    ValueNamed(controller->getViewData(), "Tables") >>= sheets;
    bool shown = true;
    if (sheets.is() && sheets->hasByName(sheetName)) ValueNamed(sheets->getByName(sheetName), "ShowGrid") >>= shown;
    return shown;
}

} // namespace

Worksheet::Worksheet(std::shared_ptr<Document> document, int number)
    : document_(std::move(document)), number_(number) {}

QString Worksheet::Name() const {
    QString name;
    document_->Run([&](const Model& model) {
        name = FromUno(Need<com::sun::star::container::XNamed>(SheetOf(model, number_))->getName());
    });
    return name;
}

QString CleanSheetName(const QString& name) {
    static const QRegularExpression forbidden(QStringLiteral("[\\[\\]*?:/\\\\\\x00-\\x1F]|^'|'$"));
    QString clean = name.left(kMaxSheetName);
    if (!clean.isEmpty() && clean.back().isHighSurrogate()) clean.chop(1);
    clean.replace(forbidden, QStringLiteral("_"));
    return clean.isEmpty() ? QStringLiteral("_") : clean;
}

void Worksheet::SetName(const QString& name) {
    const rtl::OUString clean = ToUno(CleanSheetName(name));
    document_->Run([&](const Model& model) {
        const auto sheet = Need<com::sun::star::container::XNamed>(SheetOf(model, number_));
        sheet->setName(clean);
        // A name that another sheet has is passed over without a word.
        if (sheet->getName() != clean)
            throw Error(Failure::Call, QStringLiteral("a sheet can't be named \"%1\"").arg(name));
    });
}

Range Worksheet::Cells(int row, int column) const {
    return {document_, number_, row, column, row, column};
}

Range Worksheet::Cells(int row, int column, int lastRow, int lastColumn) const {
    return {document_, number_, row, column, lastRow, lastColumn};
}

Range Worksheet::Address(const QString& address) const {
    static const QRegularExpression form(
        QStringLiteral("^\\$?([A-Za-z]{1,3})\\$?(\\d{1,6})(?::\\$?([A-Za-z]{1,3})\\$?(\\d{1,6}))?$"));
    const auto match = form.match(address);
    if (!match.hasMatch()) throw Error(Failure::Call, QStringLiteral("\"%1\" is no address").arg(address));
    const int row = match.captured(2).toInt();
    const int column = ColumnNumber(match.captured(1));
    if (match.captured(3).isEmpty()) return Cells(row, column);
    return Cells(row, column, match.captured(4).toInt(), ColumnNumber(match.captured(3)));
}

Range Worksheet::UsedRange() const {
    int row = 1;
    int column = 1;
    document_->Run([&](const Model& model) {
        const auto cursor = SheetOf(model, number_)->createCursor();
        Need<com::sun::star::sheet::XUsedAreaCursor>(cursor)->gotoEndOfUsedArea(false);
        const auto end = Need<com::sun::star::sheet::XCellRangeAddressable>(cursor)->getRangeAddress();
        row = end.EndRow + 1;
        column = end.EndColumn + 1;
    });
    // The program's own sheets are larger than those of the file format.
    return Cells(1, 1, std::min(row, kMaxRows), std::min(column, kMaxColumns));
}

void Worksheet::SetColumnWidth(int column, double characters) {
    SetColumnWidths({{column, characters}});
}

void Worksheet::SetColumnWidths(const std::map<int, double>& characters) {
    const auto lengthOf = [](double width) { return static_cast<sal_Int32>(std::lround(width * kCharacterWidth)); };
    document_->Run([&](const Model& model) {
        const auto sheet = SheetOf(model, number_);
        for (auto first = characters.begin(); first != characters.end();) {
            const auto [column, width] = *first;
            int last = column;
            while (++first != characters.end() && first->first == last + 1 &&
                   lengthOf(first->second) == lengthOf(width))
                ++last;
            const auto range = sheet->getCellRangeByPosition(column - 1, 0, last - 1, 0);
            const auto columns = Need<com::sun::star::table::XColumnRowRange>(range)->getColumns();
            Need<com::sun::star::beans::XPropertySet>(columns)->setPropertyValue("Width", Any(lengthOf(width)));
        }
    });
}

void Worksheet::SetRowHeight(int row, double points) {
    SetRowHeights(row, row, points);
}

void Worksheet::SetRowHeights(int row, int lastRow, double points) {
    document_->Run([&](const Model& model) {
        const auto rows =
            Need<com::sun::star::table::XColumnRowRange>(RangeOf(model, number_, row, 1, lastRow, 1))->getRows();
        Need<com::sun::star::beans::XPropertySet>(rows)->setPropertyValue(
            "Height", Any(static_cast<sal_Int32>(std::lround(points * kPoint))));
    });
}

void Worksheet::SetRightToLeft(bool on) {
    document_->Run([&](const Model& model) {
        namespace writing = com::sun::star::text::WritingMode2;
        Need<com::sun::star::beans::XPropertySet>(SheetOf(model, number_))
            ->setPropertyValue("TableLayout", Any(on ? writing::RL_TB : writing::LR_TB));
    });
}

// A view that has just become visible may not take it at once, or go back to its first sheet a moment later.
void Worksheet::FreezePanes(int row, int column) {
    document_->Run([&](const Model& model) {
        constexpr int kTries = 5;
        SheetInView sheet(model, number_);
        const auto panes = Need<com::sun::star::sheet::XViewFreezable>(sheet.controller);
        for (int tries = 0; tries < kTries; ++tries) {
            panes->freezeAtPosition(column - 1, row - 1);
            const bool there = sheet.IsThere();
            if (there && panes->hasFrozenPanes()) break;
            if (!there) panes->freezeAtPosition(0, 0); // of another sheet
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            sheet.Show();
        }
    });
}

void Worksheet::SetGridLines(bool shown) {
    document_->Run([&](const Model& model) {
        const SheetInView sheet(model, number_);
        // The view's own setting would go for all sheets, and into no file.
        const auto named = Need<com::sun::star::container::XNamed>(SheetOf(model, number_));
        if (ShowsGridLines(sheet.controller, named->getName()) != shown)
            Dispatch(document_->connection(), model, ".uno:ToggleSheetGrid");
    });
}

Chart Worksheet::AddChart(ChartKind kind, const Range& data, bool columnHeaders, bool rowHeaders, const QRectF& place) {
    return Chart::Add(document_, number_, kind, data, columnHeaders, rowHeaders, place);
}

int Worksheet::ChartCount() const {
    return Chart::CountOn(document_, number_);
}

Chart Worksheet::ChartAt(int number) const {
    return Chart::At(document_, number_, number);
}

Shape Worksheet::AddPicture(const QString& name, const QByteArray& picture, const QRectF& place) {
    return Shape::AddPicture(document_, number_, name, picture, place);
}

Shape Worksheet::AddShape(const QString& name, ShapeKind kind, const QRectF& place) {
    return Shape::Add(document_, number_, name, kind, place);
}

bool Worksheet::HasShape(const QString& name) const {
    return Shape::IsOn(document_, number_, name);
}

Shape Worksheet::ShapeNamed(const QString& name) const {
    return Shape::Named(document_, number_, name);
}

std::vector<QString> Worksheet::ShapeNames() const {
    return Shape::NamesOn(document_, number_);
}

} // namespace tessaro::office
