#include "map/classes/ColorSchemes.h"

#include "map/classes/ClassColors.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

const std::vector<ColorScheme>& ColorSchemes() {
    static const std::vector<ColorScheme> schemes{
        {"TS_SchemeBlues", false, {0xEFF3FF, 0xBDD7E7, 0x6BAED6, 0x3182BD, 0x08519C}},
        {"TS_SchemeYellowBlue", false, {0xFFFFCC, 0xA1DAB4, 0x41B6C4, 0x2C7FB8, 0x253494}},
        {"TS_SchemeYellowBrown", false, {0xFFFFD4, 0xFED98E, 0xFE9929, 0xD95F0E, 0x993404}},
        {"TS_SchemePurples", false, {0xF2F0F7, 0xCBC9E2, 0x9E9AC8, 0x756BB1, 0x54278F}},
        {"TS_SchemeGreys", false, {0xF0F0F0, 0xCCCCCC, 0x969696, 0x636363, 0x252525}},
        {"TS_SchemeViridis", false, {0xFDE725, 0x5EC962, 0x21918C, 0x3B528B, 0x440154}},
        {"TS_SchemeCividis", false, {0xFEE838, 0xBCAE6C, 0x7D7C78, 0x434E6C, 0x00224E}},
        {"TS_SchemeRedBlue", true, {0xCA0020, 0xF4A582, 0xF7F7F7, 0x92C5DE, 0x0571B0}},
        {"TS_SchemeBrownTeal", true, {0xA6611A, 0xDFC27D, 0xF5F5F5, 0x80CDC1, 0x018571}},
        {"TS_SchemeOrangePurple", true, {0xE66101, 0xFDB863, 0xF7F7F7, 0xB2ABD2, 0x5E3C99}},
        {"TS_SchemePurpleGreen", true, {0x7B3294, 0xC2A5CF, 0xF7F7F7, 0xA6DBA0, 0x008837}},
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
