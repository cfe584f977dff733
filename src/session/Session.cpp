#include "session/Session.h"

namespace tessaro {

QString AppPath;
QString CacheFolder;
QString TempFolder;
QString DataCacheFolder;
QString FavoritesFolder;
QString MapFilesFolder;

QString CurrentDatabase;
std::shared_ptr<jet::Connection> Connection;
QString ConnectionText;
bool DatabaseOpen = true;
bool LanguageInDatabase = true;
bool ReopenedLastDatabase = false;

QString Language;
QString LanguageSuffix;
QString LangID;
int FontCharset = 0;
long Locale = 1033;
jet::Recordset StringTable;
QList<LanguageFile> LanguageFiles;

bool HomeIsShown = false;
int CurrentStage = -1;
QStringList VisitedStages{QString()};
bool bDataChanged = false;
bool SelectionChanged = true;

QString CollapseTreeSelections;
bool ShowAutoSelectForm = false;
bool ViewGridLines = false;
bool SysNumFormat = false;
bool ShowFootnotes = false;
bool ShowGlobalColor = false;
long GlobalColor = 0;
QString ProductFont;
int ProductFontSize = 0;
int ProductFontStyle = 0;
bool RightToLeft = false;
QString SoundFile;
bool Mute = false;
std::array<IndicatorViewPreference, 7> IndicatorViews;
QString IndicatorOpenWith;
long IndicatorSelectBy = 0;
long DataExistsMode = 0;
QString DataExistsCriterion;
long GlobalLocalFilter = 2;
QString GalleryCustomFolder;
bool SkipTheSplash = false;

QString RowFilter;
QString DeletedRowNIds;
QString MostRecentClause;

bool SilentErrors = false;

namespace {

void ResetDatabase() {
    Connection.reset();
    CurrentDatabase.clear();
    ConnectionText.clear();
    DatabaseOpen = true;
    LanguageInDatabase = true;
    ReopenedLastDatabase = false;
    RowFilter.clear();
    DeletedRowNIds.clear();
    MostRecentClause.clear();
}

void ResetLanguage() {
    Language.clear();
    LanguageSuffix.clear();
    LangID.clear();
    FontCharset = 0;
    Locale = 1033;
    StringTable = jet::Recordset();
    LanguageFiles.clear();
}

void ResetPreferences() {
    CollapseTreeSelections.clear();
    ShowAutoSelectForm = ViewGridLines = SysNumFormat = ShowFootnotes = ShowGlobalColor = false;
    GlobalColor = 0;
    ProductFont.clear();
    ProductFontSize = ProductFontStyle = 0;
    RightToLeft = false;
    SoundFile.clear();
    Mute = false;
    IndicatorViews = {};
    IndicatorOpenWith.clear();
    IndicatorSelectBy = DataExistsMode = 0;
    DataExistsCriterion.clear();
    GlobalLocalFilter = 2;
    GalleryCustomFolder.clear();
    SkipTheSplash = false;
}

} // namespace

void ResetSessionValues() {
    for (QString* place : {&AppPath, &CacheFolder, &TempFolder, &DataCacheFolder, &FavoritesFolder, &MapFilesFolder})
        place->clear();
    ResetDatabase();
    ResetLanguage();
    ResetPreferences();
    HomeIsShown = false;
    CurrentStage = -1;
    VisitedStages = {QString()};
    bDataChanged = false;
    SelectionChanged = true;
    SilentErrors = false;
}

QColor ColorFromNumber(long number) {
    return QColor(static_cast<int>(number & 0xFF), static_cast<int>((number >> 8) & 0xFF),
                  static_cast<int>((number >> 16) & 0xFF));
}

long NumberFromColor(const QColor& color) {
    return static_cast<long>(color.red()) | static_cast<long>(color.green()) << 8 |
           static_cast<long>(color.blue()) << 16;
}

} // namespace tessaro
