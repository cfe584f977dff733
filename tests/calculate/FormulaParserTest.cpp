#include "calculate/FormulaParser.h"

#include "CalculationTest.h"
#include "calculate/FormulaText.h"

#include <random>

namespace tessaro {

namespace {

using Braces = ParsedFormula::Braces;

const QString kA = QStringLiteral("{A  ~  Total}"), kB = QStringLiteral("{B  ~  Total}");
const std::vector<CalculationItem> kItems = {{QStringLiteral("A"), QStringLiteral("Total")},
                                             {QStringLiteral("B"), QStringLiteral("Total")}};

class FormulaParserTest : public test::CalculationTest {};

/// A and B stand for the references.
QString WithReferences(const char* formula) {
    return QString::fromUtf8(formula)
        .replace(QLatin1Char('A'), QLatin1Char('\1'))
        .replace(QLatin1Char('B'), kB)
        .replace(QLatin1Char('\1'), kA);
}

/// The value with A as 3 and B as -2, or a key of the reason.
QString ValueOf(const char* text, Braces braces = Braces::AreBrackets) {
    FormulaFault fault;
    const auto formula = ParsedFormula::Parse(WithReferences(text), kItems, braces, fault);
    if (!formula) return QStringLiteral("fault at %1").arg(fault.position);
    std::vector<std::optional<double>> values;
    for (const CalculationItem& item : formula->References())
        values.push_back(item == kItems[0] ? 3 : -2);
    const FormulaValue value = formula->Evaluate(values);
    return value.number ? NumberText(*value.number) : QString::fromLatin1(value.reasonKey);
}

} // namespace

TEST_F(FormulaParserTest, PrecedenceIsThatOfTheEngine) {
    const struct {
        const char* formula;
        const char* value;
        const char* flat; ///< with braces passed over; nullptr when the same
    } cases[] = {
        {"A + 1 * 2", "5", nullptr},
        {" { A + 1 } * 2", "8", "5"},
        {"{ { A + B } * 2 } ^ 2", "4", "-5"},
        {"(A + 1) * 2", "8", nullptr},
        {"A - B - 1", "4", nullptr},
        {"12 / A / 2", "2", nullptr},
        {"2 ^ A ^ 2", "64", nullptr},
        {"-A ^ 2", "-9", nullptr},
        {"- A ^ 2 * - 1", "9", nullptr},
        {"B ^ 2", "4", nullptr},
        {"2 ^ -1 + 2 ^ - - 1", "2.5", nullptr},
        {"- - A", "3", nullptr},
        {".5 * A + 1e2", "101.5", nullptr},
        {"١٢ * A + ۲.٥", "38.5", nullptr},
        {"abs(B) + Sqr(16) + Int(-1.5) + EXP(0) + Log(1)", "5", nullptr},
        {"A * 0", "0", nullptr},
        {"- A * 0", "0", nullptr},
        {"A / 0", "TS_CalcDivision", nullptr},
        {"A / { B + 2 }", "TS_CalcDivision", "0.5"},
        {"0 ^ B", "TS_CalcDivision", nullptr},
        {"B ^ .5", "TS_CalcNoNumber", nullptr},
        {"Sqr(B)", "TS_CalcNoNumber", nullptr},
        {"1e300 * 1e300", "TS_CalcTooLarge", nullptr},
        {"1e-300 * 1e300 * A", "3", nullptr},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ValueOf(c.formula).toStdString(), c.value) << c.formula;
        if (c.flat != nullptr) {
            const QString flat = ValueOf(c.formula, Braces::ArePassedOver);
            EXPECT_EQ(flat.toStdString(), c.flat) << c.formula;
        }
    }
}

