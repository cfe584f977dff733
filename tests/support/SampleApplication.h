#pragma once

#include <QString>

namespace tessaro::test {

/// Makes a small application folder at `folder`: settings (plain), templates, registry, an English and a French
/// language file with a few texts, and Data/Sample.mdb. Its contents:
///   languages English [en] (default) and Français [fr]; indicators Population (-POP, global), Literacy (-LIT, global)
///   and Wells (WEL, local); units Number, Percent; subpopulations Total, Female; IUS 1 POP/NUM/TOT, 2 LIT/PCT/TOT, 3
///   LIT/PCT/FEM, 4 WEL/NUM/TOT (without data); areas ASI (1) > ASIIND (2) > ASIINDDEL (3), ASICHN (4), and EUR (5,
///   without data); periods 1990, 2000, 2005, 2010 (the last without data); sources Census and Survey of region Asia;
///   footnote 1 on two values; sector, goal, framework, theme, institution and convention with one branch each that has
///   data and one that has none; 17 values. All marks of DataExists are as MarkDataExists leaves them.
void MakeSampleApplication(const QString& folder);

/// The same database as a file of its own.
void MakeSampleDatabase(const QString& path);

} // namespace tessaro::test
