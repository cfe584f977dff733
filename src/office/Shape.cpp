#include "office/Shape.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/FormPlaces.h"
#include "office/Looks.h"
#include "office/SheetAccess.h"
#include "office/Transfer.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImage>

#include <com/sun/star/awt/XBitmap.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/drawing/BitmapMode.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>
#include <utility>

namespace tessaro::office {

namespace {

using com::sun::star::beans::XPropertySet;
using com::sun::star::drawing::XShape;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using Model = Document::Model;

auto PageOf(const Model& model, int sheet) {
    return Need<com::sun::star::drawing::XDrawPageSupplier>(SheetOf(model, sheet))->getDrawPage();
}

Reference<XShape> Find(const Model& model, int sheet, const QString& name) {
    const auto page = PageOf(model, sheet);
    for (sal_Int32 place = 0; place < page->getCount(); ++place) {
        Reference<XShape> shape;
        page->getByIndex(place) >>= shape;
        const Reference<com::sun::star::container::XNamed> named(shape, com::sun::star::uno::UNO_QUERY);
        if (named.is() && FromUno(named->getName()) == name) return shape;
    }
    return {};
}

Reference<XShape> Known(const Model& model, int sheet, const QString& name) {
    const auto shape = Find(model, sheet, name);
    if (!shape.is()) throw Error(Failure::Call, QStringLiteral("there is no shape \"%1\"").arg(name));
    return shape;
}

constexpr std::pair<ShapeKind, const char*> kGeometries[] = {{ShapeKind::Rectangle, "rectangle"},
                                                             {ShapeKind::Ellipse, "ellipse"},
                                                             {ShapeKind::Triangle, "isosceles-triangle"},
                                                             {ShapeKind::Cross, "cross"},
                                                             {ShapeKind::Diamond, "diamond"},
                                                             {ShapeKind::Star, "star5"},
                                                             {ShapeKind::Hexagon, "hexagon"},
                                                             {ShapeKind::RoundRectangle, "round-rectangle"}};

const char* GeometryOf(ShapeKind kind) {
    for (const auto& [each, name] : kGeometries)
        if (each == kind) return name;
    return "rectangle";
}

sal_Int32 NumberOf(const QColor& color) {
    return static_cast<sal_Int32>(color.rgb() & 0xFFFFFFU);
}

QImage TileOf(const FillPattern& pattern, const QColor& foreground, const QColor& background) {
    constexpr int kSide = 8;
    QImage tile(kSide, kSide, QImage::Format_ARGB32);
    tile.fill(background.isValid() ? background : QColor(Qt::transparent));
    for (int row = 0; row < kSide; ++row)
        for (int column = 0; column < kSide; ++column)
            if ((pattern.at(static_cast<std::size_t>(row)) >> (kSide - 1 - column) & 1) != 0)
                tile.setPixelColor(column, row, foreground);
    return tile;
}

/// The same for the same tile alone.
QString TileName(const QImage& tile) {
    const auto bits = QByteArrayView(tile.constBits(), tile.sizeInBytes());
    return QStringLiteral("Tessaro ") +
           QString::fromLatin1(QCryptographicHash::hash(bits.toByteArray(), QCryptographicHash::Md5).toHex());
}

QByteArray PngOf(const QImage& tile) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    tile.save(&buffer, "PNG");
    return bytes;
}

using ShapeProperties = Reference<XPropertySet>;

void Fill(const ShapeProperties& shape, const QColor& color) {
    using namespace com::sun::star::drawing;
    shape->setPropertyValue("FillStyle", Any(color.isValid() ? FillStyle_SOLID : FillStyle_NONE));
    if (color.isValid()) shape->setPropertyValue("FillColor", Any(NumberOf(color)));
}

void DrawOutline(const ShapeProperties& shape, const QColor& color, double points) {
    using namespace com::sun::star::drawing;
    shape->setPropertyValue("LineStyle", Any(color.isValid() ? LineStyle_SOLID : LineStyle_NONE));
    if (!color.isValid()) return;
    shape->setPropertyValue("LineColor", Any(NumberOf(color)));
    shape->setPropertyValue("LineWidth", Any(Length(points)));
}

// The bitmap is set by its name in the document's bitmap table: one that is set on the shape itself is saved as the
// bitmap of another shape.
void FillWithTile(const ProcessLink& connection, const Model& model, const ShapeProperties& shape, const QImage& tile) {
    const rtl::OUString name = ToUno(TileName(tile));
    const auto& factory = model.Factory();
    const auto table =
        Need<com::sun::star::container::XNameContainer>(factory->createInstance("com.sun.star.drawing.BitmapTable"));
    if (!table->hasByName(name))
        table->insertByName(name, Any(Need<com::sun::star::awt::XBitmap>(GraphicOf(connection, PngOf(tile)))));
    shape->setPropertyValue("FillStyle", Any(com::sun::star::drawing::FillStyle_BITMAP));
    shape->setPropertyValue("FillBitmapName", Any(name));
    shape->setPropertyValue("FillBitmapMode", Any(com::sun::star::drawing::BitmapMode_REPEAT));
}

ShapeProperties Draw(const Model& model, int sheet, const QString& name, ShapeKind kind, const QRectF& place) {
    const auto& factory = model.Factory();
    const auto shape = Need<XShape>(factory->createInstance("com.sun.star.drawing.CustomShape"));
    PageOf(model, sheet)->add(shape);
    Put(model, sheet, shape, place);
    const auto properties = Need<XPropertySet>(shape);
    properties->setPropertyValue("CustomShapeGeometry",
                                 Any(Properties({Property("Type", Any(Ascii(GeometryOf(kind))))})));
    // Or the shape would shrink to its text.
    properties->setPropertyValue("TextAutoGrowHeight", Any(false));
    properties->setPropertyValue("TextAutoGrowWidth", Any(false));
    Need<com::sun::star::container::XNamed>(shape)->setName(ToUno(name));
    return properties;
}

com::sun::star::drawing::FillStyle FillStyleOf(const ShapeProperties& shape) {
    com::sun::star::drawing::FillStyle style = com::sun::star::drawing::FillStyle_NONE;
    shape->getPropertyValue("FillStyle") >>= style;
    return style;
}

} // namespace

