#include "view/InView.h"

#include "session/Query.h"

namespace tessaro {

namespace {

// The join on SourceNId makes the selection one of pairs of combination and source.
constexpr auto kSelect =
    "SELECT D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, D.RowNId ";

} // namespace

QString InView(const ViewJoin& join, const QString& rowFilter) {
    return QLatin1String(join.from) + QLatin1String(join.where) + rowFilter;
}

QString AndInView() {
    return QStringLiteral(" AND ") + QLatin1String(kNotTakenOut) + QLatin1Char(' ') + RowFilter;
}

QString IdentifierStatement(const QString& orderBy) {
    return QLatin1String(kSelect) + QLatin1String(joins::kGrid.from) +
           (orderBy.isEmpty() ? QStringLiteral(" ORDER BY A.AreaID") : orderBy);
}

QString RequeryStatement(const QString& rowFilter, const QString& orderBy) {
    return QLatin1String(kSelect) + InView(joins::kGrid, rowFilter) + orderBy;
}

bool AnyFootnotes(const QString& rowFilter) {
    const QString noted = QStringLiteral(" AND D.FootnoteNId <> 0");
    return !Select(RequeryStatement(rowFilter + noted, {}), jet::CursorType::ForwardOnly).atEnd();
}

QString RereadStatement(const QString& rowNIds) {
    return QString::fromLatin1(kSelect) + QStringLiteral("FROM Data D WHERE D.RowNId in (") + rowNIds +
           QStringLiteral(")");
}

} // namespace tessaro
