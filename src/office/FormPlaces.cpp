#include "office/FormPlaces.h"

#include "office/Convert.h"
#include "office/SheetAccess.h"
#include "office/Transfer.h"

#include <cmath>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/text/WritingMode2.hpp>

namespace tessaro::office {

using com::sun::star::uno::Reference;

namespace {

bool IsRightToLeft(const DocumentModel& model, int sheet) {
    sal_Int16 direction = com::sun::star::text::WritingMode2::LR_TB;
    Need<com::sun::star::beans::XPropertySet>(SheetOf(model, sheet))->getPropertyValue("TableLayout") >>= direction;
    return direction == com::sun::star::text::WritingMode2::RL_TB;
}

} // namespace

sal_Int32 Length(double points) {
    return static_cast<sal_Int32>(std::lround(points * kPoint));
}

com::sun::star::awt::Rectangle RectangleOn(const DocumentModel& model, int sheet, const QRectF& place) {
    const double x = IsRightToLeft(model, sheet) ? -place.x() - place.width() : place.x();
    return {Length(x), Length(place.y()), Length(place.width()), Length(place.height())};
}

QRectF PlaceOn(const DocumentModel& model, int sheet, const Reference<com::sun::star::drawing::XShape>& shape) {
    const auto position = shape->getPosition();
    const auto size = shape->getSize();
    const double x = IsRightToLeft(model, sheet) ? -position.X - size.Width : position.X;
    return {x / kPoint, position.Y / kPoint, size.Width / kPoint, size.Height / kPoint};
}

void Put(const DocumentModel& model, int sheet, const Reference<com::sun::star::drawing::XShape>& shape,
         const QRectF& place) {
    const auto rectangle = RectangleOn(model, sheet, place);
    shape->setPosition({rectangle.X, rectangle.Y});
    shape->setSize({rectangle.Width, rectangle.Height});
}

} // namespace tessaro::office
