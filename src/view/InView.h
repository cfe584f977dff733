#pragma once

#include "session/Session.h"
#include "view/ViewJoins.h"

#include <QString>

/// The one rule for which rows are in view, as pieces of statements.
namespace tessaro {

/// The rest of a statement over the rows in view: the join, its condition, and the row filter of the data view.
[[nodiscard]] QString InView(const ViewJoin& join, const QString& rowFilter = RowFilter);
/// The same conditions for a statement that has begun its WHERE itself.
[[nodiscard]] QString AndInView();

/// The statement of bare identifiers that a change of selection opens, one row per value inside the selection.
/// `orderBy` is the user's order, when there is one.
[[nodiscard]] QString IdentifierStatement(const QString& orderBy = {});
/// The same for every later requery: only pairs that are not taken out, then the row filter, then the order.
[[nodiscard]] QString RequeryStatement(const QString& rowFilter, const QString& orderBy);
/// True when a value in view, under a row filter, has a footnote.
[[nodiscard]] bool AnyFootnotes(const QString& rowFilter);
/// The identifiers of rows that an identifier statement has already given, in no particular order.
[[nodiscard]] QString RereadStatement(const QString& rowNIds);

} // namespace tessaro
