#include "exchange/ImportSession.h"
#include "formats/ValueTable.h"

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ImportTest : public ImportSession {
  protected:
    [[nodiscard]] std::unique_ptr<CheckedImport> Check(const QByteArray& bytes, ImportInto into = ImportInto::Copy) {
        const QString file = Write(bytes);
        return CheckImport(file, GuessDraft(file), Into(into));
    }
};

constexpr auto kMixed = "Year,Area,Indicator,Unit,Subgroup,Source,Value,Footnote\n"
                        "2000,Asia,Population,Number,Total,Census,3714,\n"                 // 2: the same
                        "2000,india,POPULATION,number,total,census,1056.60,\n"             // 3: the same
                        "2005,ASICHN,Population,Number,Total,Census,1305,\n"               // 4: changed
                        "2010,Inde,Population,Number,Total,Census,1230,Estimate\n"         // 5: new, name in French
                        "2010,China,Rainfall,mm,Total,World_Stations,812,Mean of \"12\"\n" // 6: new, all of it
                        "2010,China,Rainfall,mm,Total,World_Stations,813,\n"               // 7: double
                        "2010,Atlantis,Population,Number,Total,Census,1,\n"                // 8: unknown area
                        "1/5/2010,China,Population,Number,Total,Census,1,\n"               // 9: a day
                        "sometime,China,Population,Number,Total,Census,1,\n"               // 10
                        "2010,China,Population,Number,Total,Census,many,\n"                // 11
                        "2010,China,Population,Number,Total,Census,..,\n"                  // 12: empty
                        "2010,China,,Number,Total,Census,5,\n"                             // 13: no indicator
                        "2010,China,Population,Number,Total\n";                            // 14: ragged

TEST_F(ImportTest, TellsWhatWouldBecomeOfEachRow) {
    const auto checked = Check(kMixed);
    EXPECT_EQ(CountsOf(*checked), "new 2, same 2, changed 1, empty 1, refused 7");
    std::vector<std::pair<std::int64_t, Refusal>> refused;
    for (const RefusedValue& one : checked->refused)
        refused.emplace_back(one.row, one.why);
    using Pair = std::pair<std::int64_t, Refusal>;
    EXPECT_THAT(refused,
                ElementsAre(Pair{7, Refusal::Double}, Pair{8, Refusal::UnknownArea}, Pair{9, Refusal::DayForPeriod},
                            Pair{10, Refusal::BadPeriod}, Pair{11, Refusal::BadNumber}, Pair{13, Refusal::LacksName},
                            Pair{14, Refusal::RaggedRow}));
    ASSERT_EQ(checked->changed.size(), 1U);
    EXPECT_EQ(checked->changed[0].row, 4);
    EXPECT_EQ(checked->changed[0].what, "China; 2005; Population; Number; Total; Census");
    EXPECT_EQ(checked->changed[0].before + QLatin1Char('>') + checked->changed[0].now, "1304>1305");
    ASSERT_EQ(checked->unknownAreas.size(), 1U);
    EXPECT_EQ(checked->unknownAreas[0].text, "Atlantis");
    const ImportAdditions made = checked->Additions();
    EXPECT_EQ(made.indicators, QStringList{"Rainfall"});
    EXPECT_EQ(made.units, QStringList{"mm"});
    EXPECT_EQ(made.sources, QStringList{"World_Stations"});
    EXPECT_EQ(made.periods + made.subgroups + made.areas, QStringList());
    EXPECT_EQ(made.footnotes, 1);
    EXPECT_THAT(Out(), IsEmpty()) << "a check writes nothing";
}

