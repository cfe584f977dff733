#include "exchange/ImportWriter.h"

#include "database/DataExists.h"
#include "database/LanguageTables.h"
#include "database/Schema.h"
#include "database/TargetDatabase.h"
#include "database/UnfinishedDatabase.h"
#include "database/UseOfFile.h"
#include "exchange/Comparison.h"
#include "exchange/ImportUndo.h"
#include "exchange/NewAreas.h"
#include "exchange/TreeMap.h"
#include "jet/engine/BulkLoad.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <set>

namespace tessaro {

namespace {

constexpr std::size_t kLongestCode = 60; ///< of the column AreaGId
constexpr int kValuesBetweenProgress = 8192;
constexpr std::int64_t kManyValues = 200'000; ///< with so many new ones the indexes are better made anew

/// The numbers in the database of what the check numbered below 0.
class Numbers final {
  public:
    void Add(qint64 number) { made_.push_back(number); }
    void Set(int checked, qint64 number) {
        const auto place = static_cast<std::size_t>(-checked) - 1;
        if (place >= made_.size()) made_.resize(place + 1);
        made_[place] = number;
    }
    [[nodiscard]] qint64 Of(int checked) const {
        return checked >= 0 ? checked : made_[static_cast<std::size_t>(-checked) - 1];
    }

  private:
    std::vector<qint64> made_;
};

/// Makes what the values refer to and the database lacks.
class ListWriter final {
  public:
    ListWriter(TargetDatabase& database, CheckedImport& checked, const QString& map)
        : database_(database), checked_(checked), map_(map) {}

    void Run() {
        database_.connection().Begin();
        const TargetItems& items = checked_.items;
        for (const std::string& period : items.periods.Made())
            periods.Add(database_.GetTimePeriodNID(QString::fromStdString(period)));
        for (const std::string& source : items.sources.Made())
            sources.Add(database_.GetSourceNID(QString::fromStdString(source)));
        MakeIndicators();
        MakeGIds("Unit", "Unit", items.units, unitGIds_);
        MakeGIds("Subpop", "Subpop", items.subgroups, subgroupGIds_);
        for (const TargetItems::Combination& parts : items.madeCombinations)
            combinations.Add(database_.GetIUSNId(GIdOf(parts.indicator, items.indicatorGIds, indicatorGIds_),
                                                 GIdOf(parts.unit, items.unitGIds, unitGIds_),
                                                 GIdOf(parts.subgroup, items.subgroupGIds, subgroupGIds_)));
        MakeFootnotes();
        MakeAreas();
        database_.connection().Commit();
    }

    Numbers periods;
    Numbers sources;
    Numbers combinations;
    Numbers footnotes;
    Numbers areas;

  private:
    using GIds = std::vector<QString>;

    static QString GIdOf(int number, const std::vector<std::string>& known, const GIds& made) {
        if (number < 0) return made[static_cast<std::size_t>(-number) - 1];
        return QString::fromStdString(known[static_cast<std::size_t>(number) - 1]);
    }

    void MakeGIds(const char* stem, const char* column, const ItemNames& names, GIds& gids) {
        for (const std::string& name : names.Made()) {
            const QString gid = database_.NewGId();
            database_.Run(QStringLiteral("INSERT INTO %1 (%2GId, [%3]) VALUES(%4)")
                              .arg(database_.InLanguage(QLatin1String(stem)), QLatin1String(stem),
                                   QLatin1String(column), QuotedList({gid, QString::fromStdString(name)})));
            gids.push_back(gid);
        }
    }

    void MakeIndicators() {
        MakeGIds("Indicator", "Indicator", checked_.items.indicators, indicatorGIds_);
        for (const QString& gid : indicatorGIds_)
            database_.PutInClass(gid, checked_.draft.sector, checked_.draft.indicatorClass);
    }

    void MakeFootnotes() {
        qint64 number = database_.NewNIdInLanguages(QStringLiteral("FootNoteNId"), QStringLiteral("Footnote"));
        for (const std::string& note : checked_.items.footnotes.Made()) {
            database_.Run(QStringLiteral("INSERT INTO %1 (FootNoteNId, FootNote) VALUES(%2,%3)")
                              .arg(database_.InLanguage(QStringLiteral("Footnote")))
                              .arg(number)
                              .arg(Quoted(QString::fromStdString(note))));
            footnotes.Add(number++);
        }
    }

    /// The code in the file of a tree, by which the area is found again.
    QString GIdOf(const NewAreaTexts& texts) {
        const bool isCode = !texts.code.empty() && texts.code.size() <= kLongestCode && texts.code.front() != '-';
        return isCode ? QString::fromStdString(texts.code) : database_.NewGId();
    }

