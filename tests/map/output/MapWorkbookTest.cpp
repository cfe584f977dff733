#include "map/output/MapWorkbook.h"

#include "MapOutputTest.h"
#include "layers/FillPattern.h"
#include "session/Templates.h"
#include "support/WriteLimit.h"

#include <QFileInfo>
#include <QProcess>

#include <csignal>
#include <map>

namespace tessaro::test {

namespace {

/// Where the layouts have their cells.
struct Places {
    MapLayout layout;
    const char* name;
    double scale;
    int legendRow;
    int legendColumn;
    int sourceRow;
};
constexpr Places kPlaces[] = {{MapLayout::Vertical, "vertical", 2.3, 4, 11, 55},
                              {MapLayout::Horizontal, "horizontal", 1.5, 36, 2, 55},
                              {MapLayout::Square, "square", 1.7, 46, 2, 65}};
constexpr QSize kScreen{320, 200};

class MapWorkbookTest : public MapOutputTest {
  protected:
    static QString Make(const MapDraft& draft, const LayerStack& layers, QSize size = kScreen) {
        return MakeMapWorkbook({draft, layers, layers.FullExtent(), size});
    }
    /// The pages of a workbook as it is printed: their texts.
    [[nodiscard]] QStringList PagesOf(const QString& file) const {
        const QString pdf = Folder() + QStringLiteral("/map.pdf");
        office::Workbook book = Open(file);
        book.ExportPdf(pdf);
        book.Close(false);
        QProcess reader;
        reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        reader.waitForFinished();
        QStringList pages = QString::fromUtf8(reader.readAllStandardOutput()).split(QLatin1Char('\f'));
        pages.removeLast();
        return pages;
    }
};

bool Near(const QRectF& a, const QRectF& b) {
    return std::abs(a.x() - b.x()) < 1 && std::abs(a.y() - b.y()) < 1 && std::abs(a.width() - b.width()) < 1 &&
           std::abs(a.height() - b.height()) < 1;
}

} // namespace

TEST_F(MapWorkbookTest, EachLayoutHasItsTextsInTheirPlaces) {
    PutFourValues();
    const LayerStack layers = Squares(FourIds());
    for (const Places& places : kPlaces) {
        MapDraft draft = DraftOf(3);
        draft.layout = places.layout;
        draft.classes.looks[1].legend = QStringLiteral("ten and more");
        draft.classes.looks[1].font = QFont(QStringLiteral("Liberation Serif"), 9, QFont::Bold, true);
        const QString file = Make(draft, layers);
        EXPECT_TRUE(QFileInfo(file).fileName().startsWith(QStringLiteral("Map")));
        Keep(file, QStringLiteral("map-%1.xls").arg(QLatin1String(places.name)));
        const auto sheets = ReadXls(file);
        ASSERT_EQ(sheets.size(), 3U);
        const ReadSheet& map = sheets[0];
        const int legend = places.legendRow;
        const int column = places.legendColumn;
        EXPECT_EQ(map.Text(1, 1), draft.title.text);
        EXPECT_EQ(map.Look(1, 1).value(QLatin1String("font")).toString(), QStringLiteral("Times New Roman"));
        EXPECT_EQ(map.Look(1, 1).value(QLatin1String("size")).toDouble(), 18);
        EXPECT_TRUE(map.Look(1, 1).value(QLatin1String("bold")).toBool());
        EXPECT_EQ(map.Text(2, 1), draft.subTitle.text);
        EXPECT_TRUE(map.Look(2, 1).value(QLatin1String("italic")).toBool());
        EXPECT_EQ(map.Text(legend, column), draft.legendTitle.text);
        EXPECT_EQ(map.Text(legend + 1, column + 1), draft.classes.looks[0].legend);
        EXPECT_EQ(map.Text(legend + 2, column + 1), QStringLiteral("ten and more"));
        EXPECT_EQ(map.Look(legend + 2, column + 1).value(QLatin1String("size")).toDouble(), 9);
        EXPECT_TRUE(map.Look(legend + 2, column + 1).value(QLatin1String("italic")).toBool());
        EXPECT_TRUE(map.At(legend + 4, column + 1).isNull());
        EXPECT_EQ(map.Text(legend + 5, column + 1), QStringLiteral("Missing data"));
        EXPECT_EQ(map.Text(places.sourceRow, 1), QStringLiteral("Source"));
        if (places.layout != MapLayout::Square) { // the reader tells looks of the first sixty rows
            EXPECT_TRUE(map.Look(places.sourceRow, 1).value(QLatin1String("bold")).toBool());
        }
        EXPECT_EQ(map.Text(places.sourceRow + 1, 1), QStringLiteral("Census"));
        EXPECT_EQ(map.Text(places.sourceRow + 2, 1), QStringLiteral("Survey"));
        EXPECT_EQ(map.Text(places.sourceRow + 3, 1), draft.disclaimer.text);
        EXPECT_EQ(map.Text(places.sourceRow + 4, 1), QStringLiteral("A footer"));
        EXPECT_EQ(map.rows.size(), places.sourceRow + 4);
        EXPECT_FALSE(map.gridLines);
        EXPECT_FALSE(map.rightToLeft);
    }
}

TEST_F(MapWorkbookTest, DataAndSourcesHaveSheetsOfTheirOwn) {
    PutFourValues();
    MapDraft draft = DraftOf(3);
    draft.classes.decimals = 2;
    const auto sheets = ReadXls(Make(draft, Squares(FourIds())));
    ASSERT_EQ(sheets.size(), 3U);
    const ReadSheet& data = sheets[1];
    EXPECT_EQ(data.Text(3, 1), QStringLiteral("Indicator"));
    EXPECT_EQ(data.Text(3, 2), draft.theme.indicator);
    const QStringList heads{QStringLiteral("Time"),       QStringLiteral("Area ID"), QStringLiteral("Area name"),
                            QStringLiteral("Data value"), QStringLiteral("Unit"),    QStringLiteral("Subgroup"),
                            QStringLiteral("Source")};
    for (int column = 1; column <= heads.size(); ++column)
        EXPECT_EQ(data.Text(5, column).toLower(), heads[column - 1].toLower());
    EXPECT_EQ(data.rows.size(), 9);
    EXPECT_EQ(data.Text(8, 2), QStringLiteral("A0003"));
    EXPECT_EQ(data.Text(8, 3), QStringLiteral("Area 0003"));
    EXPECT_EQ(data.At(8, 4).toDouble(), 1234.25);
    EXPECT_EQ(data.Text(7, 7), QStringLiteral("Census"));
    EXPECT_EQ(data.Look(8, 4).value(QLatin1String("format")).toString(),
              SysNumFormat ? QStringLiteral("#,##0.00") : QStringLiteral("0.00"));
    EXPECT_EQ(data.Look(8, 4).value(QLatin1String("align")).toInt(), 3);
    EXPECT_EQ(data.Look(8, 3).value(QLatin1String("align")).toInt(), 1);
    EXPECT_EQ(sheets[2].Text(1, 1), QStringLiteral("Source"));
    EXPECT_EQ(sheets[2].Text(2, 2), QStringLiteral("Census"));
    EXPECT_EQ(sheets[2].Text(3, 2), QStringLiteral("Survey"));
    EXPECT_EQ(sheets[2].rows.size(), 3);
}

TEST_F(MapWorkbookTest, TheMapIsAsManyTimesAsLargeAsTheLayoutSays) {
    PutFourValues();
    const LayerStack layers = Squares(FourIds());
    for (const Places& places : kPlaces) {
        MapDraft draft = DraftOf(3);
        draft.layout = places.layout;
        const office::Workbook book = Open(Make(draft, layers));
        const office::Worksheet sheet = book.Sheet(1);
        EXPECT_EQ(book.ActiveSheet().Number(), 1);
        const QRectF picture = sheet.ShapeNamed(QStringLiteral("Picture 1")).Place();
        const QRectF wanted(CellOf(sheet, 4, 2).topLeft(), QSizeF(kScreen) * places.scale * 0.75);
        EXPECT_TRUE(Near(picture, wanted)) << places.name << " " << picture.x() << " " << picture.y() << " "
                                           << picture.width() << " " << picture.height();
        // The map ends above what stands below it.
        const int below = places.legendColumn == 2 ? places.legendRow : places.sourceRow;
        EXPECT_LT(picture.bottom(), CellOf(sheet, below, 1).top());
        EXPECT_LE(picture.right(), CellOf(sheet, 4, 10).left() + 1);
    }
}

TEST_F(MapWorkbookTest, SwatchesStandWithinTheirCells) {
    const LayerStack layers = Squares(FourIds());
    int number = 0;
    for (const ThemeKind kind : {ThemeKind::Polygons, ThemeKind::Points, ThemeKind::Both}) {
        const Places& places = kPlaces[number++];
        MapDraft draft = DraftOf(4, kind);
        draft.layout = places.layout;
        for (int i = 0; i < 4; ++i) {
            draft.classes.looks[static_cast<std::size_t>(i)].marker = i;
            draft.classes.looks[static_cast<std::size_t>(i)].size = 4 + 12 * i;
        }
        const office::Workbook book = Open(Make(draft, layers));
        const office::Worksheet sheet = book.Sheet(1);
        const int shapesOfRow = kind == ThemeKind::Both ? 2 : 1;
        EXPECT_EQ(sheet.ShapeNames().size(), static_cast<std::size_t>(1 + 5 * shapesOfRow));
        for (const QString& name : sheet.ShapeNames()) {
            if (!name.startsWith(QStringLiteral("Legend "))) continue;
            const int row = name.section(QLatin1Char(' '), 1, 1).toInt();
            const office::Shape shape = sheet.ShapeNamed(name);
            const QRectF cell = CellOf(sheet, places.legendRow + row, places.legendColumn);
            EXPECT_TRUE(cell.adjusted(-0.5, 0, 0.5, 0).contains(shape.Place())) << places.name << name.toStdString();
            EXPECT_NEAR(shape.Place().center().y(), cell.center().y(), 0.5);
            const bool missing = row == 6;
            const ClassLook& look =
                missing ? draft.classes.missing : draft.classes.looks[static_cast<std::size_t>(row - 1)];
            const bool marker = kind == ThemeKind::Points || name.endsWith(QStringLiteral("marker"));
            const bool plain = marker || look.fill == static_cast<int>(FillPattern::Solid);
            EXPECT_EQ(shape.FillColor(), plain ? look.color : QColor()) << name.toStdString();
            constexpr office::ShapeKind kForms[] = {office::ShapeKind::Ellipse, office::ShapeKind::Rectangle,
                                                    office::ShapeKind::Triangle, office::ShapeKind::Cross};
            EXPECT_EQ(shape.Kind(), marker ? kForms[look.marker] : office::ShapeKind::Rectangle);
        }
        if (kind == ThemeKind::Points) {
            // Markers keep their proportions.
            const auto width = [&](int row) {
                return sheet.ShapeNamed(QStringLiteral("Legend %1").arg(row)).Place().width();
            };
            EXPECT_NEAR(width(4) / width(1), 40.0 / 4, 0.5);
            EXPECT_NEAR(width(2) / width(1), 16.0 / 4, 0.3);
        }
    }
}

TEST_F(MapWorkbookTest, EveryFillIsTiledAsOnTheMap) {
    MapDraft draft = DraftOf(11);
    for (int i = 0; i < 11; ++i)
        draft.classes.looks[static_cast<std::size_t>(i)].fill = i;
    const QString file = Make(draft, Squares(FourIds()));
    Keep(file, QStringLiteral("fills.xls"));
    const office::Workbook book = Open(file);
    for (int i = 0; i < 11; ++i) {
        const office::Shape shape = book.Sheet(1).ShapeNamed(QStringLiteral("Legend %1").arg(i + 1));
        const QColor color = draft.classes.looks[static_cast<std::size_t>(i)].color;
        const QImage tile = shape.PatternTile();
        const QImage onMap = PatternBrush(PatternOfNumber(i), color, 1).textureImage();
        EXPECT_EQ(tile.isNull(), onMap.isNull()) << i;
        if (PatternOfNumber(i) == FillPattern::Solid) {
            EXPECT_EQ(shape.FillColor(), color);
        } else {
            EXPECT_FALSE(shape.FillColor().isValid()) << i;
        }
        if (tile.isNull() || onMap.isNull()) continue;
        ASSERT_EQ(tile.size(), onMap.size());
        for (int y = 0; y < kTile; ++y)
            for (int x = 0; x < kTile; ++x)
                EXPECT_EQ(tile.pixelColor(x, y).rgb(),
                          qAlpha(onMap.pixel(x, y)) == 0 ? QColor(Qt::white).rgb() : color.rgb())
                    << i << " " << x << "," << y;
    }
}

TEST_F(MapWorkbookTest, LongLegendsAndTitlesStayOnOnePage) {
    PutFourValues();
    const LayerStack layers = Squares(FourIds());
    for (const Places& places : kPlaces)
        for (const int classes : {16, 200}) {
            MapDraft draft = DraftOf(classes);
            draft.layout = places.layout;
            draft.title.text = QStringLiteral("wide words of a title ").repeated(12).left(255);
            draft.legendTitle.text = draft.title.text;
            const QString file = Make(draft, layers, {900, 600});
            Keep(file, QStringLiteral("long-%1-%2.xls").arg(QLatin1String(places.name)).arg(classes));
            const QStringList pages = PagesOf(file);
            ASSERT_GE(pages.size(), 3) << places.name << classes;
            EXPECT_TRUE(pages[0].contains(QStringLiteral("A footer"))) << places.name << classes;
            EXPECT_TRUE(pages[1].contains(QStringLiteral("A0001"))) << places.name << classes;
            const office::Workbook book = Open(file);
            const office::Worksheet sheet = book.Sheet(1);
            const QRectF map = sheet.ShapeNamed(QStringLiteral("Picture 1")).Place();
            for (const int line : {1, classes / 2 + 1, classes + 2})
                EXPECT_FALSE(sheet.ShapeNamed(QStringLiteral("Legend %1").arg(line)).Place().intersects(map))
                    << places.name << classes << " " << line;
            const ReadSheet read = ReadXls(file).front();
            EXPECT_EQ(read.Text(1, 1), draft.title.text);
        }
}

TEST_F(MapWorkbookTest, TheDataRepeatsItsHeadsOnEachPage) {
    PutValues(std::vector<double>(200, 7));
    const QStringList pages = PagesOf(Make(DraftOf(3), Squares(FourIds())));
    ASSERT_GE(pages.size(), 4);
    for (int page = 1; page <= 2; ++page)
        EXPECT_TRUE(pages[page].contains(QStringLiteral("Area ID"), Qt::CaseInsensitive)) << page;
    EXPECT_TRUE(pages[0].contains(QStringLiteral("Facts & figures")));
    EXPECT_FALSE(pages[2].contains(QStringLiteral("Indicator")));
}

TEST_F(MapWorkbookTest, DifferentYearsAreTold) {
    PutFourValues();
    const LayerStack layers = Squares(FourIds());
    MapDraft draft = DraftOf(3);
    EXPECT_TRUE(ReadXls(Make(draft, layers))[0].At(46 + 6, 2).isNull());
    ChangeData(QStringLiteral("UPDATE _MapData SET TimePeriod = '1990' WHERE AreaID = 'A0002'"));
    const QString note = ReadXls(Make(draft, layers))[0].Text(46 + 6, 2);
    EXPECT_TRUE(note.contains(QStringLiteral("1990")) && note.contains(QStringLiteral("2000"))) << note.toStdString();
}

TEST_F(MapWorkbookTest, LanguagesFromTheRightMirrorThePage) {
    PutFourValues();
    Language = QStringLiteral("Arabic [ar]");
    const LayerStack layers = Squares(FourIds());
    for (const Places& places : kPlaces) {
        MapDraft draft = DraftOf(3);
        draft.layout = places.layout;
        const QString file = Make(draft, layers);
        Keep(file, QStringLiteral("map-%1-ar.xls").arg(QLatin1String(places.name)));
        const ReadSheet map = ReadXls(file).front();
        EXPECT_TRUE(map.rightToLeft);
        EXPECT_EQ(map.Look(1, 1).value(QLatin1String("align")).toInt(), 3);
        const office::Workbook book = Open(file);
        const office::Worksheet sheet = book.Sheet(1);
        const QRectF swatch = sheet.ShapeNamed(QStringLiteral("Legend 1")).Place();
        const QRectF cell = CellOf(sheet, places.legendRow + 1, places.legendColumn);
        EXPECT_TRUE(cell.adjusted(-0.5, 0, 0.5, 0).contains(swatch)) << places.name;
        EXPECT_NEAR(sheet.ShapeNamed(QStringLiteral("Picture 1")).Place().left(), CellOf(sheet, 4, 2).left(), 0.5);
    }
}

TEST_F(MapWorkbookTest, WhatGoesWrongLeavesNoFile) {
    PutFourValues();
    const LayerStack layers = Squares(FourIds());
    const MapDraft draft = DraftOf(3);
    office::SpreadsheetApplication& application = office::SpreadsheetApplication::Instance();
    {
        application.Quit();
        application.Start();
        const WriteLimit full(application.ProcessId(), 2048);
        EXPECT_THROW((void)Make(draft, layers), office::Error);
    }
    application.Quit();
    application.Start();
    WizardProgress progress;
    progress.main = [&](int percent) {
        if (percent > 50) ::kill(static_cast<pid_t>(application.ProcessId()), SIGKILL);
    };
    const MapPage page{draft, layers, layers.FullExtent(), kScreen};
    EXPECT_THROW((void)MakeMapWorkbook(page, progress), office::Error);
    progress.main = {};
    progress.givenUp = [] { return true; };
    EXPECT_THROW((void)MakeMapWorkbook(page, progress), WorkGivenUp);
    EXPECT_TRUE(Workbooks().isEmpty());
    QFile::remove(TemplateFile(QStringLiteral("MapLayoutSquare.xls")));
    EXPECT_TRUE(Make(draft, layers).isEmpty());
    EXPECT_TRUE(Workbooks().isEmpty());
}

TEST_F(MapWorkbookTest, MapsOfNothingAreWritten) {
    const LayerStack none;
    const MapDraft empty;
    const QString file = Make(empty, none, {});
    ASSERT_FALSE(file.isEmpty());
    const auto sheets = ReadXls(file);
    EXPECT_EQ(sheets[0].Text(65, 1), QStringLiteral("Source"));
    EXPECT_EQ(sheets[1].rows.size(), 5);
}

} // namespace tessaro::test
