#pragma once

#include "layers/MapCanvas.h"

#include <QFrame>
#include <QHash>
#include <QSet>

class QButtonGroup;
class QLabel;
class QToolButton;

namespace tessaro {

/// The map of the areas with its tools: a click picks an area or, with the tool Identify, asks what it is; its name is
/// shown under the pointer. The keys Page Up and Page Down walk the areas by their names, Enter acts like a click on
/// the one that has the rim.
class AreaMapPanel final : public QFrame {
    Q_OBJECT

  public:
    explicit AreaMapPanel(QWidget* parent = nullptr);

    /// Replaces the layer. `file` is remembered as what is shown.
    void ShowLayer(MapLayer layer, const QString& file);
    /// The file of the layer that is shown; empty for none.
    [[nodiscard]] const QString& File() const { return file_; }
    /// Goes to the areas of a branch (empty: all) and shows the others paler.
    void ShowBranch(const QString& areaId);
    /// Paints these areas, by id in any case, in the colour of what is chosen.
    void ShowChosen(const QSet<QString>& ids);
    /// Captions again, and the names of areas, which may have changed with the language.
    void SetFormCaptions();

    /// Lets Tab go from a control to the tools and from these to the map.
    void FollowInTabOrder(QWidget* before);

    [[nodiscard]] MapCanvas& Map() { return *map_; }

  Q_SIGNALS:
    void AreaPicked(const QString& areaId);
    void AreaIdentified(const QString& areaId);
    void PopupRequested(const QPoint& globalPosition);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QToolButton* AddButton(const char* name, const char* picture, const char* textKey);
    void AddTool(MapTool tool, const char* name, const char* picture, const char* textKey);
    void MakeTools();
    void ConnectMap();
    void Pick(const QPointF& map);
    [[nodiscard]] int FeatureUnder(const QPointF& map) const;
    void Point(int feature);
    void Walk(int steps);
    void PickPointed();
    void ShowLabels(bool shown);
    void Colour();
    [[nodiscard]] const QHash<QString, QString>& Names();

    MapCanvas* map_;
    QFrame* picMapControls_;
    QLabel* lblAreaUnderPointer_;
    QButtonGroup* tools_;
    struct Caption {
        QToolButton* button;
        QString key;
    };
    std::vector<Caption> captions_;
    QToolButton* labels_ = nullptr;

    QString file_;
    QString branch_;
    std::vector<QString> ids_;  ///< of the features
    std::vector<int> inBranch_; ///< features of the branch
    QSet<QString> chosen_;
    QHash<QString, QString> names_;
    std::vector<int> walk_; ///< features of the branch by name; empty until it is wanted
    int pointed_ = -1;      ///< the feature with the rim
};

} // namespace tessaro
