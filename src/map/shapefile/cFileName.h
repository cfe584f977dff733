#pragma once

#include <QString>

namespace tessaro {

/// One file name, with or without folders, and its parts. Both "\" and "/" separate folders.
class cFileName final {
  public:
    void SetFileSpec(const QString& spec) { spec_ = spec; }
    [[nodiscard]] QString GetFileSpec() const { return spec_; }

    /// What stands between the last separator and the last "." behind it; without a "." all behind the separator.
    [[nodiscard]] QString GetBaseName() const;
    /// Throws the error "The FileSpec is invalid" for an empty name and one with a character that no file name holds.
    void SetBaseName(const QString& name);
    /// What follows the last "."; without one the whole name.
    [[nodiscard]] QString GetExtension() const;
    /// Takes any text. A name without "." becomes the text alone.
    void SetExtension(const QString& extension);

  private:
    [[nodiscard]] qsizetype BaseStart() const;
    [[nodiscard]] qsizetype BaseEnd() const;

    QString spec_;
};

} // namespace tessaro
