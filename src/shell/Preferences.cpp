#include "shell/Preferences.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QStringDecoder>

namespace tessaro {

namespace {

constexpr const char* kViewSettings[] = {"INDICATOR_SECTOR", "INDICATOR_GOALS",   "INDICATOR_CF",
                                         "INDICATOR_THEMES", "INDICATOR_SOURCES", "INDICATOR_INSTITUTIONS",
                                         "INDICATOR_RIGHTS"};
constexpr const char* kSampleKey = "TS_FontSample";

QString SoundFolder() {
    return JoinPath({AppPath, Setting(QStringLiteral("Sound Folder"))});
}

bool IsSound(const QString& name) {
    const QString kind = QFileInfo(name).suffix().toLower();
    return QStringList{QStringLiteral("wav"), QStringLiteral("mp3"), QStringLiteral("ogg"),
                       QStringLiteral("mid"), QStringLiteral("wma"), QStringLiteral("flac")}
        .contains(kind);
}

bool IsReadable(const jet::Value& text) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const std::string bytes = text.toText();
    static_cast<void>(QString(decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())))));
    return !decoder.hasError();
}

/// Whether a file holds the texts of a language, all of them valid UTF-8.
bool HoldsLanguage(const QString& file) {
    const auto connection = CreateTheConnection(file);
    if (!connection) return false;
    Records languages =
        Select(QStringLiteral("SELECT LangID FROM LangMaster"), jet::CursorType::Static, connection.get());
    Records texts = Select(QStringLiteral("SELECT * FROM Strings WHERE TessaroProduct = 'TS'"), jet::CursorType::Static,
                           connection.get());
    if (!languages.isOpen() || !texts.isOpen() || texts.atEnd()) return false;
    bool hasColumn = false;
    for (; !languages.atEnd(); languages.MoveNext())
        hasColumn = hasColumn || texts.rows().FieldIndex(languages.Text(std::size_t{0}).toStdString()) >= 0;
    for (; hasColumn && !texts.atEnd(); texts.MoveNext())
        for (std::size_t field = 0; field < texts.rows().FieldCount(); ++field)
            if (!IsReadable(texts.rows().Get(field))) return false;
    return hasColumn;
}

void RefuseImport(const QString& file, const char* reasonKey) {
    LogNote(QLatin1String("refused as a language file: ") + file);
    ShowMessage(GetText(QLatin1String(reasonKey)), MessageType::Ok, MessageIcon::Refused, {}, false);
}

QString SampleText(jet::Connection& connection, const QString& langID) {
    Records rows = Select(
        QStringLiteral("SELECT [%1] FROM Strings WHERE VariableName = '%2'").arg(langID, QLatin1String(kSampleKey)),
        jet::CursorType::Static, &connection);
    return rows.atEnd() ? QString() : rows.Text(std::size_t{0});
}

} // namespace

Preferences Preferences::OfSession() {
    Preferences p;
    p.language = Language;
    p.font = ProductFont;
    p.fontSize = ProductFontSize;
    p.fontStyle = ProductFontStyle;
    p.collapseTree = CollapseTreeSelections.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
    p.autoSelectForm = ShowAutoSelectForm;
    p.gridLines = ViewGridLines;
    p.systemNumbers = SysNumFormat;
    p.footnotes = ShowFootnotes;
    p.showGlobalColor = ShowGlobalColor;
    p.globalColor = GlobalColor;
    p.dataExists = DataExistsMode;
    p.sound = SoundFile;
    p.mute = Mute;
    for (std::size_t view = 0; view < p.views.size(); ++view)
        p.views[view] = view == 0 || IndicatorViews[view].wanted;
    p.openWith = qBound(0, IndicatorOpenWith.trimmed().toInt(), 6);
    p.byCombination = IndicatorSelectBy != 0;
    return p;
}

void Preferences::TakeIntoSession() const {
    Language = language.trimmed().isEmpty() ? QStringLiteral("en") : language;
    ProductFont = font;
    ProductFontSize = fontSize;
    ProductFontStyle = fontStyle;
    CollapseTreeSelections = collapseTree ? QStringLiteral("True") : QStringLiteral("False");
    ShowAutoSelectForm = autoSelectForm;
    ViewGridLines = gridLines;
    SysNumFormat = systemNumbers;
    ShowFootnotes = footnotes;
    ShowGlobalColor = showGlobalColor;
    GlobalColor = globalColor;
    DataExistsMode = dataExists;
    SoundFile = sound;
    Mute = mute;
    for (std::size_t view = 0; view < views.size(); ++view)
        IndicatorViews[view].wanted = view == 0 || views[view];
    const std::size_t first = static_cast<std::size_t>(qBound(0, openWith, 6));
    IndicatorOpenWith = QString::number(IndicatorViews[first].wanted ? first : 0);
    IndicatorSelectBy = byCombination ? 1 : 0;
}

