#include "presentation/PivotTable.h"

#include "platform/NaturalOrder.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Strings.h"

#include <QCollator>
#include <QRegularExpression>

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

PivotColumn ColumnOf(const QString& name, const PivotQuery& query, PivotHeaders& headers) {
    if (query.ColCount == 0) return {PlainText(QStringLiteral("Comm_Datavalue")), {}};
    return {headers.DecodePivotHeader(name).replace(CodeSeparator, QStringLiteral("\n")),
            headers.PartOf(PivotField::Indicator, name)};
}

void ReadHeads(const jet::Recordset& rows, const PivotQuery& query, PivotTable& table,
               const std::function<void(int)>& progress) {
    PivotHeaders headers(query.PivotKeyList);
    for (const QString& key : query.PivotKeyList.split(KeySeparator))
        if (const auto field = FieldOfKey(key)) table.columnFields.push_back(*field);
    const int fields = static_cast<int>(rows.FieldCount());
    for (int i = 0; i < fields; ++i) {
        const QString name = QString::fromStdString(rows.Field(static_cast<std::size_t>(i)).name);
        if (i < query.RowCount)
            table.rowFields.push_back(FieldOfName(name).value_or(PivotField::TimePeriod));
        else
            table.columns.push_back(ColumnOf(name, query, headers));
        if (progress) progress(100 * (i + 1) / fields);
    }
}

/// How a value sorts: 0 numbers, 1 texts, 2 nothing.
struct SortValue {
    int kind = 2;
    double number = 0;
    QString text;
};

SortValue SortValueOf(const QString& value) {
    if (value.isEmpty()) return {};
    const auto number = NumberOf(value);
    return number ? SortValue{0, *number, {}} : SortValue{1, 0, value};
}

bool Before(const SortValue& a, const SortValue& b, bool ascending) {
    if (a.kind == 2 || b.kind == 2) return a.kind < b.kind;
    const SortValue& first = ascending ? a : b;
    const SortValue& second = ascending ? b : a;
    if (first.kind != second.kind) return first.kind < second.kind;
    if (first.kind == 0) return first.number < second.number;
    return first.text.compare(second.text, Qt::CaseInsensitive) < 0;
}

template <class T> void Reorder(std::vector<T>& items, const std::vector<std::size_t>& order) {
    std::vector<T> sorted;
    sorted.reserve(items.size());
    for (const std::size_t from : order)
        sorted.push_back(std::move(items[from]));
    items = std::move(sorted);
}

std::vector<std::size_t> Numbers(std::size_t count) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    return order;
}

} // namespace

PivotCell SplitFootnote(const QString& value) {
    const qsizetype at = value.lastIndexOf(CodeSeparator);
    if (at < 0) return {value.trimmed(), 0};
    bool isNumber = false;
    const qint64 footnote = value.mid(at + CodeSeparator.size()).toLongLong(&isNumber);
    return {value.left(at).trimmed(), isNumber ? footnote : 0};
}

QString PivotTable::IndicatorOf(int row, int column) const {
    const auto onRows = std::find(rowFields.begin(), rowFields.end(), PivotField::Indicator);
    if (onRows == rowFields.end()) return columns.at(static_cast<std::size_t>(column)).indicator;
    return rowTexts.at(static_cast<std::size_t>(row)).value(onRows - rowFields.begin());
}

bool PivotTable::HasFootnotes() const {
    return std::any_of(cells.begin(), cells.end(), [](const std::vector<PivotCell>& row) {
        return std::any_of(row.begin(), row.end(), [](const PivotCell& cell) { return cell.footnote != 0; });
    });
}

int PivotTable::ValueCount() const {
    std::ptrdiff_t count = 0;
    for (const std::vector<PivotCell>& row : cells)
        count += std::count_if(row.begin(), row.end(), [](const PivotCell& cell) { return !cell.value.isEmpty(); });
    return static_cast<int>(count);
}

namespace {

/// A head for comparing: "10,000" is one number, not two.
QStringList SortedHead(const QString& head) {
    static const QRegularExpression group(QStringLiteral("(?<=\\d)[,\u00A0\u202F](?=\\d{3}(?!\\d))"));
    return QString(head).remove(group).split(QLatin1Char('\n'));
}

} // namespace

// Field by field; numbers within texts compare by their value, 9,000 before 10,000.
void PivotTable::SortColumns() {
    const QCollator collator = NaturalOrder();
    std::vector<QStringList> heads;
    for (const PivotColumn& column : columns)
        heads.push_back(SortedHead(column.head));
    std::vector<std::size_t> order = Numbers(columns.size());
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::lexicographical_compare(
            heads[a].begin(), heads[a].end(), heads[b].begin(), heads[b].end(),
            [&](const QString& one, const QString& other) { return collator.compare(one, other) < 0; });
    });
    Reorder(columns, order);
    for (std::vector<PivotCell>& row : cells)
        Reorder(row, order);
}

void PivotTable::SortRows(int column, bool ascending) {
    if (column < 0 || column >= ColumnCount()) return;
    std::vector<SortValue> keys;
    for (const std::vector<PivotCell>& row : cells)
        keys.push_back(SortValueOf(row[static_cast<std::size_t>(column)].value));
    std::vector<std::size_t> order = Numbers(cells.size());
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return Before(keys[a], keys[b], ascending); });
    Reorder(rowTexts, order);
    Reorder(cells, order);
}

PivotTable ReadPivot(const PivotQuery& query, const std::function<void(int)>& progress) {
    PivotTable table;
    if (query.PivotSQL.isEmpty()) return table;
    Records records = Select(query.PivotSQL);
    if (!records.isOpen() || records.isEmpty()) return table;
    ReadHeads(records.rows(), query, table, progress);
    const std::size_t fields = static_cast<std::size_t>(query.RowCount);
    for (; !records.atEnd(); records.MoveNext()) {
        QStringList texts;
        for (std::size_t i = 0; i < fields; ++i)
            texts << records.Text(i);
        std::vector<PivotCell> cells;
        cells.reserve(table.columns.size());
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            cells.push_back(SplitFootnote(records.Text(fields + i)));
        table.rowTexts.push_back(std::move(texts));
        table.cells.push_back(std::move(cells));
    }
    return table;
}

} // namespace tessaro
