#pragma once

#include <QString>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <initializer_list>
#include <rtl/ustring.hxx>
#include <utility>

namespace tessaro::office {

namespace uno = com::sun::star::uno;

inline rtl::OUString ToUno(const QString& text) {
    return {reinterpret_cast<const sal_Unicode*>(text.utf16()), static_cast<sal_Int32>(text.size())};
}

inline QString FromUno(const rtl::OUString& text) {
    return QString(reinterpret_cast<const QChar*>(text.getStr()), text.getLength());
}

inline rtl::OUString Ascii(const char* text) {
    return rtl::OUString::createFromAscii(text);
}

inline com::sun::star::beans::PropertyValue Property(const char* name, const uno::Any& value) {
    com::sun::star::beans::PropertyValue property;
    property.Name = Ascii(name);
    property.Value = value;
    return property;
}

inline uno::Sequence<com::sun::star::beans::PropertyValue>
Properties(std::initializer_list<com::sun::star::beans::PropertyValue> list) {
    uno::Sequence<com::sun::star::beans::PropertyValue> sequence(static_cast<sal_Int32>(list.size()));
    sal_Int32 place = 0;
    for (const auto& property : list)
        sequence.getArray()[place++] = property;
    return sequence;
}

/// The interface, or an exception when the object hasn't got it.
template <class Interface> uno::Reference<Interface> Need(const uno::BaseReference& object) {
    return uno::Reference<Interface>(object, uno::UNO_QUERY_THROW);
}

/// "file:///…" for a path with any characters.
[[nodiscard]] rtl::OUString FileUrl(const QString& path);

} // namespace tessaro::office
