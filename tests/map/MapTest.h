#pragma once

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "support/DataChanges.h"
#include "support/TestSession.h"

#include <string>
#include <utility>
#include <vector>

namespace tessaro::test {

/// A session with the sample database open, all texts of the product, nothing selected, and an empty `_MapData`.
class MapTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        OpenSampleWithTexts();
    }

    /// Puts a value for each area "A0001", "A0002" ... into `_MapData`.
    static void PutValues(const std::vector<QString>& values) {
        Connection->Begin();
        int area = 0;
        for (const QString& value : values)
            Connection->Execute(
                QStringLiteral("INSERT INTO _MapData (TimePeriod, AreaID, AreaName, DataValue, Original_DataValue, "
                               "[Style], [Size], PStyle, BreakValue, [Color]) VALUES "
                               "('2000','A%1','Area %1','%2','%2', 0, 0, 0, 0, 0)")
                    .arg(++area, 4, 10, QLatin1Char('0'))
                    .arg(value)
                    .toStdString());
        Connection->Commit();
    }
    static void PutValues(const std::vector<double>& values) {
        std::vector<QString> texts;
        for (const double value : values)
            texts.push_back(QString::number(value, 'f', QLocale::FloatingPointShortest));
        PutValues(texts);
    }
    /// The rows of a query: fields parted by "|", rows by blanks.
    static std::string Rows(const char* sql) {
        Records rows = Select(QLatin1String(sql));
        std::string text = rows.rows().GetString(-1, "|", " ");
        while (text.ends_with(' '))
            text.pop_back();
        return text;
    }
};

} // namespace tessaro::test
