#include "view/InView.h"

#include "session/Query.h"

namespace tessaro {

namespace {

// The join on SourceNId makes the selection one of pairs of combination and source.
constexpr auto kSelect =
    "SELECT D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, D.RowNId ";
constexpr auto kFrom = " FROM _SelIUSNId IUS INNER JOIN (_SelArea A INNER JOIN (Data D INNER JOIN  _SelTimePeriod T ON "
                       "D.TimePeriodNId = [T].TimePeriodNId) ";
constexpr auto kJoins = " ON [A].AreaNId = D.AreaNId) ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId = D.IUSNId)";

QString Joined() {
    return QString::fromLatin1(kSelect) + QLatin1String(kFrom) + QLatin1String(kJoins);
}

} // namespace

QString IdentifierStatement(const QString& orderBy) {
    return Joined() + (orderBy.isEmpty() ? QStringLiteral(" ORDER BY A.AreaID") : orderBy);
}

QString RequeryStatement(const QString& rowFilter, const QString& orderBy) {
    return Joined() + QLatin1String(kInView) + rowFilter + orderBy;
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
