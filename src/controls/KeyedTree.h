#pragma once

#include "controls/KeyedTreeModel.h"

#include <QTreeView>

namespace tessaro {

/// A tree of keyed nodes. Choosing a node, by mouse or keyboard, sends its key; a click on the node that is already
/// chosen sends it again, so that a search result in the list beside it can be replaced by the node's items.
class KeyedTree final : public QTreeView {
    Q_OBJECT

  public:
    explicit KeyedTree(QWidget* parent = nullptr);

    [[nodiscard]] KeyedTreeModel& Nodes() { return *model_; }
    [[nodiscard]] const KeyedTreeModel& Nodes() const { return *model_; }
    [[nodiscard]] QString CurrentKey() const;
    /// Makes a node the current one, without telling its key.
    void ShowKey(const QString& key);
    /// Closes the branches that don't lead to the chosen node.
    void SetCollapseOthers(bool collapse) { collapseOthers_ = collapse; }
    void SetEmptyHint(const QString& hint);
    /// The chosen node and what is open below it, a line a node, a tab for each level.
    [[nodiscard]] QString BranchText() const;
    void CopyBranch() const;

  Q_SIGNALS:
    void NodeChosen(const QString& key);
    void PopupRequested(const QPoint& globalPosition);
    void EnterPressed();

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void CollapseOthers(const QModelIndex& chosen);
    void AppendBranch(const QModelIndex& node, int level, QStringList& lines) const;

    KeyedTreeModel* model_;
    QString emptyHint_;
    bool collapseOthers_ = false;
    bool quiet_ = false;
    bool toldOnPress_ = false;
};

} // namespace tessaro
