#pragma once

#include "office/Limits.h"
#include "office/Workbook.h"

#include <functional>

/// Goes on with a list on further sheets when one is full.
namespace tessaro {

/// Rows that a sheet holds below its head.
constexpr std::size_t kRowsBelowHead = office::kMaxRows - 1;

/// Writes what may need more rows than a sheet has: into `first`, then into further sheets behind the last one. Where
/// one sheet isn't enough they are named NAME, "NAME 2", "NAME 3". `fill` writes one sheet and says whether something
/// is left. Gives the number of sheets. Throws office::Error.
int FillSheets(office::Workbook& book, office::Worksheet first, const QString& name,
               const std::function<bool(office::Worksheet&)>& fill);

} // namespace tessaro
