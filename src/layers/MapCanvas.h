#pragma once

#include "layers/LayerStack.h"
#include "layers/MapView.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <optional>
#include <vector>

namespace tessaro {

/// What a click or a drag with the left button does.
enum class MapTool { Select, ZoomIn, ZoomOut, Pan, Identify };

/// A map on the screen: its layers in order, the extent that is seen, and the tools. It paints and forwards events,
/// and decides nothing about the layers. Besides the tools, the wheel zooms at the pointer, a drag pans wherever a tool
/// has no other use for it, the middle button always; the keys + - arrows Home Escape do what they say. While the
/// map moves, the last picture is moved; it is drawn anew when it rests.
class MapCanvas final : public QWidget {
    Q_OBJECT

  public:
    explicit MapCanvas(QWidget* parent = nullptr);

    /// The layers. After a change of them or their symbols, Refresh draws the map anew.
    [[nodiscard]] LayerStack& Layers() { return layers_; }
    [[nodiscard]] const LayerStack& Layers() const { return layers_; }
    void Refresh();

    /// What the widget shows from edge to edge; the world while there are no layers.
    [[nodiscard]] MapBox Extent() const;
    /// Shows a box whole, in the middle. An empty box changes nothing.
    void SetExtent(const MapBox& extent);
    void ShowFullExtent();
    /// Makes the shown part larger (factor above 1) or smaller around a place of the map, which stays where it is.
    void Zoom(double factor, QPointF around);

    void SetTool(MapTool tool);
    [[nodiscard]] MapTool Tool() const { return tool_; }

    /// Places of the widget on the map and back; y goes up on the map.
    [[nodiscard]] QPointF ToMapPoint(QPointF place) const;
    [[nodiscard]] QPointF FromMapPoint(QPointF map) const;
    /// How far apart on the map two places of one line are that lie so many pixels apart.
    [[nodiscard]] double ToMapDistance(double pixels) const;

    /// Draws a rim around one feature until another is named; -1 for none.
    void Highlight(int layer, int feature);
    /// The same around many: for each layer, from the lowest, the numbers of its features.
    void Outline(std::vector<std::vector<int>> featuresOfLayers);
    [[nodiscard]] const std::vector<std::vector<int>>& Outlined() const { return outlined_; }
    /// What stands in the middle while there are no layers.
    void SetEmptyHint(const QString& hint);

    [[nodiscard]] QSize sizeHint() const override { return {480, 360}; }

  Q_SIGNALS:
    void Clicked(const QPointF& map, Qt::KeyboardModifiers modifiers); ///< Select or Identify, without a drag
    void Hovered(const QPointF& map);
    void HoverEnded();
    void ToolUsed(tessaro::MapTool tool); ///< ZoomIn, ZoomOut or Pan has done its work
    void ToolChanged(tessaro::MapTool tool);
    void ExtentChanged();
    void AfterLayerDraw(int layer); ///< a layer was just drawn
    void PopupRequested(const QPoint& globalPosition);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    enum class Drag { None, Waiting, Panning, Rectangle };

    [[nodiscard]] MapView View() const;
    [[nodiscard]] QSizeF DeviceSize() const;
    void Draw();
    void PaintPicture(QPainter& painter) const;
    void PaintHighlight(QPainter& painter) const;
    [[nodiscard]] LayerSymbols RimsOf(const std::vector<int>& features, std::size_t count) const;
    void PaintRectangle(QPainter& painter) const;
    void MoveTo(const MapBox& extent);
    void PanBy(QPointF pixels);
    void DragTo(QPointF place);
    void EndDrag(QMouseEvent* event);
    void CancelDrag();
    void ZoomToRectangle(const QRectF& rectangle);
    [[nodiscard]] bool KeyDoes(int key);
    void ShowPointer();

    LayerStack layers_;
    MapBox extent_; ///< that was asked for; empty: full
    MapTool tool_ = MapTool::Select;
    QString emptyHint_;

    QImage picture_;
    std::optional<MapView> pictureView_; ///< what the picture shows; none: nothing yet
    bool stale_ = true;
    QTimer rest_; ///< until the map is drawn anew while it moves

    Drag drag_ = Drag::None;
    QPointF pressed_;
    QPointF dragged_;
    MapBox extentBefore_;
    std::vector<std::vector<int>> outlined_; ///< features with a rim, for each layer
};

} // namespace tessaro
