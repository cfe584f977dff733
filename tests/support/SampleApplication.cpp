#include "support/SampleApplication.h"

#include "database/Schema.h"
#include "jet/engine/Connection.h"
#include "session/Query.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

constexpr char kProductSettings[] = R"([DECRYPTED]
[Product]
PRODUCT NAME=Sample
PRODUCT VERSION=1.0
[Folder Location]
Data Folder=Data
Common Graphics Folder=Graphics
Gallery Folder=Gallery
Favorite Folder=Favorites
Sound Folder=Sounds
App Data Folder=AppData
Spreadsheets Folder=Spreadsheets
Help Folder=Help
Help File Name=Help
[Application Variables]
APP BG COLOR=255,255,255
APP SEL BG COLOR=10,90,160
DEFAULT DATABASE=Select a database
DEFAULT DATABASE NAME=
DEFAULT FONT=Noto Sans
DEFAULT FONT SIZE=10
USE DEFAULT FONT SIZE=True
ENG_LNG=English [en]
CAPTION FOR LOCAL ADDRESS=Local
APP SOUND FILE=theme.wav
MSG TITLE=Sample
[Indicator Tab]
INDICATOR_SECTOR=TRUE|SECTORS
INDICATOR_GOALS=TRUE|GOALS
INDICATOR_CF=TRUE|CF
INDICATOR_THEMES=TRUE|THEMES
INDICATOR_SOURCES=TRUE|SOURCES
INDICATOR_INSTITUTIONS=FALSE|INSTITUTIONS
INDICATOR_RIGHTS=TRUE|RIGHTS
[Area Tab]
AREA_NAME=True
AREA_MAP=True
[Data Tab]
DATA_VIEW=TRUE|VIEW
DATA_STATS=TRUE|STATS
DATA_SOURCES=TRUE|SOURCES
DATA_UNITS=TRUE|UNITS
DATA_SUBPOPS=TRUE|SUBPOPS
DATA_SORT=TRUE|SORT
DATA_CALC=TRUE|CALC
DATA_PRESENT=TRUE|PRESENT
DATA_RECENTDATA=TRUE|RECENT
)";

constexpr char kPreferences[] = R"([DECRYPTED]
[USER PREFERENCES]
COLLAPSE TREE SELECTIONS=False
SHOW AUTO SELECT FORM=False
VIEW GRID LINES=True
SYS NUM FORMAT=False
SHOW FOOTNOTES=True
SHOW GLOBAL COLOR=True
GLOBAL COLOR=16711680
LANGUAGE=English [en]
PRODUCT FONT=Noto Sans
PRODUCT FONT_SIZE=10
PRODUCT FONT_STYLE=0
RIGHT TO LEFT=False
SOUND FILE=DEFAULT
MUTE=True
INDICATOR_SECTOR=True
INDICATOR_GOALS=True
INDICATOR_SELECT_BY=0
DATA_EXISTS=0
SKIP THE SPLASH=False
LAST MDB FILE USED=
)";

constexpr char kRegistry[] = R"([HKEY_LOCAL_MACHINE\Software\TESSARO]
Language Path=Languages
)";

