#pragma once

#include <QCollator>
#include <QStringList>

namespace tessaro {

/// The order that people expect of names: by the rules of their language, case ignored, "2" before "10".
[[nodiscard]] QCollator NaturalOrder();
[[nodiscard]] QStringList InNaturalOrder(QStringList names);

} // namespace tessaro
