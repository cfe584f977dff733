#include "map/MapDraft.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace tessaro {

namespace {

const QString kOdd = QString::fromUtf8("a|b=c\nd % \"'\\ خريطة *?<>:/");

LayerDraft OddLayer() {
    LayerDraft layer;
    layer.file = {QStringLiteral("My|Layer.shp"), QStringLiteral("/maps/a=b")};
    layer.ofTheme = false;
    layer.visible = false;
    layer.symbol.color = QColor(1, 2, 3);
    layer.symbol.pattern = FillPattern::Cross;
    layer.symbol.outline = QColor(4, 5, 6);
    layer.symbol.outlineWidth = 0.1;
    layer.symbol.lineStyle = Qt::DashDotDotLine;
    layer.symbol.lineWidth = 2.5;
    layer.symbol.marker = Marker::Cross;
    layer.symbol.markerSize = 250;
    layer.labelOn = true;
    layer.labelField = QStringLiteral("Advanced Labels");
    layer.labelFont = QFont(QStringLiteral("Noto Sans"), 7);
    layer.labelFont.setItalic(true);
    layer.labelColor = QColor(7, 8, 9);
    layer.labelHalo = false;
    layer.labelsOverlap = true;
    return layer;
}

MapDraft OddDraft() {
    MapDraft draft;
    draft.theme = {kOdd, QStringLiteral("Total"), QString()};
    draft.advanced = true;
    draft.period = QStringLiteral("1990-1995");
    draft.sameClasses = false;
    draft.choice = BreakChoice::Geometric;
    draft.classes.kind = ThemeKind::Both;
    draft.classes.decimals = 3;
    draft.classes.classes = {{-1e300, 0.1, -1e300, 0.1000000001, 7}, {0.2, 1e17, 0.15, 1e17, 0}};
    draft.classes.looks.resize(2);
    draft.classes.looks[1] = {kOdd, QFont(QStringLiteral("Liberation Serif"), 20), QColor(0, 0, 1), 10, 3, 250};
    draft.classes.missing.color = QColor(9, 9, 9);
    draft.title = {QString(255, QLatin1Char('|')), {QStringLiteral("Noto Sans"), 10.5, true, false}};
    draft.subTitle.text = kOdd;
    draft.legendTitle.text = QStringLiteral("=1+1");
    draft.disclaimer = {kOdd + kOdd, {QString(), 8, false, true}};
    draft.titlesTyped = true;
    draft.layout = MapLayout::Horizontal;
    draft.smallMaps = true;
    draft.labelFormula = QStringLiteral("Trim(areaid)+' '+Trim(Areaname)+' '");
    draft.layers = {LayerDraft(), OddLayer()};
    draft.extent = {-170.5, -1.0 / 3, 12, 80};
    return draft;
}

} // namespace

TEST(MapDraftTest, ComesBackFromItsLines) {
    for (const MapDraft& draft : {MapDraft(), OddDraft()}) {
        const QString text = DraftText(draft);
        const auto read = ReadMapDraft(text);
        ASSERT_TRUE(read);
        EXPECT_EQ(DraftText(*read).toStdString(), text.toStdString());
        EXPECT_EQ(read->theme, draft.theme);
        EXPECT_EQ(read->title, draft.title);
        EXPECT_EQ(read->disclaimer, draft.disclaimer);
        EXPECT_EQ(read->layers, draft.layers);
        EXPECT_EQ(read->extent, draft.extent);
        EXPECT_EQ(read->classes.classes, draft.classes.classes);
        EXPECT_EQ(read->classes.looks, draft.classes.looks);
        EXPECT_EQ(read->classes.missing, draft.classes.missing);
        EXPECT_EQ(read->choice, draft.choice);
        EXPECT_EQ(read->layout, draft.layout);
        EXPECT_EQ(read->smallMaps, draft.smallMaps);
    }
    EXPECT_TRUE(ReadMapDraft(QStringLiteral("a later line=1\nlayout=vertical\n")));
}

TEST(MapDraftTest, RefusesWhatIsNoDraft) {
    for (const char* line : {"layout", "=square", "layout=oval", "decimals=16", "decimals=-1", "class=1|2|3",
                             "class=1|2|3|4|x", "class=1|2|1|2|5", "look=a||#fff|11|0|5", "look=a||#fff|0|4|5",
                             "look=a||#fff|0|0|0", "look=a||nocolour|0|0|5", "missing=", "layer=a|b", "extent=1|2|3",
                             "extent=1|2|3|4|5", "kind=lines", "title font=Sans|ten||", "same classes=perhaps"})
        EXPECT_FALSE(ReadMapDraft(QLatin1String(line))) << line;
    // Cut anywhere, a draft is read or refused, and nothing worse.
    const QString whole = DraftText(OddDraft());
    for (qsizetype length = 0; length < whole.size(); length += 7)
        static_cast<void>(ReadMapDraft(whole.left(length)));
}

} // namespace tessaro