/// Rows of the tables without a language.
constexpr const char* kCommonRows[] = {
    "INSERT INTO Region (RegionGId, RegionNId, [Region]) VALUES ('-REG', 1, 'Asia')",
    "INSERT INTO Indicator_Unit_Subpop VALUES (1, '-POP', '-NUM', '-TOT', 0, 2000000000, True)",
    "INSERT INTO Indicator_Unit_Subpop VALUES (2, '-LIT', '-PCT', '-TOT', 0, 100, True)",
    "INSERT INTO Indicator_Unit_Subpop VALUES (3, '-LIT', '-PCT', '-FEM', 0, 100, True)",
    "INSERT INTO Indicator_Unit_Subpop VALUES (4, 'WEL', '-NUM', '-TOT', 0, 1000, False)",
    "INSERT INTO TimePeriod VALUES (1, '1990', True)",
    "INSERT INTO TimePeriod VALUES (2, '2000', True)",
    "INSERT INTO TimePeriod VALUES (3, '2005', True)",
    "INSERT INTO TimePeriod VALUES (4, '2010', False)",
    "INSERT INTO Sector VALUES ('-S1', '-S1A', True)",
    "INSERT INTO Sector VALUES ('-S1', '-S1B', False)",
    "INSERT INTO Goal VALUES ('-G1', '-G1A', '-G1AA', True)",
    "INSERT INTO Goal VALUES ('-G1', '-G1A', '-G1AB', False)",
    "INSERT INTO Institution VALUES ('-N1', '-N1A', True)",
    "INSERT INTO Institution VALUES ('-N1', '-N1B', False)",
    "INSERT INTO Convention VALUES ('-C1', '-C1A', '-C1AA', True)",
    "INSERT INTO Convention VALUES ('-C1', '-C1A', '-C1AB', False)",
    "INSERT INTO Indicator_Sector VALUES ('-POP', '-S1A')",
    "INSERT INTO Indicator_Sector VALUES ('-LIT', '-S1A')",
    "INSERT INTO Indicator_Sector VALUES ('WEL', '-S1B')",
    "INSERT INTO Indicator_Goal VALUES (2, '-G1AA')",
    "INSERT INTO Indicator_Goal VALUES (4, '-G1AB')",
    "INSERT INTO Indicator_CF VALUES (1, '-F1')",
    "INSERT INTO Indicator_CF VALUES (4, '-F2')",
    "INSERT INTO Indicator_Theme VALUES (3, '-T1')",
    "INSERT INTO Indicator_Theme VALUES (4, '-T2')",
    "INSERT INTO Indicator_Institution VALUES (1, '-N1A')",
    "INSERT INTO Indicator_Institution VALUES (4, '-N1B')",
    "INSERT INTO Indicator_Convention VALUES (2, '-C1AA')",
    "INSERT INTO Indicator_Convention VALUES (4, '-C1AB')",
    "INSERT INTO Indicator_Source VALUES (1, 1, True)",
    "INSERT INTO Indicator_Source VALUES (1, 2, False)",
    "INSERT INTO Indicator_Source VALUES (2, 1, False)",
    "INSERT INTO Indicator_Source VALUES (3, 2, False)",
    "INSERT INTO Indicator_Source VALUES (4, 2, False)",
    "INSERT INTO Database_Log (DatabaseFileName, [Action]) VALUES ('Sample.mdb', 'Made')",
    "INSERT INTO Template_Log (TemplateFileName, [Action]) VALUES ('Template.mdb', 'Applied')",
};

/// Rows of the language tables; %1 is the code, and #…|…# holds the English and the French text.
constexpr const char* kLanguageRows[] = {
    "INSERT INTO Indicator_%1 VALUES ('-POP', '#Population|Population totale#', '#How many live there|Combien y "
    "vivent#')",
    "INSERT INTO Indicator_%1 VALUES ('-LIT', '#Literacy|Alphabétisation#', NULL)",
    "INSERT INTO Indicator_%1 VALUES ('WEL', '#Wells|Puits#', NULL)",
    "INSERT INTO Unit_%1 VALUES ('-NUM', '#Number|Nombre#')",
    "INSERT INTO Unit_%1 VALUES ('-PCT', '#Percent|Pourcentage#')",
    "INSERT INTO Subpop_%1 VALUES ('-TOT', '#Total|Ensemble#')",
    "INSERT INTO Subpop_%1 VALUES ('-FEM', '#Female|Femmes#')",
    "INSERT INTO Area_%1 (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile, DataExists) "
    "VALUES ('-A1', 1, 'ASI', '#Asia|Asie#', 1, 'world', True)",
    "INSERT INTO Area_%1 (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile, DataExists) "
    "VALUES ('-A2', 2, 'ASIIND', '#India|Inde#', 2, 'world', True)",
    "INSERT INTO Area_%1 (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile, DataExists) "
    "VALUES ('A3', 3, 'ASIINDDEL', '#Delhi|Delhi#', 3, '', True)",
    "INSERT INTO Area_%1 (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile, DataExists) "
    "VALUES ('-A4', 4, 'ASICHN', '#China|Chine#', 2, 'world', True)",
    "INSERT INTO Area_%1 (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile, DataExists) "
    "VALUES ('-A5', 5, 'EUR', '#Europe|Europe#', 1, 'world', False)",
    "INSERT INTO Source_%1 (SourceGId, SourceNId, RegionNId, Source, Info, DataExists) "
    "VALUES ('-C', 1, 1, '#Census|Recensement#', NULL, True)",
    "INSERT INTO Source_%1 (SourceGId, SourceNId, RegionNId, Source, Info, DataExists) "
    "VALUES ('S', 2, 1, '#Survey|Enquête#', NULL, True)",
    "INSERT INTO Footnote_%1 (FootNoteNId, FootNote) VALUES (1, '#Estimate|Estimation#')",
    "INSERT INTO CF_%1 (CFGId, CFLabel1, DataExists) VALUES ('-F1', '#Basis|Base#', True)",
    "INSERT INTO CF_%1 (CFGId, CFLabel1, DataExists) VALUES ('-F2', '#Outcome|Résultat#', False)",
    "INSERT INTO Theme_%1 (ThemeGId, ThemeLabel1, DataExists) VALUES ('-T1', '#Women|Femmes#', True)",
    "INSERT INTO Theme_%1 (ThemeGId, ThemeLabel1, DataExists) VALUES ('-T2', '#Water|Eau#', False)",
    "INSERT INTO SectorLabel1_%1 VALUES ('-S1', '#Society|Société#')",
    "INSERT INTO SectorLabel2_%1 VALUES ('-S1A', '#People|Population#')",
    "INSERT INTO SectorLabel2_%1 VALUES ('-S1B', '#Supply|Approvisionnement#')",
    "INSERT INTO GoalLabel1_%1 VALUES ('-G1', '#Goal|Objectif#')",
    "INSERT INTO GoalLabel2_%1 VALUES ('-G1A', '#Target|Cible#')",
    "INSERT INTO GoalLabel3_%1 (GoalLabel3GId, GoalLabel3) VALUES ('-G1AA', '#Schools|Écoles#')",
    "INSERT INTO GoalLabel3_%1 (GoalLabel3GId, GoalLabel3) VALUES ('-G1AB', '#Water|Eau#')",
    "INSERT INTO InstitutionLabel1_%1 VALUES ('-N1', '#Government|Gouvernement#')",
    "INSERT INTO InstitutionLabel2_%1 VALUES ('-N1A', '#Statistics|Statistique#')",
    "INSERT INTO InstitutionLabel2_%1 VALUES ('-N1B', '#Works|Travaux#')",
    "INSERT INTO ConventionLabel1_%1 VALUES ('-C1', '#Convention|Convention#')",
    "INSERT INTO ConventionLabel2_%1 VALUES ('-C1A', '#Part|Partie#')",
    "INSERT INTO ConventionLabel3_%1 (ConventionLabel3GId, ConventionLabel3) VALUES ('-C1AA', '#Education|Éducation#')",
    "INSERT INTO ConventionLabel3_%1 (ConventionLabel3GId, ConventionLabel3) VALUES ('-C1AB', '#Water|Eau#')",
};

