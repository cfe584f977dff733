#pragma once

#include "controls/SelectionLists.h"

#include <QString>

class QFrame;
class QLabel;
class QPushButton;

/// Small parts that the three selection screens share.
namespace tessaro {

enum class FilterButton { All, Available };
/// Sets icon and focus policy of a button for automatic selection.
void StyleFilterButton(QPushButton* button, FilterButton kind);
/// Sets the colours of the strip at the top of a screen and of the line below it.
void StyleStrip(QWidget* strip, QFrame* line);
void ShowHeading(QLabel* label, const QString& key);

/// Says above the Available list that it shows the result of a search for `text`; an empty result is said in the list.
void ShowSearch(SelectionLists& lists, const QString& text);
/// Says that an automatic selection has found nothing: for a while in the status bar, and in the Selected list while it
/// is empty.
void TellNothingFound(SelectionLists& lists);
/// Tells the user that the selection could not be saved completely.
void TellNotKept();
/// "Areas: 12" from the key of a text with "%1" for the number; empty for 0.
[[nodiscard]] QString SummaryOf(const QString& key, int count);

} // namespace tessaro
