#include "session/UserPreferences.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ExportChoice.h"
#include "session/Log.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/SettingsFile.h"
#include "session/WritableTree.h"

#include <QFile>
#include <QFileInfo>

namespace tessaro {

namespace {

const QString Section = QStringLiteral("USER PREFERENCES");

constexpr const char* kViewKeys[] = {"INDICATOR_SECTOR", "INDICATOR_GOALS",   "INDICATOR_CF",
                                     "INDICATOR_THEMES", "INDICATOR_SOURCES", "INDICATOR_INSTITUTIONS",
                                     "INDICATOR_RIGHTS"};

/// A preference with the variable that holds it. A value that can't be read leaves the variable as it was.
struct TextPreference {
    const char* key;
    QString* variable;
};
struct FlagPreference {
    const char* key;
    bool* variable;
};

QString PathOfPreferences() {
    return JoinPath({CacheFolder, QStringLiteral("Pref.ini")});
}

QString Read(const IniFile& ini, const char* key) {
    return ini.Read(Section, QString::fromLatin1(key));
}

void ReadFlag(const IniFile& ini, const char* key, bool& variable) {
    variable = BooleanOf(Read(ini, key)).value_or(variable);
}

template <class Number> void ReadNumber(const IniFile& ini, const char* key, Number& variable) {
    bool isNumber = false;
    const long number = Read(ini, key).trimmed().toLong(&isNumber);
    if (isNumber) variable = static_cast<Number>(number);
}

void ReadSound(const IniFile& ini) {
    SoundFile = Read(ini, "SOUND FILE");
    if (SoundFile.trimmed().compare(QLatin1String("DEFAULT"), Qt::CaseInsensitive) == 0)
        SoundFile =
            JoinPath({AppPath, Setting(QStringLiteral("Sound Folder")), Setting(QStringLiteral("APP SOUND FILE"))});
}

void ReadIndicatorViews(const IniFile& ini) {
    for (std::size_t i = 0; i < IndicatorViews.size(); ++i) {
        IndicatorViews[i].key = QString::fromLatin1(kViewKeys[i]);
        ReadFlag(ini, kViewKeys[i], IndicatorViews[i].wanted);
    }
    IndicatorOpenWith = Read(ini, "INDICATOR_OPEN_WITH");
    if (IndicatorOpenWith.trimmed().isEmpty() && IndicatorViews[1].wanted) IndicatorOpenWith = QStringLiteral("1");
    ReadNumber(ini, "INDICATOR_SELECT_BY", IndicatorSelectBy);
}

void ReadDataExists(const IniFile& ini) {
    ReadNumber(ini, "DATA_EXISTS", DataExistsMode);
    DataExistsCriterion = CriterionOfDataExists(DataExistsMode);
}

void ReadPlaces(const IniFile& ini) {
    GalleryCustomFolder = Read(ini, "GALLARY_CUSTOM_FOLDER");
    if (!FolderExists(GalleryCustomFolder))
        GalleryCustomFolder =
            JoinPath({AppPath, Setting(QStringLiteral("Gallery Folder")), QStringLiteral("Presentations")});
    LastExport() = {Read(ini, "EXPORT_FOLDER"), Read(ini, "EXPORT_KIND")};
    CurrentDatabase = Read(ini, "LAST MDB FILE USED");
    if (!FileExists(CurrentDatabase)) CurrentDatabase.clear();
}

void ReadPreferences(const IniFile& ini) {
    const TextPreference texts[] = {
        {"COLLAPSE TREE SELECTIONS", &CollapseTreeSelections}, {"LANGUAGE", &Language}, {"PRODUCT FONT", &ProductFont}};
    const FlagPreference flags[] = {{"SHOW AUTO SELECT FORM", &ShowAutoSelectForm},
                                    {"VIEW GRID LINES", &ViewGridLines},
                                    {"SYS NUM FORMAT", &SysNumFormat},
                                    {"SHOW FOOTNOTES", &ShowFootnotes},
                                    {"SHOW GLOBAL COLOR", &ShowGlobalColor},
                                    {"RIGHT TO LEFT", &RightToLeft},
                                    {"MUTE", &Mute},
                                    {"SKIP THE SPLASH", &SkipTheSplash}};
    for (const TextPreference& text : texts)
        *text.variable = Read(ini, text.key);
    for (const FlagPreference& flag : flags)
        ReadFlag(ini, flag.key, *flag.variable);
    ReadNumber(ini, "GLOBAL COLOR", GlobalColor);
    ReadNumber(ini, "PRODUCT FONT_SIZE", ProductFontSize);
    ReadNumber(ini, "PRODUCT FONT_STYLE", ProductFontStyle);
    ReadSound(ini);
    ReadIndicatorViews(ini);
    ReadDataExists(ini);
    ReadPlaces(ini);
    GlobalLocalFilter = 2;
}

/// The preferences from disk. A damaged file is put aside and the template takes its place, so that a start never
/// leaves the user without a language.
std::optional<SettingsFile> LoadPreferences() {
    const QString path = FindPath(PathOfPreferences());
    if (!FileExists(path)) return std::nullopt;
    auto file = ReadSettingsFile(path, Section);
    if (file) return file;
    LogNote(QStringLiteral("%1 can't be read and was put aside as %1.damaged").arg(path));
    QFile::remove(path + QLatin1String(".damaged"));
    QFile::rename(path, path + QLatin1String(".damaged"));
    LocalizeApp();
    return ReadSettingsFile(path, Section);
}

QString Flag(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

/// Keys and values in the order in which they are written.
QList<std::pair<const char*, QString>> PreferencesToWrite() {
    QList<std::pair<const char*, QString>> values = {
        {"COLLAPSE TREE SELECTIONS", CollapseTreeSelections},
        {"SHOW AUTO SELECT FORM", Flag(ShowAutoSelectForm)},
        {"VIEW GRID LINES", Flag(ViewGridLines)},
        {"SYS NUM FORMAT", Flag(SysNumFormat)},
        {"SHOW FOOTNOTES", Flag(ShowFootnotes)},
        {"SHOW GLOBAL COLOR", Flag(ShowGlobalColor)},
        {"GLOBAL COLOR", QString::number(GlobalColor)},
        {"DEFAULT LANGUAGE", QStringLiteral("[en]")},
        {"LANGUAGE", Language},
        {"PRODUCT FONT", ProductFont},
        {"PRODUCT FONT_SIZE", QString::number(ProductFontSize)},
        {"PRODUCT FONT_STYLE", QString::number(ProductFontStyle)},
        {"RIGHT TO LEFT", Flag(RightToLeft)},
        {"SOUND FILE", SoundFile},
        {"MUTE", Flag(Mute)},
    };
    for (std::size_t i = 0; i < IndicatorViews.size(); ++i)
        values.append({kViewKeys[i], Flag(i == 0 || IndicatorViews[i].wanted)}); // sectors can't be switched off
    values.append({{"INDICATOR_OPEN_WITH", IndicatorOpenWith},
                   {"INDICATOR_SELECT_BY", QString::number(IndicatorSelectBy)},
                   {"DATA_EXISTS", QString::number(DataExistsMode)},
                   {"GALLARY_CUSTOM_FOLDER", GalleryCustomFolder},
                   {"EXPORT_FOLDER", LastExport().folder},
                   {"EXPORT_KIND", LastExport().ending},
                   {"SKIP THE SPLASH", Flag(SkipTheSplash)},
                   {"LAST MDB FILE USED", CurrentDatabase}});
    return values;
}

} // namespace

ExportChoice& LastExport() {
    static ExportChoice choice;
    return choice;
}

QString CriterionOfDataExists(long mode) {
    switch (mode) {
    case 0:
        return QStringLiteral("DataExists = True ");
    case 2:
        return QStringLiteral("DataExists = False ");
    default:
        return {};
    }
}

void ReadPrefINIFile() {
    const auto file = LoadPreferences();
    if (!file) return;
    ReadPreferences(file->ini);
    if (file->wasPlain) WriteSettingsFile(PathOfPreferences(), file->ini.Contents());
}

bool SavePrefINIFile() {
    if (CacheFolder.isEmpty()) return false;
    auto file = ReadSettingsFile(PathOfPreferences(), Section);
    IniFile ini = file ? std::move(file->ini) : IniFile::Parse("[DECRYPTED]\n");
    const auto values = PreferencesToWrite();
    for (const auto& [key, value] : values)
        ini.Write(Section, QString::fromLatin1(key), value);
    return WriteSettingsFile(PathOfPreferences(), ini.Contents());
}

} // namespace tessaro
