#include "presentation/GraphPlan.h"

#include "session/Strings.h"

#include <QLocale>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tessaro {

namespace {

using office::ChartKind;

constexpr qsizetype kLongestNameBeside = 24; ///< characters of a name in a legend that stands beside the plot
constexpr qsizetype kLongestLabel = 40;      ///< characters of a name in the chart
constexpr qsizetype kShortestPart = 10;      ///< of a name that has several
constexpr qsizetype kLongestTitle = 150;     ///< characters
constexpr qsizetype kLongestLine = 110;      ///< characters of a line below the chart
constexpr int kNamedIndicators = 3;          ///< that a title names
constexpr int kNamedSources = 3;
constexpr double kLongNumber = 10000;
constexpr int kColors = 12;       ///< that series get before the first comes again
constexpr int kMostBars = 150;    ///< bars that are still told apart on the width of a page
constexpr int kMostLying = 40;    ///< names that a vertical axis has room for
constexpr int kMostNames = 60;    ///< names that a horizontal axis has room for; periods may be left out between others
constexpr int kMostPoints = 5000; ///< points that are drawn without a noticeable wait
constexpr QChar kEllipsis(0x2026);

QString Shortened(const QString& name, qsizetype longest) {
    if (name.size() <= longest) return name;
    const qsizetype end = longest / 3;
    return name.left(longest - end - 1).trimmed() + kEllipsis + name.right(end).trimmed();
}

/// Joins the parts of a name; where that gets too long, long parts lose their middle.
QString ShortName(QStringList parts, qsizetype longest = kLongestLabel) {
    const qsizetype share = longest / std::max<qsizetype>(parts.size(), 1);
    qsizetype room = longest;
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

std::ptrdiff_t PlaceOf(const std::vector<PivotField>& fields, PivotField field) {
    const auto found = std::find(fields.begin(), fields.end(), field);
    return found == fields.end() ? -1 : found - fields.begin();
}

bool Has(const std::vector<PivotField>& fields, PivotField field) {
    return PlaceOf(fields, field) >= 0;
}

QString Joined(const QStringList& parts) {
    return parts.join(LanguageIsRightToLeft() ? QStringLiteral("\u060C ") : QStringLiteral(", "));
}

QString Ended(const QString& text, qsizetype longest) {
    return text.size() <= longest ? text : text.left(longest - 1).trimmed() + kEllipsis;
}

QString Text(const char* key) {
    return PlainText(QLatin1String(key));
}

QString WithNumber(const char* key, int number) {
    return Text(key).replace(QStringLiteral("%1"), QLocale::system().toString(number));
}

constexpr char16_t kRightToLeftEmbedding = 0x202B;
constexpr char16_t kEndOfEmbedding = 0x202C;

/// A line below the chart: its name, then the texts; what is too long for it ends in an ellipsis.
QString Line(const char* key, const QStringList& texts) {
    if (texts.isEmpty()) return {};
    QString line = texts.mid(0, kNamedSources).join(QStringLiteral("; "));
    if (texts.size() > kNamedSources) line += QStringLiteral("; ") + kEllipsis;
    QString labelled = GetText(QStringLiteral("TS_LabelledLine"));
    if (labelled.isEmpty()) labelled = QStringLiteral("%1: %2"); // a language file without it
    line = Ended(labelled.arg(Text(key), line.simplified()), kLongestLine);
    // Charts know no direction of their own: the line brings it along.
    return LanguageIsRightToLeft() ? QChar(kRightToLeftEmbedding) + line + QChar(kEndOfEmbedding) : line;
}

} // namespace

GraphPlan::GraphPlan(const PivotTable& table, const GraphSubject& subject, ChartKind kind)
    : table_(table), subject_(subject), kind_(kind), layout_(FindLayout()), labelFields_(FindLabelFields()),
      needsLabels_(FindNeedsLabels()) {}

// The fields on the X axis run along it. A pie has no axis: its slices are a field with several values, but never
// times.
GraphPlan::Layout GraphPlan::FindLayout() {
    if (kind_ == ChartKind::Scatter) return FindScatterLayout();
    if (kind_ != ChartKind::Pie) return Layout::RowSeries;
    const bool times = table_.columnFields == std::vector<PivotField>{PivotField::TimePeriod};
    return table_.RowCount() > 1 && (table_.ColumnCount() == 1 || times) ? Layout::ColumnSeries : Layout::RowSeries;
}

GraphPlan::Layout GraphPlan::FindScatterLayout() {
    if (MeasuresTime()) return Layout::AlongTime;
    const bool rowsAreIndicators = Has(table_.rowFields, PivotField::Indicator) &&
                                   table_.RowCount() == subject_.indicators.size() && table_.RowCount() > 1;
    if (rowsAreIndicators) return Layout::CompareRows;
    return table_.ColumnCount() > 1 ? Layout::CompareColumns : Layout::Nothing;
}

bool GraphPlan::MeasuresTime() {
    if (table_.columnFields != std::vector<PivotField>{PivotField::TimePeriod}) return false;
    QStringList heads;
    for (const PivotColumn& column : table_.columns)
        heads << column.head;
    const auto measured = MeasurePeriods(heads);
    if (measured) periods_ = *measured;
    return measured.has_value();
}

bool GraphPlan::SeriesInRows() const {
    return layout_ == Layout::RowSeries || layout_ == Layout::AlongTime || layout_ == Layout::CompareRows;
}

int GraphPlan::SeriesCount() const {
    if (kind_ == ChartKind::Pie) return 1;
    const int all = SeriesInRows() ? table_.RowCount() : table_.ColumnCount();
    return Compares() ? all - 1 : all;
}

int GraphPlan::PointsAlong() const {
    return SeriesInRows() ? table_.ColumnCount() : table_.RowCount();
}

int GraphPlan::LegendNames() const {
    return kind_ == ChartKind::Pie ? PointsAlong() : SeriesCount();
}

std::vector<int> GraphPlan::SeriesWithLonePoints() const {
    std::vector<int> found;
    const auto has = [this](int row, int column) {
        return column >= 0 && column < table_.ColumnCount() &&
               !table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].value.isEmpty();
    };
    for (int row = 0; row < table_.RowCount() && SeriesInRows(); ++row)
        for (int column = 0; column < table_.ColumnCount(); ++column)
            if (has(row, column) && !has(row, column - 1) && !has(row, column + 1)) {
                found.push_back(row + 1);
                break;
            }
    return found;
}

