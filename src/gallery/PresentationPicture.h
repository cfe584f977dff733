#pragma once

#include "office/Workbook.h"

#include <QByteArray>
#include <QChar>
#include <QList>

#include <vector>

namespace tessaro {

/// The picture of what goes to a slide of an open workbook: the used block of its active sheet ('T'), its chart ('G'),
/// the map's picture "Picture 1" ('M'); with the null kind whatever of these it holds. Charts and pictures are looked
/// for on the active sheet first. Throws office::Error, Failure::Call when there is no such thing in it.
[[nodiscard]] QByteArray PictureOfPresentation(const office::Workbook& book, QChar kind);

/// How many slides a table needs so that its text can be read; one where it has no use for more.
[[nodiscard]] int SlidesForTable(const office::Workbook& book);
/// A table's used block in so many parts; each is the head's picture and, below it, that of its rows.
[[nodiscard]] std::vector<QList<QByteArray>> PartsOfTable(const office::Workbook& book, int slides);

} // namespace tessaro
