#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace tessaro {

/// What the filter of most recent data hides unintentionally. The latest period of an IUS and area is looked for among
/// all sources. Where only a source that is not in view has a value in that period, the view shows nothing for this IUS
/// and area, although it has older values of other sources.
struct HiddenByRecent {
    qint64 pairs = 0;         ///< pairs of IUS and area that are hidden so
    qint64 combinations = 0;  ///< different IUS among them
    QStringList sources;      ///< names of the sources that have the latest values
    QStringList takenOutKeys; ///< keys, in the panel of sources, of those that were taken out there
};

/// Finds what is hidden. The working tables of the most recent data have to be there.
[[nodiscard]] HiddenByRecent FindHiddenByRecent();
/// What the view says about it; empty when nothing is hidden.
[[nodiscard]] QString TextOf(const HiddenByRecent& hidden);

} // namespace tessaro