QString GraphPlan::HeadPart(int column, PivotField field) const {
    const auto place = PlaceOf(table_.columnFields, field);
    return place < 0 ? QString()
                     : table_.columns[static_cast<std::size_t>(column)].head.split(QLatin1Char('\n')).value(place);
}

QStringList GraphPlan::UnitsOfCell(int row, int column) const {
    if (const auto place = PlaceOf(table_.rowFields, PivotField::Unit); place >= 0)
        return {table_.rowTexts[static_cast<std::size_t>(row)].value(place)};
    if (const QString unit = HeadPart(column, PivotField::Unit); !unit.isEmpty()) return {unit};
    const QString indicator = table_.IndicatorOf(row, column);
    return subject_.units.value(indicator.isEmpty() ? subject_.indicators.value(0) : indicator);
}

/// Of a row or column, counted from 0.
QStringList GraphPlan::UnitsOfSeries(int series) const {
    QStringList units;
    const int points = PointsAlong();
    for (int point = 0; point < points; ++point) {
        const int row = SeriesInRows() ? series : point;
        const int column = SeriesInRows() ? point : series;
        if (table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].value.isEmpty()) continue;
        for (const QString& unit : UnitsOfCell(row, column))
            if (!units.contains(unit)) units << unit;
    }
    return units;
}

QStringList GraphPlan::UnitsShown() const {
    QStringList units;
    for (int series = 0; series < SeriesCount(); ++series)
        for (const QString& unit : UnitsOfSeries(series))
            if (!units.contains(unit)) units << unit;
    return units;
}

std::vector<int> GraphPlan::SecondAxisSeries() const {
    std::vector<int> second;
    const QStringList shown = UnitsShown();
    if (kind_ != ChartKind::Line || shown.size() != 2) return second;
    for (int series = 0; series < SeriesCount(); ++series) {
        const QStringList units = UnitsOfSeries(series);
        if (units.size() > 1) return {};
        if (units.value(0) == shown.back()) second.push_back(series + 1);
    }
    return second;
}

