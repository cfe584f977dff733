#include "map/wizard/ThemeSymbols.h"

#include "layers/MapFiles.h"
#include "map/classes/ClassColors.h"
#include "map/classes/ClassLabels.h"
#include "session/Strings.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr int kLeastMarker = 4;
constexpr double kSpreadOfTotals = 20; ///< largest by least value; rates mostly lie closer together
const QColor kPointColor(49, 130, 189);

/// True when one of the words of a list (a text of the string table, parted by commas) is a word of the text.
bool HasWordOf(const QString& text, const char* listKey) {
    static const QRegularExpression between(QStringLiteral("[^\\p{L}%]+"));
    const QStringList listed = GetText(QLatin1String(listKey)).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& word : text.split(between, Qt::SkipEmptyParts))
        if (listed.contains(word, Qt::CaseInsensitive)) return true;
    return false;
}

} // namespace

LayerSymbols SymbolsOfClasses(const MapLayer& layer, const MapAreas& areas, const ClassTable& table) {
    LayerSymbols symbols;
    symbols.symbols = {SymbolOf(table.missing)};
    for (const ClassLook& look : table.looks)
        symbols.symbols.push_back(SymbolOf(look));
    symbols.symbols.push_back(SymbolOfUnclassed(table.missing));
    const auto unclassed = static_cast<int>(symbols.symbols.size()) - 1;
    std::vector<int> ofRow;
    for (const MapArea& area : areas.Rows()) {
        const int row = area.number ? ClassOf(table.classes, *area.number) : -1;
        ofRow.push_back(row < 0 ? unclassed : row + 1);
    }
    for (const QString& id : AreaIdsOf(layer)) {
        const int row = areas.RowOf(id);
        symbols.ofFeature.push_back(row < 0 ? 0 : ofRow[static_cast<std::size_t>(row)]);
    }
    return symbols;
}

int RowOfFeature(const LayerSymbols& symbols, int feature) {
    const auto place = static_cast<std::size_t>(feature);
    if (feature < 0 || place >= symbols.ofFeature.size()) return -1;
    const auto missingRow = static_cast<int>(symbols.symbols.size()) - 1;
    const int symbol = symbols.ofFeature[place];
    return symbol == 0 || symbol == missingRow ? missingRow : symbol - 1;
}

std::vector<int> FeaturesOfRow(const LayerSymbols& symbols, int row) {
    std::vector<int> features;
    for (std::size_t i = 0; i < symbols.ofFeature.size(); ++i)
        if (RowOfFeature(symbols, static_cast<int>(i)) == row) features.push_back(static_cast<int>(i));
    return features;
}

int FeaturesWithValue(const MapLayer& layer, const MapAreas& areas) {
    const std::vector<QString> ids = AreaIdsOf(layer);
    return static_cast<int>(
        std::count_if(ids.begin(), ids.end(), [&areas](const QString& id) { return areas.RowOf(id) >= 0; }));
}

void SizeByClass(ClassTable& table, int largest) {
    if (table.classes.empty()) return;
    const double most = std::max(std::abs(table.classes.back().to), 1e-12);
    for (std::size_t row = 0; row < table.classes.size(); ++row) {
        const ClassBreak& each = table.classes[row];
        const double share = std::min(1.0, std::abs((each.from + each.to) / 2) / most);
        const double size = row + 1 == table.classes.size() ? largest : largest * std::sqrt(share);
        table.looks[row].size = std::max(kLeastMarker + static_cast<int>(row), static_cast<int>(std::lround(size)));
        table.looks[row].marker = static_cast<int>(Marker::Circle);
        table.looks[row].color = kPointColor;
    }
    table.missing.size = kLeastMarker - 1;
    table.missing.color = QColor(200, 200, 200);
}

bool LooksLikeTotal(const MapTheme& theme, const MapAreas& areas) {
    if (!HasWordOf(theme.unit, "TS_WordsOfTotals")) return false;
    if (HasWordOf(theme.unit, "TS_WordsOfRates") || HasWordOf(theme.indicator, "TS_WordsOfRates")) return false;
    const std::vector<double> values = areas.Values();
    return values.size() > 1 && values.front() >= 0 && values.back() >= kSpreadOfTotals * values.front();
}

} // namespace tessaro
