#pragma once

#include "dataview/NumberDelegate.h"

namespace tessaro {

/// Draws the rows of DataStats: their figures, and the picture of the mark that opens or closes a row.
class StatisticsDelegate final : public NumberDelegate {
    Q_OBJECT

  public:
    using NumberDelegate::NumberDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tessaro
