#include "presentation/GraphSubject.h"

#include "session/Query.h"
#include "view/SourcesAndNotes.h"
#include "view/ViewJoins.h"

#include <QSet>

namespace tessaro {

namespace {

constexpr int kMostIndicators = 255;

/// The subpopulation of most combinations ("Total") is left out of titles: readers assume it.
QString TellingSubpop() {
    const QString only = GetDistinctVal(PivotField::Subpop);
    if (only.isEmpty()) return {};
    const Records usual = Select(QStringLiteral("SELECT SubpopGId, Count(*) FROM Indicator_Unit_Subpop GROUP BY "
                                                "SubpopGId ORDER BY Count(*) DESC"));
    const Records chosen = Select(QStringLiteral("SELECT SubpopGId FROM _SelIUSNId WHERE Subpop = ") + Quoted(only));
    const bool same = !usual.atEnd() && !chosen.atEnd() && usual.Text(std::size_t{0}) == chosen.Text(std::size_t{0});
    return same ? QString() : only;
}

QHash<QString, QStringList> UnitsOfIndicators() {
    QHash<QString, QStringList> units;
    for (Records rows =
             Select(QStringLiteral("SELECT DISTINCT IUS.[Indicator], IUS.Unit FROM _SelIUSNId AS IUS WHERE ") +
                    QLatin1String(kNotTakenOut));
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
    subject.subpop = TellingSubpop();
    subject.units = UnitsOfIndicators();
    subject.sources = SourcesOfSelection();
    subject.notes = NotesOf(table);
    return subject;
}

} // namespace tessaro
