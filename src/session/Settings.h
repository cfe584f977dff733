#pragma once

#include <QColor>
#include <QString>

#include <optional>

/// The settings of the product (TS.ini) and their options.
namespace tessaro {

/// An option of TS.ini: "TRUE|SECTORS".
struct OptionPair {
    bool offered = false;
    QString name;
};

/// A product setting by its key, as TS.ini has it (at most 255 characters; missing: empty). Keys ignore case.
[[nodiscard]] QString Setting(const QString& key);
[[nodiscard]] bool SettingFlag(const QString& key);
[[nodiscard]] int SettingNumber(const QString& key);
/// "red,green,blue"; an unreadable one gives an invalid colour.
[[nodiscard]] QColor SettingColor(const QString& key);
[[nodiscard]] OptionPair SettingOption(const QString& key);

/// Keeps a setting that was read, and drops all of them.
void SetSetting(const QString& key, const QString& value);
void ForgetSettings();

/// True for "True" in any case and for numbers other than 0, False for "False" and 0; nothing for a text that is no
/// boolean.
[[nodiscard]] std::optional<bool> BooleanOf(const QString& text);

} // namespace tessaro
