#pragma once

#include "dataview/NumberDelegate.h"

namespace tessaro {

/// Draws the cells of the data grid: a raised mark behind values with a footnote, the spare last row's "loading", and
/// the full text of a cell that is too narrow for it as its tool tip.
class GridDelegate final : public NumberDelegate {
    Q_OBJECT

  public:
    using NumberDelegate::NumberDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tessaro
