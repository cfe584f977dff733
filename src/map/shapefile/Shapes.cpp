#include "map/shapefile/Shapes.h"

#include "map/shapefile/ShapefileError.h"
#include "session/Messages.h"

#include <algorithm>

namespace tessaro {

namespace {

/// The place of an index that counts from 1.
template <class Items> std::size_t PlaceOf(const Items& items, qint32 index, const char* source) {
    if (index < 1 || static_cast<std::size_t>(index) > items.size())
        throw ShapefileError(ShapefileErrors::SubscriptOutOfRange, QStringLiteral("Subscript out of range"),
                             QLatin1String(source));
    return static_cast<std::size_t>(index) - 1;
}

template <class Kind>
std::shared_ptr<Kind> CastOf(const ShapeObjectPointer& object, const char* text, const char* source) {
    auto cast = std::dynamic_pointer_cast<Kind>(object);
    if (!cast) throw ShapefileError(ShapefileErrors::WrongObject, QLatin1String(text), QLatin1String(source));
    return cast;
}

} // namespace

void CRect::Make(const CPoint& upperLeft, const CPoint& lowerRight) {
    MakeXY(upperLeft.X(), upperLeft.Y(), lowerRight.X(), lowerRight.Y());
}

void CRect::MakeXY(double left, double top, double right, double bottom) {
    Left(left);
    Top(top);
    Right(right);
    Bottom(bottom);
}

std::shared_ptr<CPoint> CPart::Item(qint32 index) const {
    return points_[PlaceOf(points_, index, "CPart::Item")];
}

void CPart::Remove(qint32 index) {
    points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(PlaceOf(points_, index, "CPart::Remove")));
    if (!points_.empty()) box_.Make(*points_.back(), *points_.back());
}

void CPart::Add(const ShapeObjectPointer& object) {
    auto point = CastOf<CPoint>(object, "CPart can only accept objects of type CPoint", "CPart::Add");
    if (points_.empty())
        box_.Make(*point, *point);
    else
        GrowBox(*point);
    points_.push_back(std::move(point));
}

void CPart::GrowBox(const CPoint& point) {
    if (point.X() < Left())
        Left(point.X());
    else if (point.X() > Right())
        Right(point.X());
    if (point.Y() < Bottom())
        Bottom(point.Y());
    else if (point.Y() > Top())
        Top(point.Y());
}

std::shared_ptr<CPart> CPolygon::Item(qint32 index) const {
    return parts_[PlaceOf(parts_, index, "CPolygon::Item")];
}

void CPolygon::Add(const ShapeObjectPointer& object) {
    auto part = CastOf<CPart>(object, "CPolygon Add can only accept objects of type CPart", "CPolygon::Add");
    if (parts_.empty())
        box_.MakeXY(part->Left(), part->Top(), part->Right(), part->Bottom());
    else
        box_.MakeXY(std::min(Left(), part->Left()), std::max(Top(), part->Top()), std::max(Right(), part->Right()),
                    std::min(Bottom(), part->Bottom()));
    parts_.push_back(std::move(part));
}

void CPolygon::Remove(qint32 index) {
    parts_.erase(parts_.begin() + static_cast<std::ptrdiff_t>(PlaceOf(parts_, index, "C_Polygon::Remove")));
}

double CPolygon::Area() const {
    ShowMessage(QStringLiteral("NOT IMPLEMENTED"), MessageType::Ok, MessageIcon::Warning, {}, false);
    return 0;
}

} // namespace tessaro
