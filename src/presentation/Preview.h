#pragma once

#include "presentation/PivotTable.h"
#include "presentation/PresentationFile.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace tessaro {

class OfficeHost;

/// What the table and the graph wizard do alike on their way to the preview.
namespace preview {

/// Starts the spreadsheet program, both the one that writes and the one that shows, without waiting for it.
void StartSpreadsheet();
/// Shows the message of an outcome, if it has one; True when there is a workbook.
bool Tell(const ShowOutcome& outcome);
/// Puts the workbook into its place in the form. Where it can't be shown the place says why, and the file stands.
void Show(OfficeHost& place, QWidget& form, const QString& file);
[[nodiscard]] QStringList Heads(const PivotTable& table);

} // namespace preview

} // namespace tessaro
