#pragma once

#include "map/custom/LayerRows.h"

#include <QDialog>
#include <QList>

#include <functional>
#include <memory>

class QToolButton;

namespace Ui {
class frmMAPCustomize;
}

namespace tessaro {

/// Manages the layers of a map: which are shown and in what order, how they look, further shapefiles, buffers around
/// points, and which layers come back in the next session. Everything takes effect at once on the map behind.
class frmMAPCustomize final : public QDialog {
    Q_OBJECT

  public:
    /// `map` and the formula of combined labels outlive the window; `refresh` draws the map anew. Layers remembered
    /// from former sessions are added now.
    frmMAPCustomize(LayerStack& map, QString& labelFormula, std::function<void()> refresh, QWidget* parent = nullptr);
    ~frmMAPCustomize() override;

    void done(int result) override;

  private:
    void SetFormCaptions();
    void ConnectControls();
    void MakeStyleButtons();
    void MakeStyleButtons(LayerKind kind, const char* name, int columns);
    void FillRows(int active);
    void ShowRow(int row);
    void ShowActive();
    void ShowStyles(const StackedLayer& layer);
    void ShowButtons(int row);
    void Activate(int row);
    void Changed();
    [[nodiscard]] int Active() const { return active_; }
    [[nodiscard]] int DetermineRow(const QPoint& place) const;

    void LVLayers_MouseDown(int row, bool checked);
    void CellChosen(int row, int column);
    void cmdAddLayers_Click();
    void cmdRemoveLayer_Click();
    void cmdBuffer_Click();
    void Move(bool up);
    void ChooseStyle(LayerKind kind, int style);
    void ChooseColor(bool outline);
    void cmdOKWidth_Click(double width);
    void cmdLabels_Click();
    void cmdApply_Click();

    std::unique_ptr<Ui::frmMAPCustomize> ui_;
    LayerRows rows_;
    QString& labelFormula_;
    std::function<void()> refresh_;
    QList<QToolButton*> styleButtons_[3]; ///< of points, lines, polygons
    int active_ = -1;
    bool filling_ = false; ///< the lists are being filled, and nothing in them is the user's doing
};

} // namespace tessaro
