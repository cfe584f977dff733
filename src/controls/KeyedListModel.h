#pragma once

#include "controls/KeyedItem.h"

#include <QAbstractTableModel>
#include <QCollator>
#include <QColor>
#include <QIcon>
#include <QSet>

#include <vector>

namespace tessaro {

/// The rows of a keyed list: unique keys, sorted by a column unless an order was given, and a filter that only hides.
/// Everything is done in batches and nothing is kept per row but its texts, so that 50,000 rows cost a blink.
class KeyedListModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    static constexpr const char* kMimeType = "application/x-tessaro-keys";

    explicit KeyedListModel(QObject* parent = nullptr);

    // --- Rows. ----------------------------------------------------------------------------------------------------
    /// Replaces all rows and sorts them upwards on the first column; of two rows with one key the first stays.
    void SetItems(std::vector<KeyedItem> items);
    /// The same, keeping the order given instead of sorting.
    void SetItemsInOrder(std::vector<KeyedItem> items);
    /// Adds the rows whose keys are new and ignores the others. Gives how many were added.
    int AddItems(std::vector<KeyedItem> items);
    void RemoveKeys(const QSet<QString>& keys);
    /// Moves the rows of these keys one place up (-1) or down (1) past the rows of other keys. For lists in an order
    /// of their own.
    void MoveKeys(const QSet<QString>& keys, int step);
    void Clear() { SetItems({}); }

    [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] bool Contains(const QString& key) const { return keys_.contains(key); }
    /// All rows, also those that the filter hides, in list order.
    [[nodiscard]] const std::vector<KeyedItem>& Items() const { return items_; }
    /// The rows that the filter shows.
    [[nodiscard]] std::vector<KeyedItem> ShownItems() const;
    [[nodiscard]] const KeyedItem& ItemAt(int shownRow) const;
    [[nodiscard]] int RowOfKey(const QString& key) const; ///< among the rows shown; -1 when hidden or absent

    // --- Columns and look. ------------------------------------------------------------------------------------------
    void SetColumns(const QStringList& heads);
    void SetColumnIcons(const QList<QIcon>& icons);
    /// Icon of the first column in marked rows.
    void SetMarkedIcon(const QIcon& icon);
    /// Marks a row, or takes its mark away.
    void SetMarked(const QString& key, bool marked);
    /// Colour of shared cells; an invalid one switches it off.
    void SetGlobalColor(const QColor& color);

    // --- Order and filter.
    // --------------------------------------------------------------------------------------------
    void sort(int column, Qt::SortOrder order) override;
    [[nodiscard]] int SortColumn() const { return sortColumn_; } ///< -1: in the order given
    [[nodiscard]] Qt::SortOrder SortOrder() const { return sortOrder_; }
    /// Shows the rows that hold every word of the text in some cell; empty shows all.
    void SetFilter(const QString& text);
    [[nodiscard]] bool IsFiltered() const { return !filterWords_.isEmpty(); }

    // --- Model.
    // -------------------------------------------------------------------------------------------------------
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QStringList mimeTypes() const override;
    /// For drag and copy: the keys, for another keyed list, and the rows as tab-separated text, for other programs.
    [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
    /// The list that dragged data came from; nullptr when another program made them.
    [[nodiscard]] static const QObject* SourceOf(const QMimeData& data);
    /// The rows as lines of tab-separated cells.
    [[nodiscard]] QString TextOfRows(const std::vector<int>& shownRows) const;

  Q_SIGNALS:
    void CountChanged();

  private:
    void Replace(std::vector<KeyedItem> items);
    void KeepUnique(std::vector<KeyedItem>& items);
    void InsertOne(KeyedItem item);
    void SortItems();
    void RebuildShown();
    [[nodiscard]] bool Matches(const KeyedItem& item) const;
    [[nodiscard]] bool Before(const KeyedItem& a, const KeyedItem& b) const;

    std::vector<KeyedItem> items_;
    std::vector<int> shown_; ///< positions in items_ that the filter lets through; unused without a filter
    QSet<QString> keys_;
    QStringList heads_;
    QList<QIcon> icons_;
    QIcon markedIcon_;
    QColor globalColor_;
    QStringList filterWords_;
    int sortColumn_ = 0;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    QCollator collator_;
};

} // namespace tessaro
