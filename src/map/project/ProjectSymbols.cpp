#include "map/project/ProjectSymbols.h"

#include "session/Session.h"

namespace tessaro {

namespace {

constexpr long kByte = 256;

/// The digits of a channel twice, which makes 16 bits of it; one below 16 has two digits only.
QString Doubled(long channel) {
    const QString digits = QString::number(channel, 16).toUpper();
    return digits + digits;
}

void PutChannel(ProjectObjects& objects, const char* label, long channel) {
    objects.Put((QByteArray(label) + Doubled(channel).toLatin1()).constData());
}

void PutColor(ProjectObjects& objects, ObjectRef color, const QColor& value) {
    const long number = NumberFromColor(value);
    objects.Begin(color, "TClr");
    PutChannel(objects, "Red:    0x", number % kByte);
    PutChannel(objects, "Green:  0x", number / kByte % kByte);
    PutChannel(objects, "Blue:   0x", number / kByte / kByte);
}

/// The character of the marker font.
int PatternOf(Marker marker) {
    switch (marker) {
    case Marker::Circle:
        return 33;
    case Marker::Square:
        return 34;
    case Marker::Triangle:
        return 35;
    case Marker::Cross:
        return 43;
    }
    return 33;
}

void PutSize(ProjectObjects& objects, const char* label, double size) {
    objects.Put((QByteArray(label) + QByteArray::number(size)).constData());
}

void PutText(ProjectObjects& objects, ObjectRef text, const char* value) {
    objects.Begin(text, "AVStr");
    objects.Put("S:     ", QString::fromLatin1(value));
}

void PutMarkerFont(ProjectObjects& objects, ObjectRef font) {
    const ObjectRef family = objects.Announce();
    const ObjectRef name = objects.Announce();
    const ObjectRef style = objects.Announce();
    objects.Begin(font, "NFont");
    objects.Put("Family:     ", family);
    objects.Put("Name:       ", name);
    objects.Put("Style:      ", style);
    objects.Put("Weight:     ", 1);
    objects.Put("Wideness:   ", 1);
    PutText(objects, family, "ESRI Cartography");
    PutText(objects, name, "ESRI Cartography");
    PutText(objects, style, "Normal");
}

} // namespace

void PutShading(ProjectObjects& objects, ObjectRef symbol, const QColor& color) {
    const ObjectRef fill = objects.Announce();
    const ObjectRef outline = objects.Announce();
    const ObjectRef ground = objects.Announce();
    objects.Begin(symbol, "BShSym");
    objects.Put("Color:  ", fill);
    objects.Put("Outline:    ", 1);
    objects.Put("OutlineColor:   ", outline);
    objects.Put("OutlineWidth:   0.10000000000000");
    objects.Put("BgColor:    ", ground);
    PutColor(objects, fill, color);
    objects.Begin(outline, "TClr"); // black
    objects.Begin(ground, "TClr");
    objects.Put("Red:    0xffff");
    objects.Put("Green:  0xffff");
    objects.Put("Blue:   0xffff");
}

void PutStroke(ProjectObjects& objects, ObjectRef symbol, const LayerSymbol& look) {
    const ObjectRef color = objects.Announce();
    objects.Begin(symbol, "BLnSym");
    objects.Put("Color:      ", color);
    PutSize(objects, "Width:      ", look.lineWidth);
    objects.Put("Pattern:    2.0000000000000");
    objects.Put("Pattern:    2.0000000000000");
    PutColor(objects, color, look.color);
}

void PutMarker(ProjectObjects& objects, ObjectRef symbol, const LayerSymbol& look) {
    const ObjectRef color = objects.Announce();
    const ObjectRef ground = objects.Announce();
    const ObjectRef font = objects.Announce();
    objects.Begin(symbol, "BMkSym");
    objects.Put("Color:      ", color);
    objects.Put("BgColor:    ", ground);
    objects.Put("Font:       ", font);
    PutSize(objects, "Size:       ", look.markerSize);
    objects.Put("Pattern:    ", PatternOf(look.marker));
    objects.Put("Angle:      360.00000000");
    PutColor(objects, color, look.color);
    objects.Begin(ground, "TClr");
    objects.Put("Name:   ", QStringLiteral("Transparent"));
    PutMarkerFont(objects, font);
}

} // namespace tessaro
