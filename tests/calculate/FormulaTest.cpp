#include "CalculationTest.h"
#include "calculate/FormulaText.h"

namespace tessaro {

namespace {

const QString kA = QStringLiteral("A"), kB = QStringLiteral("B"), kTotal = QStringLiteral("Total");
const QString kShare = QStringLiteral("{A  ~  Total} / {B  ~  Total} * 100");

class FormulaTest : public test::CalculationTest {
  protected:
    static CalculationDraft Draft(const QString& formula) {
        CalculationDraft draft;
        draft.type = CalcType::Formula;
        draft.formula = formula;
        draft.indicator = QStringLiteral("Made");
        draft.subpop = kTotal;
        draft.decimals = QStringLiteral("2");
        return draft;
    }
    static std::map<QString, QString> Shown(const FormulaCheck& check) {
        std::map<QString, QString> shown;
        for (const FormulaArea& area : check.areas)
            shown[area.id] = area.result;
        return shown;
    }
};

} // namespace

TEST_F(FormulaTest, EachAreaHasAResultOrAReason) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("1")},
         {QStringLiteral("AAA"), kA, QStringLiteral("9"), QStringLiteral("1990")},
         {QStringLiteral("AAA"), kB, QStringLiteral("8"), QStringLiteral("2001"), kTotal, QStringLiteral("Survey")},
         {QStringLiteral("BBB"), kA, QStringLiteral("5")},
         {QStringLiteral("CCC"), kA, QStringLiteral("5")},
         {QStringLiteral("CCC"), kB, QStringLiteral("0")},
         {QStringLiteral("DDD"), kA, QStringLiteral("0")},
         {QStringLiteral("DDD"), kB, QStringLiteral("2")},
         {QStringLiteral("EEE"), QStringLiteral("C"), QStringLiteral("2")}});
    const CalculationLog log = Calculate(Draft(kShare));
    ASSERT_EQ(log.failure, QString());
    const std::map<QString, QString> expected = {{QStringLiteral("AAA"), QStringLiteral("12.50")},
                                                 {QStringLiteral("BBB"), {}},
                                                 {QStringLiteral("CCC"), {}},
                                                 {QStringLiteral("DDD"), QStringLiteral(".00")}};
    EXPECT_EQ(ResultsOf(log), expected);
    const std::map<QString, QString> reasons = {
        {QStringLiteral("BBB"), QStringLiteral("No value of B ~ Total")},
        {QStringLiteral("CCC"), QStringLiteral("Division by zero")},
        {QStringLiteral("EEE"), QStringLiteral("No value of the chosen indicators")}};
    EXPECT_EQ(RemarksOf(log), reasons);
    EXPECT_EQ(log.results[0].row, (DataEntryRow{"2001", "AAA", "Area AAA", "12.50", "Total", "Survey"}));
    EXPECT_EQ(log.results[0].sheetRow, 13);
    EXPECT_EQ(log.results[0].sheetColumn, 5);
    EXPECT_EQ(RowText(log.working, 10), (QStringList{"Area ID", "Area name", "A", "B", "Made"}));
    EXPECT_EQ(RowText(log.working, 11), (QStringList{"", "", "Total", "Total", "Total"}));
    EXPECT_EQ(RowText(log.working, 13), (QStringList{"AAA", "Area AAA", "1", "8", "12.5"}));
    EXPECT_EQ(RowText(log.working, 14), (QStringList{"BBB", "Area BBB", "5", "", ""}));
    ASSERT_EQ(log.working.formulas.size(), 1u);
    EXPECT_EQ(log.working.formulas[0].formulas,
              (std::vector<QString>{QStringLiteral("= C13 / D13 * 100"), {}, {}, QStringLiteral("= C16 / D16 * 100")}));
    EXPECT_EQ(RowText(log.detail, 10),
              (QStringList{"AAA", "Area AAA", "2000", "A", "Number", "Total", "Census", "1", "12.5"}));
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(FormulaTest, BracketsCountInTheCalculationAndNotInTheCheck) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("3")}, {QStringLiteral("BBB"), kB, QStringLiteral("3")}});
    const QString text = QStringLiteral(" { {A  ~  Total} + 1 } * 2");
    const FormulaSubject subject = ReadFormulaSubject();
    const FormulaCheck check = Validate(text, subject);
    EXPECT_EQ(check.key, QStringLiteral("108"));
    EXPECT_EQ(Shown(check),
              (std::map<QString, QString>{{QStringLiteral("AAA"), QStringLiteral("5")}, {QStringLiteral("BBB"), {}}}));
    EXPECT_EQ(Shown(PreviewFormula(text, subject, 1)),
              (std::map<QString, QString>{{QStringLiteral("AAA"), QStringLiteral("8")}}));
    EXPECT_EQ(ResultsOf(Calculate(Draft(text))).at(QStringLiteral("AAA")), QStringLiteral("8.00"));
}

