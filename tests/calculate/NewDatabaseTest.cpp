#include "calculate/NewDatabaseTest.h"

#include "platform/Clock.h"

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

constexpr const char* kCodes[] = {"en", "fr", "ar"};

std::string InLanguage(std::string sql, const std::string& code) {
    for (std::size_t at = sql.find('%'); at != std::string::npos; at = sql.find('%'))
        sql.replace(at, 1, code);
    return sql;
}

/// Rows that name something which isn't there; % is a language's code.
constexpr const char* kOrphans[] = {
    "SELECT * FROM Data WHERE IUSNId NOT IN (SELECT IUSNId FROM Indicator_Unit_Subpop)",
    "SELECT * FROM Data WHERE TimePeriodNId NOT IN (SELECT TimePeriodNId FROM TimePeriod)",
    "SELECT * FROM Data WHERE AreaNId NOT IN (SELECT AreaNId FROM Area_%)",
    "SELECT * FROM Data WHERE SourceNId NOT IN (SELECT SourceNId FROM Source_%)",
    "SELECT * FROM Data D WHERE NOT EXISTS (SELECT 1 FROM Indicator_Source S WHERE S.IUSNId = D.IUSNId AND S.SourceNId "
    "= D.SourceNId)",
    "SELECT * FROM Indicator_Unit_Subpop WHERE IndicatorGId NOT IN (SELECT IndicatorGId FROM Indicator_%)",
    "SELECT * FROM Indicator_Unit_Subpop WHERE UnitGId NOT IN (SELECT UnitGId FROM Unit_%)",
    "SELECT * FROM Indicator_Unit_Subpop WHERE SubpopGId NOT IN (SELECT SubpopGId FROM Subpop_%)",
    "SELECT * FROM Source_% WHERE RegionNId NOT IN (SELECT RegionNId FROM Region)",
    "SELECT * FROM Area_% WHERE length(AreaID) > 3 AND substr(AreaID, 1, length(AreaID) - 3) NOT IN (SELECT AreaID "
    "FROM "
    "Area_%)",
    "SELECT * FROM Sector WHERE SectorLabel1GId NOT IN (SELECT SectorLabel1GId FROM SectorLabel1_%)",
    "SELECT * FROM Sector WHERE SectorLabel2GId NOT IN (SELECT SectorLabel2GId FROM SectorLabel2_%)",
    "SELECT * FROM Goal WHERE GoalLabel1GId NOT IN (SELECT GoalLabel1GId FROM GoalLabel1_%)",
    "SELECT * FROM Goal WHERE GoalLabel2GId NOT IN (SELECT GoalLabel2GId FROM GoalLabel2_%)",
    "SELECT * FROM Goal WHERE GoalLabel3GId NOT IN (SELECT GoalLabel3GId FROM GoalLabel3_%)",
    "SELECT * FROM Convention WHERE ConventionLabel3GId NOT IN (SELECT ConventionLabel3GId FROM ConventionLabel3_%)",
    "SELECT * FROM Institution WHERE InstitutionLabel2GId NOT IN (SELECT InstitutionLabel2GId FROM "
    "InstitutionLabel2_%)",
    "SELECT * FROM Indicator_Sector WHERE IndicatorGId NOT IN (SELECT IndicatorGId FROM Indicator_%) OR "
    "SectorLabel2GId "
    "NOT IN (SELECT SectorLabel2GId FROM Sector)",
    "SELECT * FROM Indicator_Goal WHERE IUSNId NOT IN (SELECT IUSNId FROM Indicator_Unit_Subpop) OR GoalLabel3GId NOT "
    "IN (SELECT GoalLabel3GId FROM Goal)",
    "SELECT * FROM Indicator_CF WHERE IUSNId NOT IN (SELECT IUSNId FROM Indicator_Unit_Subpop) OR CFGId NOT IN (SELECT "
    "CFGId FROM CF_%)",
    "SELECT * FROM Indicator_Theme WHERE IUSNId NOT IN (SELECT IUSNId FROM Indicator_Unit_Subpop) OR ThemeGId NOT IN "
    "(SELECT ThemeGId FROM Theme_%)",
    "SELECT * FROM Indicator_Source WHERE IUSNId NOT IN (SELECT IUSNId FROM Indicator_Unit_Subpop) OR SourceNId NOT IN "
    "(SELECT SourceNId FROM Source_%)"};

