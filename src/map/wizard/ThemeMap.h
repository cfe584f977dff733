#pragma once

#include "map/MapAreas.h"
#include "map/MapDraft.h"

#include <QStringList>

namespace tessaro {

/// What the map wizard works on, without its window: the values of a draft's theme, and the layers that show them.
/// Map and draft are borrowed.
class ThemeMap final {
  public:
    ThemeMap(LayerStack& map, MapDraft& draft, LayerLocator locate);

    /// The first theme in view and the maps of the selected areas. Layers without a single value are left out as long
    /// as another has some. Message "222" when nothing could be loaded.
    void Begin();
    /// Another theme or other maps, chosen by the user. False, and nothing happens, when both are as before.
    bool Choose(const MapTheme& theme, const MapFiles& files);
    /// The values as they were known by a period; empty: the latest of each area. False when they couldn't be read.
    bool ShowPeriod(const QString& period);

    /// True when each map of areas has a layer of points, so that they can take its place.
    [[nodiscard]] bool HasPoints() const;
    /// Values as sized points over pale areas, and back as colours of areas.
    void ShowAsPoints(bool points);
    [[nodiscard]] bool ShownAsPoints() const { return !areaFiles_.empty(); }

    /// Draws the layers of the theme by the draft's classes.
    void Colour();
    [[nodiscard]] const MapAreas& Areas() const { return areas_; }
    [[nodiscard]] ThemeKind Kind() const { return KindOf(map_); }
    [[nodiscard]] int UnreadableValues() const { return unreadable_; }
    [[nodiscard]] const QStringList& Periods() const { return periods_; }
    [[nodiscard]] const MapFiles& Files() const { return files_; }

    /// The topmost feature of the theme at a place, or the nearest within a distance; a layer below 0 for none.
    struct Place {
        int layer = -1;
        int feature = -1;
    };
    [[nodiscard]] Place FeatureAt(QPointF point, double distance) const;
    /// The row of `_MapData` of a feature; nothing for an area without a value.
    [[nodiscard]] const MapArea* AreaOf(Place place) const;
    /// The name of a feature's area in the language of the data, else that of the layer.
    [[nodiscard]] QString NameOf(Place place) const;
    /// The features of all layers that belong to an area, as MapCanvas outlines them.
    [[nodiscard]] std::vector<std::vector<int>> FeaturesOfArea(const QString& areaId) const;

  private:
    bool FillData();
    void LoadTheme();
    void AddTheme();
    void LeaveOutEmptyLayers();
    void AddPaleAreas();

    LayerStack& map_;
    MapDraft& draft_;
    LayerLocator locate_;
    MapAreas areas_;
    MapFiles files_;
    MapFiles areaFiles_; ///< the maps that points have taken the place of
    QStringList periods_;
    int unreadable_ = 0;
};

} // namespace tessaro
