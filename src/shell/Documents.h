#pragma once

#include <QString>

/// Help, tour and product pages.
namespace tessaro {

/// Path of a document of the product in the current language (otherwise in the base language), named by the settings of
/// its folder and file. With `extension` when there is such a file, otherwise with ".htm"; empty when there is neither.
[[nodiscard]] QString DocumentFile(const QString& folderSetting, const QString& fileSetting, const QString& extension);
/// Opens such a document with the desktop's program. A page (".htm") for which the desktop has no program is shown in a
/// window of our own. False when there is no document, which the log tells, or no program, which the user is told.
bool OpenDocument(const QString& folderSetting, const QString& fileSetting, const QString& extension);

/// Opens what an entry of the Help menu stands for: 0 contents, 2 tour, 3 help desk. HasHelpLink: whether the product
/// has it.
void ShowHelpFileLinks(int item);
[[nodiscard]] bool HasHelpLink(int item);

} // namespace tessaro