/// Marks that do not follow the data.
constexpr const char* kFalseMarks[] = {
    "SELECT * FROM Indicator_Unit_Subpop WHERE (DataExists <> 0) <> (IUSNId IN (SELECT IUSNId FROM Data))",
    "SELECT * FROM TimePeriod WHERE (DataExists <> 0) <> (TimePeriodNId IN (SELECT TimePeriodNId FROM Data))",
    "SELECT * FROM Source_% WHERE (DataExists <> 0) <> (SourceNId IN (SELECT SourceNId FROM Data))",
    "SELECT * FROM Area_% A WHERE (DataExists <> 0) <> EXISTS (SELECT 1 FROM Data D JOIN Area_% B ON B.AreaNId = "
    "D.AreaNId WHERE substr(B.AreaID, 1, length(A.AreaID)) = A.AreaID)",
    "SELECT * FROM Sector S WHERE (DataExists <> 0) <> EXISTS (SELECT 1 FROM Indicator_Sector L JOIN "
    "Indicator_Unit_Subpop I ON I.IndicatorGId = L.IndicatorGId JOIN Data D ON D.IUSNId = I.IUSNId WHERE "
    "L.SectorLabel2GId = S.SectorLabel2GId)",
    "SELECT * FROM Goal G WHERE (DataExists <> 0) <> EXISTS (SELECT 1 FROM Indicator_Goal L JOIN Data D ON D.IUSNId = "
    "L.IUSNId WHERE L.GoalLabel3GId = G.GoalLabel3GId)"};

/// Tables and the columns that tell their rows apart.
constexpr std::pair<const char*, const char*> kKeys[] = {
    {"Indicator_%", "IndicatorGId"},
    {"Unit_%", "UnitGId"},
    {"Subpop_%", "SubpopGId"},
    {"Area_%", "AreaID"},
    {"Source_%", "SourceGId"},
    {"SectorLabel1_%", "SectorLabel1GId"},
    {"SectorLabel2_%", "SectorLabel2GId"},
    {"GoalLabel3_%", "GoalLabel3GId"},
    {"CF_%", "CFGId"},
    {"Theme_%", "ThemeGId"},
    {"Region", "RegionGId"},
    {"TimePeriod", "TimePeriod"},
    {"Sector", "SectorLabel1GId || SectorLabel2GId"},
    {"Goal", "GoalLabel3GId"},
    {"Indicator_Unit_Subpop", "IndicatorGId || UnitGId || SubpopGId"},
    {"Indicator_Sector", "IndicatorGId || SectorLabel2GId"},
    {"Indicator_Goal", "IUSNId || GoalLabel3GId"},
    {"Indicator_Source", "IUSNId || '-' || SourceNId"},
    {"Language", "LanguageCode"}};

/// Numbers that run from 1 without a gap in a database that was made from the template.
constexpr std::pair<const char*, const char*> kNumbers[] = {{"Area_%", "AreaNId"},
                                                            {"Source_%", "SourceNId"},
                                                            {"CF_%", "CFNId"},
                                                            {"TimePeriod", "TimePeriodNId"},
                                                            {"Region", "RegionNId"},
                                                            {"Data", "RowNId"},
                                                            {"Indicator_Unit_Subpop", "IUSNId"}};

