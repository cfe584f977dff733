#pragma once

#include "exchange/Periods.h"
#include "formats/CsvReader.h"
#include "formats/NumberForm.h"
#include "wizards/DraftLines.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

/// What a file is and what its columns mean: the draft that the pages of the import edit, and that is kept as lines of
/// text to be used again.
namespace tessaro {

enum class FileKind { Csv, Workbook, Px, JsonStat };

/// What a column, or a row of heads, tells of a value.
enum class Role { LeftOut, Time, AreaId, AreaName, Indicator, Unit, Subgroup, Source, Value, Footnote };
constexpr int kRoles = 10;
[[nodiscard]] constexpr std::size_t At(Role role) {
    return static_cast<std::size_t>(role);
}
/// The caption of a role in the language of the program.
[[nodiscard]] QString CaptionOf(Role role);

/// The largest number of a row.
constexpr int kMostRows = 2'000'000'000;

struct ColumnRole {
    QString head; ///< the texts of its head rows, joined by " / "
    Role role = Role::LeftOut;

    bool operator==(const ColumnRole&) const = default;
};

/// What an area of the file is in the database, by the user's choice.
struct AreaChoice {
    QString text;   ///< id or name in the file
    QString areaId; ///< of the database; empty: its values are left out

    bool operator==(const AreaChoice&) const = default;
};

struct ImportDraft {
    FileKind kind = FileKind::Csv;
    CsvForm csv;
    NumberForm numbers;
    QString sheet;       ///< of a workbook; empty for the first one
    int skippedRows = 0; ///< above the heads; blank rows don't count
    int headRows = 1;
    int lastRow = 0; ///< of the file; 0: all
    /// What each head row tells of the values below it. With one value column all may be LeftOut.
    std::vector<Role> headTells;
    std::vector<ColumnRole> columns;
    DateTells dates = DateTells::Day;
    bool repeatsAbove = false;             ///< a blank cell stands for the text above it, as merged cells leave them
    std::array<QString, kRoles> constants; ///< for what no column tells
    QString sector;                        ///< of indicators that are made
    QString indicatorClass;
    bool makesAreas = false; ///< areas that the database lacks are made
    QString parentArea;      ///< under this AreaID; empty: at the top
    std::vector<AreaChoice> areas;
    QString areaTree; ///< a file with the areas of a new database: see ReadAreaTree

    bool operator==(const ImportDraft&) const = default;

    [[nodiscard]] bool Has(Role role) const; ///< a column, a head row or a constant tells it
    [[nodiscard]] int ValueColumns() const;
};

/// The draft as lines of text, and back. The second gives False for what is no such text.
[[nodiscard]] QString WrittenDraft(const ImportDraft& draft);
[[nodiscard]] bool ReadDraft(const QString& text, ImportDraft& draft);
/// What the draft lacks to be used, in the language of the program; empty when nothing.
[[nodiscard]] QString ProblemOf(const ImportDraft& draft);

} // namespace tessaro
