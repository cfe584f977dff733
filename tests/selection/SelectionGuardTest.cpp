#include "view/SelectionGuard.h"

#include "selection/AutoSelect.h"
#include "selection/SelectionDatabase.h"
#include "session/Session.h"

namespace tessaro::test {
namespace {

using namespace selection;

class SelectionGuardTest : public SelectionDatabaseTest {};

TEST_F(SelectionGuardTest, NamesWhatIsMissing) {
    const struct {
        bool ius, periods, areas;
        const char* before;
        const char* inside;
        int stage;
    } cases[] = {{false, false, false, "016", "016", 0},
                 {false, true, true, "016", "016", 0},
                 {true, false, false, "023", "024", 1},
                 {true, false, true, "023", "024", 1},
                 {true, true, false, "024", "023", 2}};
    for (const auto& c : cases) {
        Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
        Run(QStringLiteral("DELETE * FROM _SelTimePeriod"));
        Run(QStringLiteral("DELETE * FROM _SelArea"));
        if (c.ius) ChooseIus(QStringLiteral("1"));
        if (c.periods) ChoosePeriods(QStringLiteral("1"));
        if (c.areas) ChooseAreas(QStringLiteral("1"));
        messages.clear();
        frame.calls.clear();
        CurrentStage = -1;
        EXPECT_FALSE(MayOpenDataView());
        EXPECT_FALSE(IsSelectionComplete());
        EXPECT_EQ(messages, (QStringList{QString::fromLatin1(c.before), QString::fromLatin1(c.inside)}));
        const QString move = QStringLiteral("stage %1").arg(c.stage);
        EXPECT_EQ(frame.calls, (QStringList{move, move}));
        frame.calls.clear();
        CurrentStage = c.stage;
        EXPECT_FALSE(MayOpenDataView());
        EXPECT_TRUE(frame.calls.isEmpty()) << "no move to the stage that is shown";
    }
}

TEST_F(SelectionGuardTest, PassesAFullSelectionAndListedIndicators) {
    ChooseIus(QStringLiteral("1"));
    ChoosePeriods(QStringLiteral("1"));
    ChooseAreas(QStringLiteral("1"));
    EXPECT_TRUE(MayOpenDataView());
    EXPECT_TRUE(IsSelectionComplete());
    Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
    EXPECT_FALSE(MayOpenDataView());
    frame.selectedIndicators = 1; // listed without a source
    EXPECT_TRUE(MayOpenDataView());
    SetDataExistsMode(0);
    EXPECT_FALSE(MayOpenDataView());
}

TEST_F(SelectionGuardTest, TheBoxesOfTheQuestion) {
    const auto boxes = [](Stage stage) {
        const AutoSelectOptions options = PrepareFor(stage);
        return QStringLiteral("%1=%2 %3=%4")
            .arg(options.first.captionKey)
            .arg(options.first.available)
            .arg(options.second.captionKey)
            .arg(options.second.available)
            .toStdString();
    };
    EXPECT_EQ(boxes(Stage::Indicators), "AutoUseSelTime=0 AutoUseSelAreas=0");
    EXPECT_EQ(boxes(Stage::Time), "AutoUseSelInd=0 AutoUseSelAreas=0");
    EXPECT_EQ(boxes(Stage::Areas), "AutoUseSelInd=0 AutoUseSelTime=0");
    ChoosePeriods(QStringLiteral("1"));
    ChooseAreas(QStringLiteral("1"));
    frame.selectedIndicators = 3;
    EXPECT_EQ(boxes(Stage::Indicators), "AutoUseSelTime=1 AutoUseSelAreas=1");
    EXPECT_EQ(boxes(Stage::Time), "AutoUseSelInd=1 AutoUseSelAreas=1");
    EXPECT_EQ(boxes(Stage::Areas), "AutoUseSelInd=1 AutoUseSelTime=1");
    SetDataExistsMode(2);
    EXPECT_EQ(boxes(Stage::Areas), "AutoUseSelInd=0 AutoUseSelTime=1");
}

TEST_F(SelectionGuardTest, AsksOnlyWhenThereIsSomethingToAsk) {
    int asked = 0;
    std::optional<OtherStages> answer = OtherStages{false, true};
    const AutoSelectQuestion ask = [&](Stage) {
        ++asked;
        return answer;
    };
    ShowAutoSelectForm = true;
    EXPECT_EQ(DecideOtherStages(Stage::Areas, ask), OtherStages{});
    EXPECT_EQ(asked, 0) << "nothing is chosen elsewhere";
    ChoosePeriods(QStringLiteral("1"));
    EXPECT_EQ(DecideOtherStages(Stage::Areas, ask), (OtherStages{false, true}));
    answer = std::nullopt;
    EXPECT_EQ(DecideOtherStages(Stage::Areas, ask), std::nullopt) << "cancelled";
    EXPECT_EQ(asked, 2);
    ShowAutoSelectForm = false;
    EXPECT_EQ(DecideOtherStages(Stage::Areas, ask), (OtherStages{false, true})) << "the tables decide";
    EXPECT_EQ(asked, 2);
    frame.selectedIndicators = 1;
    EXPECT_EQ(DecideOtherStages(Stage::Areas, ask), (OtherStages{true, true}));
    EXPECT_EQ(DecideOtherStages(Stage::Areas, ask, true), (OtherStages{false, true})) << "only the table counts";
}

} // namespace
} // namespace tessaro::test
