#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

namespace tessaro::selection {

/// Where an indicator is classified: its name and a line of sector and class for each place.
struct IndicatorDetails {
    QString indicator;
    QStringList sectors;
    QStringList classes;
};

/// The places of the items of a list, by indicator.
[[nodiscard]] std::vector<IndicatorDetails> DetailsOfIndicators(const std::vector<KeyedItem>& items);
/// The places of one indicator.
[[nodiscard]] std::vector<IndicatorDetails> DetailsOfIndicator(const QString& indicatorGId);
struct AreaLine {
    QString areaId;
    QString name;
};
/// The area and those above it, the highest first.
[[nodiscard]] QString AreaDetailsSql(const QString& areaId);
[[nodiscard]] std::vector<AreaLine> AreaChain(const QString& areaId);
/// How many data rows a period has, by its list key.
[[nodiscard]] qint64 DataRowsOfPeriod(const QString& key);

} // namespace tessaro::selection