QString GraphPlan::ValueAxisTitle() const {
    const QStringList units = UnitsShown();
    return Ended(SecondAxisSeries().empty() ? Joined(units) : units.front(), kLongestLine / 2);
}

QString GraphPlan::SecondAxisTitle() const {
    return SecondAxisSeries().empty() ? QString() : Ended(UnitsShown().back(), kLongestLine / 2);
}

std::vector<GraphPlan::Doubt> GraphPlan::Doubts() const {
    std::vector<Doubt> doubts;
    if (const auto crowd = FindCrowd()) doubts.push_back(*crowd);
    if (kind_ == ChartKind::Pie && table_.RowCount() > 1 && table_.ColumnCount() > 1)
        doubts.push_back(Doubt::PieShowsOne);
    if (!Compares() && SecondAxisSeries().empty() && UnitsShown().size() > 1) doubts.push_back(Doubt::SeveralUnits);
    return doubts;
}

std::optional<GraphPlan::Doubt> GraphPlan::FindCrowd() const {
    const int along = PointsAlong();
    const int values = along * SeriesCount();
    const bool times = table_.columnFields == std::vector<PivotField>{PivotField::TimePeriod};
    const bool bars = kind_ == ChartKind::Column || kind_ == ChartKind::Bar;
    if (LegendNames() > kColors) return Doubt::ManySeries;
    if (bars && values > kMostBars) return Doubt::ManyBars;
    if (kind_ == ChartKind::Bar && along > kMostLying) return Doubt::ManyNames;
    if (kind_ != ChartKind::Scatter && !times && along > kMostNames) return Doubt::ManyNames;
    return values > kMostPoints ? std::optional(Doubt::ManyPoints) : std::nullopt;
}

QString GraphPlan::TextOf(Doubt doubt) const {
    switch (doubt) {
    case Doubt::ManySeries:
        return WithNumber("TS_ManySeries", LegendNames());
    case Doubt::ManyBars:
        return WithNumber("TS_ManyBars", PointsAlong() * SeriesCount());
    case Doubt::ManyNames:
        return WithNumber("TS_ManyNames", PointsAlong());
    case Doubt::ManyPoints:
        return WithNumber("TS_ManyPoints", PointsAlong() * SeriesCount());
    case Doubt::PieShowsOne:
        return Text("TS_PieShowsOne").replace(QStringLiteral("%1"), SeriesInRows() ? LabelOf(0) : HeadOf(0));
    case Doubt::SeveralUnits:
        return Text("TS_SeveralUnits").replace(QStringLiteral("%1"), Joined(UnitsShown()));
    }
    return {};
}

QString GraphPlan::Question() const {
    QStringList texts;
    for (const Doubt doubt : Doubts())
        texts << TextOf(doubt);
    if (!texts.isEmpty()) texts << Text("TS_DrawAllTheSame");
    return texts.join(QStringLiteral("\n\n"));
}

QStringList GraphPlan::Parts(int row, const std::vector<int>& fields) const {
    QStringList parts;
    for (const int field : fields)
        parts << table_.rowTexts[static_cast<std::size_t>(row)].value(field);
    return parts;
}

// Fields that are the same in all rows are left out of the names. Of the others, sources, units and ids are named only
// where the names would be equal without them.
std::vector<int> GraphPlan::FindLabelFields() const {
    std::vector<int> fields(table_.rowFields.size());
    std::iota(fields.begin(), fields.end(), 0);
    const auto distinct = [this](const std::vector<int>& some) {
        QSet<QStringList> names;
        for (int row = 0; row < table_.RowCount(); ++row)
            names.insert(Parts(row, some));
        return names.size();
    };
    const auto all = distinct(fields);
    for (const PivotField field : {PivotField::Source, PivotField::Unit, PivotField::AreaID, PivotField::Subpop,
                                   PivotField::TimePeriod, PivotField::Indicator, PivotField::AreaName}) {
        const int place = static_cast<int>(PlaceOf(table_.rowFields, field));
        if (place < 0 || fields.size() == 1) continue;
        std::vector<int> fewer = fields;
        std::erase(fewer, place);
        const bool minor = field == PivotField::Source || field == PivotField::Unit || field == PivotField::AreaID;
        if (minor ? distinct(fewer) == all : distinct({place}) == 1) fields = fewer;
    }
    return fields;
}