TEST_F(FormulaTest, TheCheckSaysWhatIsWrong) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("3")},
         {QStringLiteral("AAA"), kB, QStringLiteral("0")},
         {QStringLiteral("BBB"), QStringLiteral("C"), QStringLiteral("n/a")}});
    const FormulaSubject subject = ReadFormulaSubject();
    const struct {
        QString text;
        int position;
        const char* reason;
    } cases[] = {
        {{}, 0, "A number, an indicator or a bracket is expected here"},
        {QStringLiteral("{A  ~  Total} + {"), 16, "This bracket is not closed: {"},
        {QStringLiteral("1 + 1"), 0, "The formula names no indicator"},
        {QStringLiteral("{Z  ~  Total}"), 0, "The data in view have no such indicator and subgroup: {Z  ~  Total}"},
        {kShare, -1, "Area AAA: Division by zero"},
        {QStringLiteral("{C  ~  Total}"), -1, "The value \"n/a\" of C ~ Total in Area BBB [BBB], 2000"},
    };
    for (const auto& c : cases) {
        const FormulaCheck check = Validate(c.text, subject);
        EXPECT_EQ(check.key, QStringLiteral("109")) << c.text.toStdString();
        EXPECT_EQ(check.position, c.position) << c.text.toStdString();
        EXPECT_TRUE(check.reason.startsWith(QString::fromLatin1(c.reason))) << check.reason.toStdString();
    }
    EXPECT_EQ(Shown(Validate(QStringLiteral("{A  ~  Total} * 0"), subject)).at(QStringLiteral("AAA")), QString())
        << "exactly 0 is not shown";
    EXPECT_TRUE(Calculate(Draft(QStringLiteral("1 +"))).failure.contains(QStringLiteral("expected here")));
    EXPECT_TRUE(Calculate(Draft(QStringLiteral("{C  ~  Total}"))).failure.contains(QStringLiteral("n/a")));
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(FormulaTest, ThePreviewIsWhatTheCalculationGives) {
    const QString asi = QStringLiteral("ASI"), year = QStringLiteral("2000");
    Put({{asi, kA, QStringLiteral("1"), QStringLiteral("1990")},
         {asi, kA, QStringLiteral("2"), year},
         {asi, kA, QStringLiteral("4"), year, kTotal, QStringLiteral("Survey")},
         {asi, kA, QStringLiteral("8"), year, kTotal, QStringLiteral("Survey"), QStringLiteral("Percent")},
         {asi, kA, QStringLiteral("16"), year, kTotal, QStringLiteral("Survey"), QStringLiteral("Percent")},
         {asi, kA, QStringLiteral("32"), year, kTotal, QStringLiteral("Census"), QStringLiteral("Percent")}});
    const QString text = QStringLiteral("{A  ~  Total}");
    EXPECT_EQ(Shown(PreviewFormula(text, ReadFormulaSubject(), 5)).at(asi), QStringLiteral("24"));
    EXPECT_EQ(ResultsOf(Calculate(Draft(text))).at(asi), QStringLiteral("24.00"));
}

TEST_F(FormulaTest, NamesOfAnyKindComeThrough) {
    const QString name = test::HardName(QLatin1Char('p')), subpop = QStringLiteral("T } + {");
    Put({{QStringLiteral("ASIINDDEL001"), name, QStringLiteral("-3"), QStringLiteral("2000"), subpop}});
    const CalculationLog log = Calculate(Draft(FormulaReference(name, subpop) + QStringLiteral(" ^ 2")));
    EXPECT_EQ(log.failure, QString());
    EXPECT_EQ(ResultsOf(log), (std::map<QString, QString>{{QStringLiteral("ASIINDDEL001"), QStringLiteral("9.00")}}));
}

} // namespace tessaro