bool Preferences::ChangesLists(const Preferences& before) const {
    return language != before.language || dataExists != before.dataExists || globalColor != before.globalColor ||
           showGlobalColor != before.showGlobalColor;
}

bool Preferences::ChangesIndicatorViews(const Preferences& before) const {
    return views != before.views || openWith != before.openWith || byCombination != before.byCombination ||
           collapseTree != before.collapseTree;
}

bool IsViewOffered(int view) {
    return SettingOption(QLatin1String(kViewSettings[view])).offered;
}

LanguageFace FaceOfLanguage(const QString& label) {
    const ErrorTrap trap("cmbLanguages_Click");
    const auto connection = CreateTheConnection(FileOfLanguage(label));
    if (!connection) return {};
    const QString criterion = QStringLiteral(" FROM LangMaster WHERE LangCode = ") + Quoted(label);
    LanguageFace face;
    Records rows = Select(QStringLiteral("Select DISTINCT FontName, FontSize") + criterion, jet::CursorType::Static,
                          connection.get());
    if (!rows.atEnd()) {
        face.font = rows.Text("FontName");
        face.size = static_cast<int>(qBound(qint64{0}, rows.Number("FontSize"), qint64{72}));
    }
    Records column = Select(QStringLiteral("Select LangID") + criterion, jet::CursorType::Static, connection.get());
    if (!column.atEnd()) face.sample = SampleText(*connection, column.Text(std::size_t{0}));
    return face;
}

QStringList FontFamilies() {
    QStringList families = QFontDatabase::families();
    families.removeIf([](const QString& family) {
        return QFontDatabase::isPrivateFamily(family) || !QFontDatabase::isSmoothlyScalable(family);
    });
    return families;
}

ProductScope ScopeOfDatabase() {
    const ErrorTrap trap("frmProperties_Load");
    if (!Connection || !Connection->isOpen() || !DatabaseOpen) return {};
    const QString file = FileNameOf(CurrentDatabase);
    ProductScope scope{file.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive) ? file.chopped(4) : file, {}};
    Records rows = Select(QStringLiteral("SELECT AreaName FROM Area WHERE AreaLevel = 1 ORDER BY AreaName"));
    for (; !rows.atEnd() && scope.areas.size() < 50; rows.MoveNext())
        scope.areas << rows.Text(std::size_t{0});
    return scope;
}

QStringList Sounds() {
    QStringList names = FilesOf(SoundFolder());
    names.removeIf([](const QString& name) { return !IsSound(name); });
    return names;
}

QString PathOfSound(const QString& name) {
    return Sounds().contains(name, Qt::CaseInsensitive) ? JoinPath({SoundFolder(), name}) : name;
}

QString NameOfSound(const QString& path) {
    const bool ours =
        SamePath(FolderOf(path), SoundFolder()) && Sounds().contains(FileNameOf(path), Qt::CaseInsensitive);
    return ours ? FileNameOf(path) : path;
}

bool ImportLanguageFile(const QString& file) {
    const ErrorTrap trap("cmdImport_Click");
    QString name = FileNameOf(file);
    if (!name.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive)) name += QLatin1String(".mdb");
    const bool named = name.startsWith(QLatin1String("TS_"), Qt::CaseInsensitive) && name.contains(QLatin1Char(']'));
    if (!named || !HoldsLanguage(file)) {
        RefuseImport(file, named ? "TS_ImportDamaged" : "TS_ImportRefused");
        return false;
    }
    const QString target = WritablePlace(JoinPath({LanguageFolder(), name}), AppPath, CacheFolder);
    if (SamePath(FindPath(file), target)) return true;
    const bool taken = FileExists(target) || FileExists(JoinPath({LanguageFolder(), name}));
    if (taken && ShowMessage(QStringLiteral("285"), MessageType::YesNo, MessageIcon::Question) != MessageCode::Yes)
        return false;
    if (!CopyFileOver(FindPath(file), target)) {
        ShowMessage(GetText(QStringLiteral("TS_ImportFailed")), MessageType::Ok, MessageIcon::Note, {}, false);
        return false;
    }
    FillLanguageArray();
    return true;
}

} // namespace tessaro
