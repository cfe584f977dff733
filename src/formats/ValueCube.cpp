#include "formats/ValueCube.h"

#include "jet/values/Value.h"

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

int PlaceOf(ValueCube::Dimension& dimension, const QString& code, const QString& label) {
    const auto found = dimension.places.constFind(code);
    if (found != dimension.places.constEnd()) return *found;
    const int place = static_cast<int>(dimension.codes.size());
    dimension.places.insert(code, place);
    dimension.codes << code;
    dimension.labels << label;
    return place;
}

/// Two areas of one name are told apart by their ids.
void MakeLabelsDifferent(ValueCube::Dimension& dimension) {
    QHash<QString, int> count;
    for (const QString& label : std::as_const(dimension.labels))
        ++count[label];
    for (qsizetype i = 0; i < dimension.labels.size(); ++i)
        if (count.value(dimension.labels[i]) > 1 && dimension.codes[i] != dimension.labels[i])
            dimension.labels[i] += QStringLiteral(" (") + dimension.codes[i] + QLatin1Char(')');
}

void SortPeriods(ValueCube& cube) {
    ValueCube::Dimension& periods = cube.dimensions[ValueCube::kPeriod];
    std::vector<int> order(static_cast<std::size_t>(periods.codes.size()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::sort(order, [&](int a, int b) { return periods.codes[a] < periods.codes[b]; });
    std::vector<int> newPlace(order.size());
    QStringList codes;
    for (std::size_t i = 0; i < order.size(); ++i) {
        newPlace[static_cast<std::size_t>(order[i])] = static_cast<int>(i);
        codes << periods.codes[order[i]];
    }
    periods.codes = periods.labels = codes;
    for (ValueCube::Cell& cell : cube.cells)
        cell.at[ValueCube::kPeriod] = newPlace[static_cast<std::size_t>(cell.at[ValueCube::kPeriod])];
}

/// Of several cells for one place the last one stays.
void SortCells(ValueCube& cube) {
    std::ranges::stable_sort(cube.cells, {}, &ValueCube::Cell::at);
    const auto before = cube.cells.size();
    const auto kept = std::unique(cube.cells.rbegin(), cube.cells.rend(),
                                  [](const ValueCube::Cell& a, const ValueCube::Cell& b) { return a.at == b.at; });
    cube.cells.erase(cube.cells.begin(), kept.base());
    cube.losses.doubles = static_cast<int>(before - cube.cells.size());
}

} // namespace

CubeRow RowOf(const ValueCube::Cell& cell) {
    CubeRow row{};
    std::copy_n(cell.at.begin(), row.size(), row.begin());
    return row;
}

void TellLosses(const ValueTable& table, const ValueLosses& losses) {
    if (losses.Any() && table.beforeLoss) table.beforeLoss(losses);
}

ValueCube CubeOf(const ValueTable& table) {
    ValueCube cube;
    for (int i = 0; i < table.count; ++i) {
        const std::optional<ValueRow> row = table.at(i);
        if (!row) continue;
        const std::pair<const QString&, const QString&> texts[] = {
            {row->areaId, row->areaName},   {row->indicator, row->indicator}, {row->unit, row->unit},
            {row->subgroup, row->subgroup}, {row->source, row->source},       {row->period, row->period}};
        ValueCube::Cell cell;
        for (std::size_t dimension = 0; dimension < ValueCube::kDimensions; ++dimension)
            cell.at[dimension] = PlaceOf(cube.dimensions[dimension], texts[dimension].first, texts[dimension].second);
        cell.value = row->value;
        cell.footnote = row->footnote;
        cube.losses.texts += jet::ReadNumber(row->value.toStdString()) ? 0 : 1;
        cube.cells.push_back(std::move(cell));
    }
    for (ValueCube::Dimension& dimension : cube.dimensions)
        MakeLabelsDifferent(dimension);
    SortPeriods(cube);
    SortCells(cube);
    return cube;
}

} // namespace tessaro
