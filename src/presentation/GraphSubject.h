#pragma once

#include "presentation/PivotTable.h"

#include <QHash>
#include <QStringList>

namespace tessaro {

/// What a graph is about, for its title, its axes and the lines below it.
struct GraphSubject {
    QStringList indicators; ///< names, in the order of the database
    /// The one value of the whole selection; empty where there are several. The subpopulation that most
    /// combinations of the database have is left out.
    QString area, time, subpop;
    QHash<QString, QStringList> units; ///< by indicator
    QStringList sources;
    QStringList notes; ///< texts of the footnotes of values that are shown
};

/// Reads it from the selection and the table.
[[nodiscard]] GraphSubject ReadGraphSubject(const PivotTable& table);

} // namespace tessaro