void ExpectSound(const PlainReader& made) {
    for (const char* code : kCodes) {
        for (const char* orphans : kOrphans)
            EXPECT_THAT(made.Rows(InLanguage(orphans, code)), IsEmpty()) << InLanguage(orphans, code);
        for (const char* marks : kFalseMarks)
            EXPECT_THAT(made.Rows(InLanguage(marks, code)), IsEmpty()) << InLanguage(marks, code);
        for (const auto& [table, key] : kKeys) {
            const std::string counts =
                InLanguage(std::string("SELECT count(*) = count(DISTINCT ") + key + ") FROM " + table, code);
            EXPECT_EQ(made.Number(counts), 1) << counts;
        }
    }
    EXPECT_THAT(made.Rows("PRAGMA integrity_check"), ElementsAre("ok"));
    EXPECT_EQ(made.Number("SELECT count(*) FROM GUId"), 0);
}

void ExpectNumbersWithoutGaps(const PlainReader& made) {
    for (const char* code : kCodes)
        for (const auto& [table, number] : kNumbers) {
            const std::string name = InLanguage(table, code);
            EXPECT_EQ(made.Number("SELECT count(*) FROM " + name),
                      made.Number(std::string("SELECT coalesce(max(") + number + "), 0) FROM " + name))
                << name;
        }
}

/// The rows of a database by their names in one language.
std::vector<std::string> NamedRows(const PlainReader& database, const std::string& code,
                                   const std::string& where = {}) {
    return database.Rows(InLanguage(
        "SELECT I.Indicator, U.Unit, P.Subpop, T.TimePeriod, A.AreaID, A.AreaName, S.Source, D.Datavalue FROM Data D "
        "JOIN "
        "Indicator_Unit_Subpop X ON X.IUSNId = D.IUSNId JOIN Indicator_% I ON I.IndicatorGId = X.IndicatorGId JOIN "
        "Unit_% "
        "U ON U.UnitGId = X.UnitGId JOIN Subpop_% P ON P.SubpopGId = X.SubpopGId JOIN TimePeriod T ON T.TimePeriodNId "
        "= "
        "D.TimePeriodNId JOIN Area_% A ON A.AreaNId = D.AreaNId JOIN Source_% S ON S.SourceNId = D.SourceNId " +
            where,
        code));
}

