#pragma once

#include "map/MapData.h"
#include "map/MapLayerList.h"

#include <QDialog>
#include <QStringListModel>

#include <memory>

class QListView;

namespace Ui {
class frmMAPAdvanced;
}

namespace tessaro {

/// Chooses a map's theme from what is in view, and its base maps: those that are ticked in cboMaps, the lowest first.
class frmMAPAdvanced final : public QDialog {
    Q_OBJECT

  public:
    frmMAPAdvanced(const MapTheme& theme, const MapFiles& maps, QWidget* parent = nullptr);
    ~frmMAPAdvanced() override;

    /// What was chosen; as at first when the dialog was cancelled.
    [[nodiscard]] const MapTheme& Theme() const { return theme_; }
    [[nodiscard]] const MapFiles& Maps() const { return maps_; }

  private:
    void SetFormCaptions();
    void ConnectLists();
    void FillMaps();
    void AddMap(const MapFile& file, bool ticked);
    void IndicatorChosen();
    void SubpopChosen();
    void EnableOK();
    void cmdBrowse_Click();
    void cmdOK_Click();
    [[nodiscard]] QString Subpop() const;
    [[nodiscard]] MapFiles Ticked() const;

    std::unique_ptr<Ui::frmMAPAdvanced> ui_;
    MapTheme theme_;
    MapFiles maps_;
    MapFiles listed_; ///< the rows of cboMaps
    QStringListModel indicators_;
    QStringListModel subpops_; ///< with several of them, the first row stands for all
    QStringListModel units_;
};

} // namespace tessaro
