#include "office/PendingWrites.h"

#include "office/Convert.h"
#include "office/Looks.h"
#include "office/SheetAccess.h"

#include <cmath>
#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <exception>

namespace tessaro::office {

namespace {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using Model = DocumentModel;

/// Rows that go over in one call.
constexpr std::size_t kRowsAtOnce = 8192;

/// Always a number or a text: a void Any would end the process. An empty text empties the cell; so does a number that
/// isn't finite, because the program stores errors as such bit patterns.
Any AnyOf(const Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell); number && std::isfinite(*number)) return Any(*number);
    if (const auto* text = std::get_if<QString>(&cell)) return Any(ToUno(*text));
    if (const auto* truth = std::get_if<bool>(&cell)) return Any(*truth ? 1.0 : 0.0);
    return Any(rtl::OUString());
}

Sequence<Sequence<Any>> RowsOf(const Block& cells, std::size_t first, std::size_t count) {
    Sequence<Sequence<Any>> rows(static_cast<sal_Int32>(count));
    auto* const targets = rows.getArray(); // each call asks anew whether the sequence is shared
    for (std::size_t row = 0; row < count; ++row) {
        const auto& source = cells[first + row];
        targets[row].realloc(static_cast<sal_Int32>(source.size()));
        Any* const target = targets[row].getArray();
        for (std::size_t column = 0; column < source.size(); ++column) {
            const bool asAbove = row > 0 && source[column] == cells[first + row - 1][column];
            target[column] = asAbove ? targets[row - 1].getConstArray()[column] : AnyOf(source[column]);
        }
    }
    return rows;
}

void FlushValues(const Model& model, const PendingWrites::Values& values) {
    const auto& place = values.place;
    for (std::size_t first = 0; first < values.cells.size(); first += kRowsAtOnce) {
        const std::size_t count = std::min(kRowsAtOnce, values.cells.size() - first);
        const int row = place.row + static_cast<int>(first);
        Need<com::sun::star::sheet::XCellRangeData>(
            RangeOf(model, place.sheet, row, place.column, row + static_cast<int>(count) - 1, place.lastColumn))
            ->setDataArray(RowsOf(values.cells, first, count));
    }
}

void FlushLook(const Model& model, const PendingWrites::Look& look, const std::function<int(int)>& colour) {
    const auto ranges = Need<com::sun::star::sheet::XSheetCellRangeContainer>(
        model.Factory()->createInstance("com.sun.star.sheet.SheetCellRanges"));
    Sequence<com::sun::star::table::CellRangeAddress> addresses(static_cast<sal_Int32>(look.places.size()));
    sal_Int32 number = 0;
    for (const auto& place : look.places)
        addresses.getArray()[number++] = {static_cast<sal_Int16>(place.sheet - 1), place.column - 1, place.row - 1,
                                          place.lastColumn - 1, place.lastRow - 1};
    ranges->addRangeAddresses(addresses, false);
    const PropertyList list = LookProperties(model, look.style, colour);
    Need<com::sun::star::beans::XMultiPropertySet>(ranges)->setPropertyValues(list.names, list.values);
}

} // namespace

// A cell after cell that somebody writes becomes a row, and row after row a block.
void PendingWrites::Write(int sheet, int row, int column, const Block& block) {
    if (block.empty() || block.front().empty()) return;
    const int width = static_cast<int>(block.front().size());
    const int height = static_cast<int>(block.size());
    cells_ += block.size() * block.front().size();
    if (!values.empty() && values.back().place.sheet == sheet) {
        Values& last = values.back();
        if (height == 1 && last.cells.size() == 1 && last.place.row == row && last.place.lastColumn + 1 == column) {
            last.cells.front().insert(last.cells.front().end(), block.front().begin(), block.front().end());
            last.place.lastColumn += width;
            return;
        }
        if (last.place.lastRow + 1 == row && last.place.column == column &&
            last.place.lastColumn == column + width - 1) {
            last.cells.insert(last.cells.end(), block.begin(), block.end());
            last.place.lastRow += height;
            return;
        }
        // The row that has just become complete joins the block above it.
        if (values.size() > 1) {
            Values& above = values[values.size() - 2];
            if (above.place.sheet == sheet && above.place.lastRow + 1 == last.place.row &&
                above.place.column == last.place.column && above.place.lastColumn == last.place.lastColumn) {
                above.cells.insert(above.cells.end(), last.cells.begin(), last.cells.end());
                above.place.lastRow = last.place.lastRow;
                values.pop_back();
            }
        }
    }
    values.push_back({{sheet, row, column, row + height - 1, column + width - 1}, block});
}

// A look joins an earlier one of the same kind unless a look between them touches the same cells: the later one wins.
void PendingWrites::Style(const Place& place, const CellStyle& style) {
    ++places_;
    for (auto look = looks.rbegin(); look != looks.rend(); ++look) {
        if (look->style == style) {
            look->places.push_back(place);
            return;
        }
        const bool meets = std::any_of(look->places.begin(), look->places.end(),
                                       [&place](const Place& other) { return other.Meets(place); });
        if (meets) break;
    }
    looks.push_back({style, {place}});
}

void PendingWrites::Flush(const Model& model, const std::function<int(int)>& colour) {
    const auto writtenValues = std::move(values);
    const auto writtenLooks = std::move(looks);
    values.clear();
    looks.clear();
    cells_ = places_ = 0;
    std::exception_ptr failure;
    const auto attempt = [&failure](const auto& flush) {
        try {
            flush();
        } catch (const com::sun::star::lang::DisposedException&) {
            throw;
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
    };
    for (const Values& block : writtenValues)
        attempt([&] { FlushValues(model, block); });
    for (const Look& look : writtenLooks)
        attempt([&] { FlushLook(model, look, colour); });
    if (failure) std::rethrow_exception(failure);
}

} // namespace tessaro::office
