#include "database/TargetDatabase.h"

#include "database/NewGId.h"
#include "database/Schema.h"
#include "platform/Clock.h"
#include "platform/Paths.h"

#include <QStringList>

#include <algorithm>
#include <stdexcept>

namespace tessaro {

namespace {

/// What stands in `kept` under the key, or what `find` gives, which is kept.
template <class Kept, class Find> Kept FoundOnce(QHash<QString, Kept>& kept, const QString& key, Find&& find) {
    const auto found = kept.constFind(key);
    return found != kept.constEnd() ? *found : *kept.insert(key, find());
}

/// A table whose items have a global identifier and a name, as the statement spells it that adds a row.
struct NamedItems {
    const char* stem;    ///< of the table and of its GId column
    const char* name;    ///< the column of the name
    const char* columns; ///< of a new row
    const char* extra;   ///< what a new row has behind the name
};
// The indicator's information is the text, not a Null: so it has always been.
constexpr NamedItems kIndicators{"Indicator", "[Indicator]", " (IndicatorGId, [Indicator], Info)  Values (",
                                 ",'Null')"};
constexpr NamedItems kSectors{"SectorLabel1", "[SectorLabel1]", " (SectorLabel1GId, SectorLabel1)  Values (", ")"};
constexpr NamedItems kClasses{"SectorLabel2", "[SectorLabel2]", " (SectorLabel2GId, SectorLabel2)  Values (", ")"};
constexpr NamedItems kUnits{"Unit", "[Unit]", " (UnitGId, Unit) VALUES(", ")"};

/// The global identifier of the item with this name; a new one gets a row.
QString FindOrMake(TargetDatabase& target, const NamedItems& items, const QString& name) {
    const QString stem = QLatin1String(items.stem);
    const QString table = target.InLanguage(stem);
    const jet::Value found =
        target.First(QStringLiteral("Select ") + stem + QStringLiteral("GId From ") + table +
                     QStringLiteral(" Where ") + QLatin1String(items.name) + QStringLiteral(" = ") + Quoted(name));
    if (!found.isNull()) return QString::fromStdString(found.toText());
    QString gid = target.NewGId();
    target.Run(QStringLiteral("Insert into ") + table + QLatin1String(items.columns) + QuotedList({gid, name}) +
               QLatin1String(items.extra));
    return gid;
}

void LinkSectorToClass(TargetDatabase& target, const QString& sector, const QString& sectorClass) {
    const jet::Value found =
        target.First(QStringLiteral("Select SectorLabel1GId From [Sector]  Where SectorLabel1GID = ") + Quoted(sector) +
                     QStringLiteral(" AND  SectorLabel2GID = ") + Quoted(sectorClass));
    if (found.isNull())
        target.Run(QStringLiteral("Insert into [Sector] (SectorLabel1GId, SectorLabel2GId) VALUES(") +
                   QuotedList({sector, sectorClass}) + QLatin1Char(')'));
}

void LinkClassToIndicator(TargetDatabase& target, const QString& sectorClass, const QString& indicator) {
    const jet::Value found =
        target.First(QStringLiteral("Select SectorLabel2GId From [INDICATOR_SECTOR]  Where SectorLabel2GID = ") +
                     Quoted(sectorClass) + QStringLiteral(" AND IndicatorGID = ") + Quoted(indicator));
    if (found.isNull())
        target.Run(QStringLiteral("Insert into [INDICATOR_SECTOR] (IndicatorGID, SectorLabel2GId) VALUES(") +
                   QuotedList({indicator, sectorClass}) + QLatin1Char(')'));
}

QString Numbers(std::initializer_list<qint64> numbers) {
    QStringList texts;
    for (const qint64 number : numbers)
        texts << QString::number(number);
    return texts.join(QLatin1Char(','));
}

} // namespace

TargetDatabase::TargetDatabase(const QString& path, QString suffix)
    : connection_(jet::Connection::Open(path.toStdString(), DatabasePassword())), suffix_(std::move(suffix)) {}

QString TargetDatabase::InLanguage(const QString& table) const {
    return QLatin1Char('[') + table + suffix_ + QLatin1Char(']');
}

QStringList TargetDatabase::LanguageCodes() {
    QStringList codes;
    for (Records rows = Open(QStringLiteral("Select LanguageCode from [Language]")); !rows.atEnd(); rows.MoveNext())
        codes << rows.Text(std::size_t{0});
    return codes;
}

void TargetDatabase::Run(const QString& sql) {
    connection_->Execute(sql.toStdString());
}

Records TargetDatabase::Open(const QString& sql) {
    return Records(connection_->OpenRecordset(sql.toStdString()));
}

jet::Value TargetDatabase::First(const QString& sql) {
    Records rows = Open(sql);
    return rows.atEnd() ? jet::Value() : rows.rows().Get(std::size_t{0});
}

QString TargetDatabase::NewGId() {
    QString gid = tessaro::NewGId(connection_.get());
    if (gid.isEmpty()) throw std::runtime_error("The new database gives no identifiers.");
    return gid;
}

qint64 TargetDatabase::GetNewNId(const QString& column, const QString& table) {
    return First(QStringLiteral("SELECT MAX(%1) FROM %2").arg(column, table)).toInteger() + 1;
}

QString TargetDatabase::GetIndicatorGId(const QString& name) {
    return FindOrMake(*this, kIndicators, name);
}

QString TargetDatabase::GetUnitGId(const QString& name) {
    return FindOrMake(*this, kUnits, name);
}

void TargetDatabase::PutInClass(const QString& indicatorGId, const QString& sector, const QString& sectorClass) {
    const QString upper = FindOrMake(*this, kSectors, sector);
    const QString lower = FindOrMake(*this, kClasses, sectorClass);
    LinkSectorToClass(*this, upper, lower);
    LinkClassToIndicator(*this, lower, indicatorGId);
}

void TargetDatabase::AddLaterTables() {
    for (const schema::TableDefinition& table : schema::DataTables()) {
        if (table.perLanguage || connection_->catalogue().find(table.name) != nullptr) continue;
        connection_->Execute("CREATE TABLE [" + std::string(table.name) + "] (" + std::string(table.columns) + ")");
    }
}

void TargetDatabase::LogAction(const QString& file, const QString& what) {
    const QString time = Now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    Run(QStringLiteral("INSERT INTO Database_Log ([TimeStamp], DatabaseFileName, [Action])  VALUES(") +
        QuotedList({time, FileNameOf(file).right(schema::kLongestName), what.left(schema::kLongestName)}) +
        QLatin1Char(')'));
}

qint64 TargetDatabase::GetAreaNID(const QString& areaId) {
    return FoundOnce(areas_, areaId, [&] {
        return First(QStringLiteral("Select AreaNId From %1 Where [AreaID] = %2")
                         .arg(InLanguage(QStringLiteral("Area")), Quoted(areaId)))
            .toInteger();
    });
}

qint64 TargetDatabase::GetTimePeriodNID(const QString& timePeriod) {
    return FoundOnce(times_, timePeriod, [&]() -> qint64 {
        const QString text = Quoted(timePeriod);
        const jet::Value found =
            First(QStringLiteral("Select TimePeriodNId From [TimePeriod] Where [TimePeriod] = ") + text);
        if (!found.isNull()) return found.toInteger();
        const qint64 nid = GetNewNId(QStringLiteral("TimePeriodNId"), QStringLiteral("[TimePeriod]"));
        Run(QStringLiteral("Insert into TimePeriod (TimePeriodNId, TimePeriod, DataExists)  Values (%1,").arg(nid) +
            text + QStringLiteral(",True)"));
        return nid;
    });
}

QString TargetDatabase::GetSubpopGID(const QString& subpop) {
    return FoundOnce(subpops_, subpop, [&] {
        const QString table = InLanguage(QStringLiteral("Subpop"));
        const QString text = Quoted(subpop);
        const jet::Value found =
            First(QStringLiteral("Select SubpopGId From ") + table + QStringLiteral(" Where [Subpop] = ") + text);
        if (!found.isNull()) return QString::fromStdString(found.toText());
        QString gid = NewGId();
        Run(QStringLiteral("Insert into ") + table + QStringLiteral(" (SubpopGId, Subpop)  Values (") + Quoted(gid) +
            QLatin1Char(',') + text + QLatin1Char(')'));
        return gid;
    });
}

qint64 TargetDatabase::GetIUSNId(const QString& indicatorGId, const QString& unitGId, const QString& subpopGId) {
    const QString key = QStringList{indicatorGId, unitGId, subpopGId}.join(QChar(0));
    return FoundOnce(combinations_, key, [&]() -> qint64 {
        const jet::Value found =
            First(QStringLiteral("Select IUSNId From [Indicator_Unit_Subpop]  Where IndicatorGId = ") +
                  Quoted(indicatorGId) + QStringLiteral(" AND UnitGId = ") + Quoted(unitGId) +
                  QStringLiteral(" AND SubpopGId = ") + Quoted(subpopGId));
        if (!found.isNull()) return found.toInteger();
        const qint64 nid = GetNewNId(QStringLiteral("IUSNId"), QStringLiteral("Indicator_Unit_Subpop"));
        Run(QStringLiteral("Insert into Indicator_Unit_Subpop (IUSNId, IndicatorGId, UnitGID, SubpopGId, DataExists)  "
                           "Values (%1,")
                .arg(nid) +
            QuotedList({indicatorGId, unitGId, subpopGId}) + QStringLiteral(",True)"));
        return nid;
    });
}

qint64 TargetDatabase::GetSourceNID(const QString& source) {
    return FoundOnce(sources_, source, [&] {
        const jet::Value found = First(
            QStringLiteral("Select SourceNId From %1 Where [Source] = ").arg(InLanguage(QStringLiteral("Source"))) +
            Quoted(source));
        return found.isNull() ? MakeSource(source) : found.toInteger();
    });
}

qint64 TargetDatabase::GetSourceNID(const QString& source, qint64 iusNId) {
    const qint64 nid = GetSourceNID(source);
    if (linkedSources_.contains({iusNId, nid})) return nid;
    linkedSources_.insert({iusNId, nid});
    const jet::Value linked =
        First(QStringLiteral("Select SourceNId From Indicator_Source  Where IUSNId = %1 AND SourceNId = %2")
                  .arg(iusNId)
                  .arg(nid));
    if (linked.isNull())
        Run(QStringLiteral("Insert into Indicator_Source (IUSNId, SourceNId, RecommendedSource)  Values (") +
            Numbers({iusNId, nid}) + QStringLiteral(",False)"));
    return nid;
}

/// A source's text begins with its region: "World_Census 2001".
qint64 TargetDatabase::MakeSource(const QString& source) {
    const qint64 regionNId = GetRegionNId(source.section(QLatin1Char('_'), 0, 0));
    const qint64 nid = NewNIdInLanguages(QStringLiteral("SourceNId"), QStringLiteral("Source"));
    Run(QStringLiteral("Insert into ") + InLanguage(QStringLiteral("Source")) +
        QStringLiteral(" (SourceGId, SourceNId, RegionNId, Source, Info, DataExists)  Values (") + Quoted(NewGId()) +
        QLatin1Char(',') + Numbers({nid, regionNId}) + QLatin1Char(',') + Quoted(source) +
        QStringLiteral(",NULL,True)"));
    return nid;
}

qint64 TargetDatabase::NewNIdInLanguages(const QString& column, const QString& table) {
    qint64 nid = GetNewNId(column, InLanguage(table));
    for (const QString& code : LanguageCodes())
        nid = std::max(nid, GetNewNId(column, QStringLiteral("[%1_%2]").arg(table, code)));
    return nid;
}

qint64 TargetDatabase::GetRegionNId(const QString& region) {
    return FoundOnce(regions_, region, [&]() -> qint64 {
        const QString text = Quoted(region);
        const jet::Value found = First(QStringLiteral("Select RegionNId From [Region] Where [Region] = ") + text);
        if (!found.isNull()) return found.toInteger();
        const qint64 nid = GetNewNId(QStringLiteral("RegionNId"), QStringLiteral("[Region]"));
        Run(QStringLiteral("Insert into Region (RegionGId, RegionNId, Region)  Values (%1,%2,")
                .arg(Quoted(NewGId()))
                .arg(nid) +
            text + QLatin1Char(')'));
        return nid;
    });
}

void TargetDatabase::CreateThisMaster(const QString& stem, const QString& gid, const QString& name,
                                      const QString& info) {
    const bool hasInfo = !info.trimmed().isEmpty();
    Run(QStringLiteral("INSERT Into ") + InLanguage(stem) + QStringLiteral(" (") + stem + QStringLiteral("GId, ") +
        stem + (hasInfo ? QStringLiteral(", INFO)  VALUES(") : QStringLiteral(")  VALUES(")) +
        QuotedList(hasInfo ? QStringList{gid, name, info} : QStringList{gid, name}) + QLatin1Char(')'));
}

} // namespace tessaro
