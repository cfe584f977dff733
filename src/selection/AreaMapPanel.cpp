#include "selection/AreaMapPanel.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "layers/MapFiles.h"
#include "layers/Seam.h"
#include "selection/AreaMaps.h"
#include "session/Frame.h"

#include <QButtonGroup>
#include <QCollator>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kReach = 5;       ///< pixels around a click in which a small island is found
constexpr double kMargin = 0.04;   ///< around the areas of a branch, of their width
constexpr double kLeastSide = 0.2; ///< degrees; closer, outlines show nothing any more

enum Look { Chosen, InBranch, Outside };

QColor Mixed(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int x, int y) { return static_cast<int>(x + (y - x) * share); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

LayerSymbol SymbolOf(Look look, const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Base);
    const QColor ink = palette.color(QPalette::Text);
    const QColor accent = palette.color(QPalette::Highlight);
    LayerSymbol symbol;
    symbol.color = look == Chosen ? accent : Mixed(ground, ink, look == InBranch ? 0.22 : 0.07);
    symbol.outline = look == Chosen ? Mixed(accent, ink, 0.5) : Mixed(ground, ink, look == InBranch ? 0.5 : 0.25);
    symbol.markerSize = 7;
    symbol.lineWidth = 2;
    return symbol;
}

MapBox WithMargin(const MapBox& box) {
    const double x = std::max(box.Width() * kMargin, (kLeastSide - box.Width()) / 2);
    const double y = std::max(box.Height() * kMargin, (kLeastSide - box.Height()) / 2);
    return {box.left - x, box.bottom - y, box.right + x, box.top + y};
}

} // namespace

AreaMapPanel::AreaMapPanel(QWidget* parent)
    : QFrame(parent), map_(new MapCanvas(this)), picMapControls_(new QFrame(this)),
      lblAreaUnderPointer_(new QLabel(this)), tools_(new QButtonGroup(this)) {
    map_->setObjectName(QStringLiteral("AreaMap"));
    map_->installEventFilter(this);
    picMapControls_->setObjectName(QStringLiteral("picMapControls"));
    lblAreaUnderPointer_->setObjectName(QStringLiteral("lblAreaUnderPointer"));
    lblAreaUnderPointer_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(picMapControls_);
    column->addWidget(map_, 1);
    MakeTools();
    ConnectMap();
}

QToolButton* AreaMapPanel::AddButton(const char* name, const char* picture, const char* textKey) {
    auto* button = new QToolButton(picMapControls_);
    button->setObjectName(QLatin1String(name));
    button->setAutoRaise(true);
    button->setIcon(theme::Icon(QLatin1String(picture)));
    button->setIconSize({theme::kIconSize, theme::kIconSize});
    button->setFocusPolicy(Qt::TabFocus);
    picMapControls_->layout()->addWidget(button);
    captions_.push_back({button, QLatin1String(textKey)});
    return button;
}

void AreaMapPanel::AddTool(MapTool tool, const char* name, const char* picture, const char* textKey) {
    QToolButton* button = AddButton(name, picture, textKey);
    button->setCheckable(true);
    button->setChecked(tool == map_->Tool());
    tools_->addButton(button, static_cast<int>(tool));
}

void AreaMapPanel::MakeTools() {
    auto* row = new QHBoxLayout(picMapControls_);
    row->setContentsMargins(theme::kGrid, theme::kGrid, theme::kGrid, theme::kGrid);
    row->setSpacing(theme::kGrid / 2);
    AddTool(MapTool::Select, "cmdMapSelect", "pointer.png", "TS_SelectOnMap");
    AddTool(MapTool::ZoomIn, "cmdMapZoomIn", "zoom_in.png", "Zoom In");
    AddTool(MapTool::ZoomOut, "cmdMapZoomOut", "zoom_out.png", "Zoom Out");
    AddTool(MapTool::Pan, "cmdMapPan", "pan.png", "Pan");
    AddTool(MapTool::Identify, "cmdMapIdentify", "details.png", "Identity Feature");
    connect(AddButton("cmdMapFullExtent", "full_extent.png", "Full Extent"), &QToolButton::clicked, map_, [this] {
        map_->SetTool(MapTool::Select);
        map_->ShowFullExtent();
    });
    connect(AddButton("cmdMapRefresh", "refresh.png", "TLB_REFRESH"), &QToolButton::clicked, map_, [this] {
        map_->SetTool(MapTool::Select);
        map_->Refresh();
    });
    labels_ = AddButton("cmdMapLabels", "label.png", "Labels");
    labels_->setCheckable(true);
    connect(labels_, &QToolButton::toggled, this, &AreaMapPanel::ShowLabels);
    row->addSpacing(theme::kGrid);
    row->addWidget(lblAreaUnderPointer_, 1);
    connect(tools_, &QButtonGroup::idClicked, this, [this](int tool) { map_->SetTool(static_cast<MapTool>(tool)); });
}