std::vector<std::string> And(std::vector<std::string> rows, const std::vector<std::string>& more) {
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

/// The rows of Result(), in a language whose names the areas have.
std::vector<std::string> ResultRows(const std::string& asia, const std::string& india, const std::string& china) {
    const std::string what = "Share of literate people|Per cent of all|";
    return {what + "Everybody|2000|ASIIND|" + india + "|Asia_Own reckoning|61.5",
            what + "Everybody|2000|ASICHN|" + china + "|Asia_Own reckoning|0.25",
            what + "Rural|2003|ASI|" + asia + "|World_Own reckoning|64"};
}

struct SessionLanguage {
    const char* name;
    const char* code;
};
constexpr SessionLanguage kSessionLanguages[] = {
    {"English [en]", "en"}, {"Français [fr]", "fr"}, {"العربية [ar]", "ar"}};

TEST_F(NewDatabaseTest, WithTheDataViewItHoldsViewAndResultInEveryLanguage) {
    for (const SessionLanguage& language : kSessionLanguages) {
        SCOPED_TRACE(language.code);
        OpenIn(QString::fromUtf8(language.name));
        const BuiltDatabase built = BuildDatabase(Result(), true, Target(), QStringLiteral("Per cent of A of B"));
        ASSERT_TRUE(built.made) << built.message.toStdString();
        EXPECT_TRUE(built.message.isEmpty());
        const PlainReader made(Plain(Target()));
        const PlainReader source(Plain(source_));
        ExpectSound(made);
        ExpectNumbersWithoutGaps(made);
        // Each language has its own words for what the view holds; new names are the same in all.
        const std::vector<std::string> india = source.Rows("SELECT AreaName FROM Area_fr WHERE AreaID = 'ASIIND'");
        EXPECT_THAT(india, ElementsAre("Inde"));
        EXPECT_THAT(NamedRows(made, "en"),
                    UnorderedElementsAreArray(And(NamedRows(source, "en"), ResultRows("Asia", "India", "China"))));
        EXPECT_THAT(NamedRows(made, "fr"),
                    UnorderedElementsAreArray(And(NamedRows(source, "fr"), ResultRows("Asie", "Inde", "Chine"))));
        EXPECT_THAT(NamedRows(made, "ar"),
                    UnorderedElementsAreArray(
                        And(NamedRows(source, "ar"), ResultRows("منطقة Asia", "منطقة India", "منطقة China"))));
        EXPECT_THAT(made.Rows("SELECT LanguageCode FROM Language WHERE LanguageDefault <> 0"),
                    ElementsAre(language.code));
        EXPECT_EQ(made.Number("SELECT count(*) FROM Language"), 3);
    }
    EXPECT_EQ(Out(), QStringList{QStringLiteral("New.mdb")})
        << "each replaced the one before, and nothing is left beside it";
}

TEST_F(NewDatabaseTest, WithTheDataViewItHasTheClassificationsOfTheView) {
    OpenIn(QStringLiteral("English [en]"));
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(), {}).made);
    const PlainReader made(Plain(Target()));
    // The sample's own rows but for the branches of the indicator that has no data, by names: numbers are given anew.
    const std::pair<const char*, std::vector<std::string>> expected[] = {
        {"SELECT A.SectorLabel1, B.SectorLabel2 FROM Sector S JOIN SectorLabel1_en A USING (SectorLabel1GId) JOIN "
         "SectorLabel2_en B USING (SectorLabel2GId) ORDER BY 2",
         {"Society|People", "Society|Schools and pupils"}},
        {"SELECT I.Indicator, B.SectorLabel2 FROM Indicator_Sector L JOIN Indicator_en I USING (IndicatorGId) JOIN "
         "SectorLabel2_en B USING (SectorLabel2GId) ORDER BY 1",
         {"Literacy|People", "Population|People", "Share of literate people|Schools and pupils"}},
        {"SELECT GoalLabel1_fr.GoalLabel1, GoalLabel2_fr.GoalLabel2, GoalLabel3_fr.GoalLabel3 FROM Goal JOIN "
         "GoalLabel1_fr USING (GoalLabel1GId) JOIN GoalLabel2_fr USING (GoalLabel2GId) JOIN GoalLabel3_fr USING "
         "(GoalLabel3GId)",
         {"Objectif|Cible|Écoles"}},
        {"SELECT I.Indicator, P.Subpop, L.GoalLabel3GId FROM Indicator_Goal L JOIN Indicator_Unit_Subpop X USING "
         "(IUSNId) JOIN Indicator_en I USING (IndicatorGId) JOIN Subpop_en P USING (SubpopGId)",
         {"Literacy|Total|-G1AA"}},
        {"SELECT ConventionLabel1GId, ConventionLabel2GId, ConventionLabel3GId FROM Convention", {"-C1|-C1A|-C1AA"}},
        {"SELECT InstitutionLabel1GId, InstitutionLabel2GId FROM Institution", {"-N1|-N1A"}},
        {"SELECT I.Indicator, L.InstitutionLabel2GId FROM Indicator_Institution L JOIN Indicator_Unit_Subpop X USING "
         "(IUSNId) JOIN Indicator_en I USING (IndicatorGId)",
         {"Population|-N1A"}},
        {"SELECT CFLabel1, DataExists FROM CF_en", {"Basis|-1"}},
        {"SELECT ThemeLabel1, DataExists FROM Theme_en", {"Women|-1"}},
        {"SELECT Info FROM Indicator_fr WHERE IndicatorGId = '-POP'", {"Combien y vivent"}},
        {"SELECT Info IS NULL FROM Indicator_en WHERE IndicatorGId = '-LIT'", {"1"}},
        {"SELECT Info FROM Indicator_ar WHERE Indicator = 'Share of literate people'", {"Null"}},
        {"SELECT R.Region, S.Source FROM Source_en S JOIN Region R USING (RegionNId) ORDER BY 2",
         {"Asia|Asia_Own reckoning", "Asia|Census", "Asia|Survey", "World|World_Own reckoning"}},
        {"SELECT I.Indicator, P.Subpop, S.Source FROM Indicator_Source L JOIN Source_en S USING (SourceNId) JOIN "
         "Indicator_Unit_Subpop X USING (IUSNId) JOIN Indicator_en I USING (IndicatorGId) JOIN Subpop_en P USING "
         "(SubpopGId) WHERE L.RecommendedSource <> 0",
         {"Population|Total|Census"}},
        {"SELECT AreaID, AreaLevel, MapFile FROM Area_ar ORDER BY 1",
         {"ASI|1|world", "ASICHN|2|world", "ASIIND|2|world", "ASIINDDEL|3|"}},
        {"SELECT TimePeriod FROM TimePeriod ORDER BY 1", {"1990", "2000", "2003", "2005"}}};
    for (const auto& [sql, rows] : expected)
        EXPECT_EQ(made.Rows(sql), rows) << sql;
    // A new item is a local one: its identifier is a GUID.
    EXPECT_EQ(made.Number("SELECT count(*) FROM Unit_en WHERE UnitGId LIKE '{________-____-____-____-____________}'"),
              1);
}

