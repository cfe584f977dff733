#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace tessaro {

/// What the most recent data leave out without a trace: the latest period of a combination and area is found among all
/// sources, so where only a source outside the view has a value in that period, nothing of the pair is shown.
struct HiddenByRecent {
    qint64 pairs = 0;         ///< combinations and areas that have a value in view, but not in their latest period
    qint64 combinations = 0;  ///< combinations among them
    QStringList sources;      ///< names of the sources that have the latest values
    QStringList takenOutKeys; ///< those that the panel of sources has taken out, by their keys there
};

/// Looks for them, after the most recent rows have been found (MostRecentClause).
[[nodiscard]] HiddenByRecent FindHiddenByRecent();
/// What the view says about them; empty when there are none.
[[nodiscard]] QString TextOf(const HiddenByRecent& hidden);

} // namespace tessaro
