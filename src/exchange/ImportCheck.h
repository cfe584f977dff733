#pragma once

#include "exchange/AreaTree.h"
#include "exchange/ImportDraft.h"
#include "exchange/ImportStage.h"
#include "exchange/RowRules.h"
#include "exchange/TargetItems.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace tessaro {

/// Where the values go.
enum class ImportInto {
    Template, ///< a new, empty database
    Lists,    ///< a new one with the areas, indicators and other lists of another, but none of its values
    Copy,     ///< a copy of another
    Itself    ///< the database itself, whose former state is kept for an undo
};

struct ImportTarget {
    ImportInto into = ImportInto::Copy;
    QString base;     ///< the database that the work starts from, as the engine opens it; the template for Template
    QString file;     ///< the database that is made, or changed
    QString language; ///< "English [en]": whose names are looked for first, and of new items
    QString mapsFolder = {}; ///< takes the map of an area tree; empty: the folder of the program

    [[nodiscard]] QString Suffix() const; ///< "_en"
    [[nodiscard]] bool ComparesValues() const { return into == ImportInto::Copy || into == ImportInto::Itself; }
};

struct RefusedValue {
    std::int64_t row = 0;
    std::size_t column = 0; ///< from 0; meaningless for Double
    Refusal why = Refusal::BadRow;
    QString text; ///< what can't be read, is missing, or is unknown
};

struct ChangedValue {
    std::int64_t row = 0;
    QString what; ///< area, period, indicator, unit, subgroup, source
    QString before;
    QString now;
};

/// An area of the file that the database has not, with the areas that it may be.
struct UnknownArea {
    QString text;
    std::int64_t values = 0;
    bool isShared = false;
    QStringList nearest; ///< "AFRKEN Kenya"
    QStringList nearestIds;
};

struct ImportCounts {
    std::int64_t rows = 0;
    std::int64_t empty = 0; ///< places without a value
    std::int64_t fresh = 0;
    std::int64_t same = 0;
    std::int64_t changed = 0;
    std::int64_t refused = 0;
    std::array<std::int64_t, kRefusals> by{}; ///< refused, by reason
};

/// What would be made besides values.
struct ImportAdditions {
    QStringList indicators, units, subgroups, sources, periods, areas;
    std::int64_t footnotes = 0;
};

/// What is told of an area that is to be made; empty where nothing is.
struct NewAreaTexts {
    std::string id;
    std::string name;
    std::string code; ///< of an area of a tree: what its file calls it
    std::string mapFile;
};

/// The outcome of a check: nothing is written yet, and all is ready for it.
struct CheckedImport {
    /// The lists hold so many entries; the counts are of all.
    static constexpr std::size_t kMostListed = 100'000;

    QString file;
    ImportDraft draft;
    ImportTarget target;
    ImportCounts counts;
    std::vector<RefusedValue> refused;
    std::vector<ChangedValue> changed;
    std::vector<UnknownArea> unknownAreas;
    TargetItems items;
    ItemNames newAreas;                     ///< those to be made, by id or name: numbers below 0
    std::vector<NewAreaTexts> newAreaTexts; ///< of each of them
    AreaTree tree;                          ///< its areas are the first of them
    std::unique_ptr<ImportStage> stage;

    [[nodiscard]] ImportAdditions Additions() const;
    /// Whether something would be written.
    [[nodiscard]] bool HasWork() const { return counts.fresh + counts.changed > 0; }
    /// Whether the file and the database are what they were when they were checked.
    [[nodiscard]] bool IsUpToDate() const;

    struct Mark {
        qint64 size = -1;
        QDateTime time;
        bool operator==(const Mark&) const = default;
    };
    Mark fileMark;
    Mark baseMark;
    [[nodiscard]] static Mark MarkOf(const QString& path);
};

/// Thrown where the work tells its progress, when the user has given it up.
struct ImportGivenUp {};
/// Is told how far the work is, in per cent, several times a second; may throw ImportGivenUp.
using ImportProgress = std::function<void(int percent)>;

/// Reads a whole file and compares it with the database; changes nothing. Throws ReadError, jet::Error, ImportGivenUp.
[[nodiscard]] std::unique_ptr<CheckedImport> CheckImport(const QString& file, const ImportDraft& draft,
                                                         const ImportTarget& target,
                                                         const ImportProgress& progress = {});

} // namespace tessaro