TEST_F(ImportTest, WritesIntoACopyWithMarksAndLog) {
    const QByteArray before = Bytes(base_);
    std::vector<std::string> expected = Values(base_);
    const auto checked = Check(kMixed);
    const WrittenImport written = WriteImport(*checked);
    ASSERT_TRUE(written.made) << written.message.toStdString();
    EXPECT_EQ(Bytes(base_), before);
    EXPECT_EQ(Out(), QStringList{"New.mdb"});
    std::ranges::replace(expected, std::string("China|2005|Population|Number|Total|Census|1304|"),
                         std::string("China|2005|Population|Number|Total|Census|1305|"));
    expected.insert(expected.end(), {"India|2010|Population|Number|Total|Census|1230|Estimate",
                                     "China|2010|Rainfall|mm|Total|World_Stations|812|Mean of \"12\""});
    EXPECT_THAT(Values(Target()), testing::UnorderedElementsAreArray(expected));
    const PlainReader made(Target().toStdString());
    EXPECT_THAT(made.Rows("SELECT TimePeriod FROM TimePeriod WHERE DataExists = 0"), IsEmpty());
    EXPECT_THAT(made.Rows("SELECT Indicator FROM Indicator_fr"), Contains("Rainfall"));
    EXPECT_THAT(made.Rows("SELECT Region FROM Region"), ElementsAre("Asia", "World"));
    EXPECT_THAT(made.Rows("SELECT [Action] FROM Database_Log ORDER BY Databaseid DESC LIMIT 1"),
                ElementsAre("Import of Values.csv: 2 new values, 1 changed"));
    EXPECT_THAT(made.Rows("SELECT L1.SectorLabel1, L2.SectorLabel2 FROM Indicator_Sector L JOIN Indicator_en I ON "
                          "I.IndicatorGId = L.IndicatorGId JOIN Sector S ON S.SectorLabel2GId = L.SectorLabel2GId JOIN "
                          "SectorLabel1_en L1 ON L1.SectorLabel1GId = S.SectorLabel1GId JOIN SectorLabel2_en L2 ON "
                          "L2.SectorLabel2GId = S.SectorLabel2GId WHERE I.Indicator = 'Rainfall'"),
                ElementsAre("Imported data|Values"));
    EXPECT_EQ(
        made.Number("SELECT Count(*) FROM Data D WHERE NOT EXISTS (SELECT 1 FROM Indicator_Source S WHERE S.IUSNId "
                    "= D.IUSNId AND S.SourceNId = D.SourceNId)"),
        0);
    EXPECT_TRUE(OpenDatabaseFile(Target()));
    // What was written is the same when it is checked again.
    const QString file = Write(kMixed);
    ImportTarget again = Into(ImportInto::Copy);
    again.base = Target();
    EXPECT_EQ(CountsOf(*CheckImport(file, GuessDraft(file), again)), "new 0, same 5, changed 0, empty 1, refused 7");
}

TEST_F(ImportTest, MakesANewDatabaseWithItsOwnAreas) {
    const QString file = Write("Area ID,Area,2001,2002\nAFR,Africa,,\nAFRKEN,Kenya,1.5,2.5\nAFRTCD001,A place,3,4\n"
                               ",Nowhere in 50%5 particular,5,6\n");
    ImportDraft draft = GuessDraft(file);
    draft.makesAreas = true;
    draft.constants[At(Role::Indicator)] = QStringLiteral("It's 100%1 ours");
    const auto checked = CheckImport(file, draft, Into(ImportInto::Template));
    EXPECT_EQ(CountsOf(*checked), "new 6, same 0, changed 0, empty 2, refused 0");
    ASSERT_TRUE(WriteImport(*checked).made);
    const PlainReader made(Target().toStdString());
    EXPECT_THAT(made.Rows("SELECT AreaID, AreaName, AreaLevel, DataExists FROM Area_en ORDER BY AreaID"),
                ElementsAre("001|Nowhere in 50%5 particular|1|-1", "AFR|AFR|1|-1", "AFRKEN|Kenya|2|-1",
                            "AFRTCD|AFRTCD|2|-1", "AFRTCD001|A place|3|-1"));
    EXPECT_THAT(Values(Target()), Contains("Kenya|2002|It's 100%1 ours|Number|Total|Values|2.5|"));
    EXPECT_TRUE(OpenDatabaseFile(Target()));
    EXPECT_TRUE(LanguageInDatabase);
}