struct DataRow {
    int time, ius, area, source, footnote;
    const char* value;
};

constexpr DataRow kDataRows[] = {
    {1, 1, 1, 1, 0, "3202"},   {2, 1, 1, 1, 0, "3714"},   {3, 1, 1, 1, 1, "3938"}, {1, 1, 2, 1, 0, "870.5"},
    {2, 1, 2, 1, 0, "1056.6"}, {3, 1, 2, 1, 0, "1147.6"}, {3, 1, 2, 2, 1, "1150"}, {1, 1, 4, 1, 0, "1135"},
    {2, 1, 4, 1, 0, "1263"},   {3, 1, 4, 1, 0, "1304"},   {1, 2, 2, 1, 0, "48.2"}, {2, 2, 2, 1, 0, "61"},
    {2, 2, 4, 1, 0, "90.9"},   {1, 3, 2, 2, 0, "33.7"},   {2, 3, 2, 2, 0, "47.8"}, {2, 3, 4, 2, 0, "86.5"},
    {3, 1, 3, 1, 0, "15"},
};

QString InLanguage(QString row, const QString& code, bool english) {
    row = row.arg(code);
    for (qsizetype open = row.indexOf(QLatin1Char('#')); open >= 0; open = row.indexOf(QLatin1Char('#'))) {
        const qsizetype close = row.indexOf(QLatin1Char('#'), open + 1);
        const QString pair = row.mid(open + 1, close - open - 1);
        row.replace(open, close - open + 1, pair.section(QLatin1Char('|'), english ? 0 : 1, english ? 0 : 1));
    }
    return row;
}

void WriteText(const QString& path, const char* text) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(text);
}

std::shared_ptr<jet::Connection> NewDatabase(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    jet::Database::Create(path.toStdString(), DatabasePassword());
    return jet::Connection::Open(path.toStdString(), DatabasePassword());
}

