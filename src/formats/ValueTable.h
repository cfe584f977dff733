#pragma once

#include <QPointF>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// Writes values with what they belong to in the forms of others. Each function gives False when the file can't be
/// written; the old file stays then, and also when a row throws.
namespace tessaro {

struct ValueRow {
    QString period;
    QString areaId;
    QString areaName;
    QString indicator;
    QString unit;
    QString subgroup;
    QString source;
    QString value;
    QString footnote;
};

/// What a form has no room for.
struct ValueLosses {
    int texts = 0;        ///< values that are no numbers
    int doubles = 0;      ///< further values for one area, indicator, unit, subgroup, source and period
    int marks = 0;        ///< texts with quotation marks or line ends in them
    int columns = 0;      ///< more than a table of the form has
    int withoutShape = 0; ///< areas without an outline

    [[nodiscard]] bool Any() const { return texts + doubles + marks + columns + withoutShape > 0; }
};
/// Them in words, in the language of the program.
[[nodiscard]] QString TextOf(const ValueLosses& losses);
/// Asks whether to save what does fit; True for a yes.
[[nodiscard]] bool AsksToLose(const ValueLosses& losses);

/// The outline of an area: its rings, in degrees of longitude and latitude. Rings around land run clockwise, holes the
/// other way.
using AreaRings = std::vector<std::vector<QPointF>>;

/// Rows by their number from 0; nothing for one that is left out. They are read in order, once.
struct ValueTable {
    int count = 0;
    std::function<std::optional<ValueRow>(int)> at;
    /// Is told what can't be kept before anything is written. Throws to leave it at that.
    std::function<void(const ValueLosses&)> beforeLoss = {};
    /// The outline of an area by its id; without it, or with no rings, an area has none.
    std::function<AreaRings(const QString&)> ringsOf = {};
    /// What is known of a source by its name. Without it only its name goes along.
    std::function<QString(const QString&)> aboutSource = {};
    QString title = {};
    QString subTitle = {};
};

/// A form of files of values.
struct ValueForm {
    const char* ending;     ///< of its names: ".px"
    const char* captionKey; ///< its name in lists: a key of the string table, or the name itself
    bool (*save)(const QString& file, const ValueTable& table);
    QStringList beside; ///< endings of the files that may be made beside it: ".notes.csv"
};
[[nodiscard]] const std::vector<ValueForm>& ValueForms();
/// The form that a file's name asks for; nullptr for none of them.
[[nodiscard]] const ValueForm* ValueFormOf(const QString& file);
/// Its name in the language of the program.
[[nodiscard]] QString CaptionOf(const ValueForm& form);

/// One row a value, comma-separated, UTF-8 with its mark, heads in the language of the program; footnotes in the last
/// column. Values as they are stored. Beside it stand the rows with footnotes ("Name.notes.csv") and the sources
/// ("Name.sources.csv").
[[nodiscard]] bool SaveLongCsv(const QString& file, const ValueTable& table);
/// One row for each area, indicator, unit, subgroup and source; one column a period, in their order. Footnotes and
/// sources stand beside it.
[[nodiscard]] bool SaveWideCsv(const QString& file, const ValueTable& table);
/// SDMX-CSV, version 1, with the usual concepts as columns.
[[nodiscard]] bool SaveSdmxCsv(const QString& file, const ValueTable& table);
/// A JSON-stat 2 data set of six dimensions that names the cells it has; "note" lists the footnotes, and "extension"
/// says which cells they belong to and what is known of the sources. Of two values for one cell the last one stands.
[[nodiscard]] bool SaveJsonStat(const QString& file, const ValueTable& table);
/// A PX file with keys: one row for each combination that has values, periods across; footnotes as notes of cells.
/// Without values that are no numbers; of two values for one cell the last one stands.
[[nodiscard]] bool SavePx(const QString& file, const ValueTable& table);
/// A collection of features (RFC 7946), one an area, with its outline and one property for each combination of
/// indicator, unit, subgroup, source and period. Footnotes and sources stand beside it.
[[nodiscard]] bool SaveGeoJson(const QString& file, const ValueTable& table);
/// A shapefile with its table: ID_, Name1_ and one column V1, V2 ... for each combination, of which a file beside it
/// ("Name.columns.csv") tells what it is. Footnotes and sources stand beside it too.
[[nodiscard]] bool SaveShapefile(const QString& file, const ValueTable& table);

} // namespace tessaro
