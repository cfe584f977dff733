#pragma once

#include "presentation/RowsColumns.h"

#include <QHash>
#include <QString>
#include <QStringList>

/// The crosstab that a table or graph is filled from.
namespace tessaro {

/// Parts the pivot key and the codes within a column's name, and a value from its footnote.
inline const QString KeySeparator = QStringLiteral("{[~]}");
inline const QString CodeSeparator = QStringLiteral("{{}}");

/// The crosstab of an arrangement.
struct PivotQuery {
    QString PivotSQL;
    QString PivotKeyList; ///< keys of the column fields, parted by KeySeparator
    int RowCount = 0;     ///< number of fields on the rows, which are the first fields of the result
    int ColCount = 0;     ///< number of fields on the columns; 0: the result has the one column "Data Value"
};

/// Most columns that a crosstab can have.
constexpr int kMostPivotColumns = 255;

/// The statement for an arrangement after Build_Records. With `footnotes` a value that has one carries its id behind
/// CodeSeparator. An arrangement without rows gives no statement.
[[nodiscard]] PivotQuery BuildPivotSQL(const RowsColumns& arrangement, bool footnotes);
/// The number of columns that the crosstab would have besides those of the rows; 1 without column fields.
[[nodiscard]] int CountPivotColumns(const RowsColumns& arrangement);
/// The number of values that the selection has.
[[nodiscard]] int CountValues();
/// The column field with the most values, which helps most when it goes to the rows.
[[nodiscard]] PivotField WidestColumnField(const RowsColumns& arrangement);

/// Turns names of pivot columns back into texts. Each code is looked up once.
class PivotHeaders final {
  public:
    explicit PivotHeaders(const QString& keyList);

    /// The texts of one column's codes, parted by CodeSeparator.
    [[nodiscard]] QString DecodePivotHeader(const QString& name);
    /// The text of one column field's code within the name; empty when the field isn't on the columns.
    [[nodiscard]] QString PartOf(PivotField field, const QString& name);

  private:
    [[nodiscard]] QString TextOf(std::size_t part, const QString& code);

    std::vector<PivotField> fields_;
    std::vector<QHash<QString, QString>> known_;
};

/// Fills _Indicator, _Unit and _Subpop with the different names of the selection, which the crosstab's codes are the
/// numbers of.
void CreateDistinctIUSTables();

} // namespace tessaro
