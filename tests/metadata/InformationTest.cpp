#include "metadata/Information.h"

#include "selection/SelectionDatabase.h"
#include "session/Session.h"

namespace tessaro::test {
namespace {

class InformationTest : public SelectionDatabaseTest {
  protected:
    void SetUp() override {
        Run(QStringLiteral("UPDATE [Indicator] SET Info = 'About people' WHERE IndicatorGId = '-I1'"));
        Run(QStringLiteral("UPDATE [Indicator] SET Info = 'null' WHERE IndicatorGId = '-I2'"));
        Run(QStringLiteral("UPDATE [Indicator] SET Info = '  ' WHERE IndicatorGId = 'L3'"));
        Run(QStringLiteral("UPDATE Source SET Info = 'A <b>census</b>' WHERE SourceNId = 10"));
        Run(QStringLiteral("UPDATE Theme SET Info = 'Lives' WHERE ThemeGId = '-T''1'"));
        Run(QStringLiteral("UPDATE GoalLabel3 SET Info = 'Measured' WHERE GoalLabel3GId = '-G1a1'"));
        Run(QStringLiteral("UPDATE ConventionLabel3 SET Info = 'Text' WHERE ConventionLabel3GId = '-V1a1'"));
        Run(QStringLiteral("UPDATE CF SET Info = 'Wanted' WHERE CFGId = '-C2'"));
    }
    static std::string Text(const char* id, const char* code, const char* form = "frmIndicators", bool gid = true) {
        return metadata::InformationOf(QString::fromUtf8(id), QLatin1String(code), QLatin1String(form), gid)
            .value_or(QStringLiteral("(none)"))
            .toStdString();
    }
};

TEST_F(InformationTest, ReadsTheTextOfEachKind) {
    const struct {
        const char *id, *code, *form;
        bool idIsGId;
        const char* text;
    } cases[] = {
        {"-I9", "IND", "frmIndicators", true, "(none)"},
        {"-I2", "IND", "frmIndicators", true, "(none)"},
        {"L3", "IND", "frmIndicators", true, "(none)"},
        {"-I4", "IND", "frmIndicators", true, "(none)"},
        {"-I1", "NOTHING", "frmIndicators", true, "(none)"},
        {"' OR '1'='1", "THEMES", "frmIndicators", true, "(none)"},
        {"-I1", "IND", "frmIndicators", true, "About people"},
        {"2", "IND", "frmData", false, "About people"},
        {"-I1", "IND", "FRMDATA", true, "About people"},
        {"-G1a1", "GOALS", "frmIndicators", true, "Measured"},
        {"-C2", "CF", "frmIndicators", true, "Wanted"},
        {"-T'1", "THEMES", "frmIndicators", true, "Lives"},
        {"10", "SOURCES", "frmIndicators", true, "A <b>census</b>"},
        {"-V1a1", "RIGHTS", "frmIndicators", true, "Text"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Text(c.id, c.code, c.form, c.idIsGId), c.text) << c.code << " " << c.id;
}

TEST_F(InformationTest, ListsOnlyWhatHasInformation) {
    const struct {
        const char *code, *gid, *name;
    } cases[] = {{"IND", "-I1", "Population"},        {"GOALS", "-G1a1", "Measure 1"}, {"CF", "-C2", "Demand"},
                 {"THEMES", "-T'1", "Women's lives"}, {"RIGHTS", "-V1a1", "Article"},  {"SOURCES", "-SR1", "Census"}};
    for (const auto& c : cases) {
        const auto items = metadata::InformationList(QLatin1String(c.code));
        ASSERT_EQ(items.size(), 1U) << c.code;
        EXPECT_EQ(items.front().gid, QString::fromUtf8(c.gid)) << c.code;
        EXPECT_EQ(items.front().name, QString::fromUtf8(c.name)) << c.code;
        EXPECT_FALSE(metadata::InformationText(QLatin1String(c.code), items.front().gid).isEmpty()) << c.code;
    }
    EXPECT_TRUE(metadata::InformationList(QStringLiteral("AREA")).empty());
}

} // namespace
} // namespace tessaro::test
