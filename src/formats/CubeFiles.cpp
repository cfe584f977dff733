#include "formats/JsonText.h"
#include "formats/ValueCube.h"
#include "formats/ValueFile.h"
#include "platform/Clock.h"
#include "session/Strings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::size_t kSource = 4;
constexpr std::array<const char*, ValueCube::kDimensions> kIds{"area",     "indicator", "unit",
                                                               "subgroup", "source",    "time"};

QString CaptionOfDimension(std::size_t dimension) {
    static constexpr std::array<const char*, ValueCube::kDimensions> keys{
        "Comm_Area Name", "Comm_Indicator", "Comm_Unit", "Subpop", "Comm_Source", "Comm_Time"};
    const QString caption = PlainText(QLatin1String(keys[dimension]));
    return caption.isEmpty() ? QLatin1String(kIds[dimension]) : caption; // no two may have the same name
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

/// A text of a PX file: one line, and no quotation marks in it.
QByteArray PxText(QString text) {
    text.replace(QLatin1Char('"'), QLatin1Char('\''));
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control) c = QLatin1Char(' ');
    return '"' + text.toUtf8() + '"';
}

/// A text of any length: on several lines, since the format has none of more than 256 signs.
QByteArray PxLongText(const QString& text) {
    constexpr qsizetype most = 120; // letters, of up to two bytes in most scripts
    QByteArray lines;
    for (qsizetype from = 0; from == 0 || from < text.size();) {
        qsizetype count = most;
        if (from + count < text.size() && text[from + count].isLowSurrogate()) --count;
        lines += (from == 0 ? "" : "\r\n") + PxText(text.mid(from, count));
        from += count;
    }
    return lines;
}

/// Texts that such a file has with other signs in them.
int MarksIn(const ValueCube& cube) {
    const auto isChanged = [](const QString& text) {
        return std::ranges::any_of(
            text, [](QChar c) { return c == QLatin1Char('"') || c.category() == QChar::Other_Control; });
    };
    std::ptrdiff_t count = 0;
    for (const ValueCube::Dimension& dimension : cube.dimensions)
        count += std::ranges::count_if(dimension.labels, isChanged);
    count += std::ranges::count_if(cube.cells, isChanged, &ValueCube::Cell::footnote);
    return static_cast<int>(count);
}

QByteArray PxList(const QStringList& texts) {
    QByteArray list;
    for (const QString& text : texts)
        list += (list.isEmpty() ? "" : ",\r\n") + PxText(text);
    return list;
}

/// The title of a table, or what stands in for one: the names of its indicators.
QString TitleOf(const ValueCube& cube, const ValueTable& table) {
    constexpr qsizetype most = 3;
    if (!table.title.isEmpty()) return table.title;
    const QStringList indicators = cube.dimensions[1].labels;
    return indicators.mid(0, most).join(QStringLiteral("; ")) +
           (indicators.size() > most ? QStringLiteral("...") : QString());
}

/// What is known of the sources, each with its name.
QStringList AboutSources(const ValueCube& cube, const ValueTable& table) {
    QStringList texts;
    for (const QString& source : cube.dimensions[kSource].codes) {
        const QString about = table.aboutSource ? table.aboutSource(source) : QString();
        if (!about.isEmpty()) texts << source + QStringLiteral(": ") + about;
    }
    return texts;
}

void WritePxTitles(ValueFile& out, const ValueCube& cube, const ValueTable& table) {
    const QByteArray title = PxLongText(TitleOf(cube, table));
    out.Write("CONTENTS=" + title + ";\r\nUNITS=" + PxText(cube.dimensions[2].labels.join(QStringLiteral(", "))) +
              ";\r\nTITLE=" + title +
              ";\r\nSOURCE=" + PxLongText(cube.dimensions[kSource].labels.join(QStringLiteral("; "))) + ";\r\n");
    QStringList notes = AboutSources(cube, table);
    if (!table.subTitle.isEmpty()) notes.prepend(table.subTitle);
    if (!notes.isEmpty()) out.Write("NOTE=" + PxLongText(notes.join(QStringLiteral("#"))) + ";\r\n");
}

/// The footnotes, each with the values that say which cell it belongs to.
void WritePxNotes(ValueFile& out, const ValueCube& cube) {
    for (const ValueCube::Cell& cell : cube.cells) {
        if (cell.footnote.isEmpty() || !NumberText(cell.value)) continue;
        QByteArray values;
        for (std::size_t i = 0; i < ValueCube::kDimensions; ++i)
            values += (i == 0 ? "" : ",") + PxText(cube.dimensions[i].labels[cell.at[i]]);
        out.Write("CELLNOTE(" + values + ")=" + PxLongText(cell.footnote) + ";\r\n");
    }
}

/// The periods as the format lists years; of others it says only that they are periods.
QByteArray PxPeriods(const QStringList& periods) {
    static const QRegularExpression year(QStringLiteral("^\\d{4}$"));
    const bool areYears =
        std::ranges::all_of(periods, [](const QString& period) { return year.match(period).hasMatch(); });
    return areYears && !periods.isEmpty() ? "TLIST(A1),\r\n" + PxList(periods) : QByteArray("TLIST(A1)");
}

