#pragma once

#include <QString>

class QWidget;

namespace tessaro {

/// Asks for a file and writes all values of the open database into it, in the form that its name says.
void ExportDatabase(QWidget* owner);
/// The same for a file that is known. False after the message, or when the user stopped it; the old file stands then.
bool SaveDatabaseValues(const QString& file, QWidget* owner);

} // namespace tessaro
