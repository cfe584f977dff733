#include "support/SelectionTest.h"

#include "database/Schema.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/DataChanges.h"

namespace tessaro::test {

SelectionTest::SelectionTest() {
    const QString path = Folder() + QStringLiteral("/work.mdb");
    jet::Database::Create(path.toStdString(), DatabasePassword());
    Connection = CreateTheConnection(path);
    schema::CreateUserSelections(*Connection);
    Run(QStringLiteral("CREATE TABLE Data (RowNId COUNTER PRIMARY KEY, TimePeriodNId LONG, IUSNId LONG, AreaNId LONG, "
                       "SourceNId LONG, FootnoteNId LONG, Datavalue TEXT(60))"));
    Run(QStringLiteral("CREATE INDEX DataGrid ON Data (AreaNId, TimePeriodNId, IUSNId, SourceNId)"));
    Run(QStringLiteral("CREATE TABLE Source (SourceNId LONG, Source TEXT(255))"));
    Run(QStringLiteral("CREATE TABLE FootNote (FootNoteNId LONG, FootNote TEXT(255))"));
    Run(QStringLiteral("INSERT INTO Source (SourceNId, Source) VALUES (1, 'Census')"));
    Run(QStringLiteral("INSERT INTO Source (SourceNId, Source) VALUES (2, 'Survey')"));
    Run(QStringLiteral("INSERT INTO FootNote (FootNoteNId, FootNote) VALUES (7, 'Provisional')"));
}

void SelectionTest::Run(const QString& sql) {
    ChangeData(sql); // a failure fails the test
}

void SelectionTest::SelectTimes(int count) {
    for (int n = 1; n <= count; ++n)
        Run(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (%1, '%2')")
                .arg(n)
                .arg(2000 + n));
}

void SelectionTest::SelectAreas(int count) {
    Connection->Begin();
    for (int n = 1; n <= count; ++n) {
        Run(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel) VALUES "
                           "('%1G%2', %2, 'A%3', 'Area %2', 1)")
                .arg(n % 3 == 0 ? QStringLiteral("-") : QString())
                .arg(n)
                .arg(n, 4, 10, QLatin1Char('0')));
    }
    Connection->Commit();
}

void SelectionTest::SelectIus(int count) {
    for (int n = 1; n <= count; ++n) {
        Run(QStringLiteral(
                "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, "
                "SourceNId, Source, RecommendedSource, Deleted) VALUES (%2, '%1I%2', 'Indicator %2', '-U', "
                "'Per cent', 'S', 'Total', 1, 'Census', False, False)")
                .arg(n % 2 == 0 ? QStringLiteral("-") : QString())
                .arg(n));
    }
}

void SelectionTest::AddData(int time, int area, int ius, const QString& value, int source, int footnote) {
    Run(QStringLiteral("INSERT INTO Data (TimePeriodNId, AreaNId, IUSNId, SourceNId, FootnoteNId, Datavalue) VALUES "
                       "(%1, %2, %3, %4, %5, %6)")
            .arg(time)
            .arg(area)
            .arg(ius)
            .arg(source)
            .arg(footnote)
            .arg(value));
}

void SelectionTest::FillData(int areas, int ius, int times) {
    SelectTimes(times);
    SelectAreas(areas);
    SelectIus(ius);
    Connection->Begin();
    for (int area = 1; area <= areas; ++area) {
        for (int time = 1; time <= times; ++time) {
            for (int combination = 1; combination <= ius; ++combination)
                AddData(time, area, combination, QStringLiteral("'%1'").arg(area * 100 + combination));
        }
    }
    Connection->Commit();
}

} // namespace tessaro::test