void WritePxHead(ValueFile& out, const ValueCube& cube, const ValueTable& table) {
    const QByteArray now = Now().toString(QStringLiteral("yyyyMMdd HH:mm")).toLatin1();
    out.Write("CHARSET=\"ANSI\";\r\nAXIS-VERSION=\"2013\";\r\nCODEPAGE=\"utf-8\";\r\nCREATION-DATE=\"" + now +
              "\";\r\nDECIMALS=15;\r\nMATRIX=\"TESSARO\";\r\nSUBJECT-CODE=\"\";\r\nSUBJECT-AREA=\"\";\r\n");
    WritePxTitles(out, cube, table);
    QStringList stub;
    for (std::size_t i = 0; i < ValueCube::kPeriod; ++i)
        stub << CaptionOfDimension(i);
    const QString time = CaptionOfDimension(ValueCube::kPeriod);
    out.Write("STUB=" + PxList(stub) + ";\r\nHEADING=" + PxText(time) + ";\r\n");
    for (std::size_t i = 0; i < ValueCube::kDimensions; ++i)
        out.Write("VALUES(" + PxText(CaptionOfDimension(i)) + ")=" + PxList(cube.dimensions[i].labels) + ";\r\n");
    out.Write("CODES(" + PxText(stub.front()) + ")=" + PxList(cube.dimensions[0].codes) + ";\r\n");
    out.Write("TIMEVAL(" + PxText(time) + ")=" + PxPeriods(cube.dimensions[ValueCube::kPeriod].codes) + ";\r\n");
    WritePxNotes(out, cube);
    for (const QString& variable : std::as_const(stub))
        out.Write("KEYS(" + PxText(variable) + ")=VALUES;\r\n");
    out.Write("DATA=\r\n");
}

qint64 PlaceOf(const ValueCube& cube, const ValueCube::Cell& cell) {
    qint64 place = 0;
    for (std::size_t i = 0; i < ValueCube::kDimensions; ++i)
        place = place * cube.dimensions[i].codes.size() + cell.at[i];
    return place;
}

/// The titles, sources and notes of a JSON-stat data set; each footnote is listed once, and cells have its number in
/// the list.
QJsonObject JsonNotes(const ValueCube& cube, const ValueTable& table) {
    QJsonArray notes;
    QHash<QString, int> numbers;
    QJsonObject cells;
    if (!table.subTitle.isEmpty()) notes.append(table.subTitle);
    for (const ValueCube::Cell& cell : cube.cells) {
        if (cell.footnote.isEmpty()) continue;
        const auto number = numbers.constFind(cell.footnote);
        const int at = number != numbers.constEnd() ? *number : static_cast<int>(notes.size());
        if (number == numbers.constEnd()) notes.append(cell.footnote);
        numbers.insert(cell.footnote, at);
        cells.insert(QString::number(PlaceOf(cube, cell)), at);
    }
    QJsonArray sources;
    for (const QString& source : cube.dimensions[kSource].codes)
        sources.append(
            QJsonObject{{QStringLiteral("name"), source},
                        {QStringLiteral("about"), table.aboutSource ? table.aboutSource(source) : QString()}});
    return {{QStringLiteral("label"), TitleOf(cube, table)},
            {QStringLiteral("source"), cube.dimensions[kSource].labels.join(QStringLiteral("; "))},
            {QStringLiteral("updated"), Now().toString(Qt::ISODate)},
            {QStringLiteral("note"), notes},
            {QStringLiteral("extension"),
             QJsonObject{{QStringLiteral("sources"), sources}, {QStringLiteral("cellnotes"), cells}}}};
}

} // namespace

bool SaveJsonStat(const QString& file, const ValueTable& table) {
    const ValueCube cube = CubeOf(table);
    TellLosses(table, {.doubles = cube.losses.doubles});
    QJsonArray ids;
    QJsonArray sizes;
    QJsonObject dimensions;
    for (std::size_t i = 0; i < ValueCube::kDimensions; ++i) {
        ids.append(QLatin1String(kIds[i]));
        sizes.append(static_cast<qint64>(std::max<qsizetype>(cube.dimensions[i].codes.size(), 1)));
        dimensions.insert(QLatin1String(kIds[i]), JsonDimension(cube.dimensions[i], CaptionOfDimension(i)));
    }
    ValueFile out(file);
    out.Write("{\"version\":\"2.0\",\"class\":\"dataset\"," + JsonText(JsonNotes(cube, table)).chopped(1).mid(1) +
              ",\"id\":" + JsonText(ids) + ",\"size\":" + JsonText(sizes) +
              R"(,"role":{"time":["time"],"geo":["area"]},"dimension":)" + JsonText(dimensions) + ",\"value\":{");
    bool first = true;
    for (const ValueCube::Cell& cell : cube.cells) {
        out.Write((first ? "\"" : ",\"") + QByteArray::number(PlaceOf(cube, cell)) + "\":" + JsonNumber(cell.value));
        first = false;
    }
    out.Write("}}\n");
    return out.Finish();
}

bool SavePx(const QString& file, const ValueTable& table) {
    const ValueCube cube = CubeOf(table);
    const qsizetype periods = cube.dimensions[ValueCube::kPeriod].codes.size();
    TellLosses(table, {.texts = cube.losses.texts, .doubles = cube.losses.doubles, .marks = MarksIn(cube)});
    ValueFile out(file);
    WritePxHead(out, cube, table);
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
