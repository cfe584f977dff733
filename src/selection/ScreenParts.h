#pragma once

#include "controls/SelectionLists.h"

#include <QString>

class QFrame;
class QLabel;
class QPushButton;

/// Small parts that the three selection screens share.
namespace tessaro {

enum class FilterButton { All, Available };
/// Icon, text beside it and focus of an automatic selection's button.
void StyleFilterButton(QPushButton* button, FilterButton kind);
/// The strip at the top of a screen and the line below it.
void StyleStrip(QWidget* strip, QFrame* line);
void ShowHeading(QLabel* label, const QString& key);

/// Tells above the Available list that it shows what a search has found, and in it when that is nothing.
void ShowSearch(SelectionLists& lists, const QString& text);
/// Says that an automatic selection has found nothing: for a while in the status bar, and in the Selected list while it
/// is empty.
void TellNothingFound(SelectionLists& lists);
/// Tells that what was chosen could not be written; the list shows what is chosen all the same.
void TellNotKept();
/// "Areas: 12" from a key with a place for the number; empty for 0.
[[nodiscard]] QString SummaryOf(const QString& key, int count);

} // namespace tessaro
