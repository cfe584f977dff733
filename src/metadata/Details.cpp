#include "metadata/Details.h"

#include "database/AreaIds.h"
#include "session/Query.h"

namespace tessaro::metadata {

namespace {

constexpr auto kSectors =
    "INNER JOIN Indicator_Sector ON [Indicator].IndicatorGId = Indicator_Sector.IndicatorGId) INNER JOIN (Sector INNER "
    "JOIN SectorLabel1 ON Sector.SectorLabel1GId = SectorLabel1.SectorLabel1GId) ON Indicator_Sector.SectorLabel2GId = "
    "Sector.SectorLabel2GId) INNER JOIN SectorLabel2 ON Sector.SectorLabel2GId = SectorLabel2.SectorLabel2GId ";
constexpr auto kIndicators = " FROM (([Indicator] ";
constexpr auto kOfIndicators = " WHERE [Indicator].IndicatorGId IN (";

/// Reads the classifications of indicators with a FROM and a WHERE clause.
std::vector<IndicatorDetails> ReadDetails(const QString& from, const QString& where) {
    std::vector<IndicatorDetails> details;
    Records rows =
        Select(QStringLiteral(
                   "SELECT DISTINCT [Indicator].[Indicator], SectorLabel1.SectorLabel1, SectorLabel2.SectorLabel2 ") +
               from + QLatin1String(kSectors) + where + QStringLiteral(" ORDER BY [Indicator].[Indicator]"));
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString indicator = rows.Text("Indicator");
        if (details.empty() || details.back().indicator != indicator) details.push_back({indicator, {}, {}});
        details.back().sectors << rows.Text("SectorLabel1");
        details.back().classes << rows.Text("SectorLabel2");
    }
    return details;
}

} // namespace

std::vector<IndicatorDetails> DetailsOfIndicators(const QString& idList, bool byCombination) {
    if (idList.isEmpty()) return {};
    const QString list = idList + QLatin1Char(')');
    if (byCombination)
        return ReadDetails(QStringLiteral(" FROM (((Indicator_Unit_Subpop INNER JOIN [Indicator] ON "
                                          "Indicator_Unit_Subpop.IndicatorGId = [Indicator].IndicatorGId) "),
                           QStringLiteral(" WHERE Indicator_Unit_Subpop.IUSNId In (") + list);
    return ReadDetails(QLatin1String(kIndicators), QLatin1String(kOfIndicators) + list);
}

std::vector<IndicatorDetails> DetailsOfIndicator(const QString& indicatorGId) {
    return ReadDetails(QLatin1String(kIndicators),
                       QLatin1String(kOfIndicators) + Quoted(indicatorGId) + QLatin1Char(')'));
}

QString AreaDetailsSql(const QString& areaId) {
    const QString id = QuoteDoubled(areaId);
    QString terms;
    for (int limit = schema::kCharactersPerLevel; limit < areaId.size(); limit += schema::kCharactersPerLevel) {
        const QString length = QString::number(limit);
        terms += QStringLiteral(" or (") + QStringLiteral(" Len(AreaId) < ") +
                 QString::number(limit + schema::kCharactersPerLevel) + QStringLiteral(" and instr(1,AreaId,mid('") +
                 id + QStringLiteral("',1,") + length + QStringLiteral(")) > 0 ") + QStringLiteral(")");
    }
    return QStringLiteral("SELECT AreaName, AreaID From Area WHERE AreaID = '") + id + QLatin1Char('\'') + terms +
           QStringLiteral(" ORDER BY AreaID");
}

std::vector<AreaLine> AreaChain(const QString& areaId) {
    std::vector<AreaLine> chain;
    // The statement repeats the id once for each level.
    if (areaId.size() > schema::kAreaIdWidth) return chain;
    Records rows = Select(AreaDetailsSql(areaId));
    // The statement also finds areas whose id occurs inside this one. Only those that it begins with are above it.
    for (; !rows.atEnd(); rows.MoveNext())
        if (areaId.startsWith(rows.Text("AreaID"), Qt::CaseInsensitive))
            chain.push_back({rows.Text("AreaID"), rows.Text("AreaName")});
    return chain;
}

qint64 DataRowsOfPeriod(const QString& periodNId) {
    const Records rows = Select(QStringLiteral("SELECT Count(*) FROM Data WHERE TimePeriodNId = ") + periodNId);
    return rows.atEnd() ? 0 : rows.Number(std::size_t{0});
}

} // namespace tessaro::metadata
