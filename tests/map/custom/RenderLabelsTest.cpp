#include "map/custom/RenderLabels.h"

#include "map/custom/CustomTest.h"
#include "map/custom/LabelFields.h"

namespace tessaro::test {

namespace {

class RenderLabelsTest : public CustomTest {
  protected:
    void SetUp() override {
        CustomTest::SetUp();
        SysNumFormat = false;
        PutValues(std::vector<QString>{QStringLiteral("1.5"), QStringLiteral("20")}); // of A0001 and A0002, in 2000
        Execute(QStringLiteral("UPDATE _MapData SET SubPop = 'Total', Unit = 'Per ''cent'''"));
        const QString file = MakeLayer(QStringLiteral("Areas"), SHPT_POLYGON, {"ID_", "Name1_"},
                                       {{"a0002", "Own two"}, {"A0001", "Own one"}, {"none", "Own none"}});
        AddTo(map_, file, kDataTag);
    }
    /// The texts of a layer's labels by field: "20 | 1.5 | ".
    std::string Texts(int layer, const QString& field, const QString& formula = {}) {
        map_.At(layer).labels.field = field;
        RenderLabels(map_, formula);
        QStringList texts;
        for (const QString& text : map_.At(layer).labels.texts)
            texts << text;
        return texts.join(QStringLiteral(" | ")).toStdString();
    }

