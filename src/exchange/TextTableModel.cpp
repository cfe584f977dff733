#include "exchange/TextTableModel.h"

#include "controls/Theme.h"
#include "session/DisplayValue.h"

#include <QLocale>

namespace tessaro {

namespace {

/// A whole number in the digits of the user; other texts as they are.
QString LocalCount(const QString& text) {
    bool isNumber = false;
    const qlonglong count = text.toLongLong(&isNumber);
    return isNumber ? QLocale::system().toString(count) : text;
}

} // namespace

void TextTableModel::Show(ImportTable table) {
    beginResetModel();
    table_ = std::move(table);
    endResetModel();
}

int TextTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table_.rows);
}

int TextTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table_.heads.size());
}

QVariant TextTableModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::ForegroundRole && index.isValid() && table_.isRefused &&
        table_.isRefused(static_cast<std::size_t>(index.row())))
        return theme::TextColor(Qt::darkRed);
    const bool isAlignment = role == Qt::TextAlignmentRole;
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole && !isAlignment)) return {};
    const QString text = table_.row(static_cast<std::size_t>(index.row())).value(index.column());
    const bool isCount = table_.numbers.contains(index.column());
    if (!isAlignment) return isCount ? LocalCount(text) : text;
    return QVariant::fromValue(Qt::AlignVCenter | (ReadsAsNumber(text) ? Qt::AlignRight : Qt::AlignLeading));
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    return orientation == Qt::Vertical ? QString::number(section + 1) : table_.heads.value(section);
}

} // namespace tessaro
