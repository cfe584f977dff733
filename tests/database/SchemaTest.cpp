#include "database/Schema.h"

#include "database/Database.h"
#include "jet/engine/Connection.h"
#include "session/Query.h"
#include "support/PlainReader.h"
#include "support/TestSession.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace tessaro {

using test::PlainReader;

namespace {

class SchemaTest : public test::SessionTest {
  protected:
    /// An empty database file, open.
    std::shared_ptr<jet::Connection> NewFile() {
        path_ = Folder().toStdString() + "/made.mdb";
        jet::Database::Create(path_, DatabasePassword());
        return jet::Connection::Open(path_, DatabasePassword());
    }
    [[nodiscard]] PlainReader Reader() const { return PlainReader(path_); }
    [[nodiscard]] QString Path() const { return QString::fromStdString(path_); }

    std::string path_;
};

const std::vector<schema::DatabaseLanguage> kLanguages = {{"English [en]", "en", true}, {"O'Zbek [uz]", "uz", false}};

} // namespace

TEST(RequiredTables, AreTheThirtyFour) {
    const std::vector<std::string> required = {"area_fr",
                                               "cf_fr",
                                               "convention",
                                               "conventionlabel1_fr",
                                               "conventionlabel2_fr",
                                               "conventionlabel3_fr",
                                               "data",
                                               "footnote_fr",
                                               "goal",
                                               "goallabel1_fr",
                                               "goallabel2_fr",
                                               "goallabel3_fr",
                                               "indicator_cf",
                                               "indicator_convention",
                                               "indicator_fr",
                                               "indicator_goal",
                                               "indicator_institution",
                                               "indicator_sector",
                                               "indicator_source",
                                               "indicator_theme",
                                               "indicator_unit_subpop",
                                               "institution",
                                               "institutionlabel1_fr",
                                               "institutionlabel2_fr",
                                               "language",
                                               "region",
                                               "sector",
                                               "sectorlabel1_fr",
                                               "sectorlabel2_fr",
                                               "source_fr",
                                               "subpop_fr",
                                               "theme_fr",
                                               "timeperiod",
                                               "unit_fr"};
    EXPECT_THAT(schema::RequiredTables("fr"), testing::UnorderedElementsAreArray(required));
}

TEST_F(SchemaTest, MakesADatabaseThatPassesTheCheck) {
    schema::CreateDataDatabase(*NewFile(), kLanguages);
    EXPECT_FALSE(InValidFile(Path()));
    EXPECT_EQ(Reader().Rows("SELECT LanguageName, LanguageCode FROM Language ORDER BY rowid"),
              (std::vector<std::string>{"English [en]|en", "O'Zbek [uz]|uz"}));
    EXPECT_EQ(Reader().Number("SELECT count(*) FROM Language WHERE LanguageDefault <> 0"), 1);
    EXPECT_EQ(
        Reader().Number("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name LIKE '%\\_uz' ESCAPE '\\'"),
        18);
}

TEST_F(SchemaTest, WithoutALanguageItIsNoDataDatabase) {
    schema::CreateDataDatabase(*NewFile(), {});
    EXPECT_TRUE(InValidFile(Path()));
}

// Joins run on every NId and GId, so each stands first in an index or is the key.
TEST_F(SchemaTest, EveryIdentifierIsIndexed) {
    const auto connection = NewFile();
    schema::CreateDataDatabase(*connection, kLanguages);
    schema::IndexData(*connection);
    const PlainReader reader = Reader();
    std::set<std::string> indexed;
    for (const std::string& row : reader.Rows("SELECT lower(m.name) || '.' || lower(c.name) FROM sqlite_master m, "
                                              "pragma_index_list(m.name) i, pragma_index_info(i.name) c WHERE m.type = "
                                              "'table' AND c.seqno = 0"))
        indexed.insert(row);
    std::vector<std::string> missing;
    for (const std::string& row : reader.Rows("SELECT lower(m.name) || '.' || lower(c.name) FROM sqlite_master m, "
                                              "pragma_table_info(m.name) c WHERE m.type = 'table' AND c.pk = 0 AND "
                                              "(c.name LIKE '%NId' OR c.name LIKE '%GId')")) {
        const bool isFootnote = row.ends_with(".footnotenid"); // read one by one, from Data to the list only
        const bool isScratch = row == "guid.guid";
        if (!indexed.contains(row) && !isFootnote && !isScratch) missing.push_back(row);
    }
    EXPECT_EQ(missing, std::vector<std::string>{});
}

