#include "metadata/Details.h"

#include "metadata/frmShowDetails.h"
#include "selection/SelectionDatabase.h"

#include <QLabel>

namespace tessaro::test {
namespace {

class DetailsTest : public SelectionDatabaseTest {};

TEST_F(DetailsTest, TellsWhereIndicatorsStand) {
    Run(QStringLiteral("INSERT INTO Indicator_Sector (IndicatorGId, SectorLabel2GId) VALUES ('-I1', '-A1')"));
    EXPECT_TRUE(metadata::DetailsOfIndicators({}, true).empty());
    const auto byCombination = metadata::DetailsOfIndicators(QStringLiteral("2,3"), true);
    ASSERT_EQ(byCombination.size(), 2U);
    EXPECT_EQ(byCombination[1].indicator, QStringLiteral("Population"));
    QStringList places;
    for (qsizetype i = 0; i < byCombination[1].sectors.size(); ++i)
        places << byCombination[1].sectors[i] + QLatin1Char('/') + byCombination[1].classes[i];
    places.sort();
    EXPECT_EQ(places.join(QLatin1Char(' ')), QStringLiteral("Economy/Money Economy/People Society/People"));
    const auto one = metadata::DetailsOfIndicator(QStringLiteral("L3"));
    ASSERT_EQ(one.size(), 1U) << "by its identifier, whatever the lists hold";
    EXPECT_EQ(one[0].classes, QStringList{QStringLiteral("Water")});
    EXPECT_TRUE(metadata::DetailsOfIndicator(QStringLiteral("it's nowhere")).empty());
    const auto byIndicator = metadata::DetailsOfIndicators(QStringLiteral("'L3'"), false);
    ASSERT_EQ(byIndicator.size(), 1U);
    EXPECT_EQ(byIndicator[0].classes, QStringList{QStringLiteral("Water")});
}

TEST_F(DetailsTest, TellsWhereAnAreaLies) {
    const auto chain = [](const char* id) {
        QStringList names;
        for (const metadata::AreaLine& area : metadata::AreaChain(QString::fromUtf8(id)))
            names << area.areaId + QLatin1Char('=') + area.name;
        return names.join(QLatin1Char(' '));
    };
    Run(QStringLiteral("INSERT INTO Area (AreaNId, AreaGId, AreaID, AreaName, AreaLevel) VALUES (20, 'x', 'XASIND', "
                       "'Elsewhere', 2)"));
    EXPECT_EQ(chain(""), QString());
    EXPECT_EQ(chain("ZZZ"), QString());
    EXPECT_EQ(chain("ASI"), QStringLiteral("ASI=Asia"));
    EXPECT_EQ(chain("ASIINDDEL"), QStringLiteral("ASI=Asia ASIIND=India ASIINDDEL=دلهي"));
    EXPECT_EQ(chain("O'BABC"), QStringLiteral("O'B=Quoted land O'BABC=Quoted province"));
    EXPECT_EQ(metadata::DataRowsOfPeriod(QStringLiteral("1")), 3);
    EXPECT_EQ(metadata::DataRowsOfPeriod(QStringLiteral("4")), 0);
}

TEST_F(DetailsTest, AnIdLongerThanItsColumnIsToldInsteadOfLookedUp) {
    const QString longId(9000000, QLatin1Char('A'));
    EXPECT_TRUE(metadata::AreaChain(longId).empty());
    frmShowDetails form;
    form.ShowAreaDetails(longId);
    EXPECT_LT(form.findChild<QLabel*>(QStringLiteral("lblAreaNames"))->text().size(), 500);
    EXPECT_LT(metadata::AreaDetailsSql(longId.left(255)).size(), 40000) << "the deepest that the column can hold";
}

} // namespace
} // namespace tessaro::test
