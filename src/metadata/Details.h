#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// The details of indicators, areas and periods.
namespace tessaro::metadata {

/// An indicator and its sectors with their classes, one line each.
struct IndicatorDetails {
    QString indicator;
    QStringList sectors;
    QStringList classes;
};

/// The classifications of the indicators of a list, which holds numbers of combinations or quoted GIds.
[[nodiscard]] std::vector<IndicatorDetails> DetailsOfIndicators(const QString& idList, bool byCombination);
/// The classifications of one indicator.
[[nodiscard]] std::vector<IndicatorDetails> DetailsOfIndicator(const QString& indicatorGId);
/// One area of the way from the top of the hierarchy to an area.
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
