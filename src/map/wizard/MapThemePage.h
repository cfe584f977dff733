#pragma once

#include "map/MapAreas.h"
#include "map/MapData.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace tessaro {

class DataTable;
class MapDataModel;

/// The page of a map's theme: what it shows, its values in the list lv1, and the button for another theme.
class MapThemePage final : public QWidget {
    Q_OBJECT

  public:
    explicit MapThemePage(QWidget* parent = nullptr);

    void ShowTheme(const MapTheme& theme, const MapAreas& areas);
    void SetFormCaptions();
    /// What the heads of all columns need.
    [[nodiscard]] int LeastWidth() const;

  Q_SIGNALS:
    void AdvancedRequested();
    /// The user has gone to the row of an area.
    void AreaChosen(const QString& areaId);

  private:
    QLabel* lblTheme_;
    QLabel* lblThemeDetails_;
    DataTable* lv1_;
    MapDataModel* model_;
    QLabel* lblCount_;
    QPushButton* cmdAdvanced_;
    bool showing_ = false; ///< a row is made current by the page itself
};

} // namespace tessaro
