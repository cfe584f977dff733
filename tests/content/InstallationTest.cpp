#include "TestPlaces.h"
#include "content/FlagChecks.h"
#include "jet/engine/Connection.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/SettingsFile.h"
#include "support/PlainReader.h"
#include "support/ReadXls.h"

#include <QFile>
#include <QImageReader>
#include <QRegularExpression>

#include <fstream>
#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

const std::string kInstallation = TESSARO_INSTALLATION;
const std::vector<std::string> kCodes = {"en", "fr", "es", "ar", "ru"};

/// The sample database, opened once.
const PlainReader& Sample() {
    static const PlainReader reader(kInstallation + "/Data/Tessaro World.mdb");
    return reader;
}

} // namespace

TEST(SampleDatabase, IsAsLargeAsPromised) {
    struct Least {
        const char* what;
        const char* sql;
        long long least;
    };
    for (const Least& c : {
             Least{"values", "SELECT count(*) FROM Data", 350'000},
             Least{"combinations", "SELECT count(*) FROM Indicator_Unit_Subpop", 60},
             Least{"combinations with data", "SELECT count(DISTINCT IUSNId) FROM Data", 60},
             Least{"regions", "SELECT count(*) FROM Area_en WHERE AreaLevel = 1", 5},
             Least{"countries", "SELECT count(*) FROM Area_en WHERE AreaLevel = 2", 200},
             Least{"states", "SELECT count(*) FROM Area_en WHERE AreaLevel = 3", 100},
             Least{"counties", "SELECT count(*) FROM Area_en WHERE AreaLevel = 4", 3'000},
             Least{"counties with data", "SELECT count(*) FROM Data JOIN Area_en USING (AreaNId) WHERE AreaLevel = 4",
                   3'000},
             Least{"sources with data", "SELECT count(DISTINCT SourceNId) FROM Data", 5},
             Least{"combinations of two sources",
                   "SELECT count(*) FROM (SELECT 1 FROM Indicator_Source GROUP BY IUSNId HAVING count(*) > 1)", 2},
             Least{"values with a footnote",
                   "SELECT count(*) FROM Data D JOIN Footnote_en F ON D.FootnoteNId = F.FootNoteNId", 100},
             Least{"combinations without data", "SELECT count(*) FROM Indicator_Unit_Subpop WHERE DataExists = 0", 1},
             Least{"areas without data", "SELECT count(*) FROM Area_en WHERE DataExists = 0", 1},
             Least{"periods without data", "SELECT count(*) FROM TimePeriod WHERE DataExists = 0", 1},
             Least{"local indicators", "SELECT count(*) FROM Indicator_en WHERE substr(IndicatorGId,1,1) <> '-'", 3},
             Least{"global indicators", "SELECT count(*) FROM Indicator_en WHERE substr(IndicatorGId,1,1) = '-'", 30},
         }) {
        EXPECT_GE(Sample().Number(c.sql), c.least) << c.what;
    }
}

TEST(SampleDatabase, FillsAllSevenClassifications) {
    for (const char* join :
         {"Sector S JOIN SectorLabel1_en USING (SectorLabel1GId) JOIN SectorLabel2_en USING "
          "(SectorLabel2GId) JOIN Indicator_Sector USING (SectorLabel2GId) JOIN Indicator_en USING "
          "(IndicatorGId)",
          "Goal JOIN GoalLabel1_en USING (GoalLabel1GId) JOIN GoalLabel2_en USING (GoalLabel2GId) JOIN "
          "GoalLabel3_en USING (GoalLabel3GId) JOIN Indicator_Goal USING (GoalLabel3GId)",
          "CF_en JOIN Indicator_CF USING (CFGId)", "Theme_en JOIN Indicator_Theme USING (ThemeGId)",
          "Source_en JOIN Region USING (RegionNId) JOIN Indicator_Source USING (SourceNId)",
          "Institution JOIN InstitutionLabel1_en USING (InstitutionLabel1GId) JOIN InstitutionLabel2_en "
          "USING (InstitutionLabel2GId) JOIN Indicator_Institution USING (InstitutionLabel2GId)",
          "Convention JOIN ConventionLabel1_en USING (ConventionLabel1GId) JOIN ConventionLabel2_en "
          "USING (ConventionLabel2GId) JOIN ConventionLabel3_en USING (ConventionLabel3GId) JOIN "
          "Indicator_Convention USING (ConventionLabel3GId)"}) {
        EXPECT_GE(Sample().Number(std::string("SELECT count(*) FROM ") + join), 5) << join;
    }
}

TEST(SampleDatabase, HasEveryTextInEveryLanguage) {
    struct Texts {
        const char* table;
        const char* key;
        const char* text;
        bool translated; ///< names of places may be the same in several languages
    };
    for (const std::string& code : kCodes) {
        for (const Texts& c :
             {Texts{"Indicator", "IndicatorGId", "Indicator", true}, Texts{"Indicator", "IndicatorGId", "Info", true},
              Texts{"Unit", "UnitGId", "Unit", false}, Texts{"Subpop", "SubpopGId", "Subpop", false},
              Texts{"Source", "SourceGId", "Info", true}, Texts{"Footnote", "FootNoteNId", "FootNote", true},
              Texts{"CF", "CFGId", "Info", true}, Texts{"Theme", "ThemeGId", "Info", true},
              Texts{"GoalLabel2", "GoalLabel2GId", "GoalLabel2", true},
              Texts{"GoalLabel3", "GoalLabel3GId", "Info", true},
              Texts{"ConventionLabel3", "ConventionLabel3GId", "Info", true},
              Texts{"SectorLabel2", "SectorLabel2GId", "SectorLabel2", false},
              Texts{"InstitutionLabel2", "InstitutionLabel2GId", "InstitutionLabel2", false},
              Texts{"Area", "AreaNId", "AreaName", false}}) {
            const std::string own = std::string(c.table) + "_" + code;
            const std::string english = std::string(c.table) + "_en";
            EXPECT_EQ(Sample().Number("SELECT count(*) FROM " + own),
                      Sample().Number("SELECT count(*) FROM " + english))
                << own;
            EXPECT_EQ(Sample().Number("SELECT count(*) FROM " + own + " WHERE coalesce(" + c.text + ", '') = ''"), 0)
                << own;
            if (!c.translated || code == "en") continue;
            const auto same = Sample().Rows("SELECT E." + std::string(c.text) + " FROM " + own + " O JOIN " + english +
                                            " E USING (" + c.key + ") WHERE O." + c.text + " = E." + c.text);
            EXPECT_LE(same.size(), 1U) << own << " has untranslated texts: " << testing::PrintToString(same);
        }
    }
    EXPECT_EQ(Sample().Rows("SELECT LanguageName FROM Language ORDER BY rowid"),
              (std::vector<std::string>{"English [en]", "French [fr]", "Spanish [es]", "Arabic [ar]", "Russian [ru]"}));
    EXPECT_EQ(Sample().Rows("SELECT LanguageCode FROM Language WHERE LanguageDefault <> 0"),
              std::vector<std::string>{"en"});
}

TEST(SampleDatabase, JoinsWithoutLooseEnds) {
    for (const char* sql : {
             "SELECT count(*) FROM Data WHERE AreaNId NOT IN (SELECT AreaNId FROM Area_en)",
             "SELECT count(*) FROM Data WHERE IUSNId NOT IN (SELECT IUSNId FROM Indicator_Unit_Subpop)",
             "SELECT count(*) FROM Data WHERE TimePeriodNId NOT IN (SELECT TimePeriodNId FROM TimePeriod)",
             "SELECT count(*) FROM (SELECT DISTINCT IUSNId, SourceNId FROM Data EXCEPT SELECT IUSNId, SourceNId FROM "
             "Indicator_Source)",
             "SELECT count(*) FROM (SELECT IUSNId, SourceNId FROM Indicator_Source EXCEPT SELECT IUSNId, SourceNId "
             "FROM Data)",
             "SELECT count(*) FROM (SELECT 1 FROM Data GROUP BY AreaNId, TimePeriodNId, IUSNId, SourceNId HAVING "
             "count(*) > 1)",
             "SELECT count(*) FROM Data WHERE Datavalue GLOB '*[^0-9.eE+-]*' OR coalesce(Datavalue, '') = ''",
             "SELECT count(*) FROM Area_en WHERE AreaLevel <> length(AreaID) / 3 OR length(AreaID) % 3 <> 0",
             "SELECT count(*) FROM Area_en WHERE AreaLevel > 1 AND substr(AreaID, 1, length(AreaID) - 3) NOT IN "
             "(SELECT "
             "AreaID FROM Area_en)",
             "SELECT count(*) FROM (SELECT 1 FROM Indicator_Source WHERE RecommendedSource <> 0 GROUP BY IUSNId HAVING "
             "count(*) <> 1)",
             "SELECT count(*) FROM Data JOIN Indicator_Unit_Subpop USING (IUSNId) WHERE CAST(Datavalue AS REAL) NOT "
             "BETWEEN "
             "Min_Value AND Max_Value",
             "SELECT count(*) FROM Indicator_en WHERE IndicatorGId LIKE '%{%' OR IndicatorGId LIKE '%''%'",
         }) {
        EXPECT_EQ(Sample().Number(sql), 0) << sql;
    }
}

TEST(SampleDatabase, FlagsSayWhatDataSay) {
    EXPECT_EQ(WrongFlags(Sample(), kCodes), std::vector<std::string>{});
}

TEST(SampleDatabase, KeepsItsLogs) {
    EXPECT_GE(Sample().Number("SELECT count(*) FROM Database_Log WHERE TimeStamp <> '' AND Action <> ''"), 1);
    EXPECT_GE(Sample().Number("SELECT count(*) FROM Template_Log WHERE TemplateFileName <> ''"), 1);
}

TEST(SampleDatabase, LetsTheEnginePlan) {
    EXPECT_GE(Sample().Number("SELECT count(*) FROM sqlite_stat1 WHERE tbl = 'Data'"), 3);
    EXPECT_EQ(Sample().Rows("PRAGMA integrity_check"), std::vector<std::string>{"ok"});
}

TEST(Installation, OpensEveryDatabaseWithItsPasswordOnly) {
    for (const char* file : {"Data/Tessaro World.mdb", "Bin/Template/UserSelections.mdb", "Bin/Template/InfoSel.mdb",
                             "Bin/Template/dbTemp.mdb", "Languages/TS_English [en].mdb"}) {
        const std::string path = kInstallation + "/" + file;
        EXPECT_TRUE(jet::Connection::Open(path, DatabasePassword())->isOpen()) << file;
        EXPECT_THROW(static_cast<void>(jet::Connection::Open(path, "password")), jet::Error) << file;
    }
}

TEST(Installation, HasTheWorkbooksThatResultsAreCopiedFrom) {
    for (const char* name : {"TableTmp.Xls", "GraphTmp.Xls", "Blank.Xls", "TemplateExcel.xls"}) {
        std::ifstream file(kInstallation + "/Bin/Template/" + name, std::ios::binary);
        std::string mark(4, '\0');
        file.read(mark.data(), 4);
        EXPECT_EQ(mark, "\xD0\xCF\x11\xE0") << name;
    }
}

TEST(Installation, HasALanguageFileForEachLanguage) {
    const std::vector<std::string> names = {"English en", "French fr", "Spanish es", "Arabic ar", "Russian ru"};
    const std::vector<std::string> files = {"English [en]", "French [fr]", "Spanish [es]", "Arabic [ar]",
                                            "Russian [ru]"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const PlainReader reader(kInstallation + "/Languages/TS_" + files[i] + ".mdb");
        EXPECT_EQ(reader.Rows("SELECT LangID FROM LangMaster WHERE LangCode = '" + files[i] + "'"),
                  std::vector<std::string>{names[i]});
        EXPECT_GE(
            reader.Number("SELECT count(*) FROM Strings WHERE TessaroProduct = 'TS' AND \"" + names[i] + "\" <> ''"),
            400)
            << names[i];
        EXPECT_EQ(reader.Number(
                      "SELECT count(*) FROM (SELECT 1 FROM Strings GROUP BY lower(VariableName) HAVING count(*) > 1)"),
                  0);
    }
}

TEST(Installation, LeavesTheTemplateForResultsEmpty) {
    const PlainReader reader(kInstallation + "/Bin/Template/dbTemp.mdb");
    for (const char* table : {"Language", "Data", "Area_en", "Indicator_ru"})
        EXPECT_EQ(reader.Number(std::string("SELECT count(*) FROM ") + table), 0) << table;
}

TEST(Installation, HasTheWorkbooksThatResultsAreWrittenInto) {
    struct Case {
        const char* file;
        std::size_t sheetCount; ///< 0: any number serves
        QStringList sheets;     ///< names of the first ones, where they matter
    };
    for (const Case& c :
         {Case{"Blank.Xls", 0, {}}, Case{"INTERFACE_IND_TIME_AREA_DATA.xls", 0, {}}, Case{"GraphTmp.Xls", 0, {}},
          Case{"TableTmp.Xls", 3, {}}, Case{"TemplateExcel.xls", 1, {"DataView"}}, Case{"Log_Calculate.xls", 4, {}},
          Case{"Data_DataEntry.xls", 1, {}}, Case{"MapLayoutSquare.xls", 3, {}}, Case{"MapLayoutHorizontal.xls", 3, {}},
          Case{"MapLayoutVertical.xls", 3, {}}}) {
        const QString path = QString::fromStdString(kInstallation + "/Bin/Template/") + QLatin1String(c.file);
        ASSERT_TRUE(QFile::exists(path)) << c.file;
        const std::vector<ReadSheet> sheets = ReadXls(path);
        ASSERT_FALSE(sheets.empty()) << c.file;
        for (qsizetype place = 0; place < c.sheets.size(); ++place)
            EXPECT_EQ(sheets.at(static_cast<std::size_t>(place)).name, c.sheets[place]) << c.file;
        for (const ReadSheet& sheet : sheets)
            EXPECT_TRUE(sheet.rows.isEmpty()) << c.file << ' ' << sheet.name.toStdString();
        if (c.sheetCount != 0) {
            EXPECT_EQ(sheets.size(), c.sheetCount) << c.file;
        }
    }
}

TEST(Installation, NamesTheLanguageFolder) {
    QFile file(QString::fromStdString(kInstallation + "/registry.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("[HKEY_LOCAL_MACHINE\\Software\\TESSARO]\nLanguage Path=Languages\n"));
}

// Where a program has been started from it since, its settings are enciphered.
TEST(Installation, SettingsCanBeRead) {
    const QString root = QString::fromStdString(kInstallation);
    EXPECT_TRUE(ReadSettingsFile(root + QStringLiteral("/TS.ini"), QStringLiteral("Product")));
    const auto preferences =
        ReadSettingsFile(root + QStringLiteral("/Bin/Template/Pref.ini"), QStringLiteral("USER PREFERENCES"));
    EXPECT_TRUE(preferences && preferences->wasPlain);
}

TEST(Installation, EveryPictureCanBeRead) {
    const QString folder = QString::fromStdString(kInstallation) + QStringLiteral("/Graphics");
    const QStringList files = FilesOf(folder).filter(QRegularExpression(QStringLiteral("[.](?!svg$)[^.]+$")));
    EXPECT_GE(files.size(), 100);
    for (const QString& file : files) {
        QImageReader reader(JoinPath({folder, file}));
        reader.setDecideFormatFromContent(true);
        EXPECT_FALSE(reader.read().isNull()) << file.toStdString();
        QFile raw(JoinPath({folder, file}));
        ASSERT_TRUE(raw.open(QIODevice::ReadOnly)) << file.toStdString();
        const bool jpegData = raw.read(2) == QByteArray("\xFF\xD8");
        EXPECT_EQ(jpegData, file.endsWith(QLatin1String(".jpg"))) << file.toStdString();
    }
}

} // namespace tessaro::test
