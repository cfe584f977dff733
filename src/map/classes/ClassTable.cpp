#include "map/classes/ClassTable.h"

#include "layers/MapFiles.h"
#include "map/classes/ClassColors.h"
#include "map/classes/ClassLabels.h"
#include "map/classes/Decimals.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/DataFilters.h"

#include <QHash>

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kMostMarkers = 3;
constexpr int kMostFills = 10;
const QColor kOutline(90, 90, 90);

QString Colour(const ClassLook& look) {
    return QStringLiteral("Color = \"%1\"").arg(NumberFromColor(look.color));
}

QString Within(int value, int most) {
    return QString::number(value < 0 || value > most ? 0 : value);
}

/// "Color = "255", PStyle =1" and what else the kind of layers needs.
QString LookOf(const ClassLook& look, ThemeKind kind) {
    QString text = Colour(look);
    if (kind != ThemeKind::Points) text += QStringLiteral(", PStyle =") + Within(look.fill, kMostFills);
    if (kind == ThemeKind::Points || kind == ThemeKind::Both)
        text += QStringLiteral(", Style =") + Within(look.marker, kMostMarkers) + QStringLiteral(", [Size] = ") +
                QString::number(look.size);
    return text;
}

QString UpdateOfClass(const ClassTable& table, std::size_t row) {
    const ClassBreak& each = table.classes[row];
    QString legend = table.looks[row].legend;
    legend.remove(QChar(0)).replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QStringLiteral("UPDATE _MapData  SET Label = \"") + legend.left(255) +
           QStringLiteral("\", BreakValue = %1, ").arg(row + 1) + LookOf(table.looks[row], table.kind) +
           QStringLiteral(" WHERE cdbl(DataValue) >= cdbl('") + NumberText(each.from) +
           QStringLiteral("') and Cdbl(DataValue) <= cdbl('") + NumberText(each.to) + QStringLiteral("') ");
}

bool UpdateRows(const ClassTable& table) {
    const QString missing = QStringLiteral("UPDATE _MapData  SET ") + LookOf(table.missing, table.kind);
    const QString unclassed = QStringLiteral("UPDATE _MapData  SET Label = '', BreakValue = 0");
    if (!Execute(unclassed) || !Execute(missing)) return false;
    for (std::size_t row = table.classes.size(); row-- > 0;)
        if (!Execute(UpdateOfClass(table, row))) return false;
    return true;
}

PaletteRow RowOf(const ClassLook& look) {
    PaletteRow row;
    row.color = QString::number(NumberFromColor(look.color));
    row.legend = look.legend;
    row.fontName = look.font.family();
    row.fontSize = QString::number(look.font.pointSizeF());
    row.bold = look.font.bold();
    row.italic = look.font.italic();
    row.underline = look.font.underline();
    return row;
}

void TakeLabel(ClassLook& look, const PaletteRow& row) {
    look.legend = row.legend;
    if (!row.fontName.isEmpty()) look.font.setFamily(row.fontName);
    const double size = QString(row.fontSize).replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
    if (size >= 1 && size <= 400) look.font.setPointSizeF(size);
    look.font.setBold(row.bold);
    look.font.setItalic(row.italic);
    look.font.setUnderline(row.underline);
}

void TakeColor(ClassLook& look, const PaletteRow& row) {
    bool read = false;
    const long number = row.color.toLong(&read);
    if (read && number >= 0 && number <= 0xFFFFFF) look.color = ClassColor(ColorFromNumber(number));
}

void TakeBounds(ClassBreak& each, const PaletteRow& row, const std::vector<double>& ascending) {
    const auto from = NumberTyped(row.from);
    const auto to = NumberTyped(row.to);
    if (!from || !to || *from > *to) return;
    each = {*from, *to, *from, *to, CountBetween(ascending, *from, *to)};
}

LayerSymbol SymbolOf(long color, qint64 fill, qint64 marker, qint64 size) {
    LayerSymbol symbol;
    symbol.color = ColorFromNumber(color);
    symbol.pattern = PatternOfNumber(static_cast<int>(fill));
    symbol.marker = static_cast<Marker>(marker < 0 || marker > kMostMarkers ? 0 : marker);
    if (size > 0) symbol.markerSize = static_cast<double>(size);
    symbol.outlineWidth = 0.5;
    symbol.outline = kOutline;
    return symbol;
}

/// The place of a symbol in a list, where it is put when it is new.
int NumberOf(const LayerSymbol& symbol, std::vector<LayerSymbol>& symbols) {
    const auto at = std::find(symbols.begin(), symbols.end(), symbol);
    if (at != symbols.end()) return static_cast<int>(at - symbols.begin());
    symbols.push_back(symbol);
    return static_cast<int>(symbols.size()) - 1;
}

/// Tells a value that is in no class from a missing one: crosshatched, and grey where missing data is white.
void MarkUnclassed(LayerSymbol& symbol, const ClassLook& missing) {
    const bool isCrossed = PatternOfNumber(missing.fill) == FillPattern::DiagonalCross;
    symbol.pattern = isCrossed ? FillPattern::Cross : FillPattern::DiagonalCross;
    if (missing.color == QColor(Qt::white)) symbol.color = QColor(120, 120, 120);
}

} // namespace

