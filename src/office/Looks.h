#pragma once

#include "office/CellStyle.h"

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <functional>
#include <map>
#include <string>

namespace tessaro::office {

/// Properties in the order of their names, as the process wants several at once.
struct PropertyList {
    com::sun::star::uno::Sequence<rtl::OUString> names;
    com::sun::star::uno::Sequence<com::sun::star::uno::Any> values;
};

/// Properties by name.
using SortedProperties = std::map<std::string, com::sun::star::uno::Any>;
[[nodiscard]] PropertyList ListOf(const SortedProperties& sorted);

/// A look as properties of cells. `colour` gives the number of a palette slot.
[[nodiscard]] PropertyList LookProperties(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model,
                                          const CellStyle& style, const std::function<int(int)>& colour);
/// The part of a look that a piece of text or a chart can have, as properties of characters.
[[nodiscard]] SortedProperties FontProperties(const CellStyle& style, const std::function<int(int)>& colour);

/// The document's key of a number format.
[[nodiscard]] sal_Int32 NumberFormatKey(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model,
                                        const QString& code);

} // namespace tessaro::office
