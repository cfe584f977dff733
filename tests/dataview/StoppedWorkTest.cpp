#include "controls/DataTable.h"
#include "dataview/DataOptionStrip.h"
#include "dataview/DataScreen.h"
#include "session/StatementWatch.h"

#include <QAbstractButton>

namespace tessaro::test {
namespace {

/// A frame in which the user asks for a stop whenever it looks.
class StoppingFrame : public FakeFrame {
  public:
    [[nodiscard]] bool IsStopAsked() override { return ++looks > 0; }
    int looks = 0;
};

/// A view of so many rows that its statements are asked about.
class StoppedWorkTest : public DataScreenTest {
  protected:
    void SetUp() override {
        FillData(10, 10, 10);
        for (int doubled = 0; doubled < 4; ++doubled)
            Run("INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, Datavalue) SELECT TimePeriodNId, IUSNId, "
                "AreaNId, SourceNId, Datavalue FROM Data");
        Run("CREATE TABLE TimePeriod (TimePeriodNId LONG, TimePeriod TEXT(30))");
        Run("INSERT INTO TimePeriod SELECT TimePeriodNId, TimePeriod FROM _SelTimePeriod");
        Show();
    }
    void TearDown() override { StatementWatch::Patience = patience; }
    /// Does some work that the user stops at once.
    template <class Work> void Stop(const Work& work) {
        StoppingFrame stopping;
        SetFrame(&stopping);
        StatementWatch::Patience = 0;
        work();
        StatementWatch::Patience = patience;
        SetFrame(&frame);
        EXPECT_GT(stopping.looks, 0);
        EXPECT_TRUE(messages.isEmpty()) << messages.join('|').toStdString();
    }

    const qint64 patience = StatementWatch::Patience;
};

TEST_F(StoppedWorkTest, StoppedFiltersLeaveThoseOfBefore) {
    const auto* filtered = form.findChild<QAbstractButton*>(QStringLiteral("chkFilters"));
    form.findChild<DataTable*>(QStringLiteral("DataGrid"))->selectRow(0);
    form.RemoveRowsFromDataGrid();
    const QString removed = DeletedRowNIds;
    ASSERT_FALSE(removed.isEmpty());
    Stop([&] { form.SetFilters({.MostRecentOn = true}); });
    EXPECT_FALSE(filtered->isChecked());
    EXPECT_EQ(DeletedRowNIds, removed);
    EXPECT_EQ(MostRecentClause, QString());
    EXPECT_GT(form.grid().ValueRows(), 0);
    form.SetFilters({.MostRecentOn = true});
    EXPECT_TRUE(filtered->isChecked());
    EXPECT_NE(MostRecentClause, QString());
}

TEST_F(StoppedWorkTest, StoppedStatisticsAreEmptyUntilTheNextTime) {
    const auto* stats = form.findChild<DataTable*>(QStringLiteral("DataStats"));
    Stop([&] { form.ShowThisDataOption(DataOptionStrip::Stats); });
    EXPECT_EQ(stats->model()->rowCount(), 0);
    form.Refresh();
    EXPECT_GT(stats->model()->rowCount(), 0);
}

} // namespace
} // namespace tessaro::test
