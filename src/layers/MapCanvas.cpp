#include "layers/MapCanvas.h"

#include "controls/EmptyHint.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "layers/MapPicture.h"

#include <QApplication>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace tessaro {

namespace {

constexpr int kRestMilliseconds = 80;
constexpr double kKeyZoom = 1.5;
constexpr double kWheelZoom = 1.25;  ///< for one notch
constexpr double kKeyPan = 0.15;     ///< of the widget's side
constexpr double kMostWidth = 8;     ///< of the full extent
constexpr double kLeastWidth = 1e-5; ///< of the full extent

MapBox Moved(const MapBox& box, double x, double y) {
    return {box.left + x, box.bottom + y, box.right + x, box.top + y};
}

} // namespace

MapCanvas::MapCanvas(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(160, 120);
    rest_.setSingleShot(true);
    rest_.setInterval(kRestMilliseconds);
    connect(&rest_, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

QSizeF MapCanvas::DeviceSize() const {
    return QSizeF(size()) * devicePixelRatioF();
}

MapView MapCanvas::View() const {
    return ViewOf(layers_, extent_.IsEmpty() ? layers_.FullExtent() : extent_, DeviceSize());
}

MapBox MapCanvas::Extent() const {
    return View().Shown();
}

QPointF MapCanvas::ToMapPoint(QPointF place) const {
    return View().ToMap(place * devicePixelRatioF());
}

QPointF MapCanvas::FromMapPoint(QPointF map) const {
    return View().ToPicture(map) / devicePixelRatioF();
}

double MapCanvas::ToMapDistance(double pixels) const {
    return pixels * devicePixelRatioF() / View().PixelsX();
}

void MapCanvas::Refresh() {
    stale_ = true;
    rest_.stop();
    update();
}

void MapCanvas::SetExtent(const MapBox& extent) {
    if (extent.IsEmpty()) return;
    extent_ = extent;
    Refresh();
    Q_EMIT ExtentChanged();
}

void MapCanvas::ShowFullExtent() {
    extent_ = {};
    Refresh();
    Q_EMIT ExtentChanged();
}

/// For movements: the last picture is shown at its new place until the map rests.
void MapCanvas::MoveTo(const MapBox& extent) {
    extent_ = extent;
    stale_ = true;
    rest_.start();
    update();
    Q_EMIT ExtentChanged();
}

void MapCanvas::PanBy(QPointF pixels) {
    const MapView view = View();
    const double ratio = devicePixelRatioF();
    MoveTo(Moved(view.Shown(), -pixels.x() * ratio / view.PixelsX(), pixels.y() * ratio / view.PixelsY()));
}

void MapCanvas::Zoom(double factor, QPointF around) {
    const MapBox shown = Extent();
    const double full = layers_.FullExtent().IsEmpty() ? shown.Width() : layers_.FullExtent().Width();
    const double width = shown.Width() * factor;
    if (!(factor > 0) || (factor > 1 && width > kMostWidth * full) || (factor < 1 && width < kLeastWidth * full))
        return;
    MoveTo({around.x() - (around.x() - shown.left) * factor, around.y() - (around.y() - shown.bottom) * factor,
            around.x() + (shown.right - around.x()) * factor, around.y() + (shown.top - around.y()) * factor});
}

void MapCanvas::SetTool(MapTool tool) {
    CancelDrag();
    if (tool == tool_) return;
    tool_ = tool;
    ShowPointer();
    Q_EMIT ToolChanged(tool);
}

void MapCanvas::ShowPointer() {
    const auto pointer = [](const char* picture) {
        const QPixmap shape = theme::Icon(QLatin1String(picture)).pixmap(theme::kIconSize, theme::kIconSize);
        return shape.isNull() ? QCursor(Qt::CrossCursor) : QCursor(shape, 8, 8);
    };
    switch (tool_) {
    case MapTool::Select:
        return unsetCursor();
    case MapTool::ZoomIn:
        return setCursor(pointer("zoom_in.png"));
    case MapTool::ZoomOut:
        return setCursor(pointer("zoom_out.png"));
    case MapTool::Pan:
        return setCursor(Qt::OpenHandCursor);
    case MapTool::Identify:
        return setCursor(Qt::WhatsThisCursor);
    }
}

void MapCanvas::Highlight(int layer, int feature) {
    std::vector<std::vector<int>> one;
    if (feature >= 0 && layer >= 0 && layer < layers_.Count()) {
        one.resize(static_cast<std::size_t>(layer) + 1);
        one.back() = {feature};
    }
    Outline(std::move(one));
}

void MapCanvas::Outline(std::vector<std::vector<int>> featuresOfLayers) {
    if (featuresOfLayers == outlined_) return;
    outlined_ = std::move(featuresOfLayers);
    update();
}

void MapCanvas::SetEmptyHint(const QString& hint) {
    emptyHint_ = hint;
    update();
}

void MapCanvas::Draw() {
    picture_ = QImage(DeviceSize().toSize(), QImage::Format_RGB32);
    pictureView_.reset();
    stale_ = false;
    if (picture_.isNull()) return;
    picture_.fill(palette().color(QPalette::Base));
    const MapView view = View();
    QPainter painter(&picture_);
    PaintMap(painter, layers_, view, devicePixelRatioF(), [this](int layer) { Q_EMIT AfterLayerDraw(layer); });
    pictureView_ = view;
}

void MapCanvas::PaintPicture(QPainter& painter) const {
    const MapView view = View();
    const MapBox& drawn = pictureView_->Shown();
    const double ratio = devicePixelRatioF();
    const QRectF target(view.ToPicture({drawn.left, drawn.top}) / ratio,
                        view.ToPicture({drawn.right, drawn.bottom}) / ratio);
    if (QRectF(rect()).contains(target) && target.size() != QSizeF(size()))
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, picture_);
}

/// The rims of a layer's features: no other feature is drawn.
LayerSymbols MapCanvas::RimsOf(const std::vector<int>& features, std::size_t count) const {
    LayerSymbol rim;
    rim.pattern = FillPattern::Transparent;
    rim.color = palette().color(QPalette::Text); // not that of any area
    rim.outline = rim.color;
    rim.outlineWidth = 2;
    rim.lineWidth = 3;
    rim.markerSize = 9;
    LayerSymbols rims{{rim}, std::vector<int>(count, -1)};
    for (const int each : features)
        if (each >= 0 && static_cast<std::size_t>(each) < count) rims.ofFeature[static_cast<std::size_t>(each)] = 0;
    return rims;
}

void MapCanvas::PaintHighlight(QPainter& painter) const {
    const double ratio = devicePixelRatioF();
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    for (std::size_t i = 0; i < outlined_.size() && static_cast<int>(i) < layers_.Count(); ++i) {
        const StackedLayer& layer = layers_.At(static_cast<int>(i));
        if (!outlined_[i].empty() && layer.visible)
            PaintLayer(painter, layer.data, RimsOf(outlined_[i], layer.data.features.size()), View(), ratio);
    }
    painter.restore();
}

void MapCanvas::PaintRectangle(QPainter& painter) const {
    QColor inside = theme::Accent();
    painter.setPen(QPen(inside, 1));
    inside.setAlpha(40);
    painter.setBrush(inside);
    painter.drawRect(QRectF(pressed_, dragged_).normalized());
}

void MapCanvas::paintEvent(QPaintEvent* /*event*/) {
    const bool moving = rest_.isActive() && pictureView_;
    if (stale_ && !moving) Draw();
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (pictureView_) PaintPicture(painter);
    PaintHighlight(painter);
    if (drag_ == Drag::Rectangle) PaintRectangle(painter);
    if (hasFocus()) {
        painter.setPen(theme::Accent());
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    painter.end();
    if (layers_.Count() == 0) PaintEmptyHint(this, emptyHint_);
}

void MapCanvas::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    stale_ = true;
    Q_EMIT ExtentChanged();
}

void MapCanvas::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) Refresh();
}

