#include "map/output/PagePicture.h"

#include "map/MapPageTest.h"
#include "map/output/PagePainter.h"
#include "support/FullDisk.h"

#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QSvgRenderer>
#include <QXmlStreamReader>

namespace tessaro::test {

namespace {

class PagePictureTest : public MapPageTest {
  protected:
    void SetUp() override {
        MapPageTest::SetUp();
        draft.title = {QStringLiteral("Main title"), {QStringLiteral("Noto Sans"), 20, true, false}};
        draft.subTitle = {QStringLiteral("Second line"), {QStringLiteral("Noto Sans"), 12, false, true}};
        draft.legendTitle = {QStringLiteral("Per cent"), {QStringLiteral("Noto Sans"), 10, true, false}};
        draft.disclaimer = {QStringLiteral("No opinion"), {QStringLiteral("Noto Sans"), 8, false, false}};
    }
    void MakeMap(ThemeKind kind, int classes) {
        layers.Clear();
        draft.classes = {};
        draft.classes.kind = kind;
        draft.classes.missing.color = QColor(200, 30, 160);
        SetClassCount(classes);
        if (kind != ThemeKind::Points) AddMapLayer(LayerKind::Polygon, QStringLiteral("Data"), QStringLiteral("a"));
        if (kind != ThemeKind::Polygons) AddMapLayer(LayerKind::Point, QStringLiteral("Data"), QStringLiteral("b"));
        for (int i = 0; i < layers.Count(); ++i)
            layers.At(i).symbols.symbols[0] = SymbolOf(draft.classes.looks[0]);
    }
    [[nodiscard]] QImage Painted(const PageNotes& notes) const {
        QImage image(PageSize(draft.layout).toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        PaintPage(painter, Page(), notes, 1);
        return image;
    }
    [[nodiscard]] QByteArray Saved(const char* name) const {
        EXPECT_TRUE(SavePagePicture(Path(name), Page())) << name;
        return ReadWholeFile(Path(name)).value_or(QByteArray());
    }
};

/// Where a picture has this colour.
QRect PlaceOf(const QImage& image, const QColor& color) {
    QRect place;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == color) place |= QRect(x, y, 1, 1);
    return place;
}

QStringList TextsOf(const QByteArray& svg) {
    QStringList texts;
    QXmlStreamReader reader(svg);
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String("text"))
            texts << reader.readElementText().trimmed();
    return texts;
}

const PageNotes kNotes{QStringLiteral("Source"), {QStringLiteral("Census")}, QStringLiteral("2000 to 2009"), false};

} // namespace

TEST_F(PagePictureTest, EveryLayoutShowsMapAndLegend) {
    for (const MapLayout layout : {MapLayout::Square, MapLayout::Vertical, MapLayout::Horizontal})
        for (const bool rightToLeft : {false, true}) {
            MakeMap(ThemeKind::Polygons, 5);
            draft.layout = layout;
            PageNotes notes = kNotes;
            notes.rightToLeft = rightToLeft;
            const QImage image = Painted(notes);
            EXPECT_EQ(image.width() > image.height(), layout == MapLayout::Vertical);
            const QRect map = PlaceOf(image, draft.classes.looks[0].color); // with the swatch of the first class
            const QRect legend = PlaceOf(image, draft.classes.looks[4].color);
            const QRect missing = PlaceOf(image, draft.classes.missing.color);
            ASSERT_TRUE(legend.isValid() && missing.isValid()) << static_cast<int>(layout);
            EXPECT_GT(map.width(), 100);
            EXPECT_LT(legend.width(), 30);
            const bool onTheRight = legend.center().x() > image.width() / 2;
            if (layout == MapLayout::Vertical)
                EXPECT_EQ(onTheRight, !rightToLeft) << "beside the map";
            else
                EXPECT_GT(legend.top(), image.height() / 4) << "below the map";
            EXPECT_TRUE(QRect(20, 20, image.width() - 40, image.height() - 40).contains(map | legend | missing));
        }
}

