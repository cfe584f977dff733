#pragma once

#include "calculate/CalculationLog.h"
#include "calculate/Numbers.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "support/TestSession.h"
#include "view/DataFilters.h"

#include <map>

namespace tessaro::test {

/// One row of `_Data`.
struct DataRow {
    QString area;
    QString indicator;
    QString value;
    QString time = QStringLiteral("2000");
    QString subpop = QStringLiteral("Total");
    QString source = QStringLiteral("Census");
    QString unit = QStringLiteral("Number");
};

/// A session with the sample database open, all texts of the product, and `_Data` as the test fills it.
class CalculationTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        OpenSampleWithTexts();
    }

    /// Adds rows. An area's name is "Area " and its id; the GIds are "-" and the names.
    static void Put(const std::vector<DataRow>& rows) {
        Connection->Begin();
        for (const DataRow& row : rows)
            Connection->Execute(
                (QStringLiteral("INSERT INTO _Data (IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, "
                                "TimePeriod, AreaId, AreaName, Source, RecommendedSource, DataValue) VALUES (") +
                 QuotedList({QLatin1Char('-') + row.indicator, row.indicator, QLatin1Char('-') + row.unit, row.unit,
                             QLatin1Char('-') + row.subpop, row.subpop, row.time, row.area,
                             QStringLiteral("Area ") + row.area, row.source}) +
                 QStringLiteral(", False, ") +
                 (row.value.isNull() ? QStringLiteral("Null") : QLatin1Char('\'') + row.value + QLatin1Char('\'')) +
                 QLatin1Char(')'))
                    .toStdString());
        Connection->Commit();
    }

    /// A cell of a sheet as text: numbers in their shortest form.
    static QString Text(const LogSheet& sheet, int row, int column) {
        const office::Cell cell = sheet.Value(row, column);
        if (const auto* text = std::get_if<QString>(&cell)) return *text;
        if (const auto* number = std::get_if<double>(&cell)) return NumberText(*number);
        if (const auto* truth = std::get_if<bool>(&cell))
            return *truth ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
        return {};
    }
    static QStringList RowText(const LogSheet& sheet, int row) {
        QStringList texts;
        for (int column = 1; column <= sheet.lastColumn; ++column)
            texts << Text(sheet, row, column);
        return texts;
    }
    /// The results by area, in the draft's form.
    static std::map<QString, QString> ResultsOf(const CalculationLog& log) {
        std::map<QString, QString> results;
        for (const LogResult& result : log.results)
            results[result.row.areaId] = result.row.value;
        return results;
    }
    /// The reasons by area.
    static std::map<QString, QString> RemarksOf(const CalculationLog& log) {
        std::map<QString, QString> remarks;
        for (const QStringList& remark : log.remarks)
            remarks[remark.value(0)] = remark.value(2);
        return remarks;
    }
    /// Names of the working tables that calculations make and that exist.
    static QStringList TablesLeft() {
        QStringList left;
        for (const jet::TableInfo& table : Connection->Tables()) {
            const QString name = QString::fromStdString(table.name);
            for (const char* begin : {"Calc", "Formula", "TUnitWiz", "SubWiz", "TempCalculate"})
                if (name.startsWith(QLatin1String(begin))) left << name;
        }
        return left;
    }
};

/// A name as long as its column allows, with every sign that means something in SQL, formulas and references.
[[nodiscard]] inline QString HardName(QChar first) {
    QString name = first + QStringLiteral("'s \"rate\" [x] {y} ~ = %1 العربية ");
    return name + QString(255 - name.size(), first);
}

/// Doubles that agree to nine digits.
inline void ExpectClose(double expected, const QString& text) {
    const auto number = NumberOf(text);
    ASSERT_TRUE(number) << text.toStdString();
    EXPECT_NEAR(*number, expected, 1e-9 * std::max(1.0, std::abs(expected)));
}

} // namespace tessaro::test
