#include "map/classes/ClassTable.h"

#include "map/MapTest.h"
#include "map/classes/ClassColors.h"
#include "map/classes/ClassLabels.h"
#include "map/classes/ColorSchemes.h"

#include <cmath>

namespace tessaro::test {

namespace {

class ClassTableTest : public MapTest {
  protected:
    /// A table of the classes 0-9, 10-19 ... each with a colour of its own.
    static ClassTable TableOf(int classes, ThemeKind kind = ThemeKind::Polygons) {
        ClassTable table;
        table.kind = kind;
        ClassBreaks breaks;
        for (int i = 0; i < classes; ++i)
            breaks.push_back({10.0 * i, 10.0 * i + 9, 10.0 * i, 10.0 * i + 9, 1});
        SetClasses(table, breaks, 0);
        for (int i = 0; i < classes; ++i)
            table.looks[static_cast<std::size_t>(i)].color = QColor(100 + i, 50, 20);
        table.missing.color = QColor(1, 2, 3);
        table.missing.fill = 0;
        return table;
    }
};

constexpr auto kSaved =
    "SELECT AreaID, BreakValue, [Label], [Color], PStyle, [Style], [Size] FROM _MapData ORDER BY AreaID";

/// How a colour looks to eyes without the receptors for green or red, by the matrices of F. Viénot, H. Brettel and J.
/// Mollon (1999), in linear light.
double Distance(const QColor& a, const QColor& b, bool green) {
    const double matrix[2][3][3] = {{{0.11238, 0.88762, 0}, {0.11238, 0.88762, 0}, {0.00401, -0.00401, 1}},
                                    {{0.29275, 0.70725, 0}, {0.29275, 0.70725, 0}, {-0.02234, 0.02234, 1}}};
    double sum = 0;
    for (const auto& row : matrix[green ? 1 : 0]) {
        double value[2] = {0, 0};
        const QColor* const colors[] = {&a, &b};
        for (int i = 0; i < 2; ++i) {
            const double linear[] = {std::pow(colors[i]->redF(), 2.2), std::pow(colors[i]->greenF(), 2.2),
                                     std::pow(colors[i]->blueF(), 2.2)};
            for (int j = 0; j < 3; ++j)
                value[i] += row[j] * linear[j];
        }
        sum += std::pow(std::pow(std::max(0.0, value[0]), 1 / 2.2) - std::pow(std::max(0.0, value[1]), 1 / 2.2), 2);
    }
    return std::sqrt(sum);
}

/// Contrast of two colours, 1 to 21, as the Web Content Accessibility Guidelines 2.1 define it.
double Contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double share) {
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

} // namespace

TEST_F(ClassTableTest, SavesClassesFromTheLastToTheFirst) {
    PutValues(std::vector<double>{5, 9, 9.5, 15, 40});
    ClassTable table = TableOf(2);
    table.classes[1].from = 9; // shares a bound with the first
    table.looks[0].fill = 3;
    table.looks[1].fill = 11; // there is no such fill
    table.looks[1].legend = QStringLiteral("ten \"and\" more, l'été");
    EXPECT_TRUE(SaveData(table));
    EXPECT_EQ(Rows(kSaved), "A0001|1|0 - 9|1323620|3|0|0 A0002|1|0 - 9|1323620|3|0|0 A0003|2|ten \"and\" more, "
                            "l'été|1323621|0|0|0 A0004|2|ten \"and\" more, l'été|1323621|0|0|0 A0005|0||197121|0|0|0");
    // Saved anew with less, nothing of the former classes stays.
    EXPECT_TRUE(SaveData(TableOf(1)));
    EXPECT_EQ(Rows("SELECT AreaID, BreakValue, [Label] FROM _MapData WHERE BreakValue <> 1"),
              "A0003|0| A0004|0| A0005|0|");
}

TEST_F(ClassTableTest, SavesMarkersOfPointLayers) {
    const struct {
        ThemeKind kind;
        const char* saved;
    } cases[] = {{ThemeKind::Polygons, "A0001|1|0 - 9|1323620|4|0|0 A0002|0||197121|2|0|0"},
                 {ThemeKind::Points, "A0001|1|0 - 9|1323620|0|2|30 A0002|0||197121|0|3|7"},
                 {ThemeKind::Both, "A0001|1|0 - 9|1323620|4|2|30 A0002|0||197121|2|3|7"}};
    for (const auto& [kind, saved] : cases) {
        Execute(QStringLiteral("DELETE * FROM _MapData"));
        PutValues(std::vector<double>{5, 40});
        Execute(QStringLiteral("UPDATE _MapData SET PStyle = 0, [Style] = 0, [Size] = 0"));
        ClassTable table = TableOf(1, kind);
        table.looks[0].fill = 4;
        table.looks[0].marker = 2;
        table.looks[0].size = 30;
        table.missing.fill = 2;
        table.missing.marker = 3;
        table.missing.size = 7;
        EXPECT_TRUE(SaveData(table));
        EXPECT_EQ(Rows(kSaved), saved);
    }
}

TEST_F(ClassTableTest, LeavesTheTableWhenSavingFails) {
    PutValues(std::vector<QString>{QStringLiteral("5"), QStringLiteral("n/a")});
    EXPECT_FALSE(SaveData(TableOf(2)));
    EXPECT_EQ(Rows("SELECT DISTINCT [Label] FROM _MapData"), "");
    Connection.reset();
    EXPECT_FALSE(SaveData(TableOf(2)));
}

TEST_F(ClassTableTest, DrawsAreasAsSaved) {
    PutValues(std::vector<double>{5, 15, 40});
    ClassTable table = TableOf(2);
    table.looks[1].fill = 2;
    ASSERT_TRUE(SaveData(table));
    MapLayer layer;
    layer.fields = QStringList{QStringLiteral("ID_")};
    layer.columns = {{QStringLiteral("A0002"), QStringLiteral(" a0001 "), QStringLiteral("elsewhere"), QString(),
                      QStringLiteral("A0003")}};
    layer.features.resize(5);
    const LayerSymbols symbols = SymbolsOfMapData(layer, table.missing);
    ASSERT_EQ(symbols.ofFeature.size(), 5U);
    std::vector<QColor> colors;
    for (const int number : symbols.ofFeature)
        colors.push_back(symbols.symbols[static_cast<std::size_t>(number)].color);
    const QColor missing(1, 2, 3);
    EXPECT_EQ(colors, (std::vector<QColor>{QColor(101, 50, 20), QColor(100, 50, 20), missing, missing, missing}));
    EXPECT_EQ(symbols.symbols[static_cast<std::size_t>(symbols.ofFeature[0])].pattern, FillPattern::Horizontal);
    EXPECT_EQ(symbols.symbols.size(), 4U);
    const auto pattern = [&](int feature) {
        return symbols.symbols[static_cast<std::size_t>(symbols.ofFeature[static_cast<std::size_t>(feature)])].pattern;
    };
    EXPECT_EQ(pattern(2), FillPattern::Solid);
    EXPECT_EQ(pattern(4), FillPattern::DiagonalCross) << "has a value, which is in no class";
}

TEST_F(ClassTableTest, LegendsAreShownInReadingOrder) {
    const QChar left(0x200E);
    const QChar right(0x200F);
    const auto marked = [&](const char* number) { return right + (left + QLatin1String(number)) + right; };
    const struct {
        QString legend;
        QString shown;
    } cases[] = {{QStringLiteral("-4.6 - 4.9"), marked("-4.6") + QStringLiteral(" - ") + marked("4.9")},
                 {QStringLiteral("-3 - -1"), marked("-3") + QStringLiteral(" - ") + marked("-1")},
                 {QStringLiteral("-5"), marked("-5")},
                 {QStringLiteral("1 - 2 - 3"), QStringLiteral("1 - 2 - 3")},
                 {QStringLiteral("low - high"), QStringLiteral("low - high")},
                 {{}, {}}};
    for (const auto& [legend, shown] : cases) {
        Language = QStringLiteral("English [en]");
        EXPECT_EQ(LegendInReadingOrder(legend), legend);
        Language = QStringLiteral("Arabic [ar]");
        EXPECT_EQ(LegendInReadingOrder(legend).toStdString(), shown.toStdString());
    }
    ClassTable table;
    SetClasses(table, {{-4.6, 4.9, -4.6, 4.9, 1}}, 1);
    EXPECT_FALSE(table.looks[0].legend.contains(right)) << "only what is shown has marks";
}

TEST_F(ClassTableTest, ValuesInNoClassStandOutFromMissingOnesAndClasses) {
    const ClassLook missing = ClassTable().missing;
    EXPECT_EQ(missing.color, QColor(Qt::white));
    const LayerSymbol unclassed = SymbolOfUnclassed(missing);
    EXPECT_NE(unclassed.pattern, SymbolOf(missing).pattern);
    EXPECT_GE(Contrast(unclassed.color, Qt::white), 3);
    for (const ColorScheme& scheme : ColorSchemes()) {
        const QColor first = SchemeColors(scheme, 5).front();
        EXPECT_GE(std::max(Contrast(unclassed.color, first), Contrast(Qt::white, first)), 3) << scheme.caption;
    }
}

TEST_F(ClassTableTest, KeepsLooksWhenClassesChange) {
    ClassTable table = TableOf(3);
    SetClasses(table, ClassBreaks(5), 0);
    EXPECT_EQ(table.looks[1].color, QColor(101, 50, 20));
    EXPECT_EQ(table.looks[4].color, QColor(102, 50, 20));
    SmoothColors(table);
    EXPECT_EQ(table.looks[4].color, QColor(102, 50, 20));
    EXPECT_EQ(table.looks[2].color, QColor(101, 50, 20));
    SetClasses(table, {}, 0);
    SmoothColors(table);
    EXPECT_TRUE(table.looks.empty());
    SetClasses(table, ClassBreaks(2), 0);
    EXPECT_EQ(table.looks.size(), 2U);
}

TEST_F(ClassTableTest, EditsBoundsWithTheirLegends) {
    SysNumFormat = false;
    const std::vector<double> values{3, 12, 14};
    ClassTable table = TableOf(2);
    table.looks[0].legend = QStringLiteral("low");
    EXPECT_FALSE(EditClass(table, 0, Bound::To, 12, BreakChoice::EqualCount, values));
    EXPECT_EQ(table.looks[0].legend, QStringLiteral("low"));
    EXPECT_TRUE(EditClass(table, 0, Bound::To, 12, BreakChoice::Continuous, values));
    EXPECT_EQ(table.looks[0].legend.toStdString(), "0 - 12");
    EXPECT_EQ(table.looks[1].legend.toStdString(), "13 - 19");
    EXPECT_EQ(table.classes[0].count, 2);
    EXPECT_EQ(CountMissing(table, 7), 4);
    EXPECT_EQ(CountMissing(table, 1), 0);
}

TEST_F(ClassTableTest, TakesPalettesOfAnySize) {
    const ClassTable saved = TableOf(6);
    const PaletteContents file = ReadPalette(PaletteBytes(PaletteOf(saved), 0), 0);
    ClassTable table = TableOf(4);
    for (ClassLook& look : table.looks)
        look.color = Qt::red;
    table.missing.color = Qt::red;
    TakePalette(table, file, PaletteMode::Colors, {});
    EXPECT_EQ(table.looks[3].color, saved.looks[3].color);
    EXPECT_EQ(table.missing.color, saved.missing.color);
    TakePalette(table, file, PaletteMode::Range, {35, 36});
    EXPECT_EQ(table.classes[3].count, 2);
    PaletteContents odd = file;
    odd.rows[0].from = QStringLiteral("no number");
    odd.rows[1].from = QStringLiteral("99");
    odd.rows[2].color = QStringLiteral("99999999999");
    odd.rows[0].fontSize = QStringLiteral("-3");
    const ClassTable before = table;
    for (const PaletteMode mode : {PaletteMode::Range, PaletteMode::Colors, PaletteMode::Labels})
        TakePalette(table, odd, mode, {});
    EXPECT_EQ(table.classes[0].from, before.classes[0].from);
    EXPECT_EQ(table.classes[1].from, before.classes[1].from);
    EXPECT_EQ(table.looks[2].color, before.looks[2].color);
}

TEST_F(ClassTableTest, EveryPrefixOfAPaletteIsEndured) {
    const QByteArray bytes = PaletteBytes(PaletteOf(TableOf(4)), 0);
    for (qsizetype size = 0; size <= bytes.size(); ++size)
        for (const PaletteMode mode : {PaletteMode::Labels, PaletteMode::Range, PaletteMode::Colors}) {
            ClassTable table = TableOf(3);
            TakePalette(table, ReadPalette(bytes.left(size), 0), mode, {});
            EXPECT_EQ(table.looks.size(), 3U);
            for (const ClassBreak& each : table.classes)
                EXPECT_LE(each.from, each.to);
        }
}

TEST(ColorSchemesTest, NeighboursDifferToColourBlindEyes) {
    for (const ColorScheme& scheme : ColorSchemes())
        for (const int classes : {3, 5, 7}) {
            const std::vector<QColor> colors = SchemeColors(scheme, classes);
            ASSERT_EQ(static_cast<int>(colors.size()), classes);
            for (std::size_t i = 1; i < colors.size(); ++i)
                for (const bool green : {false, true})
                    EXPECT_GT(Distance(colors[i - 1], colors[i], green), 0.06) << scheme.caption << " " << i;
            for (const bool green : {false, true})
                EXPECT_GT(Distance(colors.front(), colors.back(), green), 0.3) << scheme.caption;
        }
    const ColorScheme& blues = ColorSchemes().front();
    EXPECT_EQ(SchemeColors(blues, 5), blues.anchors);
    EXPECT_EQ(SchemeColors(blues, 1), std::vector<QColor>{blues.anchors[2]});
    EXPECT_TRUE(SchemeColors(blues, 0).empty());
}

} // namespace tessaro::test
