#include "map/wizard/ThemeMap.h"

#include "map/wizard/IdentifiedFeature.h"
#include "map/wizard/LayerDrafts.h"
#include "map/wizard/MapTexts.h"
#include "map/wizard/MapWizardTest.h"
#include "map/wizard/ThemeLists.h"
#include "map/wizard/ThemeSymbols.h"
#include "session/Settings.h"

#include <QDir>

namespace tessaro::test {

namespace {

/// The map of the squares without a window.
class ThemeMapTest : public MapWizardTest {
  protected:
    ThemeMap Begun() {
        draft_ = NewMapDraft();
        ThemeMap theme(map_, draft_, [](const QString&, const QString&) { return QString(); });
        theme.Begin();
        return theme;
    }
    static MapAreas AreasOf(std::vector<double> values) {
        std::vector<MapArea> rows;
        for (const double value : values)
            rows.push_back({QStringLiteral("A%1").arg(rows.size()), {}, {}, {}, {}, QStringLiteral("2000"), value});
        return MapAreas(std::move(rows));
    }

    LayerStack map_;
    MapDraft draft_;
};

} // namespace

TEST_F(ThemeMapTest, BeginsWithTheFirstThemeAndTheMapsOfTheAreas) {
    const ThemeMap theme = Begun();
    EXPECT_EQ(draft_.theme, FirstTheme());
    ASSERT_EQ(map_.Count(), 1);
    EXPECT_EQ(theme.Kind(), ThemeKind::Polygons);
    EXPECT_GT(theme.Areas().Rows().size(), 0U);
    EXPECT_EQ(draft_.title.text, draft_.theme.indicator);
    EXPECT_FALSE(draft_.disclaimer.text.isEmpty());
    EXPECT_FALSE(draft_.disclaimer.text.contains(QLatin1Char('\n')));
}

TEST_F(ThemeMapTest, WorkingCopiesOfFormerMapsGo) {
    SetSetting(QStringLiteral("ENCRYPT_DECRYPT_FILES"), QStringLiteral("True"));
    ASSERT_TRUE(QDir().mkpath(MapFilesFolder));
    const QString former = MapFilesFolder + QStringLiteral("/Former.shp");
    ASSERT_TRUE(ReplaceFile(former, "x"));
    (void)Begun();
    EXPECT_FALSE(FileExists(former));
    EXPECT_TRUE(FileExists(MapFilesFolder + QStringLiteral("/Land.shp")));
    EXPECT_EQ(map_.Count(), 1);
}

TEST_F(ThemeMapTest, LeavesOutMapsWithoutAnyValueUnlessNoneHasOne) {
    WriteShapes(Base("Empty"), SHPT_POLYGON, {{{{50, 0}, {50, 10}, {60, 10}, {50, 0}}}});
    WriteTable(Base("Empty"), "UTF-8", {"ID_"}, {{"EUR"}});
    Run(QStringLiteral("UPDATE _SelArea SET MapFile = 'Empty.shp' WHERE AreaID = 'EUR'"));
    ThemeMap theme = Begun();
    ASSERT_EQ(map_.Count(), 1);
    EXPECT_EQ(map_.At(0).data.name, QStringLiteral("Land"));
    EXPECT_EQ(theme.Files().size(), 1U);
    // The user's own choice stands.
    MapFiles both = theme.Files();
    both.push_back({QStringLiteral("Empty.shp"), both.front().folder});
    EXPECT_TRUE(theme.Choose(draft_.theme, both));
    EXPECT_EQ(map_.Count(), 2);
    EXPECT_FALSE(theme.Choose(draft_.theme, both));
    EXPECT_TRUE(draft_.advanced);
}

TEST_F(ThemeMapTest, ChangesToSizedPointsAndBack) {
    ThemeMap theme = Begun();
    ASSERT_TRUE(theme.HasPoints());
    theme.ShowAsPoints(true);
    ASSERT_EQ(map_.Count(), 2);
    EXPECT_FALSE(IsOfTheme(map_.At(0))); // the pale areas below
    EXPECT_EQ(map_.At(1).data.name, QStringLiteral("Land_Points"));
    EXPECT_EQ(theme.Kind(), ThemeKind::Points);
    theme.ShowAsPoints(false);
    ASSERT_EQ(map_.Count(), 1);
    EXPECT_EQ(theme.Kind(), ThemeKind::Polygons);
    EXPECT_TRUE(IsOfTheme(map_.At(0)));
    QFile::remove(Base("Land_Points") + QStringLiteral(".shp"));
    EXPECT_FALSE(theme.HasPoints());
}

TEST_F(ThemeMapTest, PointsOfTheTopClassAreTheLargest) {
    ClassTable table;
    SizeByClass(table, 36); // without classes nothing happens
    table.classes = {{0, 10, 0, 10, 1}, {11, 100, 11, 100, 1}, {101, 1000, 101, 1000, 1}};
    table.looks.resize(3);
    SizeByClass(table, 36);
    EXPECT_EQ(table.looks[2].size, 36);
    EXPECT_GE(table.looks[0].size, 4);
    EXPECT_LT(table.looks[0].size, table.looks[1].size);
    EXPECT_LT(table.looks[1].size, table.looks[2].size);
}

TEST_F(ThemeMapTest, TellsTotalsFromRates) {
    const MapAreas wide = AreasOf({3, 50, 900});
    const struct {
        const char* indicator;
        const char* unit;
        std::vector<double> values;
        bool total;
    } cases[] = {
        {"Population", "Persons", {3, 50, 900}, true},   {"Population", "Million persons", {0, 50, 900}, true},
        {"GDP", "2011 US dollars", {3, 900}, true},      {"GDP per person", "2011 US dollars", {3, 900}, false},
        {"Literacy", "Per cent", {3, 900}, false},       {"Births", "Per 1,000 live births", {3, 900}, false},
        {"Population", "Persons", {80, 90, 100}, false}, {"Balance", "Dollars", {-5, 900}, false},
        {"Population", "Persons", {7}, false},           {"Population", "Persons", {}, false}};
    for (const auto& [indicator, unit, values, total] : cases)
        EXPECT_EQ(LooksLikeTotal({QLatin1String(indicator), {}, QLatin1String(unit)}, AreasOf(values)), total)
            << indicator << ", " << unit;
}

TEST_F(ThemeMapTest, DrawsAsTheSavedTableWould) {
    const ThemeMap theme = Begun();
    ClassTable table;
    table.decimals = SetDecimal();
    const int india = theme.Areas().RowOf(QStringLiteral("ASIIND"));
    ASSERT_GE(india, 0);
    const double value = *theme.Areas().Rows()[static_cast<std::size_t>(india)].number;
    SetClasses(table, {{value, value, value, value, 1}}, table.decimals);
    table.looks[0].color = Qt::red;
    ASSERT_TRUE(SaveData(table));
    const MapLayer& layer = map_.At(0).data;
    const LayerSymbols direct = SymbolsOfClasses(layer, theme.Areas(), table);
    const LayerSymbols saved = SymbolsOfMapData(layer, table.missing);
    ASSERT_EQ(direct.ofFeature.size(), layer.features.size());
    for (std::size_t i = 0; i < layer.features.size(); ++i)
        EXPECT_EQ(direct.symbols[static_cast<std::size_t>(direct.ofFeature[i])],
                  saved.symbols[static_cast<std::size_t>(saved.ofFeature[i])])
            << i;
    EXPECT_EQ(RowOfFeature(direct, 3), 2); // NOWHERE is missing: behind one class and the spacer
    EXPECT_EQ(FeaturesOfRow(direct, 0).size(), 1U);
    EXPECT_TRUE(FeaturesOfRow(direct, 1).empty());
    EXPECT_EQ(FeaturesOfRow(direct, 0).size() + FeaturesOfRow(direct, 2).size(), layer.features.size());
}

TEST_F(ThemeMapTest, IdentifiesTheFeaturesOfVisibleLayers) {
    const ThemeMap theme = Begun();
    const auto area = FeaturesNear(map_, {15, 5}, 2);
    ASSERT_EQ(area.size(), 1U);
    const QString all = Identify_list(map_, area.front()).join(QLatin1Char('\n'));
    EXPECT_TRUE(all.contains(QStringLiteral("India"))) << all.toStdString();
    EXPECT_TRUE(all.contains(QStringLiteral(" = 20"))) << all.toStdString(); // the year
    // Without a row, the layer's own table is told.
    const QStringList own = Identify_list(map_, FeaturesNear(map_, {35, 5}, 2).front());
    EXPECT_EQ(own.value(0).toStdString(), "Name1_ = Name of NOWHERE");
    EXPECT_EQ(own.value(1).toStdString(), "ID_ = NOWHERE");
    EXPECT_TRUE(FeaturesNear(map_, {15, 50}, 2).empty());
    map_.At(0).visible = false;
    EXPECT_TRUE(FeaturesNear(map_, {15, 5}, 2).empty());
    EXPECT_TRUE(Identify_list(map_, {}).isEmpty());
    const QLocale locale;
    EXPECT_EQ(PlaceText({-190, 12.25}), locale.toString(170.0, 'f', 4) + "; " + locale.toString(12.25, 'f', 4));
    EXPECT_EQ(PlaceText({500000.7, 12.9}), locale.toString(500000) + "; " + locale.toString(12));
}

TEST_F(ThemeMapTest, LayersComeBackFromTheirDrafts) {
    ThemeMap theme = Begun();
    theme.ShowAsPoints(true);
    map_.At(0).visible = false;
    map_.At(1).labels.on = true;
    const std::vector<LayerDraft> drafts = DraftsOf(map_);
    LayerStack other;
    EXPECT_TRUE(PutLayers(other, drafts, {}));
    EXPECT_EQ(DraftsOf(other), drafts);
    QFile::remove(Base("Land") + QStringLiteral(".shp"));
    const auto nowhere = [](const QString&, const QString&) { return QString(); };
    EXPECT_FALSE(PutLayers(other, drafts, nowhere));
    EXPECT_EQ(other.Count(), 1);
}

TEST_F(ThemeMapTest, ListsWhatIsInView) {
    EXPECT_EQ(IndicatorsInView(), (QStringList{QStringLiteral("Literacy"), QStringLiteral("Population")}));
    EXPECT_EQ(SubpopsOf(QStringLiteral("Literacy")), (QStringList{QStringLiteral("Female"), QStringLiteral("Total")}));
    EXPECT_EQ(UnitsOf(QStringLiteral("Literacy"), {}), QStringList{QStringLiteral("Percent")});
    EXPECT_TRUE(UnitsOf(QStringLiteral("O'Neill"), QStringLiteral("x'y")).isEmpty());
}

TEST_F(ThemeMapTest, TellsTheYearsWhereTheyDiffer) {
    Run(QStringLiteral("DELETE * FROM _MapData"));
    EXPECT_EQ(YearNote(), QString());
    const auto add = [](const char* id, const char* year) {
        Run(QStringLiteral(
                "INSERT INTO _MapData (AreaID, AreaName, DataValue, TimePeriod) VALUES ('%1', '%1', '5', '%2')")
                .arg(QLatin1String(id), QLatin1String(year)));
    };
    add("ASI", "1999");
    EXPECT_EQ(YearNote(), QString());
    EXPECT_FALSE(AreasOfMapData().PeriodsDiffer());
    add("ASIIND", "2004");
    EXPECT_EQ(YearNote().toStdString(), "Values of 1999 to 2004, the latest of each area.");
    const MapAreas areas = AreasOfMapData();
    EXPECT_TRUE(areas.PeriodsDiffer());
    EXPECT_EQ(
        ValueText(areas.Rows()[static_cast<std::size_t>(areas.RowOf(QStringLiteral(" asiind ")))], true).toStdString(),
        "5 (2004)");
}

} // namespace tessaro::test
