#pragma once

#include <QString>

namespace tessaro {

/// The code in a language's full name: "en" of "English [en]"; empty without brackets.
[[nodiscard]] QString CodeOfLanguage(const QString& name);

} // namespace tessaro