bool GraphPlan::FindNeedsLabels() const {
    if (labelFields_ != std::vector<int>{table_.FieldCount() - 1}) return true;
    return std::any_of(table_.rowTexts.begin(), table_.rowTexts.end(),
                       [](const QStringList& texts) { return texts.back().size() > kLongestLabel; });
}

QString GraphPlan::LabelOf(int row) const {
    return ShortName(Parts(row, labelFields_));
}

QString GraphPlan::HeadOf(int column) const {
    return Joined(table_.columns[static_cast<std::size_t>(column)].head.split(QLatin1Char('\n')));
}

bool GraphPlan::NeedsHeadLabels() const {
    if (layout_ != Layout::RowSeries) return false;
    for (int column = 0; column < table_.ColumnCount(); ++column)
        if (HeadLabelOf(column) != table_.columns[static_cast<std::size_t>(column)].head) return true;
    return false;
}

QString GraphPlan::HeadLabelOf(int column) const {
    constexpr int kFew = 4;
    constexpr int kSome = 12;
    const int count = table_.ColumnCount();
    const qsizetype longest = kLongestLabel / (count <= kFew ? 1 : count <= kSome ? 2 : 3) + (count > kSome ? 5 : 0);
    const QString& head = table_.columns[static_cast<std::size_t>(column)].head;
    return head.size() <= longest ? head : ShortName(head.split(QLatin1Char('\n')), longest);
}

QString GraphPlan::VariableOf(int number) const {
    const QString name = layout_ == Layout::CompareRows ? LabelOf(number) : HeadOf(number);
    const QStringList units = UnitsOfSeries(number);
    const QString unit = units.size() == 1 ? units.front() : QString();
    const QString shown = Ended(name, kLongestLine - unit.size());
    return unit.isEmpty() || name.contains(unit) ? shown : shown + QStringLiteral(" (") + unit + QLatin1Char(')');
}

bool GraphPlan::HasLongNames() const {
    qsizetype longest = 0;
    if (SeriesInRows() != (kind_ == ChartKind::Pie))
        for (int row = 0; row < table_.RowCount(); ++row)
            longest = std::max(longest, LabelOf(row).size());
    else
        for (int column = 0; column < table_.ColumnCount(); ++column)
            longest = std::max(longest, HeadLabelOf(column).size());
    return longest > kLongestNameBeside;
}

bool GraphPlan::HasLongNumbers() const {
    return std::any_of(table_.cells.begin(), table_.cells.end(), [](const std::vector<PivotCell>& row) {
        return std::any_of(row.begin(), row.end(),
                           [](const PivotCell& cell) { return std::abs(cell.value.toDouble()) >= kLongNumber; });
    });
}

/// True when the name of a pie's only series says which indicator it shows.
bool GraphPlan::NamesIndicator() const {
    return kind_ == ChartKind::Pie &&
           Has(SeriesInRows() ? table_.rowFields : table_.columnFields, PivotField::Indicator);
}

QString GraphPlan::Title() const {
    QStringList parts;
    if (!NamesIndicator()) {
        parts = subject_.indicators.mid(0, kNamedIndicators);
        if (subject_.indicators.size() > kNamedIndicators) parts.back() = kEllipsis;
    }
    if (kind_ == ChartKind::Pie)
        parts << (SeriesInRows() ? Parts(0, labelFields_) : table_.columns.front().head.split(QLatin1Char('\n')));
    if (NamesIndicator()) parts.prepend(table_.IndicatorOf(0, 0));
    for (const QString& value : {subject_.subpop, subject_.area, subject_.time})
        if (!value.isEmpty()) parts << value;
    parts.removeDuplicates();
    return Ended(Joined(parts), kLongestTitle);
}

QString GraphPlan::SourceLines() const {
    QStringList lines{Line("Comm_Source", subject_.sources), Line("FootNotes", subject_.notes)};
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

} // namespace tessaro
