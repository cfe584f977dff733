#include "selection/SelectionDatabase.h"

#include "database/Schema.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/DataChanges.h"

namespace tessaro::test {

namespace {

/// Rows as "table|columns|values|values…".
const char* const Rows[] = {
    "Indicator|IndicatorGId, [Indicator]|'-I1','Population'|'-I2','Children''s \"school\" [rate]'|'L3','Колодцы'|"
    "'-I4','No source'",
    "Unit|UnitGId, Unit|'-U1','Number'|'U2','Per cent'",
    "Subpop|SubpopGId, Subpop|'-S1','Total'|'-S2','Girls'' [0-4]'",
    "Indicator_Unit_Subpop|IUSNId, IndicatorGId, UnitGId, SubpopGId, DataExists|1,'-I1','-U1','-S1',True|"
    "2,'-I1','-U1','-S2',True|3,'-I2','U2','-S1',True|4,'L3','-U1','-S1',False|5,'-I4','-U1','-S1',True",
    "SectorLabel1|SectorLabel1GId, SectorLabel1|'-A','Economy'|'-B','Society'",
    "SectorLabel2|SectorLabel2GId, SectorLabel2|'-A1','Money'|'-B1','People'|'B2','Water'",
    "Sector|SectorLabel1GId, SectorLabel2GId, DataExists|'-A','-A1',True|'-A','-B1',True|'-B','-B1',True|"
    "'-B','B2',False",
    "Indicator_Sector|IndicatorGId, SectorLabel2GId|'-I1','-B1'|'-I2','-B1'|'L3','B2'|'-I4','-A1'",
    "GoalLabel1|GoalLabel1GId, GoalLabel1|'-G1','Goal 1'",
    "GoalLabel2|GoalLabel2GId, GoalLabel2|'-G1a','Target a'",
    "GoalLabel3|GoalLabel3GId, GoalLabel3|'-G1a1','Measure 1'|'-G1a2','Measure 2'",
    "Goal|GoalLabel1GId, GoalLabel2GId, GoalLabel3GId, DataExists|'-G1','-G1a','-G1a1',True|'-G1','-G1a','-G1a2',False",
    "Indicator_Goal|IUSNId, GoalLabel3GId|1,'-G1a1'|4,'-G1a2'",
    "CF|CFGId, CFNId, CFLabel1, DataExists|'-C2',1,'Demand',True|'-C1',2,'Supply',False",
    "Indicator_CF|IUSNId, CFGId|3,'-C2'",
    "Theme|ThemeGId, ThemeLabel1, DataExists|'-T''1','Women''s lives',True",
    "Indicator_Theme|IUSNId, ThemeGId|3,'-T''1'",
    "Region|RegionGId, RegionNId, [Region]|'-R1',1,'Asia'|'R2',2,'Nowhere'",
    "Source|SourceGId, SourceNId, RegionNId, Source, DataExists|'-SR1',10,1,'Census',True|"
    "'SR2',11,1,'Survey \"x\"',True",
    "Indicator_Source|IUSNId, SourceNId, RecommendedSource|1,10,True|1,11,False|2,10,True|3,11,True|4,10,True",
    "InstitutionLabel1|InstitutionLabel1GId, InstitutionLabel1|'-N1','Ministry'",
    "InstitutionLabel2|InstitutionLabel2GId, InstitutionLabel2|'-N1a','Office'",
    "Institution|InstitutionLabel1GId, InstitutionLabel2GId, DataExists|'-N1','-N1a',True",
    "Indicator_Institution|IUSNId, InstitutionLabel2GId|1,'-N1a'",
    "ConventionLabel1|ConventionLabel1GId, ConventionLabel1|'-V1','Convention'",
    "ConventionLabel2|ConventionLabel2GId, ConventionLabel2|'-V1a','Part'",
    "ConventionLabel3|ConventionLabel3GId, ConventionLabel3|'-V1a1','Article'",
    "Convention|ConventionLabel1GId, ConventionLabel2GId, ConventionLabel3GId, DataExists|'-V1','-V1a','-V1a1',True",
    "Indicator_Convention|IUSNId, ConventionLabel3GId|2,'-V1a1'",
    "TimePeriod|TimePeriodNId, TimePeriod, DataExists|1,'1990',True|2,'1995',True|3,'2000',True|4,'2005',False",
    "Area|AreaNId, AreaGId, AreaID, AreaName, AreaLevel, DataExists|1,'-a1','ASI','Asia',1,True|"
    "2,'-a2','ASIIND','India',2,True|3,'a3','ASICIV','Côte d''Ivoire',2,True|4,'-a4','ASIINDDEL','دلهي',3,True|"
    "5,'-a5','EUR','Europe',1,False|6,'-a6','ASIXX','Odd [length]',2,False|7,'-a7','O''B','Quoted land',1,True|"
    "8,'-a8','O''BABC','Quoted province',2,True",
    "Data|TimePeriodNId, AreaNId, IUSNId, SourceNId, Datavalue|1,2,1,10,'1'|2,2,1,11,'2'|3,3,1,10,'3'|1,2,2,10,'4'|"
    "1,1,2,10,'5'|3,4,3,11,'6'|2,8,5,10,'7'",
};

} // namespace

SelectionDatabaseTest::SelectionDatabaseTest() {
    const QString path = Folder() + QStringLiteral("/work.mdb");
    jet::Database::Create(path.toStdString(), DatabasePassword());
    Connection = CreateTheConnection(path);
    schema::CreateUserSelections(*Connection);
    Connection->Begin();
    for (const schema::TableDefinition& table : schema::DataTables())
        Run(QStringLiteral("CREATE TABLE [%1] (%2)")
                .arg(QString::fromUtf8(table.name.data(), static_cast<qsizetype>(table.name.size())),
                     QString::fromUtf8(table.columns.data(), static_cast<qsizetype>(table.columns.size()))));
    for (const char* const row : Rows) {
        const QStringList parts = QString::fromUtf8(row).split(QLatin1Char('|'));
        for (const QString& values : parts.mid(2))
            Run(QStringLiteral("INSERT INTO [") + parts[0] + QStringLiteral("] (") + parts[1] +
                QStringLiteral(") VALUES (") + values + QLatin1Char(')'));
    }
    Connection->Commit();
    SetDataExistsMode(1);
    GlobalLocalFilter = 2;
    IndicatorSelectBy = 1;
    ShowAutoSelectForm = false;
    for (auto& view : IndicatorViews)
        view.wanted = true;
    SelectionChanged = false;
}

void SelectionDatabaseTest::Run(const QString& sql) {
    ChangeData(sql);
}

QString SelectionDatabaseTest::Column(const QString& sql) {
    return Select(sql).Joined();
}

QString SelectionDatabaseTest::ChosenIus() {
    return Column(QStringLiteral("SELECT IUSNId & '/' & SourceNId FROM _SelIUSNId ORDER BY IUSNId, SourceNId"));
}

QString SelectionDatabaseTest::ChosenPeriods() {
    return Column(QStringLiteral("SELECT TimePeriodNId FROM _SelTimePeriod ORDER BY TimePeriodNId"));
}

QString SelectionDatabaseTest::ChosenAreas() {
    return Column(QStringLiteral("SELECT AreaNId FROM _SelArea ORDER BY AreaNId"));
}

void SelectionDatabaseTest::ChooseIus(const QString& idList) {
    Run(QStringLiteral(
            "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, UnitGId, SubpopGId, [Indicator], Unit, Subpop, "
            "SourceNId) SELECT IUS.IUSNId, IUS.IndicatorGId, IUS.UnitGId, IUS.SubpopGId, I.[Indicator], "
            "U.Unit, SP.Subpop, 10 FROM (Unit AS U INNER JOIN (Subpop AS SP INNER JOIN ([Indicator] AS I INNER "
            "JOIN Indicator_Unit_Subpop AS IUS ON I.IndicatorGId = IUS.IndicatorGId) ON SP.SubpopGId = "
            "IUS.SubpopGId) ON U.UnitGId = IUS.UnitGId) WHERE IUS.IUSNId IN (") +
        idList + QLatin1Char(')'));
}

void SelectionDatabaseTest::ChoosePeriods(const QString& idList) {
    Run(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM "
                       "TimePeriod WHERE TimePeriodNId IN (") +
        idList + QLatin1Char(')'));
}

void SelectionDatabaseTest::ChooseAreas(const QString& idList) {
    Run(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT AreaGId, "
                       "AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area WHERE AreaNId IN (") +
        idList + QLatin1Char(')'));
}

void SelectionDatabaseTest::SetDataExistsMode(long mode) {
    DataExistsMode = mode;
    DataExistsCriterion = mode == 0   ? QStringLiteral("DataExists = True ")
                          : mode == 2 ? QStringLiteral("DataExists = False ")
                                      : QString();
}

std::string Keys(const std::vector<KeyedItem>& items) {
    QStringList keys;
    for (const KeyedItem& item : items)
        keys << item.key;
    return keys.join(QLatin1Char(' ')).toStdString();
}

} // namespace tessaro::test
