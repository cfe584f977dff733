#pragma once

#include "selection/Details.h"

#include <QDialog>

class QTreeWidget;

namespace tessaro {

/// Where indicators are classified, or where an area lies.
class frmShowDetails final : public QDialog {
    Q_OBJECT

  public:
    explicit frmShowDetails(QWidget* parent = nullptr);

    /// The frame of indicators: name, sector, class.
    void DisplayINDDetails(const std::vector<selection::IndicatorDetails>& details);
    /// The frame of areas: the chain from the highest level down.
    void ShowAreaDetails(const QStringList& chain);

  private:
    QTreeWidget* details_;
};

} // namespace tessaro
