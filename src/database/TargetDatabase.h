#pragma once

#include "session/Query.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <memory>

namespace tessaro {

/// The database that is being made: finds ids in it by the names that go with them, and makes what it does not have.
/// Names are those of the session's language, in whose tables they are looked for. What was found or made is kept, so
/// that a name is looked up once. Everything throws jet::Error when a statement fails.
class TargetDatabase final {
  public:
    /// Opens the file. `suffix` is that of the session's language, "_en".
    TargetDatabase(const QString& path, QString suffix);

    [[nodiscard]] jet::Connection& connection() { return *connection_; }
    [[nodiscard]] const QString& suffix() const { return suffix_; }
    /// A table of the session's language as statements write it: "[Indicator_en]".
    [[nodiscard]] QString InLanguage(const QString& table) const;
    /// The codes of the database's languages, in its own order.
    [[nodiscard]] QStringList LanguageCodes();

    void Run(const QString& sql);
    [[nodiscard]] Records Open(const QString& sql);
    /// The first field of the first row; Null when there is none.
    [[nodiscard]] jet::Value First(const QString& sql);

    /// A new global identifier. Throws when the engine gives none.
    [[nodiscard]] QString NewGId();
    /// The number after the highest one in use; 1 in an empty table.
    [[nodiscard]] qint64 GetNewNId(const QString& column, const QString& table);
    [[nodiscard]] QString GetIndicatorGId(const QString& name);
    [[nodiscard]] QString GetUnitGId(const QString& name);
    /// Sees to it that the sector has the class and the class the indicator; what is missing is made.
    void PutInClass(const QString& indicatorGId, const QString& sector, const QString& sectorClass);
    /// The same over the tables of all languages ("AreaNId", "Area"), which share the numbers of their items; one of
    /// them may have more rows than the others.
    [[nodiscard]] qint64 NewNIdInLanguages(const QString& column, const QString& table);
    /// 0 when the database has no such area.
    [[nodiscard]] qint64 GetAreaNID(const QString& areaId);
    [[nodiscard]] qint64 GetTimePeriodNID(const QString& timePeriod);
    [[nodiscard]] QString GetSubpopGID(const QString& subpop);
    [[nodiscard]] qint64 GetIUSNId(const QString& indicatorGId, const QString& unitGId, const QString& subpopGId);
    [[nodiscard]] qint64 GetSourceNID(const QString& source);
    /// Also sees to it that the combination of indicator, unit and subgroup has the source.
    [[nodiscard]] qint64 GetSourceNID(const QString& source, qint64 iusNId);
    [[nodiscard]] qint64 GetRegionNId(const QString& region);
    /// Inserts a row into a label table: the stem names the table, its GId column and its text column. A blank `info`
    /// is left out.
    void CreateThisMaster(const QString& stem, const QString& gid, const QString& name, const QString& info = {});

    /// Databases from before there were logs lack tables that every new one has; they get them.
    void AddLaterTables();
    /// A line of the change log, at the time it is now: the file's name, and what was done.
    void LogAction(const QString& file, const QString& what);

  private:
    [[nodiscard]] qint64 MakeSource(const QString& source);

    std::shared_ptr<jet::Connection> connection_;
    QString suffix_;
    QHash<QString, qint64> areas_;
    QHash<QString, qint64> times_;
    QHash<QString, qint64> regions_;
    QHash<QString, qint64> sources_;
    QHash<QString, qint64> combinations_;
    QHash<QString, QString> subpops_;
    QSet<std::pair<qint64, qint64>> linkedSources_;
};

} // namespace tessaro
