#include "exchange/ChoiceTableModel.h"

#include <QComboBox>
#include <QStyle>
#include <QStyleOption>

namespace tessaro {

namespace {

/// The role under which the model gives the choices of a line.
constexpr int kChoicesRole = Qt::UserRole;

} // namespace

void ChoiceTableModel::Show(const QStringList& heads, std::vector<ChoiceRow> rows) {
    beginResetModel();
    heads_ = heads;
    rows_ = std::move(rows);
    endResetModel();
}

int ChoiceTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ChoiceTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(heads_.size());
}

QVariant ChoiceTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const ChoiceRow& row = rows_[static_cast<std::size_t>(index.row())];
    if (IsChoice(index)) {
        if (role == Qt::EditRole) return row.chosen;
        if (role == kChoicesRole) return row.choices;
        return role == Qt::DisplayRole ? row.choices.value(row.chosen) : QVariant();
    }
    return role == Qt::DisplayRole || role == Qt::ToolTipRole ? row.texts.value(index.column()) : QVariant();
}

bool ChoiceTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || !IsChoice(index) || role != Qt::EditRole) return false;
    ChoiceRow& row = rows_[static_cast<std::size_t>(index.row())];
    const int chosen = value.toInt();
    if (chosen < 0 || chosen >= row.choices.size()) return false;
    row.chosen = chosen;
    Q_EMIT dataChanged(index, index);
    Q_EMIT Chosen();
    return true;
}

Qt::ItemFlags ChoiceTableModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return IsChoice(index) ? usual | Qt::ItemIsEditable : usual;
}

QVariant ChoiceTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    return orientation == Qt::Vertical ? QString::number(section + 1) : heads_.value(section);
}

void ChoiceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (option.widget == nullptr || !index.flags().testFlag(Qt::ItemIsEditable)) return;
    constexpr int size = 10;
    QStyleOption arrow;
    arrow.palette = option.palette;
    arrow.state = QStyle::State_Enabled;
    const QRect place = option.rect.adjusted(size / 2, 0, -size / 2, 0);
    arrow.rect = QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter, QSize(size, size), place);
    option.widget->style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
}

QWidget* ChoiceDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                      const QModelIndex& index) const {
    auto* box = new QComboBox(parent);
    box->addItems(index.data(kChoicesRole).toStringList());
    // A choice counts at once, not only when the cell is left.
    connect(box, &QComboBox::activated, this, [this, box] {
        auto* self = const_cast<ChoiceDelegate*>(this);
        Q_EMIT self->commitData(box);
    });
    return box;
}

void ChoiceDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* box = qobject_cast<QComboBox*>(editor)) box->setCurrentIndex(index.data(Qt::EditRole).toInt());
}

void ChoiceDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    if (const auto* box = qobject_cast<QComboBox*>(editor)) model->setData(index, box->currentIndex(), Qt::EditRole);
}

} // namespace tessaro