TEST_F(SchemaTest, KeysCountByThemselves) {
    const auto connection = NewFile();
    schema::CreateDataDatabase(*connection, kLanguages);
    connection->Execute("INSERT INTO [Area_en] (AreaGId, AreaId, AreaName, AreaLevel, MapFile, DataExists) VALUES "
                        "('-A','AFR','Africa',1,'',1)");
    connection->Execute("INSERT INTO Indicator_Unit_subpop (IndicatorGID, UnitGID, SubpopGId) VALUES ('-I','-U','-S')");
    connection->Execute("INSERT INTO [CF_en] (CFGId, CFLabel1) VALUES ('-C','Context')");
    connection->Execute("INSERT INTO DATA (TimePeriodNId, IUSNId, AreaNId, SourceNId, Datavalue) VALUES (1,1,1,1,0.5)");
    EXPECT_EQ(Reader().Rows("SELECT A.AreaNId, I.IUSNId, C.CFNId, D.RowNId, D.Datavalue FROM Area_en A, "
                            "Indicator_Unit_Subpop I, CF_en C, Data D"),
              std::vector<std::string>{"1|1|1|1|0.5"});
    EXPECT_EQ(Reader().Number("SELECT count(*) FROM Indicator_Unit_Subpop WHERE DataExists = 0"), 1)
        << "a flag is never Null";
}

TEST_F(SchemaTest, SelectionsKeepCountingAfterTheyAreEmptied) {
    const auto connection = NewFile();
    schema::CreateUserSelections(*connection);
    const char* insert = "INSERT INTO _SelIUSNId (IUSNId, Indicator) VALUES (7, 'Population')";
    connection->Execute(insert);
    connection->Execute("DELETE * FROM _SelIUSNId");
    connection->Execute(insert);
    EXPECT_EQ(Reader().Rows("SELECT RowNId, Deleted, RecommendedSource FROM _SelIUSNId"),
              std::vector<std::string>{"2|0|0"});
    EXPECT_EQ(
        Reader().Number("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name LIKE '\\_Sel%' ESCAPE '\\'"),
        3);
}

TEST_F(SchemaTest, WorkingTablesTakeWhatTheirWritersInsert) {
    const auto connection = NewFile();
    schema::CreateInfoSel(*connection);
    connection->Execute(
        "INSERT INTO _MapData (TimePeriod, AreaID, AreaName, [Indicator], SubPop, DataValue, Unit, Source, "
        "Style,  BreakValue, [Label],[Color], AdvancedLabels, [Size], Original_DataValue) VALUES "
        "('2000','AFR','Africa','I','S','1','U','Q',0,0,'',0,'',0,'1')");
    connection->Execute("INSERT INTO _Indicator (IndicatorGId, [Indicator]) VALUES ('-I','Population')");
    EXPECT_EQ(Reader().Rows("SELECT _MapDataID, IndicatorNId FROM _MapData, _Indicator"),
              std::vector<std::string>{"1|1"});
}

TEST_F(SchemaTest, LanguageFileHasAColumnForEachLanguage) {
    const auto connection = NewFile();
    schema::CreateLanguageFile(*connection, {"English en", "French fr"});
    connection->Execute(
        "INSERT INTO Strings (VariableName, ModuleID, TessaroProduct, [English en], [French fr]) VALUES "
        "('Yes','shell','TS','Yes','Oui')");
    EXPECT_EQ(Reader().Rows("SELECT \"French fr\" FROM Strings"), std::vector<std::string>{"Oui"});
}

} // namespace tessaro
