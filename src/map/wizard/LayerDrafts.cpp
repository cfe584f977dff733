#include "map/wizard/LayerDrafts.h"

#include "platform/Paths.h"

namespace tessaro {

namespace {

LayerDraft DraftOf(const StackedLayer& layer) {
    LayerDraft draft;
    draft.file = {FileNameOf(layer.file), FolderOf(layer.file)};
    draft.ofTheme = IsOfTheme(layer);
    draft.visible = layer.visible;
    if (!draft.ofTheme && !layer.symbols.symbols.empty()) draft.symbol = layer.symbols.symbols.front();
    draft.labelOn = layer.labels.on && !layer.labels.field.isEmpty();
    draft.labelField = layer.labels.field;
    draft.labelFont = layer.labels.font;
    draft.labelColor = layer.labels.color;
    draft.labelHalo = layer.labels.halo.isValid();
    draft.labelsOverlap = layer.labels.overlaps;
    return draft;
}

void Apply(const LayerDraft& draft, StackedLayer& layer) {
    layer.visible = draft.visible;
    layer.symbols.symbols = {draft.symbol};
    layer.labels.on = draft.labelOn;
    layer.labels.field = draft.labelField;
    layer.labels.font = draft.labelFont;
    layer.labels.color = draft.labelColor;
    layer.labels.halo = draft.labelHalo ? QColor(Qt::white) : QColor();
    layer.labels.overlaps = draft.labelsOverlap;
}

} // namespace

QString CustomTag(const QString& folder) {
    return QStringLiteral("Customize - ") + folder;
}

bool IsOfTheme(const StackedLayer& layer) {
    return layer.tag == QLatin1String(kDataTag);
}

std::vector<LayerDraft> DraftsOf(const LayerStack& map) {
    std::vector<LayerDraft> drafts;
    for (int i = 0; i < map.Count(); ++i)
        drafts.push_back(DraftOf(map.At(i)));
    return drafts;
}

bool PutLayers(LayerStack& map, const std::vector<LayerDraft>& drafts, const LayerLocator& locate) {
    map.Clear();
    QString reason;
    for (const LayerDraft& draft : drafts) {
        QString path = JoinPath({draft.file.folder, draft.file.name});
        const QString tag = draft.ofTheme ? QString::fromLatin1(kDataTag) : CustomTag(draft.file.folder);
        if (AddLayer(map, path, tag, locate, reason)) Apply(draft, map.At(map.Count() - 1));
    }
    return map.Count() == static_cast<int>(drafts.size());
}

void SinkThemeLayers(LayerStack& map) {
    int below = 0;
    for (int i = 0; i < map.Count(); ++i)
        if (IsOfTheme(map.At(i))) map.Move(i, below++);
}

void RemoveThemeLayers(LayerStack& map) {
    for (int i = map.Count() - 1; i >= 0; --i)
        if (IsOfTheme(map.At(i))) map.Remove(i);
}

} // namespace tessaro
