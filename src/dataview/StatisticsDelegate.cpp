#include "dataview/StatisticsDelegate.h"

#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "dataview/StatisticsModel.h"

namespace tessaro {

void StatisticsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    constexpr int kMarkSize = theme::kIconSize * 4 / 5;
    NumberDelegate::paint(painter, option, index);
    const QString picture = index.data(StatisticsModel::kMarkRole).toString();
    if (picture.isEmpty()) return;
    const bool chosen = option.state.testFlag(QStyle::State_Selected);
    QRect place(0, 0, kMarkSize, kMarkSize);
    place.moveCenter(option.rect.center());
    theme::Icon(picture).paint(painter, place, Qt::AlignCenter, chosen ? QIcon::Selected : QIcon::Normal);
}

} // namespace tessaro
