#include "formats/CsvText.h"
#include "formats/FilesBeside.h"
#include "formats/GeoTable.h"
#include "formats/JsonText.h"
#include "formats/MapTable.h"
#include "formats/ValueFile.h"
#include "jet/values/Value.h"
#include "platform/Files.h"
#include "session/Strings.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <shapefil.h>

namespace tessaro {

namespace {

constexpr std::size_t kMostColumns = 253; // of a dBase table, beside id and name
constexpr auto kDegrees =
    "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],PRIMEM[\"Greenwich\","
    "0.0],UNIT[\"Degree\",0.0174532925199433]]";

/// The points of a ring, land anticlockwise and holes clockwise, as this form has them.
QByteArray RingText(const std::vector<QPointF>& ring) {
    QByteArray text("[");
    for (auto point = ring.rbegin(); point != ring.rend(); ++point)
        text += (text.size() > 1 ? ",[" : "[") + QByteArray::number(point->x(), 'g', 10) + ',' +
                QByteArray::number(point->y(), 'g', 10) + ']';
    return text + ']';
}

QByteArray Geometry(const AreaRings& rings) {
    if (rings.empty()) return "null";
    QByteArray text;
    for (const std::vector<std::size_t>& polygon : PolygonsOf(rings)) {
        text += text.isEmpty() ? "[" : ",[";
        for (std::size_t i = 0; i < polygon.size(); ++i)
            text += (i > 0 ? "," : "") + RingText(rings[polygon[i]]);
        text += ']';
    }
    return "{\"type\":\"MultiPolygon\",\"coordinates\":[" + text + "]}";
}

NewFile ColumnsFile(const QString& file, const GeoTable& geo, std::size_t count) {
    QStringList heads{PlainText(QStringLiteral("TS_MappingColumn"))};
    for (const char* key : {"Comm_Indicator", "Comm_Unit", "Subpop", "Comm_Source", "Comm_Time"})
        heads << PlainText(QLatin1String(key));
    QByteArray text = kUtf8Mark + CsvLine(heads);
    for (std::size_t column = 0; column < count; ++column)
        text += CsvLine(QStringList{QStringLiteral("V%1").arg(column + 1)} + geo.columns[column]);
    return {NameBeside(file, QStringLiteral(".columns.csv")), text};
}

/// Writes shapes and table into a folder of their own.
class ShapefileWriter final {
  public:
    ShapefileWriter(const GeoTable& geo, std::size_t columns, const QString& path)
        : geo_(geo), columns_(columns),
          shapes_(SHPCreate(QFile::encodeName(path + QStringLiteral(".shp")).constData(), SHPT_POLYGON)),
          table_(DBFCreateEx(QFile::encodeName(path + QStringLiteral(".dbf")).constData(), "UTF-8")) {}
    ~ShapefileWriter() {
        if (shapes_ != nullptr) SHPClose(shapes_);
        if (table_ != nullptr) DBFClose(table_);
    }
    ShapefileWriter(const ShapefileWriter&) = delete;
    ShapefileWriter& operator=(const ShapefileWriter&) = delete;

    bool Write() {
        if (shapes_ == nullptr || table_ == nullptr || !AddFields()) return false;
        int row = 0;
        for (const GeoTable::Area& area : geo_.areas)
            if (!WriteShape(area.rings) || !WriteRow(row++, area)) return false;
        return true;
    }

  private:
    [[nodiscard]] bool IsNumeric(std::size_t column) const {
        return std::ranges::all_of(geo_.areas, [column](const GeoTable::Area& area) {
            return area.values[column] == nullptr || jet::ReadNumber(area.values[column]->toStdString());
        });
    }

    bool AddFields() {
        if (DBFAddField(table_, "ID_", FTString, 60, 0) < 0) return false;
        if (DBFAddField(table_, "Name1_", FTString, kLongestTableText, 0) < 0) return false;
        for (std::size_t column = 0; column < columns_; ++column) {
            numeric_.push_back(IsNumeric(column));
            const QByteArray name = 'V' + QByteArray::number(qulonglong(column) + 1);
            const bool added = numeric_.back() ? DBFAddField(table_, name.constData(), FTDouble, 24, 10) >= 0
                                               : DBFAddField(table_, name.constData(), FTString, 60, 0) >= 0;
            if (!added) return false;
        }
        return true;
    }