TEST_F(ImportTest, MakesANewDatabaseWithTheListsOfAnother) {
    const auto checked = Check(kMixed, ImportInto::Lists);
    EXPECT_EQ(CountsOf(*checked), "new 5, same 0, changed 0, empty 1, refused 7");
    ASSERT_TRUE(WriteImport(*checked).made);
    EXPECT_EQ(Values(Target()).size(), 5U);
    EXPECT_EQ(PlainReader(Target().toStdString()).Number("SELECT Count(*) FROM Area_fr"), 5);
}

TEST_F(ImportTest, ChangesTheDatabaseItselfAndTakesItBack) {
    const std::vector<std::string> before = Values(base_);
    EXPECT_FALSE(CanUndoImport(base_));
    ASSERT_TRUE(WriteImport(*Check(kMixed, ImportInto::Itself)).made);
    const std::vector<std::string> after = Values(base_);
    EXPECT_EQ(after.size(), before.size() + 2);
    EXPECT_TRUE(OpenDatabaseFile(base_));
    EXPECT_TRUE(CanUndoImport(base_));
    // A second import: the state between the two comes back, and nothing beyond.
    ASSERT_TRUE(WriteImport(*Check("Year,Area,Indicator,Unit,Subgroup,Source,Value\n2010,Asia,Population,Number,Total,"
                                   "Census,4000\n",
                                   ImportInto::Itself))
                    .made);
    ASSERT_TRUE(UndoImport(base_));
    EXPECT_EQ(Values(base_), after);
    EXPECT_FALSE(CanUndoImport(base_));
    EXPECT_FALSE(UndoImport(base_));
    EXPECT_TRUE(OpenDatabaseFile(base_));
}

TEST_F(ImportTest, KeepsChoicesOfAreas) {
    const QString file =
        Write("Year,Area,Indicator,Unit,Subgroup,Source,Value\n2010,Middle Kingdom,Population,Number,Total,"
              "Census,5\n2010,World,Population,Number,Total,Census,6\n2010,New Asia,Population,Number,"
              "Total,Census,7\n");
    ImportDraft draft = GuessDraft(file);
    draft.areas = {{QStringLiteral("middle kingdom"), QStringLiteral("ASICHN")}, {QStringLiteral("World"), {}}};
    draft.makesAreas = true;
    draft.parentArea = QStringLiteral("ASI");
    const auto checked = CheckImport(file, draft, Into(ImportInto::Copy));
    EXPECT_EQ(CountsOf(*checked), "new 2, same 0, changed 0, empty 0, refused 1");
    EXPECT_EQ(checked->refused.front().why, Refusal::AreaLeftOut);
    ASSERT_TRUE(WriteImport(*checked).made);
    EXPECT_THAT(
        PlainReader(Target().toStdString()).Rows("SELECT AreaID, AreaLevel FROM Area_fr WHERE AreaName = 'New Asia'"),
        ElementsAre("ASI001|2"));
    draft.parentArea = QStringLiteral("XXX");
    EXPECT_THROW(static_cast<void>(CheckImport(file, draft, Into(ImportInto::Copy))), ReadError);
}

// The sheet that a calculation ends with: its names stand above the heads.
TEST_F(ImportTest, ReadsTheProgramsOwnDataEntrySheet) {
    const QString file =
        Write("Data entry,,,,,\n,,,,,\nSector,Society,,,,\nClass,Schools,,,,\nIndicator,Literacy,,,,\n"
              "Unit,Percent,,,,\nTime,Area ID,Area name,Data value,Subgroup,Source\n2010,ASIIND,India,70,"
              "Total,Census\n2000,ASIIND,India,61,Total,Census\n2000,ASICHN,China,90.9,Total,Census\n");
    const ImportDraft draft = GuessDraft(file);
    EXPECT_EQ(draft.sector + QLatin1Char('/') + draft.indicatorClass, "Society/Schools");
    EXPECT_EQ(CountsOf(*CheckImport(file, draft, Into(ImportInto::Copy))),
              "new 1, same 2, changed 0, empty 0, refused 0");
}

