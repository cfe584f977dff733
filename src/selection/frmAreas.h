#pragma once

#include "controls/StageScreen.h"
#include "selection/AreaSelection.h"

#include <memory>
#include <optional>

class QMenu;

namespace Ui {
class frmAreas;
}

namespace tessaro {

class AreaMapPanel;
class KeyedList;

/// Stage 2: the tree of areas, the children of its current node, and the chosen areas.
class frmAreas final : public StageScreen {
    Q_OBJECT

  public:
    explicit frmAreas(QWidget* parent = nullptr);
    ~frmAreas() override;

    [[nodiscard]] QString FormName() const override { return QStringLiteral("frmAreas"); }
    void Enter() override;
    void SelectAll() override;
    void Copy() override;
    void Find() override;
    void Print() override;
    [[nodiscard]] bool CanPrint() const override { return true; }
    void Refresh() override;
    void SetFormCaptions() override;
    [[nodiscard]] QString SelectionSummary() const override;

    /// The children of a node in the list (0), or the node's map (1).
    void ShowThisAreaOption(int option);
    /// Shows the map that an area names. Without one, or with one that can't be read, message "222", and the map stays
    /// as it was.
    void LoadAreaMap(const QString& areaId);
    void FillAvailableAreas(const QString& nodeKey);
    /// Brings lstSelected1 up to date with the set of chosen areas.
    void FillSelectedAreas();
    void AddSelectedAreas(bool all);
    void RemoveSelectedAreas(bool all);
    /// Adds all areas of a level under the current node, and shows them in the Available list.
    void SelectAreasOfLevel(int level, bool onlyWithData);
    /// Fills the Available list with the areas that have the text in their names.
    void SeacrhAreaStrings(const QString& text);
    /// Shows where the highlighted selected area lies in the hierarchy.
    void ShowAreaDetails();
    void cmdAllFilter_Click();
    void cmdAvlFilter_Click();

  private:
    void Form_Load();
    void ConnectControls();
    void ConnectTree();
    void MakeOptions();
    void ShowMapOfNode(const QString& nodeKey);
    [[nodiscard]] bool ShowMapFile(const QString& path);
    void PickOnMap(const QString& areaId);
    void Identify(const QString& areaId);
    void ShowDetailsOf(const QString& areaId);
    [[nodiscard]] bool ShowsMap() const;
    void EnableFilterOfList();
    void AddOneArea(const QString& key);
    void ShowKept(bool written);
    void AddItems(const std::vector<KeyedItem>& items);
    void AddFound(const QString& idList);
    /// The children of a node for the tree. They are read unless the list has just read the same ones.
    [[nodiscard]] std::vector<KeyedNode> ChildrenOf(const QString& nodeKey);
    [[nodiscard]] QString CurrentNode() const;
    void FillLevelMenu(QMenu* menu);
    void ShowAvailablePopup(const QPoint& place);
    void ShowSelectedPopup(const QPoint& place);
    void ShowTreePopup(const QPoint& place);
    [[nodiscard]] KeyedList& lstAvailable1() const;
    [[nodiscard]] KeyedList& lstSelected1() const;

    std::unique_ptr<Ui::frmAreas> ui_;
    selection::AreaSelection chosen_;
    AreaMapPanel* map_;
    int depth_ = 0;
    QString rowsOf_; ///< node whose rows `rows_` holds
    std::vector<selection::AreaRow> rows_;
};

} // namespace tessaro