void MapCanvas::mousePressEvent(QMouseEvent* event) {
    if (drag_ != Drag::None || (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton)) return;
    pressed_ = event->position();
    dragged_ = pressed_;
    extentBefore_ = extent_;
    if (event->button() == Qt::LeftButton && tool_ == MapTool::ZoomOut && layers_.Count() > 0) {
        const QPointF at = ToMapPoint(pressed_);
        const MapBox shown = Extent();
        SetExtent({at.x() - shown.Width(), at.y() - shown.Height(), at.x() + shown.Width(), at.y() + shown.Height()});
        Q_EMIT ToolUsed(tool_);
        return;
    }
    const bool rectangle = event->button() == Qt::LeftButton && tool_ == MapTool::ZoomIn;
    drag_ = rectangle ? Drag::Rectangle : event->button() == Qt::MiddleButton ? Drag::Panning : Drag::Waiting;
    if (tool_ == MapTool::Pan) setCursor(Qt::ClosedHandCursor);
}

void MapCanvas::DragTo(QPointF place) {
    if (drag_ == Drag::Waiting && (place - pressed_).manhattanLength() >= QApplication::startDragDistance()) {
        drag_ = Drag::Panning;
        Q_EMIT HoverEnded();
    }
    if (drag_ == Drag::Panning) PanBy(place - dragged_);
    if (drag_ != Drag::Waiting) dragged_ = place;
    update();
}

