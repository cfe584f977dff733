#pragma once

#include <QString>

#include <memory>
#include <shapefil.h>
#include <string>
#include <vector>

namespace tessaro::test {

struct CloseShapes {
    void operator()(SHPHandle handle) const { SHPClose(handle); }
};
struct DestroyShape {
    void operator()(SHPObject* shape) const { SHPDestroyObject(shape); }
};
using Shapes = std::unique_ptr<std::remove_pointer_t<SHPHandle>, CloseShapes>;
using Shape = std::unique_ptr<SHPObject, DestroyShape>;

using Ring = std::vector<std::pair<double, double>>;
using Rings = std::vector<Ring>;

inline Shapes OpenShapes(const QString& base) {
    return Shapes(SHPOpen(base.toUtf8().constData(), "rb"));
}

/// Writes a pair of files with the independent library; a record without rings becomes a null shape.
inline void WriteShapes(const QString& base, int type, const std::vector<Rings>& records) {
    const Shapes shapes(SHPCreate(base.toUtf8().constData(), type));
    for (const Rings& rings : records) {
        std::vector<int> starts;
        std::vector<double> x;
        std::vector<double> y;
        for (const Ring& ring : rings) {
            starts.push_back(static_cast<int>(x.size()));
            for (const auto& [pointX, pointY] : ring) {
                x.push_back(pointX);
                y.push_back(pointY);
            }
        }
        const Shape shape(SHPCreateObject(rings.empty() ? SHPT_NULL : type, -1, static_cast<int>(starts.size()),
                                          starts.data(), nullptr, static_cast<int>(x.size()), x.data(), y.data(),
                                          nullptr, nullptr));
        SHPWriteObject(shapes.get(), -1, shape.get());
    }
}

/// Writes a table of text fields; the texts of a row are in the bytes of the code page.
inline void WriteTable(const QString& base, const char* codePage, const std::vector<const char*>& fields,
                       const std::vector<std::vector<std::string>>& rows) {
    const DBFHandle table = DBFCreateEx(base.toUtf8().constData(), codePage);
    for (const char* const field : fields)
        DBFAddField(table, field, FTString, 30, 0);
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t field = 0; field < fields.size(); ++field)
            DBFWriteStringAttribute(table, static_cast<int>(row), static_cast<int>(field), rows[row][field].c_str());
    DBFClose(table);
}

/// The rings of a record as the independent library reads them.
inline Rings RingsOf(SHPHandle shapes, int record) {
    const Shape shape(SHPReadObject(shapes, record));
    Rings rings;
    if (!shape) return rings;
    for (int part = 0; part < shape->nParts; ++part) {
        const int end = part + 1 < shape->nParts ? shape->panPartStart[part + 1] : shape->nVertices;
        Ring ring;
        for (int i = shape->panPartStart[part]; i < end; ++i)
            ring.emplace_back(shape->padfX[i], shape->padfY[i]);
        rings.push_back(ring);
    }
    return rings;
}

} // namespace tessaro::test
