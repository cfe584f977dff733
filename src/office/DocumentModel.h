#pragma once

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

namespace tessaro::office {

/// The model of an open document, on the worker thread. Each question to the process is a call over the pipe, so what
/// is asked for again and again is kept: the list of sheets and the factory. Both follow every change of the document.
class DocumentModel final : public com::sun::star::uno::Reference<com::sun::star::frame::XModel> {
  public:
    using com::sun::star::uno::Reference<com::sun::star::frame::XModel>::Reference;

    /// Throws when the document is no workbook.
    [[nodiscard]] const com::sun::star::uno::Reference<com::sun::star::container::XIndexAccess>& Sheets() const {
        if (!sheets_.is()) {
            const com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheetDocument> book(
                *this, com::sun::star::uno::UNO_QUERY_THROW);
            sheets_.set(book->getSheets(), com::sun::star::uno::UNO_QUERY_THROW);
        }
        return sheets_;
    }
    [[nodiscard]] const com::sun::star::uno::Reference<com::sun::star::lang::XMultiServiceFactory>& Factory() const {
        if (!factory_.is()) factory_.set(*this, com::sun::star::uno::UNO_QUERY_THROW);
        return factory_;
    }

  private:
    mutable com::sun::star::uno::Reference<com::sun::star::container::XIndexAccess> sheets_;
    mutable com::sun::star::uno::Reference<com::sun::star::lang::XMultiServiceFactory> factory_;
};

} // namespace tessaro::office