void AreaMapPanel::ConnectMap() {
    connect(map_, &MapCanvas::ToolChanged, this,
            [this](MapTool tool) { tools_->button(static_cast<int>(tool))->setChecked(true); });
    connect(map_, &MapCanvas::ToolUsed, map_, [this] { map_->SetTool(MapTool::Select); });
    connect(map_, &MapCanvas::Clicked, this, &AreaMapPanel::Pick);
    connect(map_, &MapCanvas::Hovered, this, [this](const QPointF& map) { Point(FeatureUnder(map)); });
    connect(map_, &MapCanvas::HoverEnded, this, [this] { Point(-1); });
    connect(map_, &MapCanvas::PopupRequested, this, &AreaMapPanel::PopupRequested);
}

void AreaMapPanel::FollowInTabOrder(QWidget* before) {
    for (const Caption& each : captions_) {
        setTabOrder(before, each.button);
        before = each.button;
    }
    setTabOrder(before, map_);
}

void AreaMapPanel::SetFormCaptions() {
    for (const Caption& each : captions_) {
        SetToolTip(each.button, each.key);
        each.button->setAccessibleName(PlainText(each.key));
    }
    map_->setAccessibleName(PlainText(QStringLiteral("TS_AreaMap")));
    map_->setAccessibleDescription(PlainText(QStringLiteral("TS_AreaMapKeys")));
    map_->SetEmptyHint(PlainText(QStringLiteral("TS_PickNodeForMap")));
    lblAreaUnderPointer_->setAlignment(ReadingSide() | Qt::AlignVCenter);
    names_.clear();
    walk_.clear();
    Point(-1);
    ShowLabels(labels_->isChecked());
}

void AreaMapPanel::ShowLayer(MapLayer layer, const QString& file) {
    Point(-1);
    file_ = file;
    ids_ = AreaIdsOf(layer);
    map_->Layers().Clear();
    map_->Layers().Add(std::move(layer), {});
    branch_.clear();
    inBranch_.clear();
    walk_.clear();
    map_->ShowFullExtent();
    ShowLabels(labels_->isChecked());
    Colour();
}

void AreaMapPanel::ShowBranch(const QString& areaId) {
    if (map_->Layers().Count() == 0) return;
    branch_ = areaId;
    inBranch_ = selection::FeaturesBelow(ids_, areaId);
    walk_.clear();
    Point(-1);
    Colour();
    const MapBox around = areaId.isEmpty() ? MapBox() : BoxAround(map_->Layers().At(0).data, inBranch_);
    if (around.IsEmpty())
        map_->ShowFullExtent();
    else
        map_->SetExtent(WithMargin(around));
}

void AreaMapPanel::ShowChosen(const QSet<QString>& ids) {
    chosen_.clear();
    for (const QString& id : ids)
        chosen_.insert(id.toUpper());
    Colour();
}

void AreaMapPanel::Colour() {
    if (map_->Layers().Count() == 0) return;
    LayerSymbols& symbols = map_->Layers().At(0).symbols;
    symbols.symbols = {SymbolOf(Chosen, palette()), SymbolOf(InBranch, palette()), SymbolOf(Outside, palette())};
    symbols.ofFeature.assign(ids_.size(), Outside);
    for (const int each : inBranch_)
        symbols.ofFeature[static_cast<std::size_t>(each)] = InBranch;
    for (std::size_t i = 0; i < ids_.size(); ++i)
        if (chosen_.contains(ids_[i])) symbols.ofFeature[i] = Chosen;
    map_->Refresh();
}

