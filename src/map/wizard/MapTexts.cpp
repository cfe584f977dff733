#include "map/wizard/MapTexts.h"

#include "session/DisplayValue.h"
#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kDefaultSize = 10;
constexpr int kTitleGrowth = 6;
constexpr int kSubTitleGrowth = 2;

SheetFont MapFont(int growth, bool bold) {
    const int size = SettingNumber(QStringLiteral("MAP_FONT_SIZE"));
    const QString name =
        LanguageIsEnglish() || ProductFont.isEmpty() ? Setting(QStringLiteral("MAP_FONT")) : ProductFont;
    return {name, static_cast<double>((size > 0 ? size : kDefaultSize) + growth), bold, false};
}

} // namespace

MapDraft NewMapDraft() {
    MapDraft draft;
    draft.title.font = MapFont(kTitleGrowth, true);
    draft.subTitle.font = MapFont(kSubTitleGrowth, false);
    draft.legendTitle.font = MapFont(0, true);
    draft.disclaimer.font = MapFont(-2, false);
    draft.disclaimer.text = GetText(QStringLiteral("txtDisclaimer")).remove(QLatin1Char('\n'));
    return draft;
}

QString NameOf(const MapTheme& theme) {
    QStringList parts{theme.indicator, theme.subpop, theme.unit};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QString PeriodsText(const MapAreas& areas) {
    if (areas.Rows().empty()) return {};
    const auto before = [](const MapArea& a, const MapArea& b) { return a.period < b.period; };
    const auto [first, last] = std::minmax_element(areas.Rows().begin(), areas.Rows().end(), before);
    return first->period == last->period ? first->period : first->period + QString::fromUtf8(" \u2013 ") + last->period;
}

void SuggestTitles(MapDraft& draft, const MapAreas& areas) {
    if (draft.titlesTyped) return;
    draft.title.text = draft.theme.indicator;
    QStringList parts{draft.theme.subpop, draft.theme.unit, PeriodsText(areas)};
    parts.removeAll(QString());
    draft.subTitle.text = parts.join(QStringLiteral(", "));
    draft.legendTitle.text = draft.theme.unit;
}

QString ValueText(const MapArea& area, bool withPeriod) {
    const QString value = DisplayedValue(area.value);
    return withPeriod ? value + QStringLiteral(" (") + area.period + QLatin1Char(')') : value;
}

} // namespace tessaro
