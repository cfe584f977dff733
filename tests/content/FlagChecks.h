#pragma once

#include "support/PlainReader.h"

#include <string>
#include <vector>

namespace tessaro::test {

/// Rows whose DataExists differs from what the Data table says, one line a table ("Area_en: 3"); empty when all agree.
/// Worked out from Data anew for every row, unlike the marking, which works with lists.
[[nodiscard]] std::vector<std::string> WrongFlags(const PlainReader& reader, const std::vector<std::string>& codes);

} // namespace tessaro::test