TEST_F(FormulaParserTest, TheSheetComputesTheSame) {
    const struct {
        const char* formula;
        const char* sheet;
    } cases[] = {
        {"A / B * 100", "= C13 / D13 * 100"},
        {" { A + 1 } * 2", "=  ( C13 + 1 ) * 2"},
        {"-A ^ 2", "= -(C13 ^ 2)"},
        {"2 * -A^2", "= 2 * -(C13^2)"},
        {"-{ A ^ 2 }", "= -( C13 ^ 2 )"},
        {"-A ^ { 2 }", "= -(C13 ^ ( 2 ))"},
        {"-(A ^ 2) ^ 2", "= -((C13 ^ 2) ^ 2)"},
        {"2 ^ -A", "= 2 ^ -C13"},
        {"A + A + Sqr(B)", "= C13 + C13 + SQRT(D13)"},
        {"log(A)", "= LN(C13)"},
    };
    for (const auto& c : cases) {
        FormulaFault fault;
        const auto formula = ParsedFormula::Parse(WithReferences(c.formula), kItems, Braces::AreBrackets, fault);
        ASSERT_TRUE(formula) << c.formula << ": " << fault.reason.toStdString();
        EXPECT_EQ(formula->SheetFormula({QStringLiteral("C13"), QStringLiteral("D13")}).toStdString(), c.sheet);
    }
    FormulaFault fault;
    const QString typed = QStringLiteral("1") + QLocale::system().decimalPoint() + QStringLiteral("5 * ") + kA;
    EXPECT_EQ(ParsedFormula::Parse(typed, kItems, Braces::AreBrackets, fault)->SheetFormula({QStringLiteral("C13")}),
              QStringLiteral("= 1.5 * C13"));
}

TEST_F(FormulaParserTest, FaultsAreFoundWhereTheyStand) {
    const struct {
        const char* text;
        int position;
        int length;
        const char* key;
    } cases[] = {
        {"", 0, 0, "TS_FormulaOperand"},
        {"1 +", 3, 0, "TS_FormulaOperand"},
        {"1 + * 2", 4, 1, "TS_FormulaOperand"},
        {" { 1 + 2", 1, 1, "TS_FormulaNotClosed"},
        {"1 } + { 2", 2, 1, "TS_FormulaNotOpened"},
        {"(1 + 2", 0, 1, "TS_FormulaNotClosed"},
        {"1 + 2)", 5, 1, "TS_FormulaNotOpened"},
        {"{ 1 )", 0, 1, "TS_FormulaNotClosed"},
        {"{(1} + 2)", 3, 1, "TS_FormulaNotOpened"},
        {"1 2", 2, 1, "TS_FormulaOperator"},
        {"2 { 3 }", 2, 1, "TS_FormulaOperator"},
        {"1 + Round(2)", 4, 5, "TS_FormulaUnknownWord"},
        {"1 ; DROP", 2, 1, "TS_FormulaUnknownWord"},
        {"1 + .", 4, 1, "TS_FormulaUnknownWord"},
        {"1 + {C  ~  Total}", 4, 13, "TS_FormulaUnknownItem"},
        {"{A  ~  Total", 0, 12, "TS_FormulaNotClosed"},
        {"{A ~ Total}", 3, 1, "TS_FormulaUnknownWord"},
        {"abs 3", 4, 1, "TS_FormulaOperand"},
    };
    for (const auto& c : cases) {
        FormulaFault fault;
        const QString text = QString::fromLatin1(c.text);
        EXPECT_FALSE(ParsedFormula::Parse(text, kItems, Braces::AreBrackets, fault)) << c.text;
        EXPECT_EQ(fault.position, c.position) << c.text;
        EXPECT_EQ(fault.length, c.length) << c.text;
        QString expected = PlainText(QString::fromLatin1(c.key));
        EXPECT_EQ(fault.reason, expected.replace(QStringLiteral("%1"), text.mid(c.position, c.length))) << c.text;
    }
    FormulaFault fault;
    const QString deep = QString(100000, QLatin1Char('{')) + QStringLiteral("1") + QString(100000, QLatin1Char('}'));
    EXPECT_FALSE(ParsedFormula::Parse(deep, kItems, Braces::AreBrackets, fault));
    const QString signs = QString(100000, QLatin1Char('-')) + kA + QStringLiteral(" + 1").repeated(100000);
    EXPECT_TRUE(ParsedFormula::Parse(signs, kItems, Braces::AreBrackets, fault));
}

