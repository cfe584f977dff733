#include "formats/CsvText.h"
#include "formats/ValueCube.h"
#include "formats/ValueFile.h"
#include "session/Strings.h"

#include <QRegularExpression>

#include <map>

namespace tessaro {

namespace {

const QByteArray kMark = QByteArrayLiteral("\xEF\xBB\xBF");

QStringList Captions(std::initializer_list<const char*> keys) {
    QStringList texts;
    for (const char* key : keys)
        texts << PlainText(QLatin1String(key));
    return texts;
}

/// Writes each row as the function makes it.
bool SaveRows(const QString& file, const QByteArray& begin, const ValueTable& table,
              const std::function<QStringList(const ValueRow&)>& fields) {
    ValueFile out(file);
    out.Write(begin);
    for (int i = 0; i < table.count; ++i)
        if (const std::optional<ValueRow> row = table.at(i)) out.Write(CsvLine(fields(*row)));
    return out.Finish();
}

/// A period as SDMX writes it: "2001-05" for "2001.05", "2001-Q1" for "2001.Q1", "2001/2005" for "2001-2005".
QString SdmxPeriod(const QString& period) {
    static const QRegularExpression range(QStringLiteral("^(\\d{4})-(\\d{4})$"));
    static const QRegularExpression part(QStringLiteral("^\\d{4}\\.(\\d{2}|Q\\d|S\\d|W\\d{2})(\\.\\d{2})?$"));
    if (range.match(period).hasMatch() || part.match(period).hasMatch())
        return QString(period).replace(QLatin1Char('.'), QLatin1Char('-'));
    return period;
}

} // namespace

bool SaveLongCsv(const QString& file, const ValueTable& table) {
    const QByteArray heads =
        kMark + CsvLine(Captions({"Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Datavalue",
                                  "Comm_Unit", "Subpop", "Comm_Source", "TS_RoleFootnote"}));
    return SaveRows(file, heads, table, [](const ValueRow& row) -> QStringList {
        return {row.period, row.areaId,   row.areaName, row.indicator, row.value,
                row.unit,   row.subgroup, row.source,   row.footnote};
    });
}

bool SaveWideCsv(const QString& file, const ValueTable& table) {
    const ValueCube cube = CubeOf(table);
    std::map<std::array<int, ValueCube::kPeriod>, std::vector<const ValueCube::Cell*>> rows;
    for (const ValueCube::Cell& cell : cube.cells) {
        std::array<int, ValueCube::kPeriod> key{};
        std::copy_n(cell.at.begin(), ValueCube::kPeriod, key.begin());
        rows[key].push_back(&cell);
    }
    ValueFile out(file);
    const QStringList& periods = cube.dimensions[ValueCube::kPeriod].codes;
    out.Write(kMark + CsvLine(Captions({"Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Unit", "Subpop",
                                        "Comm_Source"}) +
                              periods));
    for (const auto& [key, cells] : rows) {
        QStringList fields{cube.dimensions[0].codes[key[0]]};
        for (std::size_t dimension = 0; dimension < key.size(); ++dimension)
            fields << cube.dimensions[dimension].labels[key[dimension]];
        const qsizetype first = fields.size();
        fields.resize(first + periods.size());
        for (const ValueCube::Cell* const cell : cells)
            fields[first + cell->at[ValueCube::kPeriod]] = cell->value;
        out.Write(CsvLine(fields));
    }
    return out.Finish();
}

bool SaveSdmxCsv(const QString& file, const ValueTable& table) {
    const QByteArray heads = "DATAFLOW,REF_AREA,AREA_NAME,INDICATOR,UNIT_MEASURE,SUBGROUP,SOURCE,TIME_PERIOD,OBS_VALUE,"
                             "COMMENT_OBS\r\n";
    return SaveRows(file, heads, table, [](const ValueRow& row) -> QStringList {
        return {QStringLiteral("TESSARO:DATA(1.0)"),
                row.areaId,
                row.areaName,
                row.indicator,
                row.unit,
                row.subgroup,
                row.source,
                SdmxPeriod(row.period),
                row.value,
                row.footnote};
    });
}

} // namespace tessaro
