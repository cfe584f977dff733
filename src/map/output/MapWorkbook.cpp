#include "map/output/MapWorkbook.h"

#include "layers/MapPicture.h"
#include "map/MapAreas.h"
#include "map/output/MapDataSheets.h"
#include "map/output/MapSheet.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "sheets/NewWorkbook.h"

namespace tessaro {

namespace {

constexpr QSize kUsualSize{640, 480}; ///< of a map that has none on the screen

int CountRows() {
    const Records count = Select(QStringLiteral("SELECT Count(*) FROM _MapData"));
    return count.atEnd() ? 0 : static_cast<int>(count.Number(std::size_t{0}));
}

} // namespace

QString MakeMapWorkbook(const MapPage& page, const WizardProgress& progress) {
    const ErrorTrap trap("MakeMapWorkbook");
    const QSize onScreen = page.size.isEmpty() ? kUsualSize : page.size;
    const MapBox& extent = page.extent.IsEmpty() ? page.layers.FullExtent() : page.extent;
    const auto picture = [&](int pixelWidth) {
        return MapImage(page.layers, extent, onScreen, static_cast<double>(pixelWidth) / onScreen.width());
    };
    const MapSheetContents contents{page.draft, onScreen, picture, YearNote(), SourcesOfMapData()};
    const auto write = [&](office::Workbook& book) {
        MapSheet sheet(book.Sheet(1), contents);
        progress.Main(15);
        progress.Label("Setting Title/Subtitle");
        sheet.WriteTexts();
        progress.Main(40);
        sheet.InsertMap();
        progress.Main(65);
        sheet.DrawLegend();
        progress.Main(75);
        progress.Label("Filling Data Values");
        WriteMapData(book, 2, page.draft.theme.indicator, page.draft.classes.decimals);
        progress.Main(90);
        WriteMapSources(book.Sheet(3), contents.sources);
        book.ActivateSheet(1);
        book.Save();
        progress.Main(100);
    };
    progress.Label("Setting the Excel Objects");
    progress.Main(5);
    return MakeWorkbook({QLatin1String(PlacesOf(page.draft.layout).templateName), QStringLiteral("Map"), CountRows()},
                        write);
}

} // namespace tessaro
