#pragma once

#include "office/Document.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <com/sun/star/graphic/XGraphic.hpp>
#include <com/sun/star/uno/XInterface.hpp>
#include <functional>
#include <thread>

namespace tessaro::office {

// Pictures in and out of a document, and its selection; all on the worker thread.

/// Selects an object in the document's view.
void SelectIn(const Document::Model& model,
              const com::sun::star::uno::Reference<com::sun::star::uno::XInterface>& what);
/// What is selected, drawn as "image/x-emf" or "image/png".
[[nodiscard]] QByteArray SelectionAs(const Document::Model& model, const QString& mimeType);
/// Runs a command of the program (".uno:Copy") on the document's view.
void Dispatch(const ProcessLink& connection, const Document::Model& model, const char* command);
/// The shape that `find` gives, drawn as "image/png" of this width in pixels, or "image/x-emf".
[[nodiscard]] QByteArray
ShapeAs(const ProcessLink& connection,
        const std::function<com::sun::star::uno::Reference<com::sun::star::uno::XInterface>()>& find,
        const QString& mimeType, int pixelWidth);
/// What `look` finds, an optional; tried again a moment later when it finds nothing, since the handle of a shape that
/// is just being let go may hide the shape.
template <class Look> auto LookAgain(const Look& look) {
    constexpr int kLooks = 3;
    for (int looks = 1;; ++looks) {
        if (auto found = look(); found || looks == kLooks) return found;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}
/// A picture as the program holds it. Failure::Call when it can't be read.
[[nodiscard]] com::sun::star::uno::Reference<com::sun::star::graphic::XGraphic> GraphicOf(const ProcessLink& connection,
                                                                                          const QByteArray& picture);
/// Makes a hidden document's view count as shown, since only then its view settings go into the file.
void KeepView(const Document::Model& model);

/// 1/100 mm, the program's unit of length, to points and back.
constexpr double kPoint = 2540.0 / 72;

} // namespace tessaro::office