    [[nodiscard]] QString MapOf(const NewArea& area, const NewAreaTexts& texts) const {
        const bool isOfTree = area.number < 0 && static_cast<std::size_t>(-area.number) <= checked_.tree.areas.size();
        return isOfTree && !map_.isEmpty() ? map_ : QString::fromStdString(texts.mapFile);
    }

    void MakeAreas() {
        qint64 number = database_.NewNIdInLanguages(QStringLiteral("AreaNId"), QStringLiteral("Area"));
        for (const NewArea& area : PlanNewAreas(checked_)) {
            const NewAreaTexts texts =
                area.number < 0 ? checked_.newAreaTexts[static_cast<std::size_t>(-area.number) - 1] : NewAreaTexts();
            database_.Run(
                QStringLiteral(
                    "INSERT INTO %1 (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) VALUES(%2,%3,%4,%5,%6)")
                    .arg(database_.InLanguage(QStringLiteral("Area")), Quoted(GIdOf(texts)), QString::number(number),
                         QuotedList({QString::fromStdString(area.id), QString::fromStdString(area.name)}),
                         QString::number(area.Level()), Quoted(MapOf(area, texts))));
            if (area.number < 0) areas.Set(area.number, number);
            ++number;
        }
    }

    TargetDatabase& database_;
    CheckedImport& checked_;
    QString map_; ///< of the areas of a tree that comes from a shapefile
    GIds indicatorGIds_;
    GIds unitGIds_;
    GIds subgroupGIds_;
};

/// Writes the values that are new or changed, and which sources their combinations have.
class ValueWriter final {
  public:
    ValueWriter(TargetDatabase& database, CheckedImport& checked, const ListWriter& lists)
        : database_(database), checked_(checked), lists_(lists) {}

    void Run(const ImportProgress& progress) {
        using Link = std::pair<qint64, qint64>;
        std::set<Link> linked;
        for (Records rows = database_.Open(QStringLiteral("SELECT IUSNId, SourceNId FROM Indicator_Source"));
             !rows.atEnd(); rows.MoveNext())
            linked.emplace(rows.Number(std::size_t{0}), rows.Number(std::size_t{1}));
        std::set<Link> missing;
        jet::BulkLoad load(database_.connection().path());
        load.Into("Data", {"RowNId", "TimePeriodNId", "IUSNId", "AreaNId", "SourceNId", "FootnoteNId", "Datavalue"},
                  jet::BulkLoad::SameKey::Replaces);
        Comparison comparison(*checked_.stage);
        ComparedValue one;
        const std::int64_t all = std::max<std::int64_t>(checked_.counts.fresh + checked_.counts.changed, 1);
        for (std::int64_t written = 0; comparison.Next(one);) {
            if (one.state != ValueState::Fresh && one.state != ValueState::Changed) continue;
            if (progress && written % kValuesBetweenProgress == 0) progress(static_cast<int>(10 + written * 40 / all));
            ++written;
            Write(load, one);
            const Link link{lists_.combinations.Of(one.value.combination), lists_.sources.Of(one.value.source)};
            if (link != lastLink_ && !linked.contains(link)) missing.insert(link);
            lastLink_ = link;
        }
        load.Into("Indicator_Source", {"IUSNId", "SourceNId", "RecommendedSource"});
        for (const auto& [combination, source] : missing)
            load.Add(std::array<jet::Value, 3>{std::int64_t{combination}, std::int64_t{source}, 0});
        load.Finish();
    }

  private:
    void Write(jet::BulkLoad& load, const ComparedValue& one) const {
        const StagedValue& value = one.value;
        const qint64 note = value.footnote != 0 ? lists_.footnotes.Of(value.footnote) : one.existingFootnote;
        const auto orNull = [](qint64 number) { return number != 0 ? jet::Value(std::int64_t{number}) : jet::Value(); };
        load.Add(std::array<jet::Value, 7>{orNull(one.existingRow), std::int64_t{lists_.periods.Of(value.period)},
                                           std::int64_t{lists_.combinations.Of(value.combination)},
                                           std::int64_t{lists_.areas.Of(value.area)},
                                           std::int64_t{lists_.sources.Of(value.source)}, orNull(note), value.value});
    }

