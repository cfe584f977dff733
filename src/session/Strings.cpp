#include "session/Strings.h"

#include "platform/Paths.h"
#include "platform/Registry.h"
#include "session/CaptionText.h"
#include "session/ErrorSink.h"
#include "session/LanguageName.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QLocale>

namespace tessaro {

namespace {

constexpr char16_t kEllipsis = u'\u2026';

/// The texts by key in lower case: a screen asks for dozens, and each search through the table would start at its first
/// row.
struct Texts {
    QHash<QString, QString> byKey;
    bool read = false;
};

Texts& TheTexts() {
    static Texts texts;
    return texts;
}

void ReadTexts() {
    TheTexts().read = true;
    if (!StringTable.isOpen()) return;
    for (StringTable.MoveFirst(); !StringTable.atEnd(); StringTable.MoveNext()) {
        const QString key = QString::fromStdString(StringTable.Get(0).toText()).toLower();
        if (!TheTexts().byKey.contains(key))
            TheTexts().byKey.insert(key, QString::fromStdString(StringTable.Get(1).toText()));
    }
    StringTable.MoveFirst();
}

/// The name of a language as part of a file name: "English [en]" gives "English en".
QString WithoutBrackets(const QString& language) {
    QString name = language;
    return name.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
}

QString BaseColumn() {
    return WithoutBrackets(Setting(QStringLiteral("ENG_LNG"))).remove(QLatin1Char('(')).remove(QLatin1Char(')'));
}

/// What LangMaster says of the current language; the base column when it has no row.
struct LanguageRow {
    QString langID;
    int fontCharset = 0;
    long locale = 1033;
};

LanguageRow ReadLanguageRow(jet::Connection& connection) {
    Records rows = Select(QStringLiteral("Select LangID, [FontCharset], [Locale] FROM LangMaster WHERE LangCode = ") +
                              Quoted(Language),
                          jet::CursorType::Static, &connection);
    if (rows.atEnd()) return {BaseColumn(), 0, 1033};
    return {rows.Text(std::size_t{0}), static_cast<int>(rows.Number(std::size_t{1})),
            static_cast<long>(rows.Number(std::size_t{2}))};
}

Records OpenStrings(jet::Connection& connection, const QString& langID) {
    const QString base = BaseColumn();
    const bool isBase = langID.compare(base, Qt::CaseInsensitive) == 0;
    const QString sql =
        isBase
            ? QStringLiteral("SELECT VariableName, [%1], ModuleID FROM Strings WHERE TessaroProduct = 'TS'").arg(langID)
            : QStringLiteral("SELECT VariableName, [%1], ModuleID, [%2] FROM Strings WHERE TessaroProduct = 'TS'")
                  .arg(langID, base);
    return Select(sql, jet::CursorType::Static, &connection);
}

QString GraphicsFile(const QString& name) {
    return JoinPath({AppPath, Setting(QStringLiteral("Common Graphics Folder")), name});
}

} // namespace

QString LanguageFolder() {
    const QString folder = GetRegistryValue(AppPath, QString::fromLatin1(kLocalMachine),
                                            QStringLiteral("Software\\TESSARO"), QStringLiteral("Language Path"))
                               .trimmed();
    if (folder.isEmpty()) return {};
    const bool absolute = folder.startsWith(QLatin1Char('/')) || folder.startsWith(QLatin1Char('\\'));
    return absolute ? JoinPath({folder}) : JoinPath({AppPath, folder});
}

void FillLanguageArray() {
    LanguageFiles.clear();
    const QString folder = LanguageFolder();
    QStringList names = FilesOf(folder);
    const QString copies = ReadablePlace(folder, AppPath, CacheFolder); // languages imported by the user
    if (copies != FindPath(folder))
        for (const QString& name : FilesOf(copies))
            if (!names.contains(name, Qt::CaseInsensitive)) names << name;
    for (const QString& name : std::as_const(names)) {
        const QString upper = name.toUpper();
        if (!upper.startsWith(QLatin1String("TS_")) || !upper.endsWith(QLatin1String(".MDB"))) continue;
        QString label = name.section(QLatin1Char('_'), 1, 1);
        label.remove(QLatin1String(".mdb"), Qt::CaseInsensitive);
        LanguageFiles.append({name, label});
    }
}

QString FileOfLanguage(const QString& label) {
    for (const LanguageFile& file : std::as_const(LanguageFiles))
        if (file.label.compare(label, Qt::CaseInsensitive) == 0)
            return ReadablePlace(JoinPath({LanguageFolder(), file.fileName}), AppPath, CacheFolder);
    return {};
}

void ReadTranslateFile() {
    const ErrorTrap trap("ReadTranslateFile");
    const auto connection = CreateTheConnection(FileOfLanguage(Language));
    if (!connection) {
        LogNote(QStringLiteral("there is no language file for \"%1\"").arg(Language));
        return;
    }
    const LanguageRow row = ReadLanguageRow(*connection);
    Records strings = OpenStrings(*connection, row.langID);
    if (!strings.isOpen()) return;
    LangID = row.langID;
    FontCharset = row.fontCharset;
    Locale = row.locale;
    StringTable = std::move(strings.rows());
    ForgetStrings();
}

QString LookupString(const QString& key) {
    if (!TheTexts().read) ReadTexts();
    QString text = TheTexts().byKey.value(key.toLower());
    if (text.endsWith(kEllipsis)) text.replace(kEllipsis, QLatin1String("..."));
    return text;
}

QString GetText(const QString& key, bool isLiteral) {
    return isLiteral ? key : LookupString(key);
}

QString PlainText(const QString& key) {
    return ReadCaption(GetText(key)).plain;
}

QLocale LocaleOfLanguage() {
    return QLocale(CodeOfLanguage(Language));
}

bool LanguageIsRightToLeft() {
    const QString code = CodeOfLanguage(Language);
    return !code.isEmpty() && QLocale(code).textDirection() == Qt::RightToLeft;
}

void ForgetStrings() {
    TheTexts() = {};
}

QString LocalizedFileName(const QString& folder, const QString& file, const QString& extension) {
    for (const QString& language : {Language, Setting(QStringLiteral("ENG_LNG"))}) {
        const QString name = file + QLatin1Char(' ') + WithoutBrackets(language) + extension;
        QString path = ReadablePlace(JoinPath({AppPath, folder, name}), AppPath, CacheFolder);
        if (FileExists(path)) return path;
    }
    return {};
}

QString LocalizedImageName(const QString& file) {
    const QString code = CodeOfLanguage(Language);
    const QString localized =
        (code.isEmpty() ? code : QLatin1Char('[') + code + QLatin1Char(']')) + QLatin1Char('_') + file;
    return FileExists(GraphicsFile(localized)) ? localized : QLatin1String("[en]_") + file;
}

QString PictureFile(const QString& name) {
    if (name.trimmed().isEmpty()) return {};
    const QString picture = GraphicsFile(name);
    const QString vector =
        FolderOf(picture) + QLatin1Char('/') + QFileInfo(picture).completeBaseName() + QLatin1String(".svg");
    if (FileExists(vector)) return FindPath(vector);
    return FileExists(picture) ? FindPath(picture) : QString();
}

} // namespace tessaro
