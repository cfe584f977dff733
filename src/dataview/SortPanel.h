#pragma once

#include "dataview/DataPanel.h"

#include <QList>

class QToolButton;

namespace tessaro {

class SelectionLists;
struct KeyedItem;

/// The panel of the sort option: the columns to sort by (lstSelected), in order, each up or down. It tells of a change
/// when it is left.
class SortPanel final : public DataPanel {
    Q_OBJECT

  public:
    explicit SortPanel(QWidget* parent);

    void Enter() override;
    [[nodiscard]] bool MayLeave() override;
    void Leave() override;
    /// An order that the user has set stays.
    void Reset() override;
    void SetFormCaptions() override;
    void SelectAll() override;
    void Copy() override;

    /// Shows the order that a click on a head has set: one column (1 to 8).
    void ShowOrder(int column, bool ascending);
    /// True when the order is the user's, from here or from a head; it is kept when the selection changes.
    [[nodiscard]] bool IsUsersOrder() const { return usersOrder_; }
    /// The chosen columns in order; a marked one goes downwards.
    [[nodiscard]] const std::vector<KeyedItem>& Columns() const;

  private:
    void MakeButtons();
    void ConnectLists();
    void Put(std::vector<KeyedItem> columns);
    void TakeOutHighlighted();
    void TakeOutAll();
    void SetDescending(bool descending);
    void MoveHighlighted(int step);
    void KeepHighlights(const QStringList& keys);
    void EnableButtons();
    void ShowSelectedPopup(const QPoint& place);
    void ShowAvailablePopup(const QPoint& place);

    SelectionLists* lists_;
    QList<QToolButton*> buttons_;
    bool changed_ = false;
    bool filled_ = false;
    bool usersOrder_ = false;
};

} // namespace tessaro
