#pragma once

#include <QString>

namespace tessaro {

/// Path of a template of the installation by its file name, whatever its case on disk. A missing one gives the place
/// where it should be.
[[nodiscard]] QString TemplateFile(const QString& name);

} // namespace tessaro
