#pragma once

#include "layers/MapCanvas.h"

#include <QFrame>

#include <vector>

class QLabel;
class QPushButton;
class QToolButton;

namespace tessaro {

class PeriodSlider;

/// The map of the wizard with its tools, the slider of its periods, and a line that advises. It decides nothing: what
/// the user wants is told by signals.
class MapPane final : public QFrame {
    Q_OBJECT

  public:
    explicit MapPane(QWidget* parent = nullptr);

    [[nodiscard]] MapCanvas& Map() { return *map_; }
    [[nodiscard]] const MapCanvas& Map() const { return *map_; }
    [[nodiscard]] PeriodSlider& Periods() { return *periods_; }
    /// Captions and tips of the tools.
    void SetToolTipParam();
    /// What is under the pointer, beside the tools and as a tip.
    void ShowPointed(const QString& text);
    /// The view of the map that comes first, and what is said of it as long as nothing is under the pointer.
    void ShowFirst(const MapBox& extent, const QString& note);
    /// A line below the map with a button; no text hides it.
    void ShowAdvice(const QString& text, const QString& buttonCaption);

  Q_SIGNALS:
    void IdentifyRequested(const QPointF& map);
    void LabelsRequested();
    void AdviceTaken();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void FitPointed();
    QToolButton* AddButton(const char* picture, const char* textKey);
    void AddTool(MapTool tool, const char* picture, const char* textKey);
    void MakeTools();
    void MakeAdvice();
    void ShowTool(MapTool tool);

    MapCanvas* map_;
    QFrame* tools_;
    QLabel* lblPointed_;
    QString pointed_; ///< what is under the pointer
    QString note_;    ///< on the first view
    PeriodSlider* periods_;
    QFrame* picAdvice_;
    QLabel* lblAdvice_;
    QPushButton* cmdAdvice_;
    struct Button {
        QToolButton* button;
        QString key;
        std::optional<MapTool> tool; ///< nothing for a command
    };
    std::vector<Button> buttons_;
};

} // namespace tessaro
