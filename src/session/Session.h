#pragma once

#include "jet/engine/Connection.h"

#include <QColor>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>

/// The session: values that live as long as the process and that every screen reads. No other globals exist.
namespace tessaro {

// --- Places. Full paths without a final separator. -----------------------------------------------------------------
extern QString AppPath;     ///< application folder; read-only content hangs below it (empty without the "/a" switch)
extern QString CacheFolder; ///< writable folder of this product and version
extern QString TempFolder;  ///< CacheFolder/Temp, emptied at start
extern QString DataCacheFolder; ///< CacheFolder/Data
extern QString FavoritesFolder; ///< CacheFolder/Favorites
extern QString MapFilesFolder;  ///< TempFolder/MData_/MFiles_

// --- The open database. ----------------------------------------------------------------------------------------------
extern QString CurrentDatabase;                     ///< path, or the DEFAULT DATABASE text while none is open
extern std::shared_ptr<jet::Connection> Connection; ///< the one connection of all screens, to InfoSel.mdb
extern QString ConnectionText;                      ///< last connection string, without the password
extern bool DatabaseOpen;                           ///< a database with the current language is in use
extern bool LanguageInDatabase;                     ///< the current language stands in its Language table
extern bool ReopenedLastDatabase;                   ///< this start found a LAST MDB FILE USED

// --- Language.
// ---------------------------------------------------------------------------------------------------------
extern QString Language;       ///< full name with code: "English [en]"
extern QString LanguageSuffix; ///< "_en"
extern QString LangID;         ///< column of Strings that holds the language
extern int FontCharset;
extern long Locale;                ///< 1033 is English
extern jet::Recordset StringTable; ///< detached: VariableName, the text, ModuleID[, base language text]
struct LanguageFile {
    QString fileName; ///< "TS_English [en].mdb"
    QString label;    ///< "English [en]"
};
extern QList<LanguageFile> LanguageFiles;

// --- Navigation.
// -------------------------------------------------------------------------------------------------------
extern bool HomeIsShown;
extern int CurrentStage;          ///< -1 home, 0 Indicators, 1 Time, 2 Areas, 3 Data
extern QStringList VisitedStages; ///< form names, first slot empty
extern bool SelectionChanged;     ///< raised by every write to a selection table, lowered by the data view's rebuild
extern bool bDataChanged;         ///< raised by the data view's rebuild, for the calculations, which lower it

// --- Preferences (Pref.ini).
// -------------------------------------------------------------------------------------------
extern QString CollapseTreeSelections;
extern bool ShowAutoSelectForm;
extern bool ViewGridLines;
extern bool SysNumFormat;
extern bool ShowFootnotes;
extern bool ShowGlobalColor;
extern long GlobalColor; ///< decimal colour, blue high
extern QString ProductFont;
extern int ProductFontSize;
extern int ProductFontStyle; ///< 0 regular, 1 italic, 2 bold, 3 both
extern bool RightToLeft;
extern QString SoundFile;
extern bool Mute;
struct IndicatorViewPreference {
    bool wanted = false;
    QString key; ///< "INDICATOR_SECTOR" …
};
extern std::array<IndicatorViewPreference, 7> IndicatorViews;
extern QString IndicatorOpenWith;
extern long IndicatorSelectBy;      ///< 0 indicators, 1 combinations of indicator, unit and subpopulation
extern long DataExistsMode;         ///< 0 with data, 1 all, 2 without data
extern QString DataExistsCriterion; ///< "DataExists = True ", empty, "DataExists = False "
extern long GlobalLocalFilter;      ///< 0 global, 1 local, 2 neither
extern QString GalleryCustomFolder;
extern bool SkipTheSplash;

// --- The data view's restriction, honoured by every later reader.
// -------------------------------------------------------
extern QString RowFilter;
extern QString DeletedRowNIds;
extern QString MostRecentClause;

// --- Failures.
// ---------------------------------------------------------------------------------------------------------
extern bool SilentErrors; ///< nothing is shown; the log file has it all the same

/// Sets every value above to its start value and releases the connection and the string table.
void ResetSessionValues();

/// The colour of a decimal colour number (red low, blue high).
[[nodiscard]] QColor ColorFromNumber(long number);
[[nodiscard]] long NumberFromColor(const QColor& color);

} // namespace tessaro
