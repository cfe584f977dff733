#pragma once

#include "presentation/ValueRanges.h"

#include <QWidget>

#include <memory>

namespace Ui {
class ColorRangesPanel;
}

namespace tessaro {

/// The panel "Apply Color": three ranges for each indicator, cut anew by a method or typed into the grid, and their
/// colours. It works on a draft, which OK keeps and Cancel drops.
class ColorRangesPanel final : public QWidget {
    Q_OBJECT

  public:
    explicit ColorRangesPanel(QWidget* parent = nullptr);
    ~ColorRangesPanel() override;

    /// Opens the panel on a copy of the ranges.
    void SetRanges(const ValueRanges& ranges);
    [[nodiscard]] const ValueRanges& Ranges() const { return draft_; }
    void SetFormCaptions();

    /// Stores the fields in the record of the indicator and cuts its ranges. A limit that is no number, or limits the
    /// wrong way round, are told and change nothing.
    void cmdApply_Click();

  Q_SIGNALS:
    void Kept();    ///< cmdAddOK
    void Dropped(); ///< cmdCancelOK

  private:
    void ConnectControls();
    void ShowRecord();
    void ShowGrid();
    void GridEdited(int row, int column);
    void ChooseColor(int row, int column);
    [[nodiscard]] ColorRanges* Record();

    std::unique_ptr<Ui::ColorRangesPanel> ui_;
    ValueRanges draft_;
    bool filling_ = false;
};

} // namespace tessaro
