#include "OfficeTest.h"
#include "support/Locales.h"

#include <QProcess>

namespace tessaro::office {

namespace {

using LocaleTest = OfficeTest;

/// The environment for a process in a locale ("de_DE"), or with just what the variable stands for in it. The locale is
/// made in `folder`. Empty when it can't be made.
QProcessEnvironment EnvironmentOf(const std::string& locale, const QString& folder, const QString& variable) {
    if (!test::MakeLocale(locale, folder.toStdString())) return QProcessEnvironment();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LOCPATH"), folder);
    environment.remove(QStringLiteral("LC_ALL"));
    environment.insert(variable, QString::fromStdString(locale) + QStringLiteral(".UTF-8"));
    return environment;
}

/// All blanks as plain ones: locales group thousands by several kinds of them.
QString Plain(QString text) {
    for (const char16_t blank : {u'\u00A0', u'\u202F', u'\u2009'})
        text.replace(QChar(blank), QLatin1Char(' '));
    return text;
}

QString TextOfPdf(const QString& file) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    reader.waitForFinished();
    return Plain(QString::fromUtf8(reader.readAllStandardOutput()));
}

struct Number {
    double value;
    const char* code;
    const char* english;
};
constexpr Number kNumbers[] = {{5203.6, "0.0", "5203.6"},
                               {46461, "0.0", "46461.0"},
                               {68.54, "0.00", "68.54"},
                               {1234567.891, "#,##0.00", "1,234,567.89"},
                               {46461, "#,##0", "46,461"},
                               {0.125, "General", "0.125"},
                               {7, "@", "7"},
                               {0.5, "0.0%", "50.0%"},
                               {12.3456, "#,##0.000", "12.346"}};
constexpr int kSum = static_cast<int>(std::size(kNumbers)) + 1; ///< row of the formula

/// The separators of a locale in place of the English ones.
QString InLocale(const char* english, char decimal, char group) {
    QString text;
    for (const char letter : QByteArray(english))
        text += QLatin1Char(letter == '.' ? decimal : letter == ',' ? group : letter);
    return text;
}

} // namespace

TEST_F(LocaleTest, ShowsNumbersWithTheSeparatorsOfTheUser) {
    const struct {
        const char* locale;
        const char* variable;
        const char* separators; ///< of decimals and thousands
    } cases[] = {{"en_US", "LC_ALL", ".,"}, {"de_DE", "LC_ALL", ",."},     {"fr_FR", "LC_ALL", ", "},
                 {"es_ES", "LC_ALL", ",."}, {"ru_RU", "LC_ALL", ", "},     {"ar_EG", "LC_ALL", ".,"},
                 {"fa_IR", "LC_ALL", ".,"}, {"de_DE", "LC_NUMERIC", ",."}, {"de_DE", "LC_MESSAGES", ".,"}};
    const QTemporaryDir locales;
    for (const auto& [locale, variable, separators] : cases) {
        QProcessEnvironment environment = EnvironmentOf(locale, locales.path(), QLatin1String(variable));
        ASSERT_FALSE(environment.isEmpty()) << locale;
        environment.insert(QStringLiteral("TESSARO_TEST_SEPARATORS"), QLatin1String(separators));
        QProcess child;
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_also_run_disabled_tests"),
                                                              QStringLiteral("--gtest_filter=*DISABLED_InItsLocale")});
        ASSERT_TRUE(child.waitForFinished(120000)) << locale;
        EXPECT_EQ(child.exitCode(), 0) << variable << ' ' << locale << '\n'
                                       << child.readAllStandardOutput().constData();
    }
}

/// Runs in a process whose locale and separators the environment names.
TEST_F(LocaleTest, DISABLED_InItsLocale) {
    const QByteArray separators = qgetenv("TESSARO_TEST_SEPARATORS");
    ASSERT_EQ(separators.size(), 2);
    const char decimal = separators.at(0);
    const char group = separators.at(1);
    Workbook book = Application().NewWorkbook();
    Worksheet sheet = book.Sheet(1);
    int row = 0;
    for (const Number& number : kNumbers) {
        sheet.Cells(++row, 1).SetValue(number.value);
        sheet.Cells(row, 1).SetStyle({.numberFormat = QLatin1String(number.code)});
    }
    sheet.Cells(kSum, 1).SetFormulas({{QStringLiteral("=SUM(A9,1.5)"), QStringLiteral("-12.5")}});
    EXPECT_EQ(sheet.Cells(kSum, 1, kSum, 2).Formulas(),
              (FormulaBlock{{QStringLiteral("=SUM(A9,1.5)"), QStringLiteral("-12.5")}}));
    Chart chart = sheet.AddChart(ChartKind::Column, sheet.Cells(5, 1, 5, 1), false, false, {200, 10, 300, 200});
    chart.SetValueFormat(QStringLiteral("#,##0.0"));
    book.SaveAs(File("numbers.xls"));
    book.Close(false);

    Workbook again = Application().OpenWorkbook(File("numbers.xls"));
    again.ExportPdf(File("numbers.pdf"));
    const QString printed = TextOfPdf(File("numbers.pdf"));
    row = 0;
    for (const Number& number : kNumbers) {
        const QString wanted = InLocale(number.english, decimal, group);
        EXPECT_EQ(Plain(again.Sheet(1).Cells(++row, 1).Text()).toStdString(), wanted.toStdString()) << number.code;
        EXPECT_TRUE(printed.contains(wanted)) << wanted.toStdString() << " in\n" << printed.toStdString();
    }
    EXPECT_EQ(again.Sheet(1).Cells(kSum, 1, kSum, 2).Values(), (Block{{12.3456 + 1.5, -12.5}}));
    EXPECT_TRUE(printed.contains(InLocale("50,000.0", decimal, group))) << "the axis in\n" << printed.toStdString();
}

} // namespace tessaro::office
