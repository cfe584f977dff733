#include "formats/CsvText.h"
#include "formats/FilesBeside.h"
#include "formats/ValueCube.h"
#include "formats/ValueFile.h"
#include "session/Strings.h"

#include <QRegularExpression>

namespace tessaro {

namespace {

const QByteArray kMark = QByteArrayLiteral("\xEF\xBB\xBF");

QStringList Captions(std::initializer_list<const char*> keys) {
    QStringList texts;
    for (const char* key : keys)
        texts << PlainText(QLatin1String(key));
    return texts;
}

QByteArray LongHeads() {
    return kMark + CsvLine(Captions({"Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Datavalue",
                                     "Comm_Unit", "Subpop", "Comm_Source", "TS_RoleFootnote"}));
}

QStringList LongFields(const ValueRow& row) {
    return {row.period, row.areaId,   row.areaName, row.indicator, row.value,
            row.unit,   row.subgroup, row.source,   row.footnote};
}

/// Writes each row as the function makes it.
bool SaveRows(const QString& file, const QByteArray& begin, const ValueTable& table,
              const std::function<QStringList(const ValueRow&)>& fields) {
    ValueFile out(file);
    out.Write(begin);
    CsvWriter writer;
    for (int i = 0; i < table.count; ++i)
        if (const std::optional<ValueRow> row = table.at(i)) out.Write(writer.Line(fields(*row)));
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
    return SaveRows(file, LongHeads(), table, LongFields);
}

ValueTable WithNotesIn(const ValueTable& table, QByteArray& notes) {
    ValueTable noting = table;
    noting.at = [&table, &notes](int number) {
        std::optional<ValueRow> row = table.at(number);
        if (row && !row->footnote.isEmpty()) notes += CsvLine(LongFields(*row));
        return row;
    };
    return noting;
}

bool SaveNotes(const QString& file, const QByteArray& notes) {
    if (notes.isEmpty()) return true;
    ValueFile out(NameBeside(file, "notes"));
    out.Write(LongHeads());
    out.Write(notes);
    return out.Finish();
}

bool SaveWideCsv(const QString& file, const ValueTable& table) {
    QByteArray notes;
    const ValueCube cube = CubeOf(WithNotesIn(table, notes));
    TellLosses(table, {.doubles = cube.losses.doubles});
    ValueFile out(file);
    const QStringList& periods = cube.dimensions[ValueCube::kPeriod].codes;
    out.Write(kMark + CsvLine(Captions({"Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Unit", "Subpop",
                                        "Comm_Source"}) +
                              periods));
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
    return SaveNotes(file, notes) && out.Finish();
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
