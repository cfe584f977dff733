#pragma once

#include "layers/HandMadeLayer.h"
#include "map/MapPage.h"
#include "map/MapTest.h"

namespace tessaro::test {

/// A map that a test puts together, and the folder for what is made of it.
class MapPageTest : public MapTest {
  protected:
    /// Puts a layer with one shape of its kind on top, as read from /maps/name.shp.
    StackedLayer& AddMapLayer(LayerKind kind, const QString& tag, const QString& name,
                              const QStringList& fields = {QStringLiteral("ID_"), QStringLiteral("Name1_")}) {
        const Ring shape = kind == LayerKind::Point ? Ring{{5, 5}} : Square(0, 0, 10);
        MapLayer layer = LayerOf(kind, {{shape}});
        layer.name = name;
        layer.fields = fields;
        layer.columns.assign(static_cast<std::size_t>(fields.size()), {QStringLiteral("A0001")});
        StackedLayer& added = layers.Add(std::move(layer), tag);
        added.file = QStringLiteral("/maps/") + name + QStringLiteral(".shp");
        return added;
    }
    void SetClassCount(int count) {
        for (int i = 0; i < count; ++i) {
            draft.classes.classes.push_back({double(i), i + 0.9, double(i), i + 0.9, 1});
            ClassLook look;
            look.legend = QStringLiteral("Class %1").arg(i + 1);
            look.color = QColor(160, 255 - i, 5);
            draft.classes.looks.push_back(look);
        }
        draft.classes.missing.legend = QStringLiteral("Missing");
        draft.classes.missing.color = QColor(192, 192, 192);
    }
    [[nodiscard]] MapPage Page() const { return {draft, layers, {-10, -5, 20, 15}, {640, 480}}; }
    [[nodiscard]] QString Path(const char* name) const { return Folder() + QLatin1Char('/') + QLatin1String(name); }

    MapDraft draft;
    LayerStack layers;
};

} // namespace tessaro::test
