#include "dataview/ScanCounts.h"

#include "session/ColumnCache.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "view/InView.h"

namespace tessaro {

namespace {

QString CountStatement(const DataFilters& range) {
    return QStringLiteral("SELECT Count(*) AS Numbers") + InView(joins::kGrid, ValueRangeClause(range));
}

Records ReadFigures(const QString& condition) {
    return Select(QStringLiteral("SELECT Count(*) AS Numbers, Count(D.Datavalue) AS Filled, Min(D.Datavalue) AS Least, "
                                 "Max(D.Datavalue) AS Greatest") +
                  InView(joins::kGrid, condition));
}

} // namespace

std::optional<ScanCounts> ScanCounts::Begin() {
    if (!RunsOnColumns(CountStatement({}))) return std::nullopt;
    Records figures = ReadFigures({});
    if (figures.atEnd()) return std::nullopt;
    ScanCounts counts;
    counts.rows_ = figures.Number("Numbers");
    counts.blank_ = counts.rows_ - figures.Number("Filled");
    if (counts.rows_ > counts.blank_ && !NumberOf(figures.Text("Greatest"))) {
        // of texts that are no numbers, the empty one is the least
        if (ReadFigures(QLatin1String(kNoNumbers)).Text("Least").isEmpty()) return std::nullopt;
        figures = ReadFigures(QLatin1String(kNumbersOnly));
    }
    const auto least = NumberOf(figures.Text("Least"));
    const auto greatest = NumberOf(figures.Text("Greatest"));
    if (least && greatest) counts.extent_ = std::pair(*least, *greatest);
    return counts;
}

qint64 ScanCounts::Within(const DataFilters& range) const {
    if (!range.ValueRangeOn) return rows_;
    if (!last_ || last_->from != range.DataValueFrom || last_->to != range.DataValueTo) {
        const Records counted = Select(CountStatement(range));
        last_ = {range.DataValueFrom, range.DataValueTo, counted.atEnd() ? 0 : counted.Number(std::size_t{0})};
    }
    return last_->rows;
}

qint64 ScanCounts::Cells() const {
    if (cells_) return *cells_;
    qint64 cells = rows_;
    for (Records shared = Select(QStringLiteral("SELECT Count(*) AS Numbers") + InView(joins::kGrid, {}) +
                                     QStringLiteral(" GROUP BY D.IUSNId, D.SourceNId, D.AreaNId, D.TimePeriodNId "
                                                    "HAVING Count(*) > 1"),
                                 jet::CursorType::ForwardOnly);
         !shared.atEnd(); shared.MoveNext())
        cells -= shared.Number(std::size_t{0}) - 1;
    cells_ = cells;
    return cells;
}

} // namespace tessaro