void SetClasses(ClassTable& table, ClassBreaks classes, int decimals) {
    table.decimals = decimals;
    table.classes = std::move(classes);
    const ClassLook last = table.looks.empty() ? ClassLook() : table.looks.back();
    table.looks.resize(table.classes.size(), last);
    for (std::size_t row = 0; row < table.classes.size(); ++row)
        table.looks[row].legend = LegendOf(table.classes[row], decimals);
}

bool EditClass(ClassTable& table, int row, Bound bound, double value, BreakChoice choice,
               const std::vector<double>& ascending) {
    const ClassBreaks before = table.classes;
    if (!EditBound(table.classes, row, bound, value, choice, table.decimals, ascending)) return false;
    for (std::size_t i = 0; i < before.size(); ++i)
        if (table.classes[i].from != before[i].from || table.classes[i].to != before[i].to)
            table.looks[i].legend = LegendOf(table.classes[i], table.decimals);
    return true;
}

void WidenEnds(ClassTable& table, const ValueLimits& limits) {
    if (table.classes.empty()) return;
    const ClassBreaks before = table.classes;
    ClassBreak& first = table.classes.front();
    ClassBreak& last = table.classes.back();
    if (limits.minimum < first.from) {
        first.from = RoundDown(limits.minimum, table.decimals);
        first.lower = limits.minimum;
    }
    if (limits.maximum > last.to) {
        const double down = RoundDown(limits.maximum, table.decimals);
        last.to = down < limits.maximum ? AsWritten(down + StepOfDecimals(table.decimals)) : down;
        last.upper = limits.maximum;
    }
    for (const std::size_t row : {std::size_t{0}, before.size() - 1})
        if (table.looks[row].legend == LegendOf(before[row], table.decimals))
            table.looks[row].legend = LegendOf(table.classes[row], table.decimals);
}

void CountClasses(ClassTable& table, const std::vector<double>& ascending) {
    for (ClassBreak& each : table.classes)
        each.count = CountBetween(ascending, each.lower, each.upper);
}

void SmoothColors(ClassTable& table) {
    if (table.looks.size() < 2) return;
    const std::vector<QColor> colors =
        RampColors(table.looks.front().color, table.looks.back().color, static_cast<int>(table.looks.size()));
    for (std::size_t row = 0; row < colors.size(); ++row)
        table.looks[row].color = ClassColor(colors[row]);
}

int CountMissing(const ClassTable& table, int featuresOfTheme) {
    for (const ClassBreak& each : table.classes)
        featuresOfTheme -= each.count;
    return std::max(0, featuresOfTheme);
}

bool SaveData(const ClassTable& table) {
    ErrorTrap trap("SaveData");
    if (!Connection || !trap.Try([] { Connection->Begin(); })) return false;
    if (UpdateRows(table) && trap.Try([] { Connection->Commit(); })) return true;
    trap.Try([] { Connection->Rollback(); });
    return false;
}

PaletteRows PaletteOf(const ClassTable& table) {
    PaletteRows rows;
    for (std::size_t i = 0; i < table.classes.size(); ++i) {
        rows.push_back(RowOf(table.looks[i]));
        rows.back().from = BoundText(table.classes[i].from, table.decimals);
        rows.back().to = BoundText(table.classes[i].to, table.decimals);
    }
    ClassLook spacer = table.missing;
    spacer.legend.clear();
    spacer.color = Qt::white;
    rows.push_back(RowOf(spacer));
    rows.push_back(RowOf(table.missing));
    return rows;
}

void TakePalette(ClassTable& table, const PaletteContents& file, PaletteMode mode,
                 const std::vector<double>& ascending) {
    PaletteRows rows = PaletteOf(table);
    for (const int written : ApplyPalette(file, mode, rows)) {
        const auto row = static_cast<std::size_t>(written);
        const bool isMissing = row == rows.size() - 1;
        if (!isMissing && row >= table.looks.size()) continue;
        ClassLook& look = isMissing ? table.missing : table.looks[row];
        if (mode == PaletteMode::Labels)
            TakeLabel(look, rows[row]);
        else if (mode == PaletteMode::Colors)
            TakeColor(look, rows[row]);
        else if (!isMissing)
            TakeBounds(table.classes[row], rows[row], ascending);
    }
}

LayerSymbol SymbolOf(const ClassLook& look) {
    return SymbolOf(NumberFromColor(look.color), look.fill, look.marker, look.size);
}

LayerSymbol SymbolOfUnclassed(const ClassLook& missing) {
    LayerSymbol symbol = SymbolOf(missing);
    MarkUnclassed(symbol, missing);
    return symbol;
}

LayerSymbols SymbolsOfMapData(const MapLayer& layer, const ClassLook& missing) {
    LayerSymbols symbols;
    symbols.symbols = {SymbolOf(missing)};
    QHash<QString, int> numbers; // of symbols, by areas
    Records rows = Select(QStringLiteral("SELECT AreaID, [Color],[PStyle],[Style], [Size], BreakValue FROM _MapData"),
                          jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        LayerSymbol symbol = SymbolOf(static_cast<long>(rows.Number(std::size_t{1})), rows.Number(std::size_t{2}),
                                      rows.Number(std::size_t{3}), rows.Number(std::size_t{4}));
        if (rows.Number(std::size_t{5}) == 0) MarkUnclassed(symbol, missing);
        numbers.insert(rows.Text(std::size_t{0}).trimmed().toUpper(), NumberOf(symbol, symbols.symbols));
    }
    for (const QString& id : AreaIdsOf(layer))
        symbols.ofFeature.push_back(numbers.value(id, 0));
    return symbols;
}

} // namespace tessaro
