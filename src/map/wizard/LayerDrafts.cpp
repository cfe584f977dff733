#include "map/wizard/LayerDrafts.h"

#include "platform/Paths.h"

namespace tessaro {

namespace {

LayerDraft DraftOf(const StackedLayer& layer) {
    LayerDraft draft;
    draft.file = {FileNameOf(layer.file), FolderOf(layer.file)};
    draft.ofTheme = IsOfTheme(layer);
    draft.visible = layer.visible;
    if (!layer.symbols.symbols.empty()) draft.symbol = layer.symbols.symbols.front();
    draft.labelOn = layer.labels.on && !layer.labels.field.isEmpty();
    draft.labelField = layer.labels.field;
    draft.labelFont = layer.labels.font;
    draft.labelColor = layer.labels.color;
    draft.labelHalo = layer.labels.halo.isValid();
    draft.labelsOverlap = layer.labels.overlaps;
    return draft;
}

void ApplyLabels(const LayerDraft& draft, LayerLabels& labels) {
    labels.on = draft.labelOn;
    labels.field = draft.labelField;
    labels.font = draft.labelFont;
    labels.color = draft.labelColor;
    labels.halo = draft.labelHalo ? HaloOf(draft.labelColor) : QColor();
    labels.overlaps = draft.labelsOverlap;
}

void Apply(const LayerDraft& draft, StackedLayer& layer) {
    layer.visible = draft.visible;
    layer.symbols.symbols = {draft.symbol};
    ApplyLabels(draft, layer.labels);
}

} // namespace

QString CustomTag(const QString& folder) {
    return QStringLiteral("Customize - ") + folder;
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

void ApplyLabels(const std::vector<LayerDraft>& drafts, LayerStack& map) {
    for (int i = 0; i < map.Count() && static_cast<std::size_t>(i) < drafts.size(); ++i)
        if (IsOfTheme(map.At(i))) ApplyLabels(drafts[static_cast<std::size_t>(i)], map.At(i).labels);
}

void SinkThemeLayers(LayerStack& map) {
    int below = 0;
    for (int i = 0; i < map.Count(); ++i)
        if (IsOfTheme(map.At(i))) map.Move(i, below++);
}

} // namespace tessaro
