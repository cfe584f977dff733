#include "Tour.h"
#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/KeyedList.h"
#include "controls/OfficeHost.h"
#include "dataview/frmData.h"
#include "map/MapData.h"
#include "map/MapLayerList.h"
#include "map/classes/ClassesPage.h"
#include "map/wizard/frmMapWizard.h"
#include "office/SpreadsheetApplication.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QSlider>
#include <QTest>

namespace tessaro {

namespace {

constexpr int kMostStart = 20000; ///< milliseconds

void Press(QWidget& form, const QString& button) {
    if (auto* control = form.findChild<QAbstractButton*>(button)) control->click();
}

/// The number of the first combination of an indicator.
QString CombinationOf(const QString& indicator) {
    const Records found = Select(QStringLiteral("SELECT Min(IUSNId) FROM Indicator_Unit_Subpop WHERE IndicatorGId = ") +
                                 Quoted(indicator));
    return found.atEnd() ? QString() : found.Text(std::size_t{0});
}

} // namespace

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

bool Tour::SelectOnly(const QString& indicator) {
    if (!Click(QStringLiteral("picBannerButtons_0"))) return false;
    QWidget* screen = Find(QStringLiteral("frmIndicators"));
    auto* available = screen ? screen->findChild<KeyedList*>(QStringLiteral("lstAvailable")) : nullptr;
    auto* selected = screen ? screen->findChild<KeyedList*>(QStringLiteral("lstSelected")) : nullptr;
    if (!available || !selected) return false;
    if (auto* removeAll = screen->findChild<QAbstractButton*>(QStringLiteral("cmdRemoveAll"))) removeAll->click();
    if (!WaitUntil([&] { return selected->Items().Count() == 0; })) return false;
    available->HighlightKey(QLatin1Char('I') + CombinationOf(indicator));
    Press(*screen, QStringLiteral("cmdAdd"));
    if (!WaitUntil([&] { return selected->Items().Count() == 1; })) return false;
    const std::pair<int, const char*> stages[] = {{1, "frmTime"}, {2, "frmAreas"}};
    // Both first: each selects what has data for the other.
    for (const auto& [stage, form] : stages) {
        if (!Click(QStringLiteral("picBannerButtons_%1").arg(stage))) return false;
        QWidget* page = Find(QLatin1String(form));
        if (!page) return false;
        Press(*page, QStringLiteral("cmdRemoveAll"));
    }
    for (const auto& [stage, form] : stages) {
        if (!Click(QStringLiteral("picBannerButtons_%1").arg(stage))) return false;
        if (!ClickAutoSelect(QLatin1String(form), QStringLiteral("cmdAllFilter"))) return false;
        const char* table = stage == 1 ? "_SelTimePeriod" : "_SelArea";
        if (!WaitUntil([&] { return RowsOf(table) > 0; })) return false;
    }
    if (!Click(QStringLiteral("picBannerButtons_3"))) return false;
    auto* data = qobject_cast<frmData*>(Find(QStringLiteral("frmData")));
    return data && WaitUntil([&] { return data->grid().ValueRows() > 0; });
}

void Tour::DriveMap(QWidget& wizard, const MapWalk& walk, qint64& preview, QString& saved) {
    const QString name = QLatin1String(walk.name);
    int pictures = 0;
    const auto picture = [&] {
        QTest::qWait(150);
        wizard.grab().save(folder_.filePath(QStringLiteral("%1-%2.png").arg(name).arg(++pictures)));
    };
    const auto file = [&](const char* ending) { return folder_.filePath(name + QLatin1String(ending)); };
    picture();
    Press(wizard, QStringLiteral("CmdNext"));
    if (walk.points) Press(wizard, QStringLiteral("cmdAdvice"));
    SetFileAnswerer([&](const FileQuestion&) { return file(".plf"); });
    Press(wizard, QStringLiteral("SSCmdSavePalette"));
    picture();
    Press(wizard, QStringLiteral("CmdNext"));
    Press(wizard, QStringLiteral("SSRibLayout_%1").arg(walk.layout));
    picture();
    SetFileAnswerer([&](const FileQuestion&) { return file(".apr"); });
    Press(wizard, QStringLiteral("cmdExport"));
    for (const char* ending : {"-page.png", "-page.svg", "-page.pdf"}) {
        SetFileAnswerer([&](const FileQuestion&) { return file(ending); });
        Press(wizard, QStringLiteral("cmdPicture"));
    }
    SetFileAnswerer({});
    preview = ShowPreview(wizard, QStringLiteral("%1-%2").arg(name).arg(++pictures));
    saved = SaveToGallery(wizard, QStringLiteral("%1-%2").arg(name).arg(++pictures));
}

Tour::Finding Tour::Map(const MapWalk& walk) {
    if (!SelectOnly(QLatin1String(walk.indicator)))
        return {false, QStringLiteral("%1 could not be selected").arg(QLatin1String(walk.indicator))};
    qint64 preview = -1;
    QString saved;
    int values = 0;
    int features = 0;
    bool begun = false;
    const bool driven = Present(2, QStringLiteral("frmMapWizard"), [&](QWidget& form) {
        auto* wizard = qobject_cast<frmMapWizard*>(&form);
        const auto* next = form.findChild<QAbstractButton*>(QStringLiteral("CmdNext"));
        begun = wizard && next && WaitUntil([&] { return next->isEnabled(); }, kMostStart);
        if (!begun) return;
        values = static_cast<int>(wizard->Theme().Areas().Rows().size());
        DriveMap(form, walk, preview, saved);
        for (const ClassBreak& each : wizard->Classes().Table().classes)
            features += each.count;
    });
    if (!driven || !begun) return {false, QStringLiteral("the wizard did not come")};
    if (saved.isEmpty()) return {false, QStringLiteral("no map was saved")};
    const QString stem = folder_.filePath(QLatin1String(walk.name));
    bool files = true;
    for (const char* ending : {".plf", ".apr", ".dbf", "-page.png", "-page.svg", "-page.pdf"})
        files = files && QFileInfo(stem + QLatin1String(ending)).size() > 0;
    const office::Workbook book = office::SpreadsheetApplication::Instance().OpenWorkbook(saved);
    const int rows = static_cast<int>(book.Sheet(2).UsedRange().Values().size()) - 5;
    return {files && preview > 0 && values > 0 && features == values && rows == values,
            QStringLiteral("%1, %2 areas, project, palette and pictures, preview after %3 ms")
                .arg(QFileInfo(saved).fileName())
                .arg(values)
                .arg(preview)};
}

} // namespace tessaro
