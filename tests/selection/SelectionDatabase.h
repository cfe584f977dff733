#pragma once

#include "controls/KeyedItem.h"
#include "support/TestSession.h"

#include <vector>

namespace tessaro::test {

/// A session whose one connection has, in a single small file, everything that the selection reads and writes. Names
/// hold apostrophes, quotes, brackets and several scripts.
///
/// Combinations (indicator/unit/subpopulation, sources):
///   1 -I1/-U1/-S1 (10, 11)   2 -I1/-U1/-S2 (10)   3 -I2/U2/-S1 (11)   4 L3/-U1/-S1 (10, no data)   5 -I4/-U1/-S1
///   (none)
/// Periods 1 1990, 2 1995, 3 2000; 4 2005 without data.
/// Areas ASI (1) > ASIIND (2) > ASIINDDEL (4), ASI > ASICIV (3), O'B (7) > O'BABC (8); EUR (5) and ASIXX (6) without
/// data. Data (period, area, combination): (1,2,1) (2,2,1) (3,3,1) (1,2,2) (1,1,2) (3,4,3) (2,8,5).
class SelectionDatabaseTest : public SessionTest {
  protected:
    SelectionDatabaseTest();

    void Run(const QString& sql); ///< a failure fails the test
    /// The first column of a query, joined with commas.
    [[nodiscard]] QString Column(const QString& sql);
    /// "1/10,1/11": what _SelIUSNId holds as combination/source.
    [[nodiscard]] QString ChosenIus();
    [[nodiscard]] QString ChosenPeriods();
    [[nodiscard]] QString ChosenAreas();

    void ChooseIus(const QString& idList);
    void ChoosePeriods(const QString& idList);
    void ChooseAreas(const QString& idList);
    void SetDataExistsMode(long mode);
};

/// "I1 I2": the keys of items in their order.
[[nodiscard]] std::string Keys(const std::vector<KeyedItem>& items);

} // namespace tessaro::test
