#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace tessaro {

/// A file from elsewhere can't be read as what it is said to be. what() is a text of the string table with its
/// fillings, for the user.
class ReadError final : public std::runtime_error {
  public:
    explicit ReadError(const QString& key, const QStringList& fillings = {});
    [[nodiscard]] QString Text() const { return QString::fromUtf8(what()); }
};

} // namespace tessaro
