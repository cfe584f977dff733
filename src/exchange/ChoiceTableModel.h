#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QStyledItemDelegate>

#include <vector>

namespace tessaro {

/// A line of texts with one choice among several at its end.
struct ChoiceRow {
    QStringList texts;
    QStringList choices;
    int chosen = 0;
};

/// Lines of which the last column is chosen from a list.
class ChoiceTableModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    void Show(const QStringList& heads, std::vector<ChoiceRow> rows);
    [[nodiscard]] const std::vector<ChoiceRow>& Rows() const { return rows_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  Q_SIGNALS:
    void Chosen();

  private:
    [[nodiscard]] bool IsChoice(const QModelIndex& index) const { return index.column() == heads_.size() - 1; }

    QStringList heads_;
    std::vector<ChoiceRow> rows_;
};

/// Shows a list to choose from while a choice is edited.
class ChoiceDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    /// With the arrow of a list in cells that have one.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};

} // namespace tessaro
