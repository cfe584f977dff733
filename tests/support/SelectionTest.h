#pragma once

#include "office/SpreadsheetApplication.h"
#include "support/TestSession.h"

#include <QTemporaryDir>

namespace tessaro::test {

/// A session whose one connection has everything that the readers of the view use in a single small file: the selection
/// tables, Data, Source and FootNote.
class SelectionTest : public SessionTest {
  protected:
    SelectionTest();

    /// Periods 1 to n as 2001, 2002 …
    void SelectTimes(int count);
    /// Areas 1 to n as A0001 "Area 1" …; every third is a global item.
    void SelectAreas(int count);
    /// Combinations 1 to n, each with source 1; every second indicator is a global item.
    void SelectIus(int count);
    /// One value for each selected combination, area and period, in the order of areas.
    void FillData(int areas, int ius, int times);
    /// One row of Data; `value` is put in as SQL: "'1.5'" or "Null".
    void AddData(int time, int area, int ius, const QString& value, int source = 1, int footnote = 0);
    void Run(const QString& sql);
};

/// Gives the spreadsheet program of this test program its profile: one process serves all tests.
inline void UseSpreadsheet() {
    static const QTemporaryDir profile;
    static const bool set = (office::SpreadsheetApplication::SetProfileFolder(profile.path()), true);
    static_cast<void>(set);
}

} // namespace tessaro::test
