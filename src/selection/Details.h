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
/// The area and those above it, the highest first: "AFR  Africa".
[[nodiscard]] QString AreaDetailsSql(const QString& areaId);
[[nodiscard]] QStringList AreaChain(const QString& areaId);

} // namespace tessaro::selection
