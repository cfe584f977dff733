#pragma once

#include <QWidget>

class QCheckBox;
class QPushButton;

namespace tessaro {

struct DataFilters;

/// The tick box of the row filters (chkFilters), which says which of them are on, and the button that asks for others
/// (cmdFilters).
class FilterBar final : public QWidget {
    Q_OBJECT

  public:
    explicit FilterBar(QWidget* parent = nullptr);

    /// Shows which filters are on.
    void ShowFilters(const DataFilters& filters);
    void SetFormCaptions();

  Q_SIGNALS:
    void Ticked(bool on);
    void FiltersWanted();

  private:
    QCheckBox* chkFilters_;
    QPushButton* cmdFilters_;
};

} // namespace tessaro