TEST_F(FormulaParserTest, ReferencesSurviveWhatNamesHold) {
    std::vector<CalculationItem> items;
    for (const char* name : {"A", "A  ~  B", "{A", "A}", "{x} {", "it's \"q\" + 1", "a ~ b", "العدد ~"})
        for (const char* subpop : {"Total", "T } + {", "~"})
            items.push_back({QString::fromUtf8(name), QString::fromUtf8(subpop)});
    items.push_back({test::HardName(QLatin1Char('n')), test::HardName(QLatin1Char('s'))});
    for (const CalculationItem& item : items) {
        FormulaFault fault;
        const QString text =
            QStringLiteral("2 * ") + FormulaReference(item.indicator, item.subpop) + QStringLiteral(" + 1");
        const auto formula = ParsedFormula::Parse(text, items, Braces::AreBrackets, fault);
        ASSERT_TRUE(formula) << text.toStdString() << ": " << fault.reason.toStdString();
        EXPECT_EQ(formula->References(), std::vector{item}) << text.toStdString();
        EXPECT_EQ(formula->SheetFormula({QStringLiteral("C13")}), QStringLiteral("= 2 * C13 + 1"));
    }
}

// The engine evaluates the same text with numbers in brackets in place of the references.
TEST_F(FormulaParserTest, RandomFormulasGiveWhatTheEngineGives) {
    std::mt19937 random(17);
    const char* const operators[] = {" + ", " - ", " * ", " / ", " ^ "};
    int compared = 0;
    for (int i = 0; i < 400; ++i) {
        QString text;
        int open = 0;
        for (int operand = 0; operand < 6; ++operand) {
            if (random() % 5 == 0) text += QLatin1Char('-');
            if (random() % 3 == 0) {
                text += QStringLiteral(" { ");
                ++open;
            }
            text += random() % 3 == 0 ? QString::number(random() % 4) : random() % 2 == 0 ? kA : kB;
            if (open > 0 && random() % 2 == 0) {
                text += QStringLiteral(" } ");
                --open;
            }
            if (operand < 5) text += QLatin1String(operators[random() % 5]);
        }
        text += QStringLiteral(" } ").repeated(open);
        QString sql = text;
        sql.replace(kA, QStringLiteral("(3)")).replace(kB, QStringLiteral("(-2)"));
        sql.replace(QLatin1Char('{'), QLatin1Char('(')).replace(QLatin1Char('}'), QLatin1Char(')'));
        FormulaFault fault;
        const auto formula = ParsedFormula::Parse(text, kItems, Braces::AreBrackets, fault);
        ASSERT_TRUE(formula) << text.toStdString() << ": " << fault.reason.toStdString();
        std::vector<std::optional<double>> values;
        for (const CalculationItem& item : formula->References())
            values.push_back(item == kItems[0] ? 3 : -2);
        const FormulaValue value = formula->Evaluate(values);
        Records rows = Select(QStringLiteral("SELECT ") + sql + QStringLiteral(" AS x"));
        if (!value.number) {
            EXPECT_TRUE(!rows.isOpen() || !std::isfinite(rows.rows().Get(0).toDouble())) << text.toStdString();
            continue;
        }
        ASSERT_TRUE(rows.isOpen()) << text.toStdString();
        const double expected = rows.rows().Get(0).toDouble();
        EXPECT_NEAR(*value.number, expected, 1e-9 * std::max(1.0, std::abs(expected))) << text.toStdString();
        ++compared;
    }
    EXPECT_GT(compared, 200);
}

} // namespace tessaro