Shape Shape::AddPicture(const std::shared_ptr<Document>& document, int sheet, const QString& name,
                        const QByteArray& picture, const QRectF& place) {
    document->Run([&](const Model& model) {
        const auto& factory = model.Factory();
        const auto shape = Need<XShape>(factory->createInstance("com.sun.star.drawing.GraphicObjectShape"));
        Need<XPropertySet>(shape)->setPropertyValue("Graphic", Any(GraphicOf(document->connection(), picture)));
        PageOf(model, sheet)->add(shape);
        Put(model, sheet, shape, place);
        Need<com::sun::star::container::XNamed>(shape)->setName(ToUno(name));
    });
    return {document, sheet, name};
}

Shape Shape::Add(const std::shared_ptr<Document>& document, int sheet, const QString& name, ShapeKind kind,
                 const QRectF& place) {
    document->Run([&](const Model& model) { Draw(model, sheet, name, kind, place); });
    return {document, sheet, name};
}

void Shape::AddAll(const std::shared_ptr<Document>& document, int sheet, const std::vector<ShapePlan>& plans) {
    document->Run([&](const Model& model) {
        for (const ShapePlan& plan : plans) {
            const ShapeProperties shape = Draw(model, sheet, plan.name, plan.kind, plan.place);
            const ShapeLook& look = plan.look;
            if (look.pattern)
                FillWithTile(document->connection(), model, shape, TileOf(*look.pattern, look.fill, look.ground));
            else
                Fill(shape, look.fill);
            DrawOutline(shape, look.line, look.linePoints);
        }
    });
}

bool Shape::IsOn(const std::shared_ptr<Document>& document, int sheet, const QString& name) {
    bool found = false;
    document->Run([&](const Model& model) { found = Find(model, sheet, name).is(); });
    return found;
}

Shape Shape::Named(const std::shared_ptr<Document>& document, int sheet, const QString& name) {
    document->Run([&](const Model& model) { static_cast<void>(Known(model, sheet, name)); });
    return {document, sheet, name};
}

std::vector<QString> Shape::NamesOn(const std::shared_ptr<Document>& document, int sheet) {
    std::vector<QString> names;
    document->Run([&](const Model& model) {
        const auto page = PageOf(model, sheet);
        for (sal_Int32 place = 0; place < page->getCount(); ++place) {
            Reference<com::sun::star::container::XNamed> named;
            page->getByIndex(place) >>= named;
            if (named.is()) names.push_back(FromUno(named->getName()));
        }
    });
    return names;
}

