#pragma once

#include <QString>

class QAbstractItemView;
class QWidget;

namespace tessaro {

/// The chosen rows of a view as lines of tab-separated cells, in the order shown. Without a choice, the current
/// row.
[[nodiscard]] QString ChosenText(const QAbstractItemView& view);

/// Copies what is chosen in a control that shows text: a field, a list, a tree. False for every other control, and for
/// grids, which copy in blocks of their own.
bool CopyFromControl(QWidget* control);

} // namespace tessaro
