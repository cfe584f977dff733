#pragma once

#include "presentation/RowsColumns.h"

#include <QByteArray>
#include <QString>

namespace tessaro {

/// The extension of a wizard's layout files, with its dot: ".twf" of the table wizard, ".xyf" of the graph wizard.
[[nodiscard]] QString LayoutExtension(WizardKind kind);
/// The folder of the layouts for reading, and for writing (made when it isn't there).
[[nodiscard]] QString LayoutFolder();
[[nodiscard]] QString LayoutFolderForWriting();

/// The bytes of a layout file.
[[nodiscard]] QByteArray LayoutBytes(const RowsColumns& arrangement, WizardKind kind);
/// Takes an arrangement from the bytes of a layout file: four lines are passed over, seven are read. False when the
/// file has fewer lines; what was read until then stays placed. Lines that name no field are passed over.
bool ReadLayout(const QByteArray& bytes, RowsColumns& arrangement);

/// Replaces the file; false (reported) when it can't be written, and the old one stays.
bool SaveRowsColumns(const QString& fileName, const RowsColumns& arrangement, WizardKind kind);
/// The same from a file. A file that can't be read leaves the arrangement as it was; that and a short file are reported
/// under "LoadRowsColumns".
void LoadRowsColumns(const QString& fileName, RowsColumns& arrangement);

} // namespace tessaro
