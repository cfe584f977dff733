#include "map/wizard/ThemeMap.h"

#include "layers/EncryptShape.h"
#include "layers/MapFiles.h"
#include "map/custom/LayerLooks.h"
#include "map/custom/RenderLabels.h"
#include "map/wizard/LayerDrafts.h"
#include "map/wizard/MapTexts.h"
#include "map/wizard/ThemeLists.h"
#include "map/wizard/ThemeSymbols.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Settings.h"
#include "view/DataFilters.h"

#include <algorithm>

namespace tessaro {

namespace {

/// What lies below sized points.
LayerSymbol PaleSymbol() {
    LayerSymbol symbol;
    symbol.color = QColor(238, 238, 234);
    symbol.outline = QColor(190, 190, 186);
    symbol.outlineWidth = 0.5;
    return symbol;
}

} // namespace

ThemeMap::ThemeMap(LayerStack& map, MapDraft& draft, LayerLocator locate)
    : map_(map), draft_(draft), locate_(std::move(locate)) {}

bool ThemeMap::FillData() {
    const MapDataCounts counts = Get_Data(draft_.theme, draft_.period);
    if (!counts.filled) return false;
    areas_ = AreasOfMapData();
    unreadable_ = counts.unreadable;
    return true;
}

void ThemeMap::LoadTheme() {
    AddTheme();
    SinkThemeLayers(map_);
}

/// New layers have hairlines and labels that are off until the user has other wishes.
void ThemeMap::AddTheme() {
    LoadLayers(map_, files_, locate_);
    for (int i = 0; i < map_.Count(); ++i) {
        StackedLayer& layer = map_.At(i);
        if (!IsOfTheme(layer)) continue;
        layer.symbols = {{SymbolOf(ClassLook())}, {}};
        layer.labels = FirstLabels();
    }
}

void ThemeMap::Begin() {
    if (SettingFlag(QStringLiteral("ENCRYPT_DECRYPT_FILES"))) MakeMapFilesFolder(); // working copies of former maps go
    draft_.theme = FirstTheme();
    FillData();
    periods_ = PeriodsOf(draft_.theme);
    files_ = Collect_Maps_As_Per_Data();
    if (draft_.theme.IsEmpty()) files_.clear(); // nothing to draw
    LoadTheme();
    LeaveOutEmptyLayers();
    SuggestTitles(draft_, areas_);
}

void ThemeMap::LeaveOutEmptyLayers() {
    std::vector<int> withValue;
    for (int i = 0; i < map_.Count(); ++i)
        withValue.push_back(FeaturesWithValue(map_.At(i).data, areas_));
    if (std::all_of(withValue.begin(), withValue.end(), [](int count) { return count == 0; })) return;
    for (int i = map_.Count() - 1; i >= 0; --i) {
        if (withValue[static_cast<std::size_t>(i)] > 0) continue;
        const MapFile file{FileNameOf(map_.At(i).file), FolderOf(map_.At(i).file)};
        std::erase(files_, file);
        map_.Remove(i);
    }
}

bool ThemeMap::Choose(const MapTheme& theme, const MapFiles& files) {
    if (theme == draft_.theme && files == files_) return false;
    const bool sameMaps = files == files_;
    draft_.theme = theme;
    draft_.advanced = true;
    draft_.period.clear();
    FillData();
    periods_ = PeriodsOf(theme);
    files_ = files;
    if (!sameMaps) areaFiles_.clear();
    LoadTheme();
    SuggestTitles(draft_, areas_);
    return true;
}

bool ThemeMap::ShowPeriod(const QString& period) {
    const QString before = draft_.period;
    draft_.period = period == periods_.value(periods_.size() - 1) ? QString() : period;
    if (FillData()) {
        SuggestTitles(draft_, areas_);
        return true;
    }
    draft_.period = before;
    return false;
}

bool ThemeMap::HasPoints() const {
    return !files_.empty() && std::all_of(files_.begin(), files_.end(),
                                          [](const MapFile& file) { return !PointsOf(file).folder.isEmpty(); });
}

void ThemeMap::AddPaleAreas() {
    for (int i = 0; i < map_.Count(); ++i) {
        StackedLayer& layer = map_.At(i);
        if (!IsOfTheme(layer)) continue;
        layer.tag = CustomTag(FolderOf(layer.file));
        layer.symbols = {{PaleSymbol()}, {}};
        layer.labels.on = false;
    }
}

void ThemeMap::ShowAsPoints(bool points) {
    if (points == ShownAsPoints()) return;
    if (points) {
        areaFiles_ = files_;
        for (MapFile& file : files_)
            file = PointsOf(file);
        AddPaleAreas();
        AddTheme();
        return;
    }
    files_ = std::exchange(areaFiles_, {});
    for (int i = map_.Count() - 1; i >= 0; --i) {
        const MapFile file{FileNameOf(map_.At(i).file), FolderOf(map_.At(i).file)};
        if (std::find(files_.begin(), files_.end(), file) != files_.end()) map_.At(i).tag = QLatin1String(kDataTag);
    }
    LoadTheme();
}

void ThemeMap::Colour() {
    for (int i = 0; i < map_.Count(); ++i) {
        StackedLayer& layer = map_.At(i);
        if (!IsOfTheme(layer)) continue;
        LayerSymbols symbols = SymbolsOfClasses(layer.data, areas_, draft_.classes);
        KeepOutlines(symbols, layer.symbols);
        layer.symbols = std::move(symbols);
    }
}

ThemeMap::Place ThemeMap::FeatureAt(QPointF point, double distance) const {
    for (int i = map_.Count() - 1; i >= 0; --i) {
        const StackedLayer& layer = map_.At(i);
        if (!IsOfTheme(layer) || !layer.visible) continue;
        const int feature = layer.data.FeatureAt(point, distance);
        const int found = feature >= 0 ? feature : layer.data.NearestFeature(point, distance);
        if (found >= 0) return {i, found};
    }
    return {};
}

const MapArea* ThemeMap::AreaOf(Place place) const {
    if (place.layer < 0) return nullptr;
    const MapLayer& layer = map_.At(place.layer).data;
    const int row = areas_.RowOf(layer.Text(place.feature, layer.IdField()));
    return row < 0 ? nullptr : &areas_.Rows()[static_cast<std::size_t>(row)];
}

QString ThemeMap::NameOf(Place place) const {
    if (const MapArea* area = AreaOf(place)) return area->name;
    if (place.layer < 0) return {};
    const MapLayer& layer = map_.At(place.layer).data;
    const QString id = layer.Text(place.feature, layer.IdField()).trimmed();
    const Records named = Select(QStringLiteral("SELECT AreaName from Area WHERE AreaId = ") + Quoted(id));
    if (!id.isEmpty() && !named.atEnd()) return named.Text(std::size_t{0});
    return layer.Text(place.feature, layer.NameField()).trimmed();
}

std::vector<std::vector<int>> ThemeMap::FeaturesOfArea(const QString& areaId) const {
    std::vector<std::vector<int>> features(static_cast<std::size_t>(map_.Count()));
    const QString wanted = areaId.trimmed().toUpper();
    for (int i = 0; i < map_.Count(); ++i) {
        if (!IsOfTheme(map_.At(i))) continue;
        const std::vector<QString> ids = AreaIdsOf(map_.At(i).data);
        for (std::size_t feature = 0; feature < ids.size(); ++feature)
            if (ids[feature] == wanted) features[static_cast<std::size_t>(i)].push_back(static_cast<int>(feature));
    }
    return features;
}

} // namespace tessaro
