#pragma once

#include <QLocale>
#include <QString>

/// The texts of the program in the current language.
namespace tessaro {

/// Fills LanguageFiles from the folder in the registry value "Language Path".
void FillLanguageArray();
/// The folder that "Language Path" names; a relative one hangs below the application folder. Empty when none is named.
[[nodiscard]] QString LanguageFolder();
/// Path of the file of a language label; empty when there is none.
[[nodiscard]] QString FileOfLanguage(const QString& label);
/// Sets LangID, FontCharset, Locale and StringTable for Language.
void ReadTranslateFile();
/// The text of a key in the current language; empty when the key is missing. A final single-character ellipsis
/// turns every such character into three dots.
[[nodiscard]] QString LookupString(const QString& key);
/// The text of a key for display; with isLiteral, the given text itself. Captions of controls: controls/Captions.h.
[[nodiscard]] QString GetText(const QString& key, bool isLiteral = false);

/// The text of a key as it is read: without the "&" of its letter of access.
[[nodiscard]] QString PlainText(const QString& key);

/// AppPath/folder/file + " " + language without brackets + extension; when missing, the same for the base language;
/// when both are missing, empty.
[[nodiscard]] QString LocalizedFileName(const QString& folder, const QString& file, const QString& extension);
/// The picture's name with the language's prefix "[fr]_" when that file exists in the common graphics folder, else
/// "[en]_" + file.
[[nodiscard]] QString LocalizedImageName(const QString& file);
/// Full path of a picture in the common graphics folder; the .svg beside it when there is one. Empty when missing.
[[nodiscard]] QString PictureFile(const QString& name);

/// How the current language writes dates and times.
[[nodiscard]] QLocale LocaleOfLanguage();
/// True when the current language is written from right to left.
[[nodiscard]] bool LanguageIsRightToLeft();

/// Drops the texts read from StringTable, so that the next look-up reads the table again (it does so by itself after
/// ReadTranslateFile).
void ForgetStrings();

} // namespace tessaro
