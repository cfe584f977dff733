#include "formats/JsonText.h"
#include "formats/ValueCube.h"
#include "formats/ValueFile.h"
#include "platform/Clock.h"
#include "session/Strings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tessaro {

namespace {

constexpr std::array<const char*, ValueCube::kDimensions> kIds{"area",     "indicator", "unit",
                                                               "subgroup", "source",    "time"};

QString CaptionOfDimension(std::size_t dimension) {
    static constexpr std::array<const char*, ValueCube::kDimensions> keys{
        "Comm_Area Name", "Comm_Indicator", "Comm_Unit", "Subpop", "Comm_Source", "Comm_Time"};
    return PlainText(QLatin1String(keys[dimension]));
}

QJsonObject JsonDimension(const ValueCube::Dimension& dimension, const QString& caption) {
    QJsonObject labels;
    for (qsizetype i = 0; i < dimension.codes.size(); ++i)
        labels.insert(dimension.codes[i], dimension.labels[i]);
    return {
        {QStringLiteral("label"), caption},
        {QStringLiteral("category"), QJsonObject{{QStringLiteral("index"), QJsonArray::fromStringList(dimension.codes)},
                                                 {QStringLiteral("label"), labels}}}};
}

/// A text of a PX file: no line is longer than such files have them, and quotation marks can't be in one.
QByteArray PxText(QString text) {
    text.replace(QLatin1Char('"'), QLatin1Char('\''));
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control) c = QLatin1Char(' ');
    return '"' + text.toUtf8() + '"';
}

QByteArray PxList(const QStringList& texts) {
    QByteArray list;
    for (const QString& text : texts)
        list += (list.isEmpty() ? "" : ",\r\n") + PxText(text);
    return list;
}

void WritePxHead(ValueFile& out, const ValueCube& cube) {
    out.Write(
        "CHARSET=\"ANSI\";\r\nAXIS-VERSION=\"2013\";\r\nCODEPAGE=\"utf-8\";\r\nCREATION-DATE=\"" +
        Now().toString(QStringLiteral("yyyyMMdd HH:mm")).toLatin1() +
        "\";\r\nDECIMALS=15;\r\nMATRIX=\"TESSARO\";\r\nSUBJECT-CODE=\"\";\r\nSUBJECT-AREA=\"\";\r\nUNITS=\"\";\r\n");
    QStringList stub;
    for (std::size_t i = 0; i < ValueCube::kPeriod; ++i)
        stub << CaptionOfDimension(i);
    const QString time = CaptionOfDimension(ValueCube::kPeriod);
    out.Write("STUB=" + PxList(stub) + ";\r\nHEADING=" + PxText(time) + ";\r\n");
    for (std::size_t i = 0; i < ValueCube::kDimensions; ++i)
        out.Write("VALUES(" + PxText(CaptionOfDimension(i)) + ")=" + PxList(cube.dimensions[i].labels) + ";\r\n");
    out.Write("CODES(" + PxText(stub.front()) + ")=" + PxList(cube.dimensions[0].codes) + ";\r\n");
    out.Write("TIMEVAL(" + PxText(time) + ")=TLIST(A1);\r\n");
    for (const QString& variable : std::as_const(stub))
        out.Write("KEYS(" + PxText(variable) + ")=VALUES;\r\n");
    out.Write("DATA=\r\n");
}

} // namespace

bool SaveJsonStat(const QString& file, const ValueTable& table) {
    const ValueCube cube = CubeOf(table);
    TellLosses(table, {.footnotes = cube.losses.footnotes, .doubles = cube.losses.doubles});
    QJsonArray ids;
    QJsonArray sizes;
    QJsonObject dimensions;
    for (std::size_t i = 0; i < ValueCube::kDimensions; ++i) {
        ids.append(QLatin1String(kIds[i]));
        sizes.append(static_cast<qint64>(std::max<qsizetype>(cube.dimensions[i].codes.size(), 1)));
        dimensions.insert(QLatin1String(kIds[i]), JsonDimension(cube.dimensions[i], CaptionOfDimension(i)));
    }
    ValueFile out(file);
    out.Write("{\"version\":\"2.0\",\"class\":\"dataset\",\"id\":" + JsonText(ids) + ",\"size\":" + JsonText(sizes) +
              R"(,"role":{"time":["time"],"geo":["area"]},"dimension":)" + JsonText(dimensions) + ",\"value\":{");
    bool first = true;
    for (const ValueCube::Cell& cell : cube.cells) {
        qint64 place = 0;
        for (std::size_t i = 0; i < ValueCube::kDimensions; ++i)
            place = place * cube.dimensions[i].codes.size() + cell.at[i];
        out.Write((first ? "\"" : ",\"") + QByteArray::number(place) + "\":" + JsonNumber(cell.value));
        first = false;
    }
    out.Write("}}\n");
    return out.Finish();
}

bool SavePx(const QString& file, const ValueTable& table) {
    const ValueCube cube = CubeOf(table);
    const qsizetype periods = cube.dimensions[ValueCube::kPeriod].codes.size();
    TellLosses(table, cube.losses);
    ValueFile out(file);
    WritePxHead(out, cube);
    for (auto cell = cube.cells.begin(); cell != cube.cells.end();) {
        const CubeRow row = RowOf(*cell);
        QByteArrayList numbers(periods, "\"..\"");
        bool any = false;
        for (; cell != cube.cells.end() && RowOf(*cell) == row; ++cell)
            if (const auto number = NumberText(cell->value)) {
                numbers[cell->at[ValueCube::kPeriod]] = *number;
                any = true;
            }
        if (!any) continue;
        for (std::size_t i = 0; i < row.size(); ++i)
            out.Write(PxText(cube.dimensions[i].labels[row[i]]) + ',');
        out.Write(numbers.join(' ') + " \r\n");
    }
    out.Write(";\r\n");
    return out.Finish();
}

} // namespace tessaro
