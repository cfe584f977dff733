#include "Tour.h"
#include "controls/Captions.h"
#include "map/MapData.h"
#include "map/MapLayerList.h"
#include "map/classes/ClassesPage.h"

namespace tessaro {

Tour::Finding Tour::Classes() {
    const MapDataCounts counts = Get_Data(FirstTheme());
    LayerStack map;
    MapFiles files = Collect_Maps_As_Per_Data();
    const ThemeKind kind = LoadLayers(map, files, [](const QString&, const QString&) { return QString(); });
    ClassesPage page;
    SetFormFonts(&page);
    page.resize(800, 560);
    page.setAttribute(Qt::WA_DontShowOnScreen); // the frame keeps the focus
    page.show();
    page.Start(kind, FeaturesOfTheme(map), counts.unreadable);
    const bool kept = page.grab().save(folder_.filePath(QStringLiteral("classes.png"))) &&
                      SavePalette(folder_.filePath(QStringLiteral("classes.plf")), PaletteOf(page.Table())) &&
                      SaveData(page.Table());
    int values = 0;
    for (const ClassBreak& each : page.Table().classes)
        values += each.count;
    return {kept && kind == ThemeKind::Polygons && page.Table().classes.size() == 5 && values > 0,
            QStringLiteral("%1 areas in %2 classes").arg(counts.areas).arg(page.Table().classes.size())};
}

} // namespace tessaro
