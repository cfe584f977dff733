#pragma once

#include "map/wizard/IdentifiedFeature.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmMAPIdentify;
}

namespace tessaro {

/// What lies at a place of the map, layer by layer. It stays open beside the map while places are chosen.
class frmMAPIdentify final : public QDialog {
    Q_OBJECT

  public:
    explicit frmMAPIdentify(QWidget* parent = nullptr);
    ~frmMAPIdentify() override;

    /// The map is borrowed until the next call or Forget.
    void Show(const LayerStack& map, const QString& theme, QPointF place, std::vector<IdentifiedFeature> found);
    /// Forgets what it showed: the layers have changed.
    void Forget();

  Q_SIGNALS:
    void FeatureShown(int layer, int feature); ///< below 0 for none

  private:
    void ShowFeature(int index);

    std::unique_ptr<Ui::frmMAPIdentify> ui_;
    const LayerStack* map_ = nullptr;
    std::vector<IdentifiedFeature> found_;
};

} // namespace tessaro
