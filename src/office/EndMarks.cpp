#include "office/Convert.h"
#include "office/Document.h"
#include "office/ProcessLink.h"
#include "office/SheetAccess.h"
#include "office/Worksheet.h"

#include <com/sun/star/document/XActionLockable.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScript.hpp>
#include <com/sun/star/script/provider/XScriptProvider.hpp>
#include <com/sun/star/script/provider/theMasterScriptProviderFactory.hpp>

namespace tessaro::office {

namespace {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using Model = Document::Model;
namespace script = com::sun::star::script;

constexpr const char* kLibrary = "TessaroMarks";
constexpr const char* kModule = "Marks";

/// Text within a cell takes some ten calls over the pipe; within the process they cost nothing.
constexpr const char* kSource = R"(Sub Mark(sheet, columns, rows, lengths, colour, regular)
  Dim i, cursor
  For i = LBound(rows) To UBound(rows)
    cursor = sheet.getCellByPosition(columns(i), rows(i)).createTextCursor()
    cursor.gotoEnd(False)
    cursor.goLeft(lengths(i), True)
    cursor.CharEscapement = 33
    cursor.CharEscapementHeight = 58
    cursor.CharColor = colour
    If regular Then
      cursor.CharWeight = com.sun.star.awt.FontWeight.NORMAL
      cursor.CharPosture = com.sun.star.awt.FontSlant.NONE
    End If
  Next
End Sub
)";

/// Puts the procedure into a library of the process, which no document of ours holds.
void Install(const ProcessLink& connection) {
    const Reference<script::XLibraryContainer> libraries(
        connection.Service("com.sun.star.script.ApplicationScriptLibraryContainer"),
        com::sun::star::uno::UNO_QUERY_THROW);
    if (libraries->hasByName(Ascii(kLibrary))) libraries->removeLibrary(Ascii(kLibrary));
    libraries->createLibrary(Ascii(kLibrary))->insertByName(Ascii(kModule), Any(Ascii(kSource)));
}

Reference<script::provider::XScript> Procedure(const ProcessLink& connection) {
    const auto provider = script::provider::theMasterScriptProviderFactory::get(connection.Context())
                              ->createScriptProvider(Any(Ascii("user")));
    return provider->getScript(Ascii("vnd.sun.star.script:") + Ascii(kLibrary) + Ascii(".") + Ascii(kModule) +
                               Ascii(".Mark?language=Basic&location=application"));
}

Sequence<sal_Int32> Numbers(const std::vector<EndMark>& marks, int EndMark::*part, int zero) {
    Sequence<sal_Int32> numbers(static_cast<sal_Int32>(marks.size()));
    for (std::size_t i = 0; i < marks.size(); ++i)
        numbers.getArray()[i] = marks[i].*part - zero;
    return numbers;
}

} // namespace

void Worksheet::MarkEnds(const std::vector<EndMark>& marks, int colorIndex, bool regular) {
    if (marks.empty()) return;
    document_->Run([&](const Model& model) {
        const ProcessLink& connection = document_->connection();
        Install(connection);
        Sequence<Any> arguments(6);
        arguments.getArray()[0] <<= SheetOf(model, number_);
        arguments.getArray()[1] <<= Numbers(marks, &EndMark::column, 1);
        arguments.getArray()[2] <<= Numbers(marks, &EndMark::row, 1);
        arguments.getArray()[3] <<= Numbers(marks, &EndMark::length, 0);
        arguments.getArray()[4] <<= static_cast<sal_Int32>(document_->ColorNumber(colorIndex));
        arguments.getArray()[5] <<= regular;
        Sequence<sal_Int16> places;
        Sequence<Any> results;
        const Reference<com::sun::star::document::XActionLockable> lock(model, com::sun::star::uno::UNO_QUERY);
        if (lock.is()) lock->addActionLock();
        try {
            Procedure(connection)->invoke(arguments, places, results);
        } catch (...) {
            if (lock.is()) lock->removeActionLock();
            throw;
        }
        if (lock.is()) lock->removeActionLock();
    });
}

} // namespace tessaro::office