// What the program writes for others it reads back as the same values.
TEST_F(ImportTest, ReadsBackWhatIsExported) {
    const std::vector<std::string> values =
        PlainReader(base_.toStdString())
            .Rows("SELECT T.TimePeriod, A.AreaID, A.AreaName, I.Indicator, U.Unit, "
                  "P.Subpop, S.Source, D.Datavalue FROM Data D JOIN Area_en A ON "
                  "A.AreaNId = D.AreaNId JOIN TimePeriod T ON T.TimePeriodNId = "
                  "D.TimePeriodNId JOIN Indicator_Unit_Subpop C ON C.IUSNId = D.IUSNId "
                  "JOIN Indicator_en I ON I.IndicatorGId = C.IndicatorGId JOIN Unit_en "
                  "U ON U.UnitGId = C.UnitGId JOIN Subpop_en P ON P.SubpopGId = "
                  "C.SubpopGId JOIN Source_en S ON S.SourceNId = D.SourceNId");
    const ValueTable table{
        static_cast<int>(values.size()), [&](int row) -> std::optional<ValueRow> {
            const QStringList f = QString::fromStdString(values[static_cast<std::size_t>(row)]).split(QLatin1Char('|'));
            return ValueRow{f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7], {}};
        }};
    using Save = bool (*)(const QString&, const ValueTable&);
    const std::pair<const char*, Save> forms[] = {{"long.csv", SaveLongCsv},
                                                  {"wide.csv", SaveWideCsv},
                                                  {"sdmx.csv", SaveSdmxCsv},
                                                  {"cube.json", SaveJsonStat},
                                                  {"cube.px", SavePx}};
    for (const auto& [name, save] : forms) {
        const QString file = Folder() + QLatin1Char('/') + QLatin1String(name);
        ASSERT_TRUE(save(file, table)) << name;
        const ImportDraft draft = GuessDraft(file);
        EXPECT_EQ(ProblemOf(draft), QString()) << name;
        const auto checked = CheckImport(file, draft, Into(ImportInto::Copy));
        EXPECT_EQ(checked->counts.same, 17) << name << ": " << CountsOf(*checked);
        EXPECT_EQ(checked->counts.fresh + checked->counts.changed + checked->counts.refused, 0) << name;
    }
}

// More rows than go over at once, against counts by hand.
TEST_F(ImportTest, WritesManyRows) {
    QByteArray bytes("Year;Area;Indicator;Unit;Subgroup;Source;Value\n");
    const char* areas[] = {"Asia", "India", "China", "Europe"};
    for (int indicator = 0; indicator < 500; ++indicator)
        for (int year = 1900; year < 2020; ++year)
            for (const char* area : areas)
                bytes += QByteArray::number(year) + ';' + area + ";Indicator " + QByteArray::number(indicator) +
                         ";Number;Total;Office_Figures;" + QByteArray::number(indicator) + ',' +
                         QByteArray::number(year) + '\n';
    const auto checked = Check(bytes);
    EXPECT_EQ(CountsOf(*checked), "new 240000, same 0, changed 0, empty 0, refused 0");
    ASSERT_TRUE(WriteImport(*checked).made);
    const PlainReader made(Target().toStdString());
    EXPECT_EQ(made.Number("SELECT Count(*) FROM Data"), 240'017);
    EXPECT_EQ(made.Number("SELECT Count(*) FROM sqlite_master WHERE type = 'index' AND tbl_name = 'Data'"), 4);
    EXPECT_EQ(made.Number("SELECT Count(*) FROM Data D JOIN Area_en A ON A.AreaNId = D.AreaNId JOIN TimePeriod T ON "
                          "T.TimePeriodNId = D.TimePeriodNId WHERE A.AreaName = 'India' AND T.TimePeriod = '1950' AND "
                          "D.Datavalue LIKE '%.1950'"),
              500);
}

} // namespace
} // namespace tessaro::test
