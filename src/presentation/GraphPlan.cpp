#include "presentation/GraphPlan.h"

#include "session/Strings.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

using office::ChartKind;

constexpr qsizetype kLongestNameBeside = 24; ///< characters of a name in a legend that stands beside the plot
constexpr qsizetype kLongestLabel = 40;      ///< characters of a name in the chart
constexpr qsizetype kShortestPart = 10;      ///< of a name that has several
constexpr qsizetype kLongestTitle = 150;     ///< characters
constexpr int kTitleParts = 3;
constexpr double kLongNumber = 10000;
constexpr int kCrowdedSeries = 50;
constexpr int kCrowdedPoints = 2000;
constexpr int kCrowdedAxis = 250;
constexpr QChar kEllipsis(0x2026);

QString Shortened(const QString& name, qsizetype longest) {
    if (name.size() <= longest) return name;
    const qsizetype end = longest / 3;
    return name.left(longest - end - 1).trimmed() + kEllipsis + name.right(end).trimmed();
}

/// Joins the parts of a name; where that gets too long, long parts lose their middle.
QString ShortName(QStringList parts) {
    const qsizetype share = kLongestLabel / std::max<qsizetype>(parts.size(), 1);
    qsizetype room = kLongestLabel;
    qsizetype longParts = 0;
    for (const QString& part : parts)
        if (part.size() > share)
            ++longParts;
        else
            room -= part.size();
    for (QString& part : parts)
        if (part.size() > share) part = Shortened(part, std::max(room / longParts, kShortestPart));
    return parts.join(QStringLiteral(" - "));
}

bool Has(const std::vector<PivotField>& fields, PivotField field) {
    return std::find(fields.begin(), fields.end(), field) != fields.end();
}

QString Joined(const QStringList& parts) {
    return parts.join(LanguageIsRightToLeft() ? QStringLiteral("\u060C ") : QStringLiteral(", "));
}

qsizetype LongestLine(const QString& text) {
    qsizetype longest = 0;
    for (const QString& line : text.split(QLatin1Char('\n')))
        longest = std::max(longest, line.size());
    return longest;
}

} // namespace

GraphPlan::GraphPlan(const PivotTable& table, ChartKind kind)
    : table_(table), kind_(kind), seriesInRows_(FindSeriesInRows()), needsLabels_(FindNeedsLabels()) {}

// Lines run along the time where it stands on one side only. Otherwise the longer side of the block runs along the
// axis, so that there are few series of many points.
bool GraphPlan::FindSeriesInRows() const {
    if (table_.ColumnCount() == 1) return false;
    const bool lines = kind_ == ChartKind::Line || kind_ == ChartKind::Area || kind_ == ChartKind::Scatter;
    const bool onColumns = Has(table_.columnFields, PivotField::TimePeriod);
    if (lines && onColumns != Has(table_.rowFields, PivotField::TimePeriod)) return onColumns;
    return table_.ColumnCount() >= table_.RowCount();
}

bool GraphPlan::ComparesColumns() const {
    if (kind_ != ChartKind::Scatter || table_.ColumnCount() < 2) return false;
    return !Has(table_.columnFields, PivotField::TimePeriod) && !Has(table_.rowFields, PivotField::TimePeriod);
}

bool GraphPlan::NeedsNumbersAlong() const {
    return kind_ == ChartKind::Scatter &&
           (seriesInRows_ ? table_.columnFields : table_.rowFields) == std::vector<PivotField>{PivotField::TimePeriod};
}

int GraphPlan::SeriesCount() const {
    if (kind_ == ChartKind::Pie) return 1;
    if (ComparesColumns()) return table_.ColumnCount() - 1;
    return seriesInRows_ ? table_.RowCount() : table_.ColumnCount();
}

int GraphPlan::PointCount() const {
    if (kind_ == ChartKind::Pie) return seriesInRows_ ? table_.ColumnCount() : table_.RowCount();
    return table_.ValueCount();
}

bool GraphPlan::IsCrowded() const {
    const int along = seriesInRows_ ? table_.ColumnCount() : table_.RowCount();
    if (along > kCrowdedAxis && !ComparesColumns()) return true;
    return SeriesCount() > kCrowdedSeries || PointCount() > (kind_ == ChartKind::Pie ? kCrowdedSeries : kCrowdedPoints);
}

bool GraphPlan::FindNeedsLabels() const {
    const bool areaPair = table_.rowFields == std::vector<PivotField>{PivotField::AreaID, PivotField::AreaName};
    if (table_.FieldCount() > 1 && !areaPair) return true;
    return std::any_of(table_.rowTexts.begin(), table_.rowTexts.end(),
                       [](const QStringList& texts) { return texts.back().size() > kLongestLabel; });
}

QString GraphPlan::LabelOf(int row) const {
    const bool named = Has(table_.rowFields, PivotField::AreaName);
    const QStringList& texts = table_.rowTexts[static_cast<std::size_t>(row)];
    QStringList parts;
    for (qsizetype i = 0; i < texts.size(); ++i)
        if (table_.rowFields[static_cast<std::size_t>(i)] != PivotField::AreaID || !named) parts << texts[i];
    return ShortName(std::move(parts));
}

QString GraphPlan::HeadOf(int column) const {
    return Joined(table_.columns[static_cast<std::size_t>(column)].head.split(QLatin1Char('\n')));
}

bool GraphPlan::HasLongNames() const {
    qsizetype longest = 0;
    if (seriesInRows_)
        for (int row = 0; row < table_.RowCount(); ++row)
            longest = std::max(longest, LabelOf(row).size());
    else
        for (const PivotColumn& column : table_.columns)
            longest = std::max(longest, LongestLine(column.head));
    return longest > kLongestNameBeside;
}

bool GraphPlan::HasLongNumbers() const {
    return std::any_of(table_.cells.begin(), table_.cells.end(), [](const std::vector<PivotCell>& row) {
        return std::any_of(row.begin(), row.end(),
                           [](const PivotCell& cell) { return std::abs(cell.value.toDouble()) >= kLongNumber; });
    });
}

QString GraphPlan::Title() const {
    QStringList parts;
    if (table_.ColumnCount() == 1 && !table_.columnFields.empty())
        parts = table_.columns.front().head.split(QLatin1Char('\n'));
    if (ComparesColumns() && table_.ColumnCount() == 2)
        for (const PivotColumn& column : table_.columns)
            parts << column.head.section(QLatin1Char('\n'), 0, 0);
    for (const QString& value : SingleValues(parts.isEmpty() ? kTitleParts - 1 : kTitleParts))
        if (!parts.contains(value) && parts.size() < kTitleParts) parts << value;
    if (kind_ == ChartKind::Pie && table_.ColumnCount() > 1) parts << (seriesInRows_ ? LabelOf(0) : HeadOf(0));
    const QString title = Joined(parts);
    return title.size() <= kLongestTitle ? title : title.left(kLongestTitle - 1).trimmed() + kEllipsis;
}

} // namespace tessaro
