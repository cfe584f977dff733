#pragma once

#include "office/Workbook.h"

#include <QByteArray>
#include <QChar>
#include <QString>

namespace tessaro {

/// What of an open workbook goes to a slide: 'T' the used block of its active sheet, 'G' its chart, 'M' the map's
/// picture "Picture 1". A name that holds the words of several kinds ("Table - World map - 2020") gives the first one,
/// in the order of PresentationKinds, that the workbook has; a name without any gives whatever it has.
[[nodiscard]] QChar KindToCopy(const office::Workbook& book, const QString& name);

/// The picture of that part. Charts and maps are looked for on the active sheet first. Throws office::Error,
/// Failure::Call when there is no such thing in the workbook.
[[nodiscard]] QByteArray PictureOfPresentation(const office::Workbook& book, QChar kind);

} // namespace tessaro
