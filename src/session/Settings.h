#pragma once

#include <QColor>
#include <QString>

namespace tessaro {

/// An option of TS.ini: "TRUE|SECTORS".
struct OptionPair {
    bool offered = false;
    QString name;
};

/// Reads TS.ini. Missing, or without a single key of ours: message "002" and False (the program ends). LocalizeApp runs
/// after name and version are read.
[[nodiscard]] bool ReadInfoINIFile();
void ReadPrefINIFile();
/// Writes Pref.ini; on any failure the old file stays and False is given.
bool SavePrefINIFile();
/// The condition that goes with a DATA_EXISTS of 0, 1 or 2: "DataExists = True ", empty, "DataExists = False ".
[[nodiscard]] QString CriterionOfDataExists(long mode);
/// Makes the writable tree and seeds it from the templates.
void LocalizeApp();

/// A product setting by its key, as TS.ini has it (at most 255 characters; missing: empty). Keys ignore case.
[[nodiscard]] QString Setting(const QString& key);
[[nodiscard]] bool SettingFlag(const QString& key);
[[nodiscard]] int SettingNumber(const QString& key);
/// "red,green,blue"; an unreadable one gives an invalid colour.
[[nodiscard]] QColor SettingColor(const QString& key);
[[nodiscard]] OptionPair SettingOption(const QString& key);

/// Drops what ReadInfoINIFile read.
void ForgetSettings();

} // namespace tessaro
