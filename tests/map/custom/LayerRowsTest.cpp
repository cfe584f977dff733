#include "map/custom/LayerRows.h"

#include "map/custom/CustomTest.h"
#include "map/custom/LayerLooks.h"

#include <QFile>

namespace tessaro::test {

namespace {

class LayerRowsTest : public CustomTest {
  protected:
    void SetUp() override {
        CustomTest::SetUp();
        AddTo(map_, MakeLayer(QStringLiteral("Theme"), SHPT_POLYGON, {"ID_"}, {{"1"}}), kDataTag);
    }
    QString MakePoints(const char* base, const QString& folder = {}) const {
        return MakeLayer(QLatin1String(base), SHPT_POINT, {"ID_", "Name1_"}, {{"1", "one"}}, folder);
    }
    static std::string Names(const LayerRows& rows) {
        QStringList names;
        for (int row = 0; row < rows.Count(); ++row)
            names << rows.At(row).data.name;
        return names.join(QLatin1Char(' ')).toStdString();
    }

    LayerStack map_;
    QString reason_;
};

} // namespace

TEST_F(LayerRowsTest, ListsTheTopmostFirst) {
    LayerRows rows(map_);
    ASSERT_TRUE(rows.Add(MakePoints("A"), reason_));
    ASSERT_TRUE(rows.Add(MakePoints("B"), reason_));
    EXPECT_EQ(Names(rows), "B A Theme");
    EXPECT_EQ(map_.At(rows.LayerOf(0)).data.name, QStringLiteral("B"));
    EXPECT_EQ(rows.At(0).tag, QStringLiteral("Customize - ") + maps_);
    EXPECT_TRUE(rows.At(0).labels.texts.empty());
    rows.At(1).labels.field = QStringLiteral("Comm_Area Id");
    SetStyle(rows.At(1), 2);
    EXPECT_TRUE(rows.Promote(1));
    EXPECT_EQ(Names(rows), "A B Theme");
    EXPECT_EQ(rows.At(0).labels.field, QStringLiteral("Comm_Area Id")) << "all of a layer moves with it";
    EXPECT_EQ(StyleOf(rows.At(0)), 2);
    EXPECT_TRUE(rows.Demote(0));
    EXPECT_TRUE(rows.Demote(1));
    EXPECT_EQ(Names(rows), "B Theme A");
    for (const int row : {0, -1, 3})
        EXPECT_FALSE(rows.Promote(row));
    for (const int row : {2, -1, 3})
        EXPECT_FALSE(rows.Demote(row));
    EXPECT_EQ(Names(rows), "B Theme A");
}

TEST_F(LayerRowsTest, RemovesWhatIsNotOfTheTheme) {
    LayerRows rows(map_);
    const QString other = Folder() + QStringLiteral("/elsewhere");
    ASSERT_TRUE(QDir().mkpath(other));
    ASSERT_TRUE(rows.Add(MakePoints("A", other), reason_));
    EXPECT_FALSE(rows.MayRemove(1));
    rows.Remove(1);
    rows.Remove(7);
    EXPECT_EQ(Names(rows), "A Theme");
    rows.Remove(0);
    EXPECT_EQ(Names(rows), "Theme");
    EXPECT_TRUE(QFile::exists(other + QStringLiteral("/A.shp")));
    QFile damaged(maps_ + QStringLiteral("/bad.shp"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("no shapes");
    damaged.close();
    for (const char* file : {"/bad.shp", "/gone.shp"}) {
        reason_.clear();
        EXPECT_FALSE(rows.Add(maps_ + QLatin1String(file), reason_)) << file;
    }
    EXPECT_EQ(Names(rows), "Theme");
}

TEST_F(LayerRowsTest, RemembersLayersForTheNextSession) {
    const QString other = Folder() + QStringLiteral("/elsewhere");
    ASSERT_TRUE(QDir().mkpath(other));
    {
        LayerRows rows(map_);
        for (const QString& file : {MakePoints("A"), MakePoints("B", other), MakePoints("C")})
            ASSERT_TRUE(rows.Add(file, reason_));
        rows.SetRemembered(1, true);
        rows.SetRemembered(2, true);
        rows.SetRemembered(3, true); // the theme's own layer isn't remembered
        EXPECT_FALSE(rows.IsRemembered(0));
        EXPECT_TRUE(rows.Save());
    }
    const RememberedLayers layers{{QStringLiteral("A"), {}}, {QStringLiteral("B"), other}};
    EXPECT_EQ(LoadLayerList(), layers);
    LayerStack next;
    AddTo(next, maps_ + QStringLiteral("/Theme.shp"), kDataTag);
    RestoreLayerList(next);
    LayerRows rows(next);
    EXPECT_EQ(Names(rows), "B A Theme");
    rows.Restore();
    EXPECT_EQ(Names(rows), "B A Theme") << "none twice";
    EXPECT_TRUE(rows.IsRemembered(0));
    rows.Remove(0);
    QFile::remove(other + QStringLiteral("/B.shp"));
    EXPECT_TRUE(rows.Save());
    EXPECT_EQ(LoadLayerList().size(), 1U);
    rows.SetRemembered(0, false);
    EXPECT_TRUE(rows.Save());
    EXPECT_FALSE(QFile::exists(maps_ + QStringLiteral("/LoadChkSHP.chk")));
}

TEST_F(LayerRowsTest, DropsRememberedFilesThatAreGone) {
    ASSERT_TRUE(SaveLayerList(
        {{QStringLiteral("gone"), {}}, {QStringLiteral("../../etc/passwd"), {}}, {QStringLiteral("theme"), {}}}));
    LayerRows rows(map_);
    rows.Restore();
    EXPECT_EQ(Names(rows), "Theme");
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(LayerRowsTest, AddsBuffersOnTop) {
    LayerRows rows(map_);
    ASSERT_TRUE(rows.Add(MakePoints("Cities"), reason_));
    EXPECT_TRUE(rows.MayBuffer(0));
    EXPECT_FALSE(rows.MayBuffer(1)) << "polygons";
    EXPECT_FALSE(rows.MayBuffer(-1));
    EXPECT_FALSE(rows.HasBuffer(0));
    ASSERT_TRUE(rows.AddBuffer(0, 50, reason_)) << reason_.toStdString();
    EXPECT_EQ(Names(rows), "Buffer_Cities Cities Theme");
    EXPECT_EQ(rows.At(0).tag, QStringLiteral("Customize - ") + maps_ + QStringLiteral("/Buffers"));
    EXPECT_TRUE(rows.HasBuffer(1));
    EXPECT_EQ(rows.At(0).data.features.size(), 1U);
    rows.Remove(0);
    EXPECT_FALSE(rows.HasBuffer(0));
    EXPECT_TRUE(QFile::exists(maps_ + QStringLiteral("/Buffers/Buffer_Cities.shp")));
    QFile::remove(maps_ + QStringLiteral("/Cities.shp"));
    EXPECT_FALSE(rows.AddBuffer(0, 50, reason_));
    EXPECT_FALSE(reason_.isEmpty());
    EXPECT_EQ(Names(rows), "Cities Theme");
}

TEST_F(LayerRowsTest, ChangesLooks) {
    LayerRows rows(map_);
    ASSERT_TRUE(rows.Add(MakePoints("Points"), reason_));
    WriteShapes(maps_ + QStringLiteral("/Lines"), SHPT_ARC, {{{{0, 0}, {1, 1}}}});
    ASSERT_TRUE(rows.Add(maps_ + QStringLiteral("/Lines.shp"), reason_));
    ASSERT_TRUE(rows.Add(MakeLayer(QStringLiteral("Squares"), SHPT_POLYGON, {"ID_"}, {{"1"}}), reason_));
    const struct {
        int row;
        int styles;
        double mostWidth;
        double leastWidth;
    } cases[] = {{0, 11, 20, 0}, {1, 5, 20, 0.5}, {2, 4, 250, 1}};
    for (const auto& [row, styles, mostWidth, leastWidth] : cases) {
        StackedLayer& layer = rows.At(row);
        EXPECT_EQ(StylesOf(layer.data.kind), styles);
        for (int style = 0; style < styles; ++style) {
            SetStyle(layer, style);
            EXPECT_EQ(StyleOf(layer), style) << row;
        }
        SetStyle(layer, styles);
        SetStyle(layer, -1);
        EXPECT_EQ(StyleOf(layer), styles - 1) << row;
        SetWidth(layer, 9999);
        EXPECT_EQ(WidthOf(layer), mostWidth) << row;
        SetWidth(layer, -1);
        EXPECT_EQ(WidthOf(layer), leastWidth) << row;
        EXPECT_TRUE(MayStyle(layer) && MayColor(layer) && MayWiden(layer)) << row;
    }
    EXPECT_EQ(rows.At(1).symbols.symbols[0].lineStyle, Qt::DashDotDotLine);
    StackedLayer& theme = rows.At(3);
    EXPECT_FALSE(MayStyle(theme) || MayColor(theme));
    theme.symbols.symbols.assign(3, LayerSymbol());
    SetWidth(theme, 2);
    SetOutline(theme, Qt::red);
    LayerSymbols next;
    next.symbols.assign(4, LayerSymbol());
    next.symbols[3].color = Qt::blue;
    KeepOutlines(next, theme.symbols);
    EXPECT_EQ(next.symbols[3].outline, QColor(Qt::red));
    EXPECT_EQ(next.symbols[3].outlineWidth, 2);
    EXPECT_EQ(next.symbols[3].color, QColor(Qt::blue));
}

} // namespace tessaro::test
