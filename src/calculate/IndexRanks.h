#pragma once

#include "calculate/CalculationLog.h"

#include <QString>
#include <QStringList>

#include <vector>

/// The ranks of areas in a composite index, and how they move with the weights.
namespace tessaro {

/// The scores of an area in each indicator, from 0 to 1, and their weighted mean.
struct IndexScores {
    std::vector<double> scores;
    double index = 0;
};

struct RankedArea {
    QString id;
    QString name;
    int row = 0; ///< in the working sheet
    IndexScores scores;
};

/// Where the working sheet has what the ranks are made from.
struct IndexSheet {
    QString name;
    int firstWeightRow = 0;
    int weightColumn = 0;
    int firstScoreColumn = 0; ///< a score stands in every second column from here on
    int indexColumn = 0;
};

/// Adds the sheet that shows how the ranks of the first areas by index move when each weight in turn goes up and down
/// by ten points and the others give way so that all still come to 100. With a weight w and a score s, the mean m
/// becomes (100 m + 10 s) / 110 and (100 m - d s) / (100 - d), where d is 10 or the weight itself when that is less.
/// Columns: area id and name, rank now, the best and the worst of all its ranks, a rank for each change, an empty one,
/// then the means that the ranks are of. No sheet for a single area, or for more indicators than a sheet has columns
/// for.
void AddRankSheet(CalculationLog& log, std::vector<RankedArea> areas, const QStringList& indicators,
                  const std::vector<double>& weights, const IndexSheet& sheet);

} // namespace tessaro
