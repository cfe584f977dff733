#pragma once

#include "presentation/RowsColumns.h"

#include <QByteArray>
#include <QString>

/// Reads and writes the wizards' layout files (.twf, .xyf).
namespace tessaro {

/// The extension of a wizard's layout files, with its dot: ".twf" of the table wizard, ".xyf" of the graph wizard.
[[nodiscard]] QString LayoutExtension(WizardKind kind);
/// The folder of the layouts for reading, and for writing (made when it isn't there).
[[nodiscard]] QString LayoutFolder();
[[nodiscard]] QString LayoutFolderForWriting();

/// The bytes of a layout file.
[[nodiscard]] QByteArray LayoutBytes(const RowsColumns& arrangement, WizardKind kind);
/// How a layout file was read: all its lines; fewer than seven fields, which is what most files have; or not at all.
enum class LayoutRead { Whole, Short, Damaged };
/// Takes an arrangement from the bytes of a layout file: four lines are passed over, seven are read. Damaged, and the
/// arrangement as it was, when no line names a field or one names something else. A field that stands there twice keeps
/// its first place.
[[nodiscard]] LayoutRead ReadLayout(const QByteArray& bytes, RowsColumns& arrangement);

/// Replaces the file; false (reported) when it can't be written, and the old one stays.
bool SaveRowsColumns(const QString& fileName, const RowsColumns& arrangement, WizardKind kind);
/// The same from a file. False, with the arrangement as it was, when it can't be read or is damaged. That and a short
/// file are reported under "LoadRowsColumns".
[[nodiscard]] bool LoadRowsColumns(const QString& fileName, RowsColumns& arrangement);

} // namespace tessaro
