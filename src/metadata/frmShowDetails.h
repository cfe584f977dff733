#pragma once

#include "metadata/Details.h"

#include <QDialog>

#include <memory>

class QLabel;

namespace Ui {
class frmShowDetails;
}

namespace tessaro {

/// Where indicators are classified, or where an area or a period stands. One of the frames shows, the others hide.
/// Ctrl+C copies all of it as tab-separated text.
class frmShowDetails final : public QDialog {
    Q_OBJECT

  public:
    explicit frmShowDetails(QWidget* parent = nullptr);
    ~frmShowDetails() override;

    /// For each indicator its name, and side by side the lines of its sectors and classes.
    void DisplayINDDetails(const std::vector<metadata::IndicatorDetails>& details);
    /// The area and those above it, from the top down.
    void ShowAreaDetails(const QString& areaId);
    void ShowPeriodDetails(const QString& period, qint64 dataRows);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void ShowLines(const QString& title, const QStringList& lines);
    QLabel* AddLabel(const char* name, const QString& text, int row, int column, int columns);

    std::unique_ptr<Ui::frmShowDetails> ui_;
    QStringList copied_;
};

} // namespace tessaro