TEST_F(NewDatabaseTest, WithoutTheDataViewItIsTheOpenDatabaseWithTheResultAlone) {
    for (const SessionLanguage& language : kSessionLanguages) {
        SCOPED_TRACE(language.code);
        OpenIn(QString::fromUtf8(language.name));
        ASSERT_TRUE(BuildDatabase(Result(), false, Target(), {}).made);
        const PlainReader made(Plain(Target()));
        const PlainReader source(Plain(source_));
        ExpectSound(made);
        EXPECT_THAT(NamedRows(made, "fr"), UnorderedElementsAreArray(ResultRows("Asie", "Inde", "Chine")));
        for (const char* code : kCodes) {
            EXPECT_EQ(made.Number(InLanguage("SELECT count(*) FROM Indicator_%", code)), 4);
            const std::string old =
                InLanguage("SELECT IndicatorGId, Indicator, Info FROM Indicator_% ORDER BY rowid LIMIT 3", code);
            EXPECT_EQ(made.Rows(old), source.Rows(old)) << "what was there stays";
        }
        // The next numbers after those of the open database.
        EXPECT_THAT(made.Rows("SELECT IUSNId FROM Indicator_Unit_Subpop ORDER BY 1"),
                    ElementsAre("1", "2", "3", "4", "5", "6"));
        EXPECT_THAT(made.Rows("SELECT TimePeriodNId, DataExists FROM TimePeriod WHERE DataExists <> 0 ORDER BY 1"),
                    ElementsAre("2|-1", "5|-1"));
        EXPECT_THAT(made.Rows("SELECT SourceNId, RegionNId FROM Source_ar ORDER BY 1"),
                    ElementsAre("1|1", "2|1", "3|1", "4|2"));
        EXPECT_EQ(source.Number("SELECT count(*) FROM Data"), 17) << "the open database stands";
    }
}

