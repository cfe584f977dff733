#pragma once

#include "TestPlaces.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "support/DataChanges.h"
#include "support/TestSession.h"

namespace tessaro::test {

/// A session with the sample database open and nothing selected.
class PresentationTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        OpenSampleWithTexts();
    }

    /// The workbooks that the wizards fill, into the sample's application folder.
    static void InstallTemplates() {
        for (const QString& name : {QStringLiteral("TableTmp.Xls"), QStringLiteral("GraphTmp.Xls")})
            ASSERT_TRUE(CopyFileOver(FindPath(QStringLiteral(TESSARO_INSTALLATION "/Bin/Template/") + name),
                                     FindPath(AppPath + QStringLiteral("/Bin/Template/") + name)));
    }
    static void Run(const QString& sql) { ChangeData(sql); } // a failure fails the test

    static void SelectAreas(const QString& where = {}) {
        Run(QStringLiteral(
                "INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT AreaGId, "
                "AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area ") +
            where);
    }
    static void SelectTimes(const QString& where = {}) {
        Run(QStringLiteral(
                "INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM "
                "TimePeriod ") +
            where);
    }
    /// `where` restricts IUS (the combinations) and S (the sources).
    static void SelectIus(const QString& where = {}) {
        Run(QStringLiteral(
                "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, "
                "SourceNId, "
                "Source, RecommendedSource, Deleted) SELECT IUS.IUSNId, IUS.IndicatorGId, I.[Indicator], IUS.UnitGId, "
                "U.Unit, IUS.SubpopGId, SP.Subpop, S.SourceNId, S.Source, XS.RecommendedSource, False FROM "
                "((((Indicator_Unit_Subpop AS IUS INNER JOIN Indicator AS I ON IUS.IndicatorGId = I.IndicatorGId) "
                "INNER "
                "JOIN Unit AS U ON IUS.UnitGId = U.UnitGId) INNER JOIN Subpop AS SP ON IUS.SubpopGId = SP.SubpopGId) "
                "INNER JOIN Indicator_Source AS XS ON IUS.IUSNId = XS.IUSNId) INNER JOIN Source AS S ON XS.SourceNId = "
                "S.SourceNId ") +
            where);
    }
    static void SelectEverything() {
        SelectAreas();
        SelectTimes();
        SelectIus();
    }
    static void AddValue(int time, int ius, int area, int source, const QString& value, int footnote = 0) {
        Run(QStringLiteral(
                "INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue) VALUES "
                "(%1, %2, %3, %4, %5, '%6')")
                .arg(time)
                .arg(ius)
                .arg(area)
                .arg(source)
                .arg(footnote)
                .arg(value));
    }
};

} // namespace tessaro::test