struct TextRow {
    const char *key, *english, *french;
};
constexpr TextRow kTexts[] = {
    {"Yes", "Yes", "Oui"},
    {"No", "No", "Non"},
    {"OK BUTTON", "OK", "OK"},
    {"025", "The file can't be opened.", "Le fichier ne peut pas être ouvert."},
    {"034", "Do you want to leave the program?", "Voulez-vous quitter le programme ?"},
    {"316", "The file is no data database.", "Le fichier n'est pas une base de données."},
    {"TS_DatabaseRefused", "The program does not open it: %1", "Le programme ne l'ouvre pas : %1"},
    {"TS_OpenComputedField", "its table %1 has a computed field.", "sa table %1 contient un champ calculé."},
    {"TS_OpenCallsFunction", "its table %1 calls the function %2.", "sa table %1 appelle la fonction %2."},
    {"ADDRESS", "Address", "Adresse"},
    {"TS_IndicatorCount", "Indicators: %1", "Indicateurs : %1"},
    {"TS_TimePeriodCount", "Time periods: %1", "Périodes : %1"},
    {"Comm_Browse", "Browse\u2026 and open\u2026", "Parcourir\u2026"},
};

void MakeLanguageFile(const QString& path, const QString& langCode, const QString& column, const QString& font) {
    const auto connection = NewDatabase(path);
    schema::CreateLanguageFile(*connection, {"English en", "Francais fr"});
    connection->Execute(
        QStringLiteral("INSERT INTO LangMaster (LangID, LangCode, FontCharset, Locale, FontName, FontSize) "
                       "VALUES ('%1', '%2', 0, %3, '%4', 10)")
            .arg(column, langCode)
            .arg(column.startsWith(QLatin1Char('E')) ? 1033 : 1036)
            .arg(font)
            .toStdString());
    for (const TextRow& text : kTexts)
        connection->Execute(
            QStringLiteral("INSERT INTO Strings (VariableName, ModuleID, TessaroProduct, [English en], [Francais fr]) "
                           "VALUES ('%1', 'M', 'TS', '%2', '%3')")
                .arg(QString::fromUtf8(text.key), QuoteDoubled(QString::fromUtf8(text.english)),
                     QuoteDoubled(QString::fromUtf8(text.french)))
                .toStdString());
}

/// Made once a program; tests get copies.
void MakeFiles(const QDir& folder) {
    WriteText(folder.filePath(QStringLiteral("TS.ini")), kProductSettings);
    WriteText(folder.filePath(QStringLiteral("registry.ini")), kRegistry);
    WriteText(folder.filePath(QStringLiteral("Bin/Template/Pref.ini")), kPreferences);
    schema::CreateInfoSel(*NewDatabase(folder.filePath(QStringLiteral("Bin/Template/InfoSel.mdb"))));
    schema::CreateUserSelections(*NewDatabase(folder.filePath(QStringLiteral("Bin/Template/UserSelections.mdb"))));
    MakeLanguageFile(folder.filePath(QStringLiteral("Languages/TS_English [en].mdb")), QStringLiteral("English [en]"),
                     QStringLiteral("English en"), QStringLiteral("Noto Sans"));
    MakeLanguageFile(folder.filePath(QStringLiteral("Languages/TS_Français [fr].mdb")), QStringLiteral("Français [fr]"),
                     QStringLiteral("Francais fr"), QStringLiteral("Noto Sans"));
    MakeSampleDatabase(folder.filePath(QStringLiteral("Data/Sample.mdb")));
}

const QTemporaryDir& MadeFiles() {
    static const QTemporaryDir folder;
    static const bool made = (MakeFiles(QDir(folder.path())), true);
    static_cast<void>(made);
    return folder;
}

void CopyTree(const QString& from, const QString& to) {
    QDir().mkpath(to);
    const QFileInfoList entries = QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        const QString target = to + QLatin1Char('/') + entry.fileName();
        if (entry.isDir())
            CopyTree(entry.filePath(), target);
        else
            QFile::copy(entry.filePath(), target);
    }
}

} // namespace

void MakeSampleDatabase(const QString& path) {
    const auto connection = NewDatabase(path);
    schema::CreateDataDatabase(*connection, {{"English [en]", "en", true}, {"Français [fr]", "fr", false}});
    connection->Begin();
    for (const char* row : kCommonRows)
        connection->Execute(row);
    for (const bool english : {true, false})
        for (const char* row : kLanguageRows)
            connection->Execute(
                InLanguage(QString::fromUtf8(row), english ? QStringLiteral("en") : QStringLiteral("fr"), english)
                    .toStdString());
    for (const DataRow& row : kDataRows)
        connection->Execute(
            QStringLiteral("INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue) "
                           "VALUES (%1, %2, %3, %4, %5, '%6')")
                .arg(row.time)
                .arg(row.ius)
                .arg(row.area)
                .arg(row.source)
                .arg(row.footnote)
                .arg(QString::fromLatin1(row.value))
                .toStdString());
    connection->Commit();
    schema::IndexData(*connection);
}

void MakeSampleApplication(const QString& folder) {
    CopyTree(MadeFiles().path(), folder);
}

} // namespace tessaro::test