TEST_F(NewDatabaseTest, TheProgramOpensItAndShowsTheIndicatorUnderSectorAndClass) {
    OpenIn(QStringLiteral("English [en]"));
    for (const bool withDataView : {true, false}) {
        const QString target = Target(withDataView ? QStringLiteral("a.mdb") : QStringLiteral("b.mdb"));
        ASSERT_TRUE(BuildDatabase(Result(), withDataView, target, {}).made);
    }
    for (const char* name : {"a.mdb", "b.mdb"}) {
        for (const SessionLanguage& language : kSessionLanguages) {
            Language = QString::fromUtf8(language.name);
            ASSERT_FALSE(InValidFile(Target(QLatin1String(name))));
            ASSERT_TRUE(OpenDatabaseFile(Target(QLatin1String(name))));
            EXPECT_TRUE(LanguageInDatabase);
            // As the indicator screen asks: classes with data, then the indicators of a class.
            Records rows = tessaro::Select(QStringLiteral(
                "SELECT DISTINCT S2.SectorLabel2, I.[Indicator] FROM (Indicator_Unit_subpop AS IUS INNER JOIN "
                "[Indicator] "
                "AS I ON IUS.IndicatorGId = I.IndicatorGId) INNER JOIN (Indicator_Sector AS L INNER JOIN (Sector AS S "
                "INNER JOIN SectorLabel2 AS S2 ON S.SectorLabel2GId = S2.SectorLabel2GId) ON L.SectorLabel2GId = "
                "S.SectorLabel2GId) ON I.IndicatorGId = L.IndicatorGId WHERE S.DataExists = True AND IUS.DataExists = "
                "True AND S2.SectorLabel2 = 'Schools and pupils'"));
            EXPECT_EQ(QString::fromStdString(rows.rows().GetString(-1, ",", ";")),
                      QStringLiteral("Schools and pupils,Share of literate people;"))
                << name << ' ' << language.code;
        }
    }
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(NewDatabaseTest, ItsLogSaysWhatWasCalculated) {
    OpenIn(QStringLiteral("English [en]"));
    SetClock([] { return QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7)); });
    ASSERT_TRUE(
        BuildDatabase(Result(), true, Target(QStringLiteral("Shares.mdb")), QStringLiteral("Formula: {A  ~  B} / 2's"))
            .made);
    ASSERT_TRUE(BuildDatabase(Result(), false, Target(QStringLiteral("b.mdb")), QString(300, QLatin1Char('x'))).made);
    SetClock({});
    EXPECT_THAT(PlainReader(Plain(Target(QStringLiteral("Shares.mdb"))))
                    .Rows("SELECT TimeStamp, DatabaseFileName, Action FROM Database_Log"),
                ElementsAre("2026-03-04 05:06:07|Shares.mdb|Formula: {A  ~  B} / 2's"));
    EXPECT_THAT(
        PlainReader(Plain(Target(QStringLiteral("b.mdb")))).Rows("SELECT Databaseid, length(Action) FROM Database_Log"),
        ElementsAre("1|4", "2|255"));
}

TEST_F(NewDatabaseTest, NamesOfAnyKindComeThrough) {
    const QString names[] = {QStringLiteral("Côte d'Ivoire's \"share\""), QStringLiteral("'; DROP TABLE Data; --"),
                             QStringLiteral("100% [a] {b} ~ %1 ?"), QString::fromUtf8("نسبة السكان"),
                             QString(255, QLatin1Char('\''))};
    OpenIn(QStringLiteral("English [en]"));
    for (const bool withDataView : {true, false}) {
        for (const QString& name : names) {
            const DataEntrySheet result{name, name, name, name, {{"2000", "ASI", "Asia", "1", name, name}}};
            const BuiltDatabase built = BuildDatabase(result, withDataView, Target(), name);
            ASSERT_TRUE(built.made) << built.message.toStdString();
            const PlainReader made(Plain(Target()));
            ExpectSound(made);
            const std::string text = name.toStdString();
            for (const char* sql : {"SELECT Indicator FROM Indicator_fr WHERE IndicatorGId LIKE '{%'",
                                    "SELECT SectorLabel1 FROM SectorLabel1_ar WHERE SectorLabel1GId LIKE '{%'",
                                    "SELECT SectorLabel2 FROM SectorLabel2_en WHERE SectorLabel2GId LIKE '{%'",
                                    "SELECT Unit FROM Unit_fr WHERE UnitGId LIKE '{%'",
                                    "SELECT Subpop FROM Subpop_ar WHERE SubpopGId LIKE '{%'",
                                    "SELECT Source FROM Source_fr WHERE SourceGId LIKE '{%'"})
                EXPECT_THAT(made.Rows(sql), ElementsAre(text)) << sql;
        }
    }
}