    TargetDatabase& database_;
    CheckedImport& checked_;
    const ListWriter& lists_;
    std::pair<qint64, qint64> lastLink_{-1, -1};
};

/// What the work starts from: the empty template, or a copy of the database.
void MakeStart(const CheckedImport& checked, const QString& path) {
    if (checked.target.into != ImportInto::Template)
        return jet::Database::Copy(checked.target.base.toStdString(), path.toStdString());
    if (!CopyPassingFile(checked.target.base, path))
        throw std::runtime_error("The template can't be copied to " + path.toStdString());
}

QString WhatWasDone(const CheckedImport& checked) {
    return FilledText(QStringLiteral("TS_ImportLog"), {FileNameOf(checked.file), QString::number(checked.counts.fresh),
                                                       QString::number(checked.counts.changed)});
}

void Fill(CheckedImport& checked, const QString& path, const QString& map, const ImportProgress& progress) {
    TargetDatabase database(path, checked.target.Suffix());
    database.AddLaterTables();
    if (checked.target.into == ImportInto::Template)
        AddLanguage(database, checked.target.language, checked.target.Suffix().mid(1), true);
    if (checked.target.into == ImportInto::Lists) database.Run(QStringLiteral("Delete * FROM Data"));
    const bool many = checked.counts.fresh > kManyValues;
    // A database of another maker has other indexes, which then stay.
    const bool unindexed = many && ErrorTrap("WriteImport").Try([&] { schema::UnindexData(database.connection()); });
    ListWriter lists(database, checked, map);
    lists.Run();
    if (progress) progress(10);
    ValueWriter(database, checked, lists).Run(progress);
    if (progress) progress(50);
    if (unindexed) schema::IndexData(database.connection());
    CompleteLanguages(database, {});
    database.LogAction(checked.target.file, WhatWasDone(checked));
}

void Make(CheckedImport& checked, const QString& path, const QString& map, const ImportProgress& progress) {
    MakeStart(checked, path);
    Fill(checked, path, map, progress);
    const auto marking = [&](int percent) {
        if (progress) progress(65 + percent / 4);
    };
    if (!MarkDataExists(path, marking)) throw std::runtime_error("The marks can't be made.");
    if (checked.target.into == ImportInto::Lists) jet::Database::Compact(path.toStdString());
    jet::Analyze(path.toStdString());
}

QString Refused(const CheckedImport& checked) {
    const bool isItself = checked.target.into == ImportInto::Itself;
    if (!checked.IsUpToDate()) return FilledText(QStringLiteral("TS_ImportStale"), {});
    if (!isItself && (IsDatabaseInUse(checked.target.file) || IsSameFile(checked.target.file, checked.target.base)))
        return FilledText(QStringLiteral("012"), {});
    if (isItself && !IsSameFile(checked.target.file, checked.target.base))
        return FilledText(QStringLiteral("TS_ImportJetFile"), {});
    return {};
}

QString MapsFolderOf(const ImportTarget& target) {
    if (!target.mapsFolder.isEmpty()) return target.mapsFolder;
    return FolderOf(
        WritablePlace(JoinPath({AppPath, QStringLiteral("Maps"), QStringLiteral("New.shp")}), AppPath, CacheFolder));
}

bool PutInto(UnfinishedDatabase& unfinished, const CheckedImport& checked) {
    if (checked.target.into != ImportInto::Itself) return unfinished.Finish();
    // Another program may have changed it meanwhile.
    if (!checked.IsUpToDate()) return false;
    if (KeepBeforeImport(checked.target.file) && unfinished.Finish()) return true;
    QFile::remove(FileBeforeImport(checked.target.file));
    return false;
}

} // namespace

WrittenImport WriteImport(CheckedImport& checked, const ImportProgress& progress) {
    ErrorTrap trap("WriteImport");
    if (QString refused = Refused(checked); !refused.isEmpty()) return {false, refused};
    UnfinishedDatabase unfinished(checked.target.file);
    bool givenUp = false;
    bool put = false;
    const bool made = trap.Try([&] {
        try {
            TreeMap map(checked.tree, MapsFolderOf(checked.target));
            Make(checked, unfinished.Path(), map.Name(), progress);
            put = PutInto(unfinished, checked);
            if (put) map.Keep();
        } catch (const ImportGivenUp&) {
            givenUp = true;
        }
    });
    if (givenUp) return {};
    if (made && put) return {true, {}};
    if (made && !checked.IsUpToDate()) return {false, FilledText(QStringLiteral("TS_ImportStale"), {})};
    if (made)
        ReportError(FileError::PermissionDenied,
                    QLatin1String("The database can't be put in place: ") + checked.target.file,
                    QStringLiteral("WriteImport"));
    return {false, FilledText(QStringLiteral("TS_NewDatabaseFailed"), {FolderOf(checked.target.file)})};
}

} // namespace tessaro