    LayerStack map_;
};

} // namespace

TEST_F(RenderLabelsTest, ShowsTheFieldsOfTheAreasRows) {
    const struct {
        const char* field;
        const char* texts;
    } cases[] = {{"Comm_Area Id", "A0002 | A0001 | "},
                 {"Comm_Area Name", "Area 0002 | Area 0001 | "},
                 {"Comm_Datavalue", "20 | 1.5 | "},
                 {"Subpop", "Total | Total | "},
                 {"Comm_Unit", "Per 'cent' | Per 'cent' | "},
                 {"Comm_Time", "2000 | 2000 | "},
                 {"Advanced Labels", " |  | "},
                 {"", ""},
                 {"no field", ""}};
    for (const auto& [field, texts] : cases)
        EXPECT_EQ(Texts(0, QLatin1String(field)), texts) << field;
    EXPECT_EQ(Texts(0, QStringLiteral("Advanced Labels"),
                    FormulaOf({QStringLiteral("datavalue"), QStringLiteral("Areaname")})),
              "20 Area 0002 | 1.5 Area 0001 | ");
    EXPECT_EQ(Texts(0, QStringLiteral("Advanced Labels")), "20 Area 0002 | 1.5 Area 0001 | ")
        << "no formula changes nothing";
    Execute(QStringLiteral("UPDATE _MapData SET DataValue = Null, AreaName = Null WHERE AreaID = 'A0002'"));
    EXPECT_EQ(Texts(0, QStringLiteral("Comm_Datavalue")), " | 1.5 | ");
    EXPECT_EQ(Texts(0, QStringLiteral("Comm_Area Name")), " | Area 0001 | ");
}

TEST_F(RenderLabelsTest, TellsYearsThatDiffer) {
    Execute(QStringLiteral("UPDATE _MapData SET TimePeriod = '1998' WHERE AreaID = 'A0002'"));
    EXPECT_EQ(Texts(0, QStringLiteral("Comm_Datavalue")), "20 (1998) | 1.5 (2000) | ");
    EXPECT_EQ(Texts(0, QStringLiteral("Comm_Area Name")), "Area 0002 | Area 0001 | ");
    // A year of a row without value doesn't count.
    Execute(QStringLiteral("UPDATE _MapData SET DataValue = Null WHERE AreaID = 'A0002'"));
    EXPECT_EQ(Texts(0, QStringLiteral("Comm_Datavalue")), " | 1.5 | ");
}

TEST_F(RenderLabelsTest, OtherLayersShowTheirOwnTable) {
    Records areas = Select(QStringLiteral("SELECT TOP 1 AreaID, AreaName FROM Area"));
    const QString id = areas.Text(std::size_t{0});
    const QString name = areas.Text(std::size_t{1});
    const std::string own = id.toStdString();
    AddTo(map_,
          MakeLayer(QStringLiteral("Cities"), SHPT_POINT, {"ID_", "Name1_", "Name"},
                    {{own, "City", "-"}, {"?", "Čapek", "-"}}),
          "Customize - x");
    AddTo(map_, MakeLayer(QStringLiteral("Old"), SHPT_POINT, {"AREAID", "Name1_", "NAME"}, {{own, "-", "Old name"}}),
          "Customize - x");
    AddTo(map_, MakeLayer(QStringLiteral("Bare"), SHPT_POINT, {"x"}, {{"1"}}), "Customize - x");
    EXPECT_EQ(Texts(1, QStringLiteral("Comm_Area Id")), own + " | ?");
    EXPECT_EQ(Texts(1, QStringLiteral("Comm_Area Name")), "City | Čapek");
    EXPECT_EQ(Texts(2, QStringLiteral("Comm_Area Id")), own);
    EXPECT_EQ(Texts(2, QStringLiteral("Comm_Area Name")), "Old name");
    EXPECT_EQ(Texts(3, QStringLiteral("Comm_Area Name")), "");
    for (const char* field : {"Comm_Datavalue", "Subpop", "Comm_Unit", "Comm_Time", "Advanced Labels"})
        EXPECT_EQ(map_.At(1).labels.texts.empty() || Texts(1, QLatin1String(field)).find(own) == std::string::npos,
                  true)
            << field;
    const QString area = QStringLiteral("Areaname");
    const QString key = QStringLiteral("areaid");
    const std::pair<QStringList, QString> formulas[] = {
        {{key, QStringLiteral("unit"), area}, id + QLatin1Char(' ') + name},
        {{area, key}, name + QLatin1Char(' ') + id},
        {{key}, id},
        {{QStringLiteral("unit"), area}, name},
        {{QStringLiteral("unit")}, QString()}};
    for (const auto& [keys, text] : formulas)
        EXPECT_EQ(Texts(1, QStringLiteral("Advanced Labels"), FormulaOf(keys)), text.toStdString() + " | ");
}

TEST_F(RenderLabelsTest, LabelsThatAreOffKeepTheirField) {
    map_.At(0).labels.on = false;
    EXPECT_EQ(Texts(0, QStringLiteral("Comm_Area Name")), "");
    map_.At(0).labels.on = true;
    EXPECT_EQ(Texts(0, map_.At(0).labels.field), "Area 0002 | Area 0001 | ");
}

TEST_F(RenderLabelsTest, FormulasAreReadAndWritten) {
    const QStringList keys{QStringLiteral("timeperiod"), QStringLiteral("areaid")};
    EXPECT_EQ(FormulaOf(keys), QStringLiteral("Trim(timeperiod)+' '+Trim(areaid)+' '"));
    EXPECT_EQ(FormulaOf({}), QString());
    const std::pair<const char*, QStringList> cases[] = {
        {"Trim(timeperiod)+' '+Trim(areaid)+' '", keys},
        {"TRIM(TimePeriod) + ' ' + trim(AREAID)", keys},
        {"Trim(areaid)+' '+Trim(areaid)+' '", {QStringLiteral("areaid")}},
        {"Trim(source)+' '+(SELECT 1)", {}},
        {"", {}}};
    for (const auto& [formula, read] : cases)
        EXPECT_EQ(KeysOfFormula(QLatin1String(formula)), read) << formula;
    EXPECT_TRUE(ApplyFormula(QStringLiteral("'x', DataValue = '9'"))) << "nothing of it is known";
    EXPECT_EQ(Rows("SELECT DataValue, AdvancedLabels FROM _MapData ORDER BY AreaID"), "1.5| 20|");
    EXPECT_TRUE(ApplyFormula(FormulaOf(keys)));
    EXPECT_EQ(Rows("SELECT AdvancedLabels FROM _MapData WHERE AreaID = 'A0001'"), "2000 A0001");
    EXPECT_EQ(FieldsOffered(true, {}).size(), 7);
    EXPECT_EQ(FieldsOffered(false, {}).size(), 2);
    EXPECT_EQ(FieldsOffered(false, QStringLiteral("Advanced Labels")).size(), 3);
}

} // namespace tessaro::test