TEST_F(NewDatabaseTest, NamesThatAreThereAreUsedAndNotMadeAgain) {
    OpenIn(QStringLiteral("English [en]"));
    const DataEntrySheet result{QStringLiteral("SOCIETY"),
                                QStringLiteral("people"),
                                QStringLiteral("literacy"),
                                QStringLiteral(" Percent "),
                                {{"2000", "asiind", "India", "9", "total", "Census"}}};
    for (const bool withDataView : {true, false}) {
        ASSERT_TRUE(BuildDatabase(result, withDataView, Target(), {}).made);
        const PlainReader made(Plain(Target()));
        ExpectSound(made);
        EXPECT_EQ(made.Number("SELECT count(*) FROM Indicator_en"), withDataView ? 2 : 3);
        EXPECT_EQ(made.Number("SELECT count(*) FROM Source_en"), 2);
        EXPECT_EQ(made.Number("SELECT count(*) FROM Data WHERE Datavalue = '9'"), 1);
        EXPECT_EQ(made.Number("SELECT count(*) FROM Indicator_Unit_Subpop"), withDataView ? 3 : 4);
    }
}

TEST_F(NewDatabaseTest, ASourceBeginsWithItsRegion) {
    const struct {
        const char *source, *region;
    } cases[] = {{"World_Census", "World"}, {"Census 2001", "Census 2001"}, {"asia_Other", "Asia"}, {"a_b_c", "a"},
                 {"Asia", "Asia"},          {"O'Neill_'s", "O'Neill"}};
    OpenIn(QStringLiteral("English [en]"));
    for (const auto& c : cases) {
        DataEntrySheet result = Result();
        for (DataEntryRow& row : result.rows)
            row.source = QString::fromUtf8(c.source);
        ASSERT_TRUE(BuildDatabase(result, false, Target(), {}).made);
        const PlainReader made(Plain(Target()));
        EXPECT_THAT(made.Rows("SELECT R.Region, S.Source, S.Info IS NULL FROM Source_fr S JOIN Region R USING "
                              "(RegionNId) WHERE S.SourceNId > 2"),
                    ElementsAre(std::string(c.region) + '|' + c.source + "|1"));
    }
}

TEST_F(NewDatabaseTest, ValuesAreKeptAsNumbers) {
    const struct {
        const char *typed, *kept;
    } cases[] = {{".50", "0.5"}, {"100", "100"},       {"12.00", "12"},      {"-3.25", "-3.25"},
                 {"0", "0"},     {"1E+300", "1E+300"}, {"1e-300", "1E-300"}, {"1304000000", "1304000000"}};
    OpenIn(QStringLiteral("English [en]"));
    DataEntrySheet result = Result();
    result.rows.clear();
    std::vector<std::string> kept;
    for (const auto& c : cases) {
        result.rows.push_back({QStringLiteral("2000"), QStringLiteral("ASI"), QStringLiteral("Asia"),
                               QString::fromLatin1(c.typed), QStringLiteral("Total"), QStringLiteral("Census")});
        kept.emplace_back(c.kept);
    }
    ASSERT_TRUE(BuildDatabase(result, false, Target(), {}).made);
    EXPECT_EQ(PlainReader(Plain(Target())).Rows("SELECT Datavalue FROM Data ORDER BY RowNId"), kept);
}

TEST_F(NewDatabaseTest, AnAreaThatIsNotThereGivesARowWithoutOne) {
    OpenIn(QStringLiteral("English [en]"));
    DataEntrySheet result = Result();
    result.rows[0].areaId = QStringLiteral("XXX");
    ASSERT_TRUE(BuildDatabase(result, true, Target(), {}).made);
    EXPECT_THAT(PlainReader(Plain(Target())).Rows("SELECT Datavalue FROM Data WHERE AreaNId = 0"), ElementsAre("61.5"));
}

