#pragma once

#include <QString>

class QAbstractItemView;
class QObject;
class QWidget;

/// Copies the chosen rows of lists, trees and tables to the clipboard.
namespace tessaro {

/// The chosen rows of a view as lines of tab-separated cells, in the order shown. Without a choice, the current
/// row.
[[nodiscard]] QString ChosenText(const QAbstractItemView& view);

/// Copies what is chosen in a control that shows text: a field, a list, a tree. False for every other control, and for
/// grids, which copy in blocks of their own.
bool CopyFromControl(QWidget* control);

/// As long as the owner lives, the key of Copy does this in every list, tree and table of the program, dialogs
/// included.
void CopyByKey(QObject& owner);

} // namespace tessaro
