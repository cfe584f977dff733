#pragma once

#include "map/classes/ClassBreaks.h"

#include <locale>
#include <sstream>
#include <string>

namespace tessaro::test {

/// The classes with their counts: "0.13-1.34 (12) 1.35-2.60 (11)".
inline std::string Text(const ClassBreaks& classes, int decimals) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(decimals);
    text << std::fixed;
    for (const ClassBreak& each : classes)
        text << (text.tellp() > 0 ? " " : "") << each.from << "-" << each.to << " (" << each.count << ")";
    return text.str();
}

} // namespace tessaro::test
