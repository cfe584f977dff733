#include "dataview/PageBuilder.h"

#include "dataview/GridQuery.h"
#include "session/Query.h"
#include "session/Strings.h"

namespace tessaro {

namespace {

bool IsGlobalId(const QString& gid) {
    return gid.startsWith(QLatin1Char('-'));
}

quint16 CellMark(bool isGlobal, int column) {
    return isGlobal ? static_cast<quint16>(1U << column) : quint16{0};
}

QString Display(Records& row, std::size_t field) {
    return GetText(row.Text(field), true);
}

Records Lookup(const char* statement, qint32 identifier) {
    return Select(QLatin1String(statement) + QString::number(identifier), jet::CursorType::ForwardOnly);
}

} // namespace

QString GridRow::Text(int column) const {
    switch (column) {
    case ColTimePeriod:
        return timePeriod;
    case ColAreaID:
        return areaId;
    case ColAreaName:
        return areaName;
    case ColIndicator:
        return indicator;
    case ColDatavalue:
        return datavalue;
    case ColUnit:
        return unit;
    case ColSubpop:
        return subpop;
    case ColSource:
        return source;
    case ColIndicatorGID:
        return indicatorGId;
    case ColSourceNID:
        return QString::number(sourceNId);
    case ColRowNID:
        return hasRowNId ? QString::number(rowNId) : QString();
    case ColFootNID:
        return footNId != 0 ? QString::number(footNId) : QString();
    default:
        return {};
    }
}

template <class Texts> template <class Read> const Texts& PageBuilder::Run<Texts>::Of(qint32 identifier, Read&& read) {
    if (any_ && identifier == identifier_) return before_;
    auto known = seen_.constFind(identifier);
    if (known == seen_.constEnd()) {
        if (seen_.size() >= kMost) seen_.clear();
        known = seen_.insert(identifier, read(identifier));
    }
    any_ = true;
    identifier_ = identifier;
    before_ = *known;
    return before_;
}

void PageBuilder::Reset() {
    *this = PageBuilder();
}

std::vector<GridRow> PageBuilder::CreateDataPage(const std::vector<IdentifierRow>& identifiers) {
    std::vector<GridRow> page;
    page.reserve(identifiers.size());
    for (const IdentifierRow& row : identifiers) {
        const TimeTexts& time = times_.Of(row.timePeriodNId, [this](qint32 id) { return ReadTime(id); });
        const AreaTexts& area = areas_.Of(row.areaNId, [this](qint32 id) { return ReadArea(id); });
        const IusTexts& ius = ius_.Of(row.iusNId, [this](qint32 id) { return ReadIus(id); });
        const SourceTexts& source = sources_.Of(row.sourceNId, [this](qint32 id) { return ReadSource(id); });
        page.push_back({time.timePeriod, area.areaId, area.areaName, ius.indicator,
                        QString::fromStdString(row.datavalue), ius.unit, ius.subpop, source.source, ius.indicatorGId,
                        row.sourceNId, row.rowNId, row.footnoteNId, row.hasRowNId,
                        static_cast<quint16>(ius.globalCells | CellMark(area.isGlobal, ColAreaName))});
    }
    return page;
}

PageBuilder::TimeTexts PageBuilder::ReadTime(qint32 timePeriodNId) {
    ++lookups_;
    Records row = Lookup("SELECT TimePeriod FROM _SelTimePeriod WHERE TimePeriodNId = ", timePeriodNId);
    if (row.atEnd()) return {};
    return {Display(row, 0)};
}

PageBuilder::AreaTexts PageBuilder::ReadArea(qint32 areaNId) {
    ++lookups_;
    Records row = Lookup("SELECT AreaID, AreaName, AreaGID FROM _SelArea WHERE AreaNId = ", areaNId);
    if (row.atEnd()) return {};
    return {Display(row, 0), Display(row, 1), IsGlobalId(row.Text("AreaGID"))};
}

PageBuilder::IusTexts PageBuilder::ReadIus(qint32 iusNId) {
    ++lookups_;
    Records row = Lookup("SELECT IndicatorGId, [Indicator], [Unit], [Subpop], UnitGID, SubpopGId FROM _SelIUSNId WHERE "
                         "IUSNId = ",
                         iusNId);
    if (row.atEnd()) return {};
    const QString indicatorGId = row.Text("IndicatorGId");
    const int globalCells = CellMark(IsGlobalId(indicatorGId), ColIndicator) |
                            CellMark(IsGlobalId(row.Text("UnitGID")), ColUnit) |
                            CellMark(IsGlobalId(row.Text("SubpopGId")), ColSubpop);
    return {indicatorGId, Display(row, 1), Display(row, 2), Display(row, 3), static_cast<quint16>(globalCells)};
}

PageBuilder::SourceTexts PageBuilder::ReadSource(qint32 sourceNId) {
    ++lookups_;
    Records row = Lookup("SELECT [Source] FROM Source WHERE SourceNId = ", sourceNId);
    if (row.atEnd()) return {};
    return {Display(row, 0)};
}

} // namespace tessaro
