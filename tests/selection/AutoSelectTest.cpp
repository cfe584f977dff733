#include "selection/AutoSelect.h"

#include "selection/SelectionDatabase.h"
#include "session/Session.h"

namespace tessaro::test {
namespace {

using namespace selection;

class AutoSelectTest : public SelectionDatabaseTest {};

TEST_F(AutoSelectTest, TheBoxesOfTheQuestion) {
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

TEST_F(AutoSelectTest, AsksOnlyWhenThereIsSomethingToAsk) {
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
