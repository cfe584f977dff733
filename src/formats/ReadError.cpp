#include "formats/ReadError.h"

#include "session/Messages.h"

namespace tessaro {

ReadError::ReadError(const QString& key, const QStringList& fillings)
    : std::runtime_error(FilledText(key, fillings).toStdString()) {}

} // namespace tessaro
