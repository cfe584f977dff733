#pragma once

#include "office/DocumentModel.h"

#include <QRectF>

#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/drawing/XShape.hpp>

/// Where forms and charts stand on sheets, on the worker thread.
namespace tessaro::office {

/// The process's own length for points.
[[nodiscard]] sal_Int32 Length(double points);
/// Where a form or chart stands on a sheet: in points from the corner of its first cell, as the sheet is read, and as
/// the process has it. Where columns go from right to left, its x is below 0.
[[nodiscard]] com::sun::star::awt::Rectangle RectangleOn(const DocumentModel& model, int sheet, const QRectF& place);
[[nodiscard]] QRectF PlaceOn(const DocumentModel& model, int sheet,
                             const com::sun::star::uno::Reference<com::sun::star::drawing::XShape>& shape);
void Put(const DocumentModel& model, int sheet,
         const com::sun::star::uno::Reference<com::sun::star::drawing::XShape>& shape, const QRectF& place);

} // namespace tessaro::office
