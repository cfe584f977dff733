#pragma once

#include "controls/KeyedItem.h"
#include "session/Query.h"

#include <QString>
#include <QStringList>

#include <vector>

/// Pieces of SQL that all statements of the selection share.
namespace tessaro::selection {

/// `head` and DataExistsCriterion; empty while everything is wanted: Criterion(" WHERE T.").
[[nodiscard]] QString Criterion(const QString& head);

/// The condition that GlobalLocalFilter puts on identifiers: for global "MID(<a>,1,1) = '-' AND MID(<b>,1,1) = '-' ",
/// for local the same with <>; empty while neither is wanted. `head` stands before it when there is one.
[[nodiscard]] QString GlobalLocal(const QString& head, const QStringList& columns);

/// Ids of list keys for an IN list: numbers as they stand, texts in single quotes.
[[nodiscard]] QString NumberList(const std::vector<KeyedItem>& items);
[[nodiscard]] QString QuotedList(const std::vector<KeyedItem>& items);
using tessaro::QuotedList;

/// A text of the database for a list, cut to 1,000 characters. Sound databases have shorter ones.
[[nodiscard]] QString NameOf(const QString& text);

/// True for the GId of a global item, which has the same GId in all databases.
[[nodiscard]] inline bool IsGlobal(const QString& gid) {
    return gid.startsWith(QLatin1Char('-'));
}

} // namespace tessaro::selection
