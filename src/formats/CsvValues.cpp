#include "formats/CsvText.h"
#include "formats/FilesBeside.h"
#include "formats/ValueCube.h"
#include "formats/ValueFile.h"
#include "session/Strings.h"

#include <QRegularExpression>

namespace tessaro {

namespace {

/// Writes each row as the function makes it.
void WriteRows(ValueFile& out, const ValueTable& table, QStringList (*fields)(const ValueRow&)) {
    CsvWriter writer;
    for (int i = 0; i < table.count && out.IsGood(); ++i)
        if (const std::optional<ValueRow> row = table.at(i)) out.Write(writer.Line(fields(*row)));
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
    NotesAndSources beside(table);
    ValueFile out(file);
    out.Write(kUtf8Mark + CsvLine(ValueHeads()));
    WriteRows(out, beside.Watched(), ValueFields);
    return out.Finish(beside.FilesOf(file));
}

bool SaveWideCsv(const QString& file, const ValueTable& table) {
    NotesAndSources beside(table);
    const ValueCube cube = CubeOf(beside.Watched());
    TellLosses(table, {.doubles = cube.losses.doubles});
    ValueFile out(file);
    const QStringList& periods = cube.dimensions[ValueCube::kPeriod].codes;
    QStringList heads;
    for (const char* key : {"Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Unit", "Subpop", "Comm_Source"})
        heads << PlainText(QLatin1String(key));
    out.Write(kUtf8Mark + CsvLine(heads + periods));
    for (auto cell = cube.cells.begin(); cell != cube.cells.end();) {
        const CubeRow row = RowOf(*cell);
        QStringList fields{cube.dimensions[0].codes[row[0]]};
        for (std::size_t dimension = 0; dimension < row.size(); ++dimension)
            fields << cube.dimensions[dimension].labels[row[dimension]];
        const qsizetype first = fields.size();
        fields.resize(first + periods.size());
        for (; cell != cube.cells.end() && RowOf(*cell) == row; ++cell)
            fields[first + cell->at[ValueCube::kPeriod]] = cell->value;
        out.Write(CsvLine(fields));
    }
    return out.Finish(beside.FilesOf(file));
}

bool SaveSdmxCsv(const QString& file, const ValueTable& table) {
    ValueFile out(file);
    out.Write("DATAFLOW,REF_AREA,AREA_NAME,INDICATOR,UNIT_MEASURE,SUBGROUP,SOURCE,TIME_PERIOD,OBS_VALUE,"
              "COMMENT_OBS\r\n");
    WriteRows(out, table, [](const ValueRow& row) -> QStringList {
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
    return out.Finish();
}

} // namespace tessaro
