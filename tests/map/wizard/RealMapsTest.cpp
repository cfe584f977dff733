#include "database/Database.h"
#include "map/classes/ClassesPage.h"
#include "map/wizard/MapWizardTest.h"
#include "support/TimeBound.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSpinBox>

#include <ctime>

namespace tessaro::test {

namespace {

/// Milliseconds that the processor worked on a task: the machine may do other things too.
class ProcessorTime final {
  public:
    [[nodiscard]] qint64 Milliseconds() const { return (std::clock() - begun_) * 1000 / CLOCKS_PER_SEC; }

  private:
    std::clock_t begun_ = std::clock();
};

/// The wizard on the maps and the database that are installed.
class RealMapsTest : public MapWizardTest {
  protected:
    void SetUp() override {
        StartInstallation();
        const QStringList databases = QDir(AppPath + QStringLiteral("/Data")).entryList({QStringLiteral("*.mdb")});
        ASSERT_FALSE(databases.isEmpty());
        ASSERT_TRUE(OpenDatabaseFile(AppPath + QStringLiteral("/Data/") + databases.front()));
    }
    /// The areas of an indicator's values, all periods.
    static void Select(const char* indicator) {
        SelectTimes();
        SelectIus(QStringLiteral("WHERE IUS.IndicatorGId = '%1'").arg(QLatin1String(indicator)));
        SelectAreas(QStringLiteral("WHERE AreaNId IN (SELECT AreaNId FROM Data WHERE IUSNId IN (SELECT IUSNId FROM "
                                   "_SelIUSNId))"));
    }
    void ShowAll(const char* name) {
        const std::string stem = name;
        Picture((stem + "-1").c_str());
        Click("CmdNext");
        Picture((stem + "-2").c_str());
        Click("CmdNext");
        Picture((stem + "-3").c_str());
    }
};

} // namespace

TEST_F(RealMapsTest, TheFirstMapIsThereAtOnce) {
    const struct {
        const char* name;
        const char* indicator;
        std::size_t least; ///< areas
        qint64 bound;      ///< milliseconds
    } cases[] = {{"world", "-LIFE_EXPECTANCY", 150, 500}, {"counties", "UNEMPLOYMENT", 3000, 1000}};
    for (const auto& [name, indicator, least, bound] : cases) {
        wizard_.reset();
        for (const char* table : {"_SelArea", "_SelTimePeriod", "_SelIUSNId"})
            Run(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
        Select(indicator);
        const ProcessorTime clock;
        Open();
        Map().grab(); // drawn
        const qint64 took = clock.Milliseconds();
        std::printf("first map of %s: %lld ms\n", name, static_cast<long long>(took));
        EXPECT_LE(took, TimeBound(bound)) << name;
        EXPECT_GE(wizard_->Theme().Areas().Rows().size(), least);
        EXPECT_EQ(Map().Layers().Count(), 1) << name;
        // The counties begin with the mainland; the tool for the full extent shows the others.
        const double width = Map().Extent().Width();
        Click("CmdToolBar_0");
        EXPECT_EQ(width<Map().Extent().Width() * 0.6, least> 1000) << name;
        // A change of a class to the map.
        ClassTable table = wizard_->Classes().Table();
        ASSERT_GE(table.looks.size(), 3U);
        table.looks[1].color = table.looks[2].color;
        const ProcessorTime change;
        wizard_->Classes().SetTable(table);
        Map().grab();
        std::printf("change of a class of %s: %lld ms\n", name, static_cast<long long>(change.Milliseconds()));
        EXPECT_LE(change.Milliseconds(), TimeBound(120)) << name;
        ShowAll(name);
    }
}

TEST_F(RealMapsTest, TotalsBecomeSizedPoints) {
    Select("-POP");
    Open();
    ASSERT_TRUE(Find<QWidget>("cmdAdvice")->isVisible());
    Picture("totals-1");
    Click("cmdAdvice");
    EXPECT_EQ(wizard_->Theme().Kind(), ThemeKind::Points);
    ShowAll("points");
}

} // namespace tessaro::test