const QHash<QString, QString>& AreaMapPanel::Names() {
    if (names_.isEmpty()) names_ = selection::NamesOfAreas();
    return names_;
}

void AreaMapPanel::ShowLabels(bool shown) {
    if (map_->Layers().Count() == 0) return;
    LayerLabels labels;
    if (shown)
        for (const QString& id : ids_)
            labels.texts.push_back(Names().value(id));
    labels.font = map_->font();
    labels.color = palette().color(QPalette::Text);
    labels.halo = palette().color(QPalette::Base);
    map_->Layers().SetLabels(0, std::move(labels));
    map_->Refresh();
}

int AreaMapPanel::FeatureUnder(const QPointF& map) const {
    if (map_->Layers().Count() == 0) return -1;
    const MapLayer& layer = map_->Layers().At(0).data;
    const int feature = layer.FeatureAt(map, map_->ToMapDistance(kReach));
    return feature >= 0 ? feature : layer.NearestFeature(map, map_->ToMapDistance(kReach));
}

void AreaMapPanel::Point(int feature) {
    if (feature == pointed_) return;
    pointed_ = feature;
    const QString name = feature < 0 ? QString() : selection::NameOfArea(ids_[static_cast<std::size_t>(feature)]);
    lblAreaUnderPointer_->setText(name);
    map_->setToolTip(name);
    TheFrame().SetStatusText(name);
    map_->Highlight(0, name.isEmpty() ? -1 : feature);
}

void AreaMapPanel::Pick(const QPointF& map) {
    Point(FeatureUnder(map));
    PickPointed();
}

void AreaMapPanel::PickPointed() {
    if (pointed_ < 0 || ids_[static_cast<std::size_t>(pointed_)].isEmpty()) return;
    const QString areaId = ids_[static_cast<std::size_t>(pointed_)];
    if (map_->Tool() != MapTool::Identify) return Q_EMIT AreaPicked(areaId);
    map_->SetTool(MapTool::Select);
    Q_EMIT AreaIdentified(areaId);
}

void AreaMapPanel::Walk(int steps) {
    if (walk_.empty()) {
        walk_ = inBranch_.empty() ? selection::FeaturesBelow(ids_, {}) : inBranch_;
        std::erase_if(walk_, [this](int each) { return !Names().contains(ids_[static_cast<std::size_t>(each)]); });
        QCollator order;
        std::sort(walk_.begin(), walk_.end(), [&](int a, int b) {
            return order.compare(Names().value(ids_[static_cast<std::size_t>(a)]),
                                 Names().value(ids_[static_cast<std::size_t>(b)])) < 0;
        });
    }
    if (walk_.empty()) return;
    const auto count = static_cast<int>(walk_.size());
    const auto at = std::find(walk_.begin(), walk_.end(), pointed_);
    const int place = at == walk_.end() ? (steps > 0 ? -1 : count) : static_cast<int>(at - walk_.begin());
    Point(walk_[static_cast<std::size_t>((place + steps + count) % count)]);
    const MapBox& box = map_->Layers().At(0).data.features[static_cast<std::size_t>(pointed_)].box;
    const QPointF middle((box.left + box.right) / 2, (box.bottom + box.top) / 2);
    const MapBox shown = map_->Extent();
    if (!shown.Contains(middle))
        map_->SetExtent({middle.x() - shown.Width() / 2, middle.y() - shown.Height() / 2,
                         middle.x() + shown.Width() / 2, middle.y() + shown.Height() / 2});
}

bool AreaMapPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_PageDown:
        Walk(1);
        return true;
    case Qt::Key_PageUp:
        Walk(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        PickPointed();
        return true;
    default:
        return QFrame::eventFilter(watched, event);
    }
}

void AreaMapPanel::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    Colour();
    ShowLabels(labels_->isChecked());
}

} // namespace tessaro
