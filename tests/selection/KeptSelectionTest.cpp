#include "selection/KeptSelection.h"

#include "selection/SelectionDatabase.h"
#include "session/Session.h"

namespace tessaro::test {
namespace {

class KeptSelectionTest : public SelectionDatabaseTest {
  protected:
    void Choose() {
        ChooseIus(QStringLiteral("1,2"));
        Run(QStringLiteral("UPDATE _SelIUSNId SET Source = 'Census'"));
        ChoosePeriods(QStringLiteral("1,2"));
        ChooseAreas(QStringLiteral("2,7"));
    }
    QString Chosen() { return ChosenIus() + QLatin1Char(' ') + ChosenPeriods() + QLatin1Char(' ') + ChosenAreas(); }
};

TEST_F(KeptSelectionTest, KeepsWhatTheDatabaseHas) {
    struct Case {
        const char* name;
        const char* change; ///< of the database since the selection was made
        const char* left;
    };
    const Case cases[] = {
        {"nothing", "", "1/10,2/10 1,2 2,7"},
        {"another indicator under the number", "UPDATE _SelIUSNId SET IndicatorGId = 'X' WHERE IUSNId = 1",
         "2/10 1,2 2,7"},
        {"another subpopulation", "UPDATE _SelIUSNId SET SubpopGId = 'X'", " 1,2 2,7"},
        {"a source that isn't its", "UPDATE _SelIUSNId SET SourceNId = 11", "1/11 1,2 2,7"},
        {"another period under the number", "UPDATE _SelTimePeriod SET TimePeriod = '1890' WHERE TimePeriodNId = 1",
         "1/10,2/10 2 2,7"},
        {"a period that is gone", "UPDATE _SelTimePeriod SET TimePeriodNId = 99", "1/10,2/10  2,7"},
        {"another area under the number", "UPDATE _SelArea SET AreaID = 'AFR' WHERE AreaNId = 7", "1/10,2/10 1,2 2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        for (const char* table : {"_SelIUSNId", "_SelTimePeriod", "_SelArea"})
            Run(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
        Choose();
        if (*c.change != '\0') Run(QString::fromLatin1(c.change));
        selection::FitKeptSelection();
        EXPECT_EQ(Chosen(), QString::fromLatin1(c.left));
    }
}

TEST_F(KeptSelectionTest, SpeaksTheLanguageOfTheDatabase) {
    Choose();
    const QString row = QStringLiteral("SELECT [Indicator] & '|' & Unit & '|' & Subpop & '|' & Source & '|' & Deleted "
                                       "FROM _SelIUSNId WHERE IUSNId = 2");
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Indicator] = 'Bevölkerung', Unit = 'Anzahl', Subpop = 'Mädchen', "
                       "Source = 'Zählung', Deleted = True"));
    Run(QStringLiteral("UPDATE _SelArea SET AreaName = 'Indien'"));
    selection::FitKeptSelection();
    EXPECT_EQ(Column(row), QStringLiteral("Population|Number|Girls' [0-4]|Census|-1"));
    EXPECT_EQ(Column(QStringLiteral("SELECT AreaName FROM _SelArea ORDER BY AreaNId")),
              QStringLiteral("India,Quoted land"));
}

} // namespace
} // namespace tessaro::test