    bool WriteShape(const AreaRings& rings) {
        std::vector<int> starts;
        std::vector<double> x;
        std::vector<double> y;
        for (const std::vector<QPointF>& ring : rings) {
            starts.push_back(static_cast<int>(x.size()));
            for (const QPointF& point : ring) {
                x.push_back(point.x());
                y.push_back(point.y());
            }
        }
        const int kind = rings.empty() ? SHPT_NULL : SHPT_POLYGON;
        SHPObject* const shape = SHPCreateObject(kind, -1, static_cast<int>(starts.size()), starts.data(), nullptr,
                                                 static_cast<int>(x.size()), x.data(), y.data(), nullptr, nullptr);
        const bool written = shape != nullptr && SHPWriteObject(shapes_, -1, shape) >= 0;
        if (shape != nullptr) SHPDestroyObject(shape);
        return written;
    }

    bool WriteText(int row, int field, const QString& text) {
        return DBFWriteStringAttribute(table_, row, field, MapTableText(text).constData()) != 0;
    }

    bool WriteRow(int row, const GeoTable::Area& area) {
        if (!WriteText(row, 0, area.id) || !WriteText(row, 1, area.name)) return false;
        for (std::size_t column = 0; column < columns_; ++column) {
            const QString* const value = area.values[column];
            const int field = static_cast<int>(column) + 2;
            if (value == nullptr) {
                if (DBFWriteNULLAttribute(table_, row, field) == 0) return false;
            } else if (!numeric_[column]) {
                if (!WriteText(row, field, *value)) return false;
            } else if (DBFWriteDoubleAttribute(table_, row, field, *jet::ReadNumber(value->toStdString())) == 0) {
                return false;
            }
        }
        return true;
    }

    const GeoTable& geo_;
    std::size_t columns_;
    std::vector<bool> numeric_;
    SHPHandle shapes_;
    DBFHandle table_;
};

/// The files of a layer whose parts were made in a folder, to be put in their places together.
std::optional<std::vector<NewFile>> PartsOf(const QString& made, const QString& file) {
    const QString stem = file.chopped(4);
    std::vector<NewFile> parts;
    for (const char* ending : {".shp", ".shx", ".dbf"}) {
        std::optional<QByteArray> bytes = ReadWholeFile(made + QLatin1String(ending), qint64{1} << 31);
        if (!bytes) return std::nullopt;
        parts.push_back({stem + QLatin1String(ending), std::move(*bytes)});
    }
    parts.push_back({stem + QStringLiteral(".cpg"), "UTF-8"});
    parts.push_back({stem + QStringLiteral(".prj"), kDegrees});
    return parts;
}

} // namespace

bool SaveGeoJson(const QString& file, const ValueTable& table) {
    NotesAndSources beside(table);
    const GeoTable geo = GeoTableOf(beside.Watched());
    TellLosses(table, geo.losses);
    ValueFile out(file);
    out.Write("{\"type\":\"FeatureCollection\",\"features\":[");
    for (const GeoTable::Area& area : geo.areas) {
        out.Write((&area == geo.areas.data() ? "\n" : ",\n") + QByteArray("{\"type\":\"Feature\",\"id\":") +
                  JsonText(area.id) + ",\"properties\":{\"area_id\":" + JsonText(area.id) +
                  ",\"area_name\":" + JsonText(area.name));
        for (std::size_t column = 0; column < geo.columns.size(); ++column)
            if (area.values[column] != nullptr)
                out.Write(',' + JsonText(geo.columns[column].join(QStringLiteral("; "))) + ':' +
                          JsonNumber(*area.values[column]));
        out.Write("},\"geometry\":" + Geometry(area.rings) + '}');
    }
    out.Write("\n]}\n");
    return out.Finish(beside.FilesOf(file));
}

bool SaveShapefile(const QString& file, const ValueTable& table) {
    NotesAndSources beside(table);
    GeoTable geo = GeoTableOf(beside.Watched());
    const std::size_t columns = std::min(geo.columns.size(), kMostColumns);
    geo.losses.columns = static_cast<int>(geo.columns.size() - columns);
    TellLosses(table, geo.losses);
    const QTemporaryDir folder;
    const QString made = folder.filePath(QStringLiteral("layer"));
    if (!ShapefileWriter(geo, columns, made).Write()) return false;
    auto parts = PartsOf(made, file);
    if (!parts) return false;
    parts->push_back(ColumnsFile(file, geo, columns));
    for (NewFile& each : beside.FilesOf(file))
        parts->push_back(std::move(each));
    return ReplaceFiles(*parts);
}

} // namespace tessaro
