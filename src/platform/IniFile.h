#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace tessaro {

/// The text of an INI file in memory: sections, keys and values as UTF-8; sections and keys ignore case. Comments,
/// order and sections that nobody asked for survive a change and a new writing.
class IniFile final {
  public:
    /// What a reading gives at most, as the profile-string operations have it.
    static constexpr qsizetype kLongestValue = 255;

    IniFile();
    ~IniFile();
    IniFile(IniFile&&) noexcept;
    IniFile& operator=(IniFile&&) noexcept;

    /// Takes over a file's contents; lines that are no INI are passed over. Empty contents give an empty file.
    [[nodiscard]] static IniFile Parse(const QByteArray& contents);
    [[nodiscard]] QByteArray Contents() const;

    [[nodiscard]] bool HasSection(const QString& section) const;
    /// The value, cut at 255 characters; empty when section or key is missing.
    [[nodiscard]] QString Read(const QString& section, const QString& key) const;
    /// The value uncut; a null text when section or key is missing.
    [[nodiscard]] QString ReadUncut(const QString& section, const QString& key) const;
    /// Sets a value; line breaks in it become blanks, as a line can't hold them.
    void Write(const QString& section, const QString& key, const QString& value);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tessaro
