#include "office/Range.h"

#include "office/ColumnLetters.h"
#include "office/Convert.h"
#include "office/Document.h"
#include "office/Looks.h"
#include "office/SheetAccess.h"
#include "office/Transfer.h"

#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetAnnotationAnchor.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/table/TableSortField.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XSortable.hpp>

namespace tessaro::office {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using Model = Document::Model;

namespace {

constexpr sal_Int16 kSuperscriptRise = 33;  ///< per cent of the font's height
constexpr sal_Int8 kSuperscriptHeight = 58; ///< per cent

} // namespace

Range::Range(std::shared_ptr<Document> document, int sheet, int row, int column, int lastRow, int lastColumn)
    : document_(std::move(document)), sheet_(sheet), row_(row), column_(column), lastRow_(lastRow),
      lastColumn_(lastColumn) {
    if (row < 1 || column < 1 || lastRow < row || lastColumn < column || lastRow > kMaxRows || lastColumn > kMaxColumns)
        throw Error(Failure::Limit, QStringLiteral("no such cells: row %1 to %2, column %3 to %4")
                                        .arg(row)
                                        .arg(lastRow)
                                        .arg(column)
                                        .arg(lastColumn));
}

QString Range::Address() const {
    const QString first = QStringLiteral("$%1$%2").arg(ColumnLetters(column_)).arg(row_);
    if (row_ == lastRow_ && column_ == lastColumn_) return first;
    return first + QStringLiteral(":$%1$%2").arg(ColumnLetters(lastColumn_)).arg(lastRow_);
}

void Range::SetValue(const Cell& value) {
    document_->Write(sheet_, row_, column_,
                     Block(static_cast<std::size_t>(lastRow_ - row_ + 1),
                           std::vector<Cell>(static_cast<std::size_t>(lastColumn_ - column_ + 1), value)));
}

void Range::SetValues(const Block& values) {
    document_->Write(sheet_, row_, column_, values);
}

Block Range::Values() const {
    Block block;
    document_->Run([&](const Model& model) {
        const auto range = RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_);
        const auto rows = Need<com::sun::star::sheet::XCellRangeData>(range)->getDataArray();
        for (sal_Int32 row = 0; row < rows.getLength(); ++row) {
            std::vector<Cell> cells;
            for (sal_Int32 column = 0; column < rows[row].getLength(); ++column) {
                const Any& value = rows[row][column];
                double number = 0;
                rtl::OUString text;
                if (value >>= number)
                    cells.emplace_back(number);
                else if ((value >>= text) && text.isEmpty())
                    cells.emplace_back();
                else if (value.hasValue())
                    cells.emplace_back(FromUno(text));
                else // an error: what the cell shows
                    cells.emplace_back(
                        FromUno(Need<com::sun::star::text::XText>(range->getCellByPosition(column, row))->getString()));
            }
            block.push_back(std::move(cells));
        }
    });
    return block;
}

Cell Range::Value() const {
    return Range(document_, sheet_, row_, column_, row_, column_).Values().front().front();
}

QString Range::Text() const {
    QString text;
    document_->Run([&](const Model& model) {
        text = FromUno(Need<com::sun::star::text::XText>(
                           RangeOf(model, sheet_, row_, column_, row_, column_)->getCellByPosition(0, 0))
                           ->getString());
    });
    return text;
}

void Range::ClearContents() {
    document_->Run([&](const Model& model) {
        namespace flags = com::sun::star::sheet::CellFlags;
        Need<com::sun::star::sheet::XSheetOperation>(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_))
            ->clearContents(flags::VALUE | flags::DATETIME | flags::STRING | flags::FORMULA);
    });
}

void Range::SetStyle(const CellStyle& style) {
    document_->Style(sheet_, row_, column_, lastRow_, lastColumn_, style);
}

void Range::Merge() {
    document_->Run([&](const Model& model) {
        Need<com::sun::star::util::XMergeable>(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_))
            ->merge(true);
    });
}

void Range::AutoFitColumns() {
    document_->Run([&](const Model& model) {
        const auto columns =
            Need<com::sun::star::table::XColumnRowRange>(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_))
                ->getColumns();
        Need<com::sun::star::beans::XPropertySet>(columns)->setPropertyValue("OptimalWidth", Any(true));
    });
}

void Range::AutoFitRows() {
    document_->Run([&](const Model& model) {
        const auto rows =
            Need<com::sun::star::table::XColumnRowRange>(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_))
                ->getRows();
        Need<com::sun::star::beans::XPropertySet>(rows)->setPropertyValue("OptimalHeight", Any(true));
    });
}