Shape::Shape(std::shared_ptr<Document> document, int sheet, QString name)
    : document_(std::move(document)), sheet_(sheet), name_(std::move(name)) {}

QRectF Shape::Place() const {
    QRectF place;
    document_->Run([&](const Model& model) { place = PlaceOn(model, sheet_, Known(model, sheet_, name_)); });
    return place;
}

void Shape::SetPlace(const QRectF& place) {
    document_->Run([&](const Model& model) { Put(model, sheet_, Known(model, sheet_, name_), place); });
}

void Shape::SetFill(int colorIndex) {
    SetFillColor(document_->ColorAt(colorIndex));
}

void Shape::SetLine(int colorIndex, double points) {
    SetLineColor(document_->ColorAt(colorIndex), points);
}

void Shape::SetFillColor(const QColor& color) {
    document_->Run([&](const Model& model) { Fill(Need<XPropertySet>(Known(model, sheet_, name_)), color); });
}

void Shape::SetLineColor(const QColor& color, double points) {
    document_->Run(
        [&](const Model& model) { DrawOutline(Need<XPropertySet>(Known(model, sheet_, name_)), color, points); });
}

void Shape::SetPattern(const FillPattern& pattern, const QColor& foreground, const QColor& background) {
    const QImage tile = TileOf(pattern, foreground, background);
    document_->Run([&](const Model& model) {
        FillWithTile(document_->connection(), model, Need<XPropertySet>(Known(model, sheet_, name_)), tile);
    });
}

void Shape::SetText(const QString& text, const CellStyle& font) {
    document_->Run([&](const Model& model) {
        const auto target = Need<com::sun::star::text::XText>(Known(model, sheet_, name_));
        target->setString(ToUno(text));
        const auto cursor = target->createTextCursor();
        cursor->gotoStart(false);
        cursor->gotoEnd(true);
        const PropertyList looks =
            ListOf(FontProperties(font, [this](int slot) { return document_->ColorNumber(slot); }));
        const auto properties = Need<XPropertySet>(cursor);
        for (sal_Int32 place = 0; place < looks.names.getLength(); ++place)
            properties->setPropertyValue(looks.names[place], looks.values[place]);
    });
}

ShapeKind Shape::Kind() const {
    ShapeKind kind = ShapeKind::Rectangle;
    document_->Run([&](const Model& model) {
        com::sun::star::uno::Sequence<com::sun::star::beans::PropertyValue> geometry;
        Need<XPropertySet>(Known(model, sheet_, name_))->getPropertyValue("CustomShapeGeometry") >>= geometry;
        for (const auto& value : geometry)
            for (const auto& [each, name] : kGeometries)
                if (value.Name == "Type" && value.Value == Any(Ascii(name))) kind = each;
    });
    return kind;
}

QColor Shape::FillColor() const {
    QColor color;
    document_->Run([&](const Model& model) {
        const auto shape = Need<XPropertySet>(Known(model, sheet_, name_));
        if (FillStyleOf(shape) != com::sun::star::drawing::FillStyle_SOLID) return;
        sal_Int32 number = 0;
        shape->getPropertyValue("FillColor") >>= number;
        color = QColor::fromRgb(static_cast<QRgb>(number));
    });
    return color;
}

QImage Shape::PatternTile() const {
    QImage tile;
    document_->Run([&](const Model& model) {
        const auto shape = Need<XPropertySet>(Known(model, sheet_, name_));
        if (FillStyleOf(shape) != com::sun::star::drawing::FillStyle_BITMAP) return;
        Reference<com::sun::star::awt::XBitmap> bitmap;
        shape->getPropertyValue("FillBitmap") >>= bitmap;
        if (!bitmap.is()) return;
        const auto bytes = bitmap->getDIB();
        tile.loadFromData(reinterpret_cast<const uchar*>(bytes.getConstArray()), bytes.getLength(), "BMP");
    });
    return tile;
}

QByteArray Shape::AsPng(int pixelWidth) const {
    QByteArray picture;
    document_->Run([&](const Model& model) {
        picture = ShapeAs(
            document_->connection(), [&] { return Known(model, sheet_, name_); }, QStringLiteral("image/png"),
            pixelWidth);
    });
    return picture;
}

void Shape::Remove() {
    document_->Run([&](const Model& model) { PageOf(model, sheet_)->remove(Known(model, sheet_, name_)); });
}

} // namespace tessaro::office
