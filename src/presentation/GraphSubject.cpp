#include "presentation/GraphSubject.h"

#include "presentation/SheetParts.h"
#include "session/Query.h"

#include <QSet>

namespace tessaro {

namespace {

constexpr int kMostIndicators = 255;

bool IndicatorsHaveSeveralSubpops() {
    Records subpops = Select(QStringLiteral("SELECT DISTINCT SubpopGId FROM Indicator_Unit_Subpop WHERE IndicatorGId "
                                            "IN (SELECT IndicatorGId FROM _SelIUSNId)"));
    return subpops.isOpen() && subpops.rows().RecordCount() > 1;
}

QHash<QString, QStringList> UnitsOfIndicators() {
    QHash<QString, QStringList> units;
    for (Records rows = Select(QStringLiteral(
             "SELECT DISTINCT IUS.[Indicator], IUS.Unit FROM _SelIUSNId AS IUS WHERE IUS.Deleted = False"));
         !rows.atEnd(); rows.MoveNext())
        units[rows.Text(std::size_t{0})] << rows.Text(std::size_t{1});
    return units;
}

QStringList NotesOf(const PivotTable& table) {
    QStringList notes;
    QSet<qint64> seen;
    for (const std::vector<PivotCell>& row : table.cells)
        for (const PivotCell& cell : row) {
            if (cell.footnote == 0 || seen.contains(cell.footnote)) continue;
            seen.insert(cell.footnote);
            if (const QString text = FootnoteText(cell.footnote); !text.isEmpty()) notes << text;
        }
    return notes;
}

} // namespace

GraphSubject ReadGraphSubject(const PivotTable& table) {
    GraphSubject subject;
    subject.indicators = DistinctValues(PivotField::Indicator, kMostIndicators);
    subject.area = GetDistinctVal(PivotField::AreaName);
    subject.time = GetDistinctVal(PivotField::TimePeriod);
    if (IndicatorsHaveSeveralSubpops()) subject.subpop = GetDistinctVal(PivotField::Subpop);
    subject.units = UnitsOfIndicators();
    subject.sources = SourcesOfSelection();
    subject.notes = NotesOf(table);
    return subject;
}

} // namespace tessaro