void Range::SetRichText(const std::vector<TextRun>& runs) {
    QString whole;
    for (const TextRun& run : runs)
        whole += run.text;
    Document::CheckText(whole);
    document_->Run([&](const Model& model) {
        const auto text = Need<com::sun::star::text::XText>(
            RangeOf(model, sheet_, row_, column_, row_, column_)->getCellByPosition(0, 0));
        text->setString(rtl::OUString());
        for (const TextRun& run : runs) {
            const auto cursor = text->createTextCursor();
            cursor->gotoEnd(false);
            text->insertString(Need<com::sun::star::text::XTextRange>(cursor), ToUno(run.text), false);
            cursor->gotoEnd(false);
            cursor->goLeft(static_cast<sal_Int16>(run.text.size()), true);
            SortedProperties look =
                FontProperties(run.style, [this](int slot) { return document_->ColorNumber(slot); });
            look["CharEscapement"] = Any(run.superscript ? kSuperscriptRise : sal_Int16(0));
            look["CharEscapementHeight"] = Any(run.superscript ? kSuperscriptHeight : sal_Int8(100));
            const PropertyList list = ListOf(look);
            Need<com::sun::star::beans::XMultiPropertySet>(cursor)->setPropertyValues(list.names, list.values);
        }
    });
}

void Range::AddComment(const QString& text) {
    document_->Run([&](const Model& model) {
        const auto cell = RangeOf(model, sheet_, row_, column_, row_, column_)->getCellByPosition(0, 0);
        const auto address = Need<com::sun::star::sheet::XCellAddressable>(cell)->getCellAddress();
        Need<com::sun::star::sheet::XSheetAnnotationsSupplier>(SheetOf(model, sheet_))
            ->getAnnotations()
            ->insertNew(address, ToUno(text));
    });
}

QString Range::Comment() const {
    QString text;
    document_->Run([&](const Model& model) {
        const auto anchor = Need<com::sun::star::sheet::XSheetAnnotationAnchor>(
            RangeOf(model, sheet_, row_, column_, row_, column_)->getCellByPosition(0, 0));
        const Reference<com::sun::star::text::XSimpleText> note(anchor->getAnnotation(),
                                                                com::sun::star::uno::UNO_QUERY);
        if (note.is()) text = FromUno(note->getString());
    });
    return text;
}

namespace {

void Sort(const Reference<com::sun::star::table::XCellRange>& range, const std::vector<SortKey>& keys, bool hasHeader,
          bool columns) {
    Sequence<com::sun::star::table::TableSortField> fields(static_cast<sal_Int32>(keys.size()));
    sal_Int32 place = 0;
    for (const SortKey& key : keys) {
        auto& field = fields.getArray()[place++];
        field.Field = key.index - 1;
        field.IsAscending = key.ascending;
        field.IsCaseSensitive = false;
        field.FieldType = com::sun::star::table::TableSortFieldType_AUTOMATIC;
    }
    Need<com::sun::star::util::XSortable>(range)->sort(
        Properties({Property("SortFields", Any(fields)), Property("ContainsHeader", Any(hasHeader)),
                    Property("BindFormatsToContent", Any(true)), Property("IsSortColumns", Any(columns))}));
}

} // namespace

void Range::SortRows(const std::vector<SortKey>& keys, bool hasHeader) {
    document_->Run([&](const Model& model) {
        Sort(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_), keys, hasHeader, false);
    });
}

void Range::SortColumns(const std::vector<SortKey>& keys) {
    document_->Run([&](const Model& model) {
        Sort(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_), keys, false, true);
    });
}

void Range::Copy() const {
    document_->Run([&](const Model& model) {
        SelectIn(model, RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_));
        Dispatch(document_->connection(), model, ".uno:Copy");
    });
}

void Range::Select() const {
    document_->Run(
        [&](const Model& model) { SelectIn(model, RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_)); });
}

QSizeF Range::Size() const {
    QSizeF points;
    document_->Run([&](const Model& model) {
        com::sun::star::awt::Size size;
        Need<com::sun::star::beans::XPropertySet>(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_))
            ->getPropertyValue("Size") >>= size;
        points = {size.Width / kPoint, size.Height / kPoint};
    });
    return points;
}

QByteArray Range::AsPicture(const QString& mimeType) const {
    QByteArray picture;
    document_->Run([&](const Model& model) {
        SelectIn(model, RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_));
        picture = SelectionAs(model, mimeType);
    });
    return picture;
}

} // namespace tessaro::office
