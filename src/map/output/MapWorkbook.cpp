#include "map/output/MapWorkbook.h"

#include "layers/MapPicture.h"
#include "map/MapAreas.h"
#include "map/output/MapDataSheets.h"
#include "map/output/MapSheet.h"
#include "session/ErrorSink.h"
#include "sheets/NewWorkbook.h"

namespace tessaro {

namespace {

/// How far the work is once a group is done, in per cent.
enum Done { Started = 5, Opened = 15, Texts = 40, Picture = 65, Legend = 75, Values = 90, All = 100 };

void WriteBook(office::Workbook& book, const MapSheetContents& contents, const MapValues& values,
               const WizardProgress& progress) {
    MapSheet sheet(book.Sheet(1), contents);
    progress.Main(Opened);
    progress.Label("Setting Title/Subtitle");
    sheet.WriteTexts();
    progress.Main(Texts);
    sheet.InsertMap();
    progress.Main(Picture);
    sheet.DrawLegend();
    progress.Main(Legend);
    progress.Label("Filling Data Values");
    WriteMapData(book, 2, values, contents.draft.theme.indicator, contents.draft.classes.decimals);
    progress.Main(Values);
    WriteMapSources(book.Sheet(3), contents.sources);
    book.ActivateSheet(1);
    book.Save();
    progress.Main(All);
}

} // namespace

MapBox ShownExtent(const MapPage& page) {
    return page.extent.IsEmpty() ? page.layers.FullExtent() : page.extent;
}

QSize ShownSize(const MapPage& page) {
    return page.size.isEmpty() ? QSize(640, 480) : page.size;
}

QString WriteMapWorkbook(const MapSheetContents& contents, const MapValues& values, const WizardProgress& progress) {
    progress.Label("Setting the Excel Objects");
    progress.Main(Started);
    const auto write = [&](office::Workbook& book) { WriteBook(book, contents, values, progress); };
    return MakeWorkbook({QLatin1String(PlacesOf(contents.draft.layout).templateName), QStringLiteral("Map"),
                         static_cast<int>(values.rows.size())},
                        write);
}

QString MakeMapWorkbook(const MapPage& page, const WizardProgress& progress) {
    const ErrorTrap trap("MakeMapWorkbook");
    const QSize onScreen = ShownSize(page);
    const QSizeF size = MapSizeOn(PlacesOf(page.draft.layout), onScreen);
    const auto picture = [&](int pixelWidth) {
        return MapImage(page.layers, ShownExtent(page), onScreen, static_cast<double>(pixelWidth) / onScreen.width());
    };
    const MapSheetContents contents{page.draft, size,       size.width() / onScreen.width(),
                                    picture,    YearNote(), SourcesOfMapData()};
    return WriteMapWorkbook(contents, ReadMapValues(), progress);
}

} // namespace tessaro
