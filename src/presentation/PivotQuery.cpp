#include "presentation/PivotQuery.h"

#include "session/ErrorSink.h"
#include "session/Query.h"
#include "view/InView.h"

namespace tessaro {

namespace {

QString JoinedKeys(const RowsColumns::FieldList& fields, const QString& separator) {
    QStringList keys;
    for (const PivotField field : fields)
        keys << KeyOf(field);
    return keys.join(separator);
}

QString PivotExpression(const RowsColumns::FieldList& fields) {
    QStringList codes;
    for (const PivotField field : fields)
        codes << QLatin1String(InfoOf(field).pivotCode);
    return codes.join(QStringLiteral("+ '") + CodeSeparator + QStringLiteral("' +"));
}

QString ValueExpression(bool columns, bool footnotes) {
    if (!footnotes) return QStringLiteral("First([D].[Datavalue])");
    return QStringLiteral("First(IIf(IsNull([D].[FootNoteNId]) %1 [D].[FootNoteNId] = 0,[D].[Datavalue],"
                          "[D].[Datavalue] & '{{}}' & [D].[FootNoteNId]))")
        .arg(columns ? QStringLiteral("Or") : QStringLiteral("or"));
}

} // namespace

PivotQuery BuildPivotSQL(const RowsColumns& arrangement, bool footnotes) {
    PivotQuery query;
    query.RowCount = static_cast<int>(arrangement.Rows().size());
    query.ColCount = static_cast<int>(arrangement.Columns().size());
    query.PivotKeyList = JoinedKeys(arrangement.Columns(), KeySeparator);
    if (query.RowCount == 0) return query;
    const QString R = JoinedKeys(arrangement.Rows(), QStringLiteral(","));
    const bool columns = query.ColCount > 0;
    const QString value = ValueExpression(columns, footnotes);
    const QString from = InView(joins::kPivot);
    if (columns)
        query.PivotSQL = QStringLiteral("TRANSFORM ") + value + QStringLiteral(" AS Expr2  SELECT ") + R + from +
                         QStringLiteral(" GROUP BY ") + R + QStringLiteral(" PIVOT ") +
                         PivotExpression(arrangement.Columns());
    else
        query.PivotSQL = QStringLiteral(" SELECT ") + R + QStringLiteral(", ") + value +
                         QStringLiteral(" as [Data Value] ") + from + QStringLiteral(" GROUP BY ") + R;
    return query;
}

int CountPivotColumns(const RowsColumns& arrangement) {
    if (arrangement.Columns().empty()) return 1;
    QStringList codes;
    for (const PivotField field : arrangement.Columns())
        codes << QLatin1String(InfoOf(field).pivotCode) + QStringLiteral(" AS C%1").arg(codes.size());
    Records different =
        Select(QStringLiteral("SELECT DISTINCT ") + codes.join(QLatin1Char(',')) + InView(joins::kPivot));
    return different.isOpen() ? static_cast<int>(different.rows().RecordCount()) : 0;
}

int CountValues() {
    const Records values = Select(QStringLiteral("SELECT Count(*)") + InView(joins::kValueCount));
    return values.atEnd() ? 0 : static_cast<int>(values.Number(std::size_t{0}));
}

PivotField WidestColumnField(const RowsColumns& arrangement) {
    PivotField widest = arrangement.Columns().front();
    int most = -1;
    for (const PivotField field : arrangement.Columns()) {
        const int count = GetDistinctCount(field);
        if (count > most) widest = field;
        most = std::max(most, count);
    }
    return widest;
}

PivotHeaders::PivotHeaders(const QString& keyList) {
    const QStringList keys = keyList.split(KeySeparator);
    for (const QString& key : keys)
        if (const auto field = FieldOfKey(key)) fields_.push_back(*field);
    known_.resize(fields_.size());
}

QString PivotHeaders::TextOf(std::size_t part, const QString& code) {
    QHash<QString, QString>& known = known_[part];
    const auto found = known.constFind(code);
    if (found != known.constEnd()) return *found;
    bool isNumber = false;
    const qint64 number = code.toLongLong(&isNumber);
    QString text;
    if (isNumber) { // the engine's own name for empty codes ("<>") is no number and has no text
        const Records names = Select(QLatin1String(InfoOf(fields_[part]).lookup) + QString::number(number));
        if (!names.atEnd()) text = names.Text(std::size_t{0});
    }
    known.insert(code, text);
    return text;
}

QString PivotHeaders::DecodePivotHeader(const QString& name) {
    const QStringList codes = name.split(CodeSeparator);
    QStringList texts;
    for (std::size_t part = 0; part < fields_.size() && part < static_cast<std::size_t>(codes.size()); ++part)
        texts << TextOf(part, codes[static_cast<qsizetype>(part)]);
    return texts.join(CodeSeparator);
}

QString PivotHeaders::PartOf(PivotField field, const QString& name) {
    const QStringList codes = name.split(CodeSeparator);
    for (std::size_t part = 0; part < fields_.size() && part < static_cast<std::size_t>(codes.size()); ++part)
        if (fields_[part] == field) return TextOf(part, codes[static_cast<qsizetype>(part)]);
    return {};
}

void CreateDistinctIUSTables() {
    const ErrorTrap trap("CreateDistinctIUSTables");
    constexpr struct {
        const char* table;
        const char* gid;
        const char* name;
    } kTables[] = {{"_Indicator", "IndicatorGId", "[Indicator]"},
                   {"_Unit", "UnitGId", "[Unit]"},
                   {"_Subpop", "SubpopGId", "[Subpop]"}};
    for (const auto& table : kTables) {
        const QString name = QLatin1String(table.table);
        const QString columns = QLatin1String(table.gid) + QStringLiteral(", ") + QLatin1String(table.name);
        Execute(QStringLiteral("DELETE * FROM ") + name);
        Execute(QStringLiteral("INSERT INTO ") + name + QStringLiteral(" (") + columns +
                QStringLiteral(") SELECT DISTINCT ") + columns + QStringLiteral(" FROM _SelIUSNId ORDER BY ") +
                QLatin1String(table.name));
    }
}

} // namespace tessaro
