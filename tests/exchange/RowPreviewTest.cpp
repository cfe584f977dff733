#include "exchange/RowPreview.h"

#include "exchange/ImportSession.h"
#include "exchange/OpenSource.h"
#include "session/Strings.h"

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::ElementsAre;

using RowPreviewTest = ImportSession;

std::vector<std::string> Shown(const std::vector<PreviewedValue>& values) {
    std::vector<std::string> lines;
    for (const PreviewedValue& value : values) {
        QStringList texts{QString::number(value.row)};
        for (const Role role : {Role::Time, Role::AreaId, Role::AreaName, Role::Indicator, Role::Value})
            texts << value.texts[At(role)];
        lines.push_back((texts << (value.isRefused ? QStringLiteral("!") : QString()) + value.remark)
                            .join(QLatin1Char('|'))
                            .toStdString());
    }
    return lines;
}

TEST_F(RowPreviewTest, ShowsValuesAsTheCheckTakesThem) {
    const QString file =
        Write("Year,Area,Indicator,Value\n2001Q3,inde,Population,\"1,234.50\"\n\n2001,Atlantis,Wells,5\n"
              "5/1/2001,Asia,Wells,5\n2001,Asia,Wells,many\n2001,Asia,Wells,..\n2001,Asia\n");
    ImportDraft draft = GuessDraft(file);
    const FileSample sample = SampleOf(*OpenSource(file, draft));
    RowPreview preview(base_, QStringLiteral("_en"), {});
    const std::string day = TextOf(Refusal::DayForPeriod).toStdString();
    EXPECT_THAT(Shown(preview.Of(sample, draft)),
                ElementsAre("2|2001.Q3|ASIIND|India|Population|1234.50|",
                            "4|2001||Atlantis|Wells|5|!" + TextOf(Refusal::UnknownArea).toStdString() + ": Atlantis",
                            "5|5/1/2001||Asia|Wells|5|!" + day + ": 5/1/2001",
                            "6|2001||Asia|Wells|many|!" + TextOf(Refusal::BadNumber).toStdString() + ": many",
                            "8||||||!" + TextOf(Refusal::RaggedRow).toStdString()));
    // It follows the draft: another form of numbers, a constant, areas that are made.
    draft.numbers = {',', '.'};
    draft.makesAreas = true;
    draft.columns[2].role = Role::LeftOut;
    draft.constants[At(Role::Indicator)] = QStringLiteral("Mine");
    const std::vector<std::string> shown = Shown(preview.Of(sample, draft));
    EXPECT_EQ(shown[0], "2|2001Q3||inde|Mine|1,234.50|!" + TextOf(Refusal::BadNumber).toStdString() + ": 1,234.50");
    EXPECT_EQ(shown[1], "4|2001||Atlantis|Mine|5|" + PlainText(QStringLiteral("TS_PreviewNewArea")).toStdString());
    draft.columns[3].role = Role::LeftOut;
    EXPECT_THAT(preview.Of(sample, draft), testing::IsEmpty());
}

} // namespace
} // namespace tessaro::test
