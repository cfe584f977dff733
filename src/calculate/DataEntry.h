#pragma once

#include "calculate/CalculationLog.h"

#include <QString>

#include <vector>

namespace tessaro {

/// The result of a calculation in the one shape that the database builder reads.
struct DataEntrySheet {
    QString sector;
    QString indicatorClass;
    QString indicator;
    QString unit;
    std::vector<DataEntryRow> rows;

    bool operator==(const DataEntrySheet&) const = default;
};

} // namespace tessaro
