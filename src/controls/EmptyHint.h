#pragma once

#include <QString>

class QAbstractItemView;
class QWidget;

namespace tessaro {

/// Writes a hint in the middle of an empty list or tree, in its paint event.
void PaintEmptyHint(QWidget* viewport, const QString& hint);
/// Lets a list of another kind show `hint` whenever it has no rows; a later call changes the hint.
void ShowWhenEmpty(QAbstractItemView* view, const QString& hint);

} // namespace tessaro
