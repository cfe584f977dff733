#pragma once

#include <QString>

namespace tessaro {

/// Path of a document of the product in the current language (otherwise in the base language), named by the settings of
/// its folder and file. `extension` is what the system asks for; where the product ships the page for browsers instead,
/// that one is given. Empty when there is neither.
[[nodiscard]] QString DocumentFile(const QString& folderSetting, const QString& fileSetting, const QString& extension);
/// Opens it in the desktop's program; a page that the desktop has no program for, in a window of our own. False when
/// there is none, or nothing can show it; the user is told then.
bool OpenDocument(const QString& folderSetting, const QString& fileSetting, const QString& extension);

/// The entries of the Help menu that exist: 0 contents, 2 tour, 3 help desk.
void ShowHelpFileLinks(int item);
[[nodiscard]] bool HasHelpLink(int item);

} // namespace tessaro
