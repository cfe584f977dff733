#include "session/Settings.h"

#include <QHash>
#include <QStringList>

namespace tessaro {

namespace {

/// The values by key in upper case; no key stands in two sections.
QHash<QString, QString>& Values() {
    static QHash<QString, QString> values;
    return values;
}

} // namespace

QString Setting(const QString& key) {
    return Values().value(key.toUpper());
}

bool SettingFlag(const QString& key) {
    return BooleanOf(Setting(key)).value_or(false);
}

int SettingNumber(const QString& key) {
    return Setting(key).trimmed().toInt();
}

QColor SettingColor(const QString& key) {
    const QStringList parts = Setting(key).split(QLatin1Char(','));
    if (parts.size() != 3) return {};
    int channel[3] = {};
    for (qsizetype i = 0; i < 3; ++i) {
        bool isNumber = false;
        channel[i] = parts[i].trimmed().toInt(&isNumber);
        if (!isNumber || channel[i] < 0) return {};
        channel[i] = qMin(channel[i], 255);
    }
    return QColor(channel[0], channel[1], channel[2]);
}

OptionPair SettingOption(const QString& key) {
    const QString pair = Setting(key);
    return {BooleanOf(pair.section(QLatin1Char('|'), 0, 0)).value_or(false),
            pair.section(QLatin1Char('|'), 1, 1).trimmed()};
}

void ForgetSettings() {
    Values().clear();
}

void SetSetting(const QString& key, const QString& value) {
    Values().insert(key.toUpper(), value);
}

std::optional<bool> BooleanOf(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) return true;
    if (trimmed.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) return false;
    bool isNumber = false;
    const double number = trimmed.toDouble(&isNumber);
    if (!isNumber) return std::nullopt;
    return number != 0;
}

} // namespace tessaro
