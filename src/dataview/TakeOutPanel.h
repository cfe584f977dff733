#pragma once

#include "dataview/DataOptions.h"
#include "dataview/DataPanel.h"

namespace tessaro {

class SelectionLists;

/// The panel of sources, units or subpopulations: what the selection has (lstAvailable) and what of it is in view
/// (lstSelected).
class TakeOutPanel final : public DataPanel {
    Q_OBJECT

  public:
    /// `options` is borrowed and must outlive the panel.
    TakeOutPanel(OptionList option, DataOptions& options, QWidget* parent);

    /// Fills both lists when that wasn't done since the last Reset.
    void Enter() override;
    void Reset() override;
    /// The items again with the texts of the language that is set; what was taken out stays so.
    void ReadTextsAnew();
    void SetFormCaptions() override;
    void SelectAll() override;
    void Copy() override;
    void Find() override;
    [[nodiscard]] bool MayLeave() override;

    /// Puts items back that were taken out, by their keys.
    void PutBack(const QStringList& keys);
    /// True when lstSelected has been emptied: the view keeps what it had until something is put back.
    [[nodiscard]] bool IsEmpty() const;

  private:
    void ConnectLists();
    void Put(const std::vector<KeyedItem>& items);
    void TakeOut(const std::vector<KeyedItem>& items);
    void TakeOutAll();
    void PutRecommended();
    void ShowAvailablePopup(const QPoint& place);
    void ShowSelectedPopup(const QPoint& place);
    void AskForInformation();
    void ShowIcons();

    OptionList option_;
    DataOptions& options_;
    SelectionLists* lists_;
    bool filled_ = false;
};

} // namespace tessaro