TEST_F(PagePictureTest, AnyNumberOfClassesFindsRoom) {
    for (const ThemeKind kind : {ThemeKind::Polygons, ThemeKind::Points, ThemeKind::Both})
        for (const MapLayout layout : {MapLayout::Square, MapLayout::Vertical})
            for (const int classes : {1, 20, 200}) {
                MakeMap(kind, classes);
                draft.layout = layout;
                draft.legendTitle.text = QString(QStringLiteral("long title ")).repeated(20);
                const QImage image = Painted(kNotes);
                const QRect missing = PlaceOf(image, draft.classes.missing.color);
                EXPECT_TRUE(missing.isValid()) << "the last row is seen: " << classes << static_cast<int>(kind);
                EXPECT_TRUE(QRect(30, 30, image.width() - 60, image.height() - 60).contains(missing)) << classes;
            }
}

TEST_F(PagePictureTest, VectorFilesHoldTextsAndNoPixels) {
    PutValues(std::vector<double>{1, 2});
    ChangeData(QStringLiteral("UPDATE _MapData SET Source = 'Census ' & AreaID, TimePeriod = '199' & DataValue"));
    MakeMap(ThemeKind::Both, 11);
    for (int fill = 0; fill < 11; ++fill)
        draft.classes.looks[static_cast<std::size_t>(fill)].fill = fill;
    const QByteArray svg = Saved("page.svg");
    EXPECT_FALSE(svg.contains("<image"));
    EXPECT_FALSE(svg.contains("non-scaling-stroke")) << "lines grow with the picture";
    const QString texts = TextsOf(svg).join(QLatin1Char('|'));
    for (const char* const each : {"Main title", "Second line", "Per cent", "Class 11", "Missing", "Census A0001",
                                   "Census A0002", "1991", "1992", "No opinion"})
        EXPECT_TRUE(texts.contains(QLatin1String(each))) << each << " in " << texts.toStdString();
    EXPECT_TRUE(svg.contains("Noto Sans"));
    QSvgRenderer renderer(svg);
    EXPECT_NEAR(renderer.defaultSize().height() / double(renderer.defaultSize().width()), 842.0 / 595, 0.01);
    const QByteArray pdf = Saved("page.pdf");
    EXPECT_FALSE(pdf.contains("/Subtype /Image"));
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {Path("page.pdf"), QStringLiteral("-")});
    ASSERT_TRUE(reader.waitForFinished());
    EXPECT_TRUE(reader.readAllStandardOutput().contains("Census A0002"));
}

TEST_F(PagePictureTest, WhatReachesOutOfTheMapIsNotSeen) {
    MakeMap(ThemeKind::Polygons, 1);
    const MapPage page{draft, layers, {4, 4, 6, 6}, {400, 400}}; // in the midst of the square
    for (const char* const name : {"page.png", "page.svg"}) {
        ASSERT_TRUE(SavePagePicture(Path(name), page));
        QImage image(595, 842, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        if (QLatin1String(name) == QLatin1String("page.svg"))
            QSvgRenderer(Path(name)).render(&painter);
        else
            painter.drawImage(image.rect(), QImage(Path(name)));
        painter.end();
        const QRect map = PlaceOf(image, draft.classes.looks[0].color);
        EXPECT_GT(map.width(), 300) << name;
        EXPECT_TRUE(QRect(38, 38, 520, 770).contains(map)) << name;
    }
}

TEST_F(PagePictureTest, PixelsAreThoseOfPrint) {
    MakeMap(ThemeKind::Polygons, 3);
    const QImage image = QImage::fromData(Saved("page.png"));
    EXPECT_EQ(image.size(), QSize(2479, 3508));
    EXPECT_NEAR(image.dotsPerMeterX() * 0.0254, 300, 0.1);
}

TEST_F(PagePictureTest, OddMapsAndPlacesAreTaken) {
    EXPECT_TRUE(SavePagePicture(Path("empty.pdf"), Page())) << "no layer, no class";
    MakeMap(ThemeKind::Polygons, 2);
    draft.title.text = QString(255, QLatin1Char('W'));
    draft.disclaimer.text = QString(QStringLiteral("<&>\"' ")).repeated(2000);
    EXPECT_TRUE(SavePagePicture(Path("odd.svg"), {draft, layers, {}, {}}));
    EXPECT_FALSE(SavePagePicture(Path("none/page.svg"), Page()));
    EXPECT_FALSE(SavePagePicture(Path("page.unknown"), Page()));
    ASSERT_TRUE(ReplaceFile(Path("page.png"), "old"));
    {
        const FullDisk full(1000);
        EXPECT_FALSE(SavePagePicture(Path("page.png"), Page()));
    }
    EXPECT_EQ(*ReadWholeFile(Path("page.png")), "old");
}

} // namespace tessaro::test