TEST_F(NewDatabaseTest, WhatTheOpenDatabaseListsBadlyIsCopiedAllTheSame) {
    Change({"DELETE * FROM Indicator_Sector WHERE IndicatorGId = '-POP'",
            "UPDATE Source_en SET RegionNId = 77 WHERE SourceNId = 2",
            "DELETE * FROM Indicator_fr WHERE IndicatorGId = '-LIT'", "DELETE * FROM Area_ar WHERE AreaID = 'ASIIND'",
            "INSERT INTO Area_en (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile, DataExists) VALUES ('-A9', "
            "9, 'ASIIND', 'India again', 2, '', False)",
            "INSERT INTO Sector VALUES ('-S1', '-S1A', True)"});
    OpenIn(QStringLiteral("English [en]"));
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(), {}).made);
    const PlainReader made(Plain(Target()));
    ExpectSound(made);
    ExpectNumbersWithoutGaps(made);
    EXPECT_EQ(made.Number("SELECT count(*) FROM Data"), 17 + 3);
    EXPECT_THAT(made.Rows("SELECT Indicator FROM Indicator_fr WHERE IndicatorGId = '-LIT'"), ElementsAre("Literacy"))
        << "the session's word, where the language has none";
}

TEST_F(NewDatabaseTest, ANumberThatAnotherLanguageHasGivenToSomethingElseIsNoObstacle) {
    Change(
        {"UPDATE Area_fr SET AreaID = 'ELSEWHERE' WHERE AreaID = 'ASICHN'",
         "INSERT INTO Source_ar (SourceGId, SourceNId, RegionNId, Source, DataExists) VALUES ('X', 3, 1, 'Only here', "
         "False)"});
    OpenIn(QStringLiteral("English [en]"));
    ASSERT_TRUE(BuildDatabase(Result(), false, Target(), {}).made);
    const PlainReader made(Plain(Target()));
    EXPECT_EQ(made.Number("SELECT count(*) FROM Area_fr"), 5);
    EXPECT_THAT(made.Rows("SELECT SourceNId, Source FROM Source_ar WHERE SourceNId > 2 ORDER BY 1"),
                ElementsAre("3|Only here", "4|Asia_Own reckoning", "5|World_Own reckoning"));
    EXPECT_THAT(made.Rows("SELECT DISTINCT SourceNId FROM Data ORDER BY 1"), ElementsAre("4", "5"));
}

TEST_F(NewDatabaseTest, LanguagesThatTheTemplateLacksGetTheirTables) {
    Change({"INSERT INTO [Language] VALUES ('Português [pt]', 'pt', False)",
            "INSERT INTO [Language] VALUES ('Bad', 'x] y', False)"});
    {
        const auto connection = jet::Connection::Open(source_.toStdString(), DatabasePassword());
        schema::CreateLanguageTables(*connection, "pt");
        connection->Execute("INSERT INTO Indicator_pt VALUES ('-POP', 'População', Null)");
    }
    OpenIn(QStringLiteral("English [en]"));
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(), {}).made);
    const PlainReader made(Plain(Target()));
    EXPECT_THAT(made.Rows("SELECT Indicator FROM Indicator_pt ORDER BY 1"),
                ElementsAre("Literacy", "População", "Share of literate people"));
    EXPECT_EQ(made.Number("SELECT count(*) FROM Area_pt WHERE DataExists <> 0"), 4);
    EXPECT_THAT(made.Rows("SELECT LanguageCode FROM Language ORDER BY 1"), ElementsAre("ar", "en", "fr", "pt"));
    Language = QStringLiteral("Português [pt]");
    ASSERT_TRUE(OpenDatabaseFile(Target()));
    EXPECT_TRUE(LanguageInDatabase);
}

TEST_F(NewDatabaseTest, ADatabaseFromBeforeThereWereLogsGetsThem) {
    Change({"DROP TABLE Database_Log", "DROP TABLE Template_Log", "DROP TABLE GUId"});
    OpenIn(QStringLiteral("English [en]"));
    ASSERT_TRUE(BuildDatabase(Result(), false, Target(), QStringLiteral("Sub-total")).made);
    const PlainReader made(Plain(Target()));
    ExpectSound(made);
    EXPECT_THAT(made.Rows("SELECT Action FROM Database_Log"), ElementsAre("Sub-total"));
}

} // namespace
} // namespace tessaro::test
