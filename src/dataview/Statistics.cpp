#include "dataview/Statistics.h"

#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/StatementWatch.h"
#include "session/Strings.h"
#include "view/DataFilters.h"
#include "view/InView.h"

#include <QLocale>
#include <QMap>

namespace tessaro {

namespace {

constexpr auto kFigures =
    "Count(D.Datavalue) AS CountOfDatavalue, Min(D.Datavalue) AS MinOfDatavalue, Max(D.Datavalue) AS MaxOfDatavalue, "
    "format(Avg(D.Datavalue),'#.00') AS AvgOfDatavalue, format(StDev(D.Datavalue),'#.00') AS StDevOfDatavalue, ";
/// Stands in the text columns that a level is not grouped by.
const QString kLevelMark = QStringLiteral("--");

struct Line {
    QString indicatorGId, indicator, unit, unitGId, subpop, subpopGId;
    StatsLine shown;
};

constexpr std::size_t kMostNamed = 3;

Line ReadLine(const Records& rows) {
    Line line{rows.Text("IndicatorGId"),
              rows.Text("Indicator"),
              rows.Text("Unit"),
              rows.Text("UnitGId"),
              rows.Text("Subpop"),
              rows.Text("SubpopGId"),
              {}};
    StatsLine& shown = line.shown;
    shown.level = line.unit == kLevelMark && line.unitGId == kLevelMark       ? StatsLevel::Indicator
                  : line.subpop == kLevelMark && line.subpopGId == kLevelMark ? StatsLevel::Unit
                                                                              : StatsLevel::Subpop;
    const bool isIndicator = shown.level == StatsLevel::Indicator;
    const bool isUnit = shown.level == StatsLevel::Unit;
    shown.name = isIndicator ? line.indicator : isUnit ? line.unit : line.subpop;
    const QString& gid = isIndicator ? line.indicatorGId : isUnit ? line.unitGId : line.subpopGId;
    shown.isGlobal = gid.startsWith(QLatin1Char('-'));
    shown.count = rows.Text("CountOfDatavalue");
    shown.minimum = rows.Text("MinOfDatavalue");
    shown.maximum = rows.Text("MaxOfDatavalue");
    shown.average = rows.Text("AvgOfDatavalue");
    shown.deviation = rows.Text("StDevOfDatavalue");
    return line;
}

} // namespace

QString StatisticsStatement(const QString& rowFilter) {
    const QString from = InView(joins::kStatistics, rowFilter) + QLatin1Char(' ');
    const QString figures = QLatin1String(kFigures);
    return QStringLiteral(" SELECT IUS.IndicatorGId, IUS.[Indicator], '--' as Unit, '--' as Subpop, ") + figures +
           QStringLiteral("'--' as UnitGId, '--' as SubpopGId ") + from +
           QStringLiteral(" GROUP BY IUS.IndicatorGId, IUS.[Indicator] ") + QStringLiteral(" UNION ") +
           QStringLiteral(" SELECT IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, '--' as Subpop, ") + figures +
           QStringLiteral("IUS.UnitGId, '--' as SubpopGId ") + from +
           QStringLiteral(" GROUP BY IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.UnitGId ") +
           QStringLiteral(" UNION ") +
           QStringLiteral(" SELECT IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.Subpop, ") + figures +
           QStringLiteral("IUS.UnitGId, IUS.SubpopGId ") + from +
           QStringLiteral(
               " GROUP BY IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.Subpop, IUS.UnitGId, IUS.SubpopGId ") +
           QStringLiteral(" ORDER BY IUS.[Indicator]");
}

// The statement orders by the indicator's name alone, so two indicators of one name, and the levels of one indicator,
// may come mixed; they are put under their parents here.
std::vector<StatsLine> ReadStatistics(const QString& rowFilter, UnreadableValues* unreadable) {
    std::vector<Line> lines;
    QMap<QString, int> placeOfIndicator; // by GId: the place of the statement's order
    const StatementWatch watch;
    Records rows = Select(StatisticsStatement(rowFilter));
    if (!rows.isOpen() && !watch.Stopped()) {
        rows = Select(StatisticsStatement(rowFilter + QLatin1String(kNumbersOnly)));
        if (unreadable != nullptr) *unreadable = FindUnreadableValues(rowFilter);
    }
    if (watch.Stopped()) return {};
    for (; !rows.atEnd(); rows.MoveNext()) {
        lines.push_back(ReadLine(rows));
        if (!placeOfIndicator.contains(lines.back().indicatorGId))
            placeOfIndicator.insert(lines.back().indicatorGId, static_cast<int>(placeOfIndicator.size()));
    }
    const auto key = [&](const Line& line) {
        const bool hasUnit = line.shown.level != StatsLevel::Indicator;
        const bool hasSubpop = line.shown.level == StatsLevel::Subpop;
        return std::make_tuple(placeOfIndicator.value(line.indicatorGId), hasUnit ? line.unit.toLower() : QString(),
                               hasUnit ? line.unitGId : QString(), hasSubpop ? line.subpop.toLower() : QString(),
                               static_cast<int>(line.shown.level));
    };
    std::stable_sort(lines.begin(), lines.end(), [&](const Line& a, const Line& b) { return key(a) < key(b); });
    std::vector<StatsLine> shown;
    shown.reserve(lines.size());
    for (Line& line : lines)
        shown.push_back(std::move(line.shown));
    return shown;
}

UnreadableValues FindUnreadableValues(const QString& rowFilter) {
    UnreadableValues values;
    Records rows = Select(QStringLiteral("SELECT IUS.[Indicator], A.AreaName, T.TimePeriod, D.Datavalue") +
                              InView(joins::kStatistics, rowFilter) + QLatin1String(kNoNumbers),
                          jet::CursorType::ForwardOnly);
    ErrorTrap trap("FindUnreadableValues");
    trap.Try([&] {
        for (; !rows.atEnd(); rows.MoveNext()) {
            ++values.count;
            if (values.first.size() < kMostNamed)
                values.first.push_back({GetText(rows.Text(std::size_t{0}), true),
                                        GetText(rows.Text(std::size_t{1}), true),
                                        GetText(rows.Text(std::size_t{2}), true), rows.Text(std::size_t{3})});
        }
    });
    return values;
}

QString TextOf(const UnreadableValues& values) {
    if (values.count == 0) return {};
    QStringList named;
    for (const UnreadableValues::Value& value : values.first)
        named << QStringList{value.indicator, value.area, value.timePeriod, QChar(0x201C) + value.text + QChar(0x201D)}
                     .join(QStringLiteral(" · "));
    if (values.count > static_cast<qint64>(values.first.size())) named << QStringLiteral("…");
    return GetText(QStringLiteral("TS_StatsUnreadable"))
        .replace(QLatin1String("%1"), QLocale::system().toString(values.count))
        .replace(QLatin1String("%2"), named.join(QStringLiteral("; ")));
}

} // namespace tessaro
