#pragma once

#include <QString>

namespace tessaro {

/// The code in a language's full name: "en" of "English [en]"; empty without brackets.
[[nodiscard]] QString CodeOfLanguage(const QString& name);
/// True while the current language is the one that the product is written in (setting ENG_LNG).
[[nodiscard]] bool LanguageIsEnglish();

} // namespace tessaro
