#include "map/classes/ColorSchemes.h"

#include "map/classes/ClassColors.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

// ColorBrewer's schemes of six classes without the lightest, and a darker middle: missing data is white.
const std::vector<ColorScheme>& ColorSchemes() {
    static const std::vector<ColorScheme> schemes{
        {"TS_SchemeBlues", false, {0xC6DBEF, 0x9ECAE1, 0x6BAED6, 0x3182BD, 0x08519C}},
        {"TS_SchemeYellowBlue", false, {0xC7E9B4, 0x7FCDBB, 0x41B6C4, 0x2C7FB8, 0x253494}},
        {"TS_SchemeYellowBrown", false, {0xFEE391, 0xFEC44F, 0xFE9929, 0xD95F0E, 0x993404}},
        {"TS_SchemePurples", false, {0xDADAEB, 0xBCBDDC, 0x9E9AC8, 0x756BB1, 0x54278F}},
        {"TS_SchemeGreys", false, {0xD9D9D9, 0xBDBDBD, 0x969696, 0x636363, 0x252525}},
        {"TS_SchemeViridis", false, {0xFDE725, 0x5EC962, 0x21918C, 0x3B528B, 0x440154}},
        {"TS_SchemeCividis", false, {0xFEE838, 0xBCAE6C, 0x7D7C78, 0x434E6C, 0x00224E}},
        {"TS_SchemeRedBlue", true, {0xCA0020, 0xF4A582, 0xE6E6E6, 0x92C5DE, 0x0571B0}},
        {"TS_SchemeBrownTeal", true, {0xA6611A, 0xDFC27D, 0xE6E6E6, 0x80CDC1, 0x018571}},
        {"TS_SchemeOrangePurple", true, {0xE66101, 0xFDB863, 0xE6E6E6, 0xB2ABD2, 0x5E3C99}},
        {"TS_SchemePurpleGreen", true, {0x7B3294, 0xC2A5CF, 0xE6E6E6, 0xA6DBA0, 0x008837}},
    };
    return schemes;
}

std::vector<QColor> SchemeColors(const ColorScheme& scheme, int count) {
    std::vector<QColor> colors;
    const auto last = static_cast<double>(scheme.anchors.size() - 1);
    for (int i = 0; i < count; ++i) {
        const double place = count == 1 ? last / 2 : last * i / (count - 1);
        const double before = std::min(std::floor(place), last - 1);
        colors.push_back(ColorBetween(scheme.anchors[static_cast<std::size_t>(before)],
                                      scheme.anchors[static_cast<std::size_t>(before) + 1], place - before));
    }
    return colors;
}

} // namespace tessaro
