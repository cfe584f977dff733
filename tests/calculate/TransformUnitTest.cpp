#include "CalculationTest.h"

#include <QLocale>

namespace tessaro {

namespace {

class TransformUnitTest : public test::CalculationTest {
  protected:
    static CalculationDraft Draft(const std::vector<ConversionFactor>& factors) {
        CalculationDraft draft;
        draft.type = CalcType::TransformUnit;
        draft.items = {{QStringLiteral("Length"), {}}};
        draft.factors = factors;
        draft.targetUnit = draft.unit = QStringLiteral("cm");
        draft.decimals = QStringLiteral("2");
        return draft;
    }
    static test::DataRow Row(const char* area, const char* value, const QString& unit) {
        test::DataRow row{QString::fromLatin1(area), QStringLiteral("Length"), QString::fromLatin1(value)};
        row.unit = unit;
        return row;
    }
};

const QString kInch = QStringLiteral("inch\""), kFoot = QStringLiteral("foot'");

} // namespace

TEST_F(TransformUnitTest, EachUnitHasItsFactor) {
    Put({Row("AAA", "2", kInch), Row("BBB", "3", kFoot), Row("BBB", "1", kInch), Row("CCC", "1e300", kFoot)});
    const QString comma = QStringLiteral("2") + QLocale::system().decimalPoint() + QStringLiteral("54");
    const CalculationLog log = Calculate(Draft({{kInch, comma}, {QStringLiteral("FOOT'"), QStringLiteral("30.48")}}));
    ASSERT_EQ(log.failure, QString());
    ASSERT_EQ(log.results.size(), 4u);
    const char* const expected[] = {"5.08", "91.44", "2.54"};
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(log.results[i].row.value.toStdString(), expected[i]);
    test::ExpectClose(3.048e301, log.results[3].row.value);
    EXPECT_EQ(RowText(log.working, 10), (QStringList{"Area ID", "Area name", "Unit", "Data value", "Conversion factor",
                                                     "cm", "Subgroup", "Time", "Source"}));
    EXPECT_EQ(RowText(log.working, 12),
              (QStringList{"BBB", "Area BBB", kFoot, "3", "30.48", "91.44", "Total", "2000", "Census"}));
    EXPECT_EQ(log.results[1].sheetRow, 12);
    EXPECT_EQ(log.results[1].sheetColumn, 6);
    EXPECT_TRUE(log.working.formulas.empty());
    EXPECT_EQ(log.detail.lastRow - log.detail.firstRow, 3);
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(TransformUnitTest, RefusesFactorsAndValuesThatAreNoNumbers) {
    Put({Row("AAA", "2", kInch), Row("BBB", "3", kFoot)});
    const ConversionFactor inch{kInch, QStringLiteral("2.54")};
    const std::vector<ConversionFactor> refused[] = {
        {inch}, {inch, {kFoot, QStringLiteral("0")}}, {inch, {kFoot, {}}}, {inch, {kFoot, QStringLiteral("1; DROP")}}};
    for (const auto& factors : refused)
        EXPECT_EQ(Calculate(Draft(factors)).failure, PlainText(QStringLiteral("111")));
    Put({Row("CCC", "n/a", kFoot)});
    EXPECT_TRUE(Calculate(Draft({inch, {kFoot, QStringLiteral("30.48")}})).failure.contains(QStringLiteral("\"n/a\"")));
    EXPECT_EQ(TablesLeft(), QStringList());
}

} // namespace tessaro