void MapCanvas::mouseMoveEvent(QMouseEvent* event) {
    if (drag_ != Drag::None)
        DragTo(event->position());
    else
        Q_EMIT Hovered(ToMapPoint(event->position()));
}

void MapCanvas::ZoomToRectangle(const QRectF& rectangle) {
    if (rectangle.width() < 1 || rectangle.height() < 1 || layers_.Count() == 0) return;
    const QPointF topLeft = ToMapPoint(rectangle.topLeft());
    const QPointF bottomRight = ToMapPoint(rectangle.bottomRight());
    SetExtent({topLeft.x(), bottomRight.y(), bottomRight.x(), topLeft.y()});
    Q_EMIT ToolUsed(tool_);
}

void MapCanvas::EndDrag(QMouseEvent* event) {
    const Drag drag = drag_;
    drag_ = Drag::None;
    ShowPointer();
    if (drag == Drag::Rectangle) return ZoomToRectangle(QRectF(pressed_, event->position()).normalized());
    if (drag == Drag::Panning) {
        Refresh();
        if (tool_ == MapTool::Pan && event->button() == Qt::LeftButton) Q_EMIT ToolUsed(tool_);
    } else if (drag == Drag::Waiting && tool_ != MapTool::Pan) {
        Q_EMIT Clicked(ToMapPoint(event->position()), event->modifiers());
    }
}

void MapCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (drag_ == Drag::None) return;
    DragTo(event->position());
    EndDrag(event);
    update();
}

void MapCanvas::CancelDrag() {
    if (drag_ == Drag::Panning) {
        extent_ = extentBefore_;
        Refresh();
        Q_EMIT ExtentChanged();
    }
    drag_ = Drag::None;
    update();
}

void MapCanvas::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    if (drag_ == Drag::None) Q_EMIT HoverEnded();
}

void MapCanvas::wheelEvent(QWheelEvent* event) {
    if (layers_.Count() == 0 || event->angleDelta().y() == 0) return event->ignore();
    Zoom(std::pow(kWheelZoom, -event->angleDelta().y() / 120.0), ToMapPoint(event->position()));
    event->accept();
}

bool MapCanvas::KeyDoes(int key) {
    const QPointF middle = ToMapPoint(QRectF(rect()).center());
    switch (key) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        Zoom(1 / kKeyZoom, middle);
        return true;
    case Qt::Key_Minus:
        Zoom(kKeyZoom, middle);
        return true;
    case Qt::Key_Left:
        PanBy({kKeyPan * width(), 0});
        return true;
    case Qt::Key_Right:
        PanBy({-kKeyPan * width(), 0});
        return true;
    case Qt::Key_Up:
        PanBy({0, kKeyPan * height()});
        return true;
    case Qt::Key_Down:
        PanBy({0, -kKeyPan * height()});
        return true;
    case Qt::Key_Home:
        ShowFullExtent();
        return true;
    default:
        return false;
    }
}

void MapCanvas::keyPressEvent(QKeyEvent* event) {
    const bool escapes = event->key() == Qt::Key_Escape && (drag_ != Drag::None || tool_ != MapTool::Select);
    if (escapes && drag_ != Drag::None)
        CancelDrag();
    else if (escapes)
        SetTool(MapTool::Select);
    else if (layers_.Count() == 0 || (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != 0 ||
             !KeyDoes(event->key()))
        QWidget::keyPressEvent(event);
}

void MapCanvas::contextMenuEvent(QContextMenuEvent* event) {
    if (drag_ != Drag::None) return;
    Q_EMIT PopupRequested(event->reason() == QContextMenuEvent::Mouse ? event->globalPos()
                                                                      : mapToGlobal(rect().center()));
}

} // namespace tessaro
