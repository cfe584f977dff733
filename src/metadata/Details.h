#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro::metadata {

/// Where an indicator is classified: its name and a line of sector and class for each place.
struct IndicatorDetails {
    QString indicator;
    QStringList sectors;
    QStringList classes;
};

/// The places of the indicators of a list, by indicator: numbers of combinations, or quoted GIds.
[[nodiscard]] std::vector<IndicatorDetails> DetailsOfIndicators(const QString& idList, bool byCombination);
/// The places of one indicator.
[[nodiscard]] std::vector<IndicatorDetails> DetailsOfIndicator(const QString& indicatorGId);
/// An area on the way down to another.
struct AreaLine {
    QString areaId;
    QString name;
};
/// The area and those above it, the highest first; no rows for an id that is longer than the column.
[[nodiscard]] QString AreaDetailsSql(const QString& areaId);
[[nodiscard]] std::vector<AreaLine> AreaChain(const QString& areaId);
/// How many data rows a period has, by its number.
[[nodiscard]] qint64 DataRowsOfPeriod(const QString& periodNId);

} // namespace tessaro::metadata
