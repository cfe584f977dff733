#pragma once

#include "../MapTest.h"
#include "TestPlaces.h"
#include "map/MapPage.h"
#include "office/Error.h"
#include "office/SpreadsheetApplication.h"
#include "session/Settings.h"
#include "support/ReadXls.h"

#include <QDir>
#include <QFile>

#include <optional>

namespace tessaro::test {

/// A map of squares in a row, with the templates of its workbooks and the program that writes them.
class MapOutputTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        static const QTemporaryDir profile;
        office::SpreadsheetApplication::SetProfileFolder(profile.path());
        for (const char* layout : {"Square", "Horizontal", "Vertical"}) {
            const QString name = QStringLiteral("/Bin/Template/MapLayout%1.xls").arg(QLatin1String(layout));
            ASSERT_TRUE(CopyFileOver(FindPath(QStringLiteral(TESSARO_INSTALLATION) + name), FindPath(AppPath + name)));
        }
        SetSetting(QStringLiteral("MAP_FONT"), QStringLiteral("Liberation Sans"));
        SetSetting(QStringLiteral("MAP_HEADER"), QStringLiteral("Facts & figures"));
        SetSetting(QStringLiteral("MAP_FOOTER"), QStringLiteral("A footer"));
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    /// Squares of ten degrees with these ids, from west to east.
    static LayerStack Squares(const QStringList& ids) {
        MapLayer layer;
        layer.fields = QStringList{QStringLiteral("ID_")};
        layer.columns = {ids};
        for (int i = 0; i < ids.size(); ++i) {
            const double left = 10.0 * i;
            MapFeature feature{i, i + 1, {}};
            for (const QPointF point : {QPointF(left, 0), QPointF(left, 10), QPointF(left + 10, 10),
                                        QPointF(left + 10, 0), QPointF(left, 0)}) {
                layer.points.push_back(point);
                feature.box.Add(point);
            }
            layer.partStarts.push_back(static_cast<int>(layer.points.size()));
            layer.extent.Add(feature.box);
            layer.features.push_back(feature);
        }
        LayerStack layers;
        layers.Add(std::move(layer), QLatin1String(kDataTag));
        return layers;
    }
    /// Classes 0-9, 10-19 ..., each in a colour of its own.
    static MapDraft DraftOf(int classes, ThemeKind kind = ThemeKind::Polygons) {
        MapDraft draft;
        draft.theme = {QStringLiteral("Literacy"), {}, QStringLiteral("Percent")};
        draft.classes.kind = kind;
        ClassBreaks breaks;
        for (int i = 0; i < classes; ++i)
            breaks.push_back({10.0 * i, 10.0 * i + 9, 10.0 * i, 10.0 * i + 9, 1});
        SetClasses(draft.classes, breaks, 1);
        for (int i = 0; i < classes; ++i)
            draft.classes.looks[static_cast<std::size_t>(i)].color = QColor(200 - i, 50 + i, 20);
        draft.classes.missing.color = QColor(1, 2, 3);
        draft.title = {QStringLiteral("Literacy in 2000"), {QStringLiteral("Liberation Serif"), 18, true, false}};
        draft.subTitle = {QStringLiteral("Percent"), {QStringLiteral("Liberation Sans"), 12, false, true}};
        draft.legendTitle = {QStringLiteral("Legend"), {QStringLiteral("Liberation Sans"), 11, true, false}};
        draft.disclaimer = {QStringLiteral("No opinion"), {QStringLiteral("Liberation Sans"), 8, false, true}};
        return draft;
    }
    /// Values of four areas "A0001" ... from two sources.
    static void PutFourValues() {
        PutValues(std::vector<QString>{QStringLiteral("5"), QStringLiteral("15.5"), QStringLiteral("1234.25"),
                                       QStringLiteral("8")});
        ChangeData(QStringLiteral("UPDATE _MapData SET [Source] = 'Survey', Unit = 'Percent', SubPop = 'Total'"));
        ChangeData(QStringLiteral("UPDATE _MapData SET [Source] = 'Census' WHERE AreaID = 'A0002'"));
    }
    static QStringList FourIds() {
        return {QStringLiteral("A0001"), QStringLiteral("A0002"), QStringLiteral("A0003"), QStringLiteral("none")};
    }
    /// Keeps a workbook in the folder that the environment names, to be looked at.
    static void Keep(const QString& file, const QString& name) {
        const QString folder = qEnvironmentVariable("TESSARO_PICTURES");
        if (!folder.isEmpty()) QFile::copy(file, folder + QLatin1Char('/') + name);
    }
    static office::Workbook Open(const QString& file) {
        return office::SpreadsheetApplication::Instance().OpenWorkbook(file);
    }
    /// A cell's place on its sheet, in points.
    static QRectF CellOf(const office::Worksheet& sheet, int row, int column) {
        const double top = row > 1 ? sheet.Cells(1, 1, row - 1, 1).Size().height() : 0;
        const double left = column > 1 ? sheet.Cells(1, 1, 1, column - 1).Size().width() : 0;
        return {QPointF(left, top), sheet.Cells(row, column).Size()};
    }
    /// The workbooks that stand in TempFolder.
    static QStringList Workbooks() { return QDir(TempFolder).entryList({QStringLiteral("*.xls")}); }
};

} // namespace tessaro::test
