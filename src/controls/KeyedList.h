#pragma once

#include "controls/KeyedListModel.h"

#include <QTreeView>

namespace tessaro {

/// The list of the selection screens: columns with sortable heads, extended selection, copy, drag to a partner list,
/// and a hint where it is empty. All rows count as "all" whether the filter shows them or not; what is highlighted
/// is always shown, since a change of the filter gives up the highlights.
class KeyedList final : public QTreeView {
    Q_OBJECT

  public:
    explicit KeyedList(QWidget* parent = nullptr);

    [[nodiscard]] KeyedListModel& Items() { return *model_; }
    [[nodiscard]] const KeyedListModel& Items() const { return *model_; }

    void SetColumns(const QStringList& heads);
    /// Widths by the texts, where the first column doesn't deserve half of the room: how much each column counts when
    /// not all find room.
    void SetColumnWeights(const QList<double>& weights);
    /// The text in the empty list, and in a list whose filter lets nothing through.
    void SetEmptyHint(const QString& hint, const QString& noMatchHint);
    /// The hint that the list shows now; none while it has rows.
    [[nodiscard]] QString HintShown() const;
    /// Takes drops from this list only.
    void SetDropSource(KeyedList* source) { dropSources_ = {source}; }
    /// The same for several lists; the list itself among them takes drops that change its order.
    void SetDropSources(const QList<KeyedList*>& sources) { dropSources_ = sources; }
    /// Plain left and right arrows leave the list as Ctrl+arrow does (a list of one column has no other use for them).
    void SetPlainArrowsLeave(bool leave) { plainArrowsLeave_ = leave; }

    [[nodiscard]] std::vector<KeyedItem> HighlightedItems() const; ///< in list order
    [[nodiscard]] bool HasHighlighted() const { return selectionModel()->hasSelection(); }
    [[nodiscard]] QString CurrentKey() const;
    void HighlightKey(const QString& key);
    /// Sorts on a column; the same column again turns the order round.
    void SortOn(int column);
    void CopyHighlighted() const;

  Q_SIGNALS:
    void ItemActivated(const QString& key); ///< double click
    void EnterPressed();
    void DeletePressed();
    void LeaveTowards(Qt::Edge edge);                  ///< arrow key that asks for the neighbour on that side
    void ItemsDropped();                               ///< highlighted items of the drop source were dropped here
    void ItemsDroppedFrom(KeyedList* source, int row); ///< the same, with the row under the mouse (-1: none)
    void PopupRequested(const QPoint& globalPosition);
    void CurrentTextChanged(const QString& text);
    void HighlightChanged();
    void SortChanged();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] KeyedList* SourceOf(const QDropEvent* event) const;
    [[nodiscard]] bool Accepts(const QDropEvent* event) const { return SourceOf(event) != nullptr; }
    [[nodiscard]] std::vector<int> HighlightedRows() const;
    void ShareWidth();
    void ShareWidthByTexts();

    KeyedListModel* model_;
    QList<KeyedList*> dropSources_;
    QString emptyHint_;
    QString noMatchHint_;
    bool plainArrowsLeave_ = false;
    bool widthsAreTheUsers_ = false; ///< a column was dragged
    QList<double> weights_;
};

} // namespace tessaro
