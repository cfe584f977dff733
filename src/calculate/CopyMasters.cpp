#include "calculate/CopyMasters.h"

#include "calculate/BuildingStop.h"
#include "database/AreaIds.h"
#include "session/Session.h"

#include <QStringList>

namespace tessaro {

namespace {

using Cursor = jet::CursorType;

/// A classification of two or three levels, whose lowest labels combinations of indicator, unit and subgroup have.
struct ClassTree {
    const char* name;  ///< of its table
    const char* alias; ///< in the statement
    int levels;
};
constexpr ClassTree kTrees[] = {{"Goal", "G", 3}, {"Convention", "C", 3}, {"Institution", "N", 2}};

/// One without levels.
constexpr const char* kLists[] = {"CF", "THEME"};

/// The combinations that have rows in _Data, each once, so that the rows themselves are not joined with all that is
/// read for the combinations.
const QString kCombinations = QStringLiteral(
    "((SELECT DISTINCT IndicatorGId, UnitGId, SubpopGId%1 FROM _Data) AS D INNER JOIN Indicator_Unit_Subpop AS IUS ON "
    "(D.IndicatorGId = IUS.IndicatorGId) AND (D.UnitGId = IUS.UnitGId) AND (D.SubpopGId = IUS.SubpopGId))");
const QString kCombinationKey = QStringLiteral("IUS.IndicatorGId, IUS.UnitGId, IUS.SubpopGId");

Records Read(const QString& sql) {
    return Records(Connection->OpenRecordset(sql.toStdString(), Cursor::Static));
}

QString LabelTable(const ClassTree& tree, int level) {
    return QLatin1String(tree.name) + QLatin1String("Label") + QString::number(level);
}

/// "SELECT DISTINCTROW G1.GoalLabel1, G1.GoalLabel1GId, …" with the labels of all levels in their order.
QString TreeStatement(const ClassTree& tree) {
    const QString alias = QLatin1String(tree.alias);
    const QString name = QLatin1String(tree.name);
    QStringList fields;
    QStringList order;
    QString labels = name + QLatin1String(" AS ") + alias;
    for (int level = 1; level <= tree.levels; ++level) {
        const QString table = LabelTable(tree, level);
        const QString from = alias + QString::number(level);
        fields << from + QLatin1Char('.') + table << from + QLatin1Char('.') + table + QLatin1String("GId");
        order << from + QLatin1Char('.') + table;
        labels = QStringLiteral("(%1 INNER JOIN %2 AS %3 ON %4.%2GId = %3.%2GId)").arg(labels, table, from, alias);
    }
    if (tree.levels == 3) fields << alias + QLatin1String("3.Info");
    return QStringLiteral("SELECT DISTINCTROW %1, %2 FROM %3 INNER JOIN (Indicator_%4 AS L INNER JOIN %5 ON L.%6GId = "
                          "%7.%6GId) ON IUS.IUSNId = L.IUSNId ORDER BY %8")
        .arg(fields.join(QLatin1String(", ")), kCombinationKey, kCombinations.arg(QString()), name, labels,
             LabelTable(tree, tree.levels), alias, order.join(QLatin1Char(',')));
}

class Masters final {
  public:
    explicit Masters(TargetDatabase& target) : target_(target) {}

    void Copy() {
        using Step = void (Masters::*)();
        constexpr Step steps[] = {&Masters::CopySectors,        &Masters::CopyIndicatorsWithoutSector,
                                  &Masters::CopyUnits,          &Masters::CopySubpops,
                                  &Masters::CopyCombinations,   &Masters::CopyTrees,
                                  &Masters::CopyLists,          &Masters::CopySources,
                                  &Masters::CopyFurtherSources, &Masters::CopyTimes,
                                  &Masters::CopyAreas};
        for (const Step step : steps) {
            (this->*step)();
            LookForStop();
        }
    }

  private:
    /// True the first time that the row of a table, named by its keys, is asked for. Keys that differ in case are one.
    bool IsNew(const QString& table, const QStringList& keys) {
        const QString row = (QStringList{table} + keys).join(QChar(0)).toCaseFolded();
        const bool isNew = !made_.contains(row);
        if (isNew) made_.insert(row);
        return isNew;
    }

    void Label(const QString& stem, const QString& gid, const QString& name, const QString& info = {}) {
        if (IsNew(stem, {gid})) target_.CreateThisMaster(stem, gid, name, info);
    }

    /// A row of a table that holds nothing but keys.
    void Link(const QString& table, const QString& columns, const QStringList& keys) {
        if (!IsNew(table, keys)) return;
        target_.Run(QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") + columns +
                    QStringLiteral(") VALUES(") + QuotedList(keys) + QLatin1Char(')'));
    }

    void LinkCombination(const QString& table, const QString& column, qint64 iusNId, const QString& gid) {
        if (!IsNew(table, {QString::number(iusNId), gid})) return;
        target_.Run(QStringLiteral("INSERT INTO %1 (IUSNId, %2) VALUES(%3,").arg(table, column).arg(iusNId) +
                    Quoted(gid) + QLatin1Char(')'));
    }

    /// The number that a combination of the source has in the target.
    qint64 CombinationOf(const Records& row) {
        const QStringList key{row.Text("IndicatorGId"), row.Text("UnitGId"), row.Text("SubpopGId")};
        qint64& nid = combinations_[key];
        if (nid != 0) return nid;
        nid = target_
                  .First(QStringLiteral("SELECT IUSNId From Indicator_Unit_Subpop IUS  WHERE IUS.IndicatorGId = ") +
                         Quoted(key[0]) + QStringLiteral(" AND IUS.UnitGId = ") + Quoted(key[1]) +
                         QStringLiteral(" AND IUS.SubpopGId = ") + Quoted(key[2]))
                  .toInteger();
        return nid;
    }

    void CopySectors() {
        Records rows = Read(QStringLiteral(
            "SELECT DISTINCT S1.SectorLabel1, S1.SectorLabel1GId, S2.SectorLabel2, S.SectorLabel2GId, D.[Indicator], "
            "D.IndicatorGId  FROM _Data AS D INNER JOIN ((Indicator_Sector AS I_S INNER JOIN SectorLabel2 AS S2 ON  "
            "I_S.SectorLabel2GId = S2.SectorLabel2GId) INNER JOIN (Sector AS S INNER JOIN SectorLabel1  AS S1 ON "
            "S.SectorLabel1GId = S1.SectorLabel1GId) ON S2.SectorLabel2GId = S.SectorLabel2GId)  ON D.IndicatorGId = "
            "I_S.IndicatorGId ORDER BY S1.SectorLabel1,S2.SectorLabel2,D.[Indicator]"));
        for (; !rows.atEnd(); rows.MoveNext()) {
            const QString sector = rows.Text("SectorLabel1GId");
            const QString sectorClass = rows.Text("SectorLabel2GId");
            const QString indicator = rows.Text("IndicatorGId");
            Label(QStringLiteral("SectorLabel1"), sector, rows.Text("SectorLabel1"));
            Label(QStringLiteral("SectorLabel2"), sectorClass, rows.Text("SectorLabel2"));
            Link(QStringLiteral("Sector"), QStringLiteral("SectorLabel1GId, SectorLabel2GId"), {sector, sectorClass});
            CopyIndicator(indicator, rows.Text("Indicator"));
            Link(QStringLiteral("Indicator_Sector"), QStringLiteral("SectorLabel2GId, IndicatorGId"),
                 {sectorClass, indicator});
        }
    }

    void CopyIndicator(const QString& gid, const QString& name) {
        const QString table = target_.InLanguage(QStringLiteral("Indicator"));
        if (!IsNew(table, {gid})) return;
        const Records info = Read(QStringLiteral("SELECT Info FROM [Indicator] WHERE IndicatorGId = ") + Quoted(gid));
        const bool none = info.atEnd() || info.IsNull(0);
        target_.Run(QStringLiteral("INSERT INTO ") + table +
                    QStringLiteral(" (IndicatorGId, [Indicator], Info)  "
                                   "VALUES(") +
                    QuotedList({gid, name}) + QLatin1Char(',') +
                    (none ? QStringLiteral("NULL") : Quoted(info.Text(std::size_t{0}))) + QLatin1Char(')'));
    }

    /// Indicators that no sector has are in the data view all the same.
    void CopyIndicatorsWithoutSector() {
        Records rows = Read(QStringLiteral("SELECT DISTINCT IndicatorGId, [Indicator] FROM _Data "));
        for (; !rows.atEnd(); rows.MoveNext())
            CopyIndicator(rows.Text("IndicatorGId"), rows.Text("Indicator"));
    }

    void CopyUnits() { CopyNames("Unit"); }
    void CopySubpops() { CopyNames("Subpop"); }
    void CopyNames(const char* table) {
        const QString name = QLatin1String(table);
        Records rows = Read(QStringLiteral("SELECT DISTINCT %1GId, %1 FROM _Data ").arg(name));
        for (; !rows.atEnd(); rows.MoveNext())
            Link(target_.InLanguage(name), name + QStringLiteral("GId, ") + name,
                 {rows.Text(std::size_t{0}), rows.Text(std::size_t{1})});
    }

    void CopyCombinations() {
        Records rows = Read(QStringLiteral("SELECT DISTINCT IndicatorGID, UnitGID, SubpopGId FROM _Data "));
        for (; !rows.atEnd(); rows.MoveNext())
            Link(QStringLiteral("Indicator_Unit_subpop"), QStringLiteral("IndicatorGID, UnitGID, SubpopGId"),
                 {rows.Text(std::size_t{0}), rows.Text(std::size_t{1}), rows.Text(std::size_t{2})});
    }

    void CopyTrees() {
        for (const ClassTree& tree : kTrees)
            CopyTree(tree);
    }

    void CopyTree(const ClassTree& tree) {
        const QString name = QLatin1String(tree.name);
        for (Records rows = Read(TreeStatement(tree)); !rows.atEnd(); rows.MoveNext()) {
            QStringList columns;
            QStringList gids;
            for (int level = 1; level <= tree.levels; ++level) {
                const QString stem = LabelTable(tree, level);
                const auto field = static_cast<std::size_t>(level - 1) * 2;
                columns << stem + QLatin1String("GId");
                gids << rows.Text(field + 1);
                Label(stem, gids.back(), rows.Text(field), level == 3 ? rows.Text("Info") : QString());
            }
            Link(name, columns.join(QLatin1String(", ")), gids);
            LinkCombination(QLatin1String("INDICATOR_") + name, columns.back(), CombinationOf(rows), gids.back());
        }
    }

    void CopyLists() {
        for (const char* list : kLists)
            CopyList(QLatin1String(list));
    }

    void CopyList(const QString& name) {
        Records rows = Read(QStringLiteral("SELECT DISTINCTROW C.%1Label1, C.%1GId, C.Info, %2 FROM %3 INNER JOIN "
                                           "(Indicator_%1 AS L INNER JOIN %1 AS C ON L.%1GId = C.%1GId) ON IUS.IUSNId "
                                           "= L.IUSNId ORDER BY C.%1Label1")
                                .arg(name, kCombinationKey, kCombinations.arg(QString())));
        for (; !rows.atEnd(); rows.MoveNext()) {
            const QString gid = rows.Text(1);
            if (IsNew(name, {gid})) InsertListed(name, rows);
            LinkCombination(QLatin1String("INDICATOR_") + name, name + QLatin1String("GId"), CombinationOf(rows), gid);
        }
    }

    void InsertListed(const QString& name, const Records& row) {
        const bool hasInfo = !row.IsNull(2);
        QStringList texts{row.Text(1), row.Text(std::size_t{0})};
        if (hasInfo) texts << row.Text(2);
        target_.Run(
            QStringLiteral("INSERT INTO ") + target_.InLanguage(name) +
            QStringLiteral(" (%1GId, %1Label1%2) VALUES(").arg(name, hasInfo ? QStringLiteral(", Info") : QString()) +
            QuotedList(texts) + QLatin1Char(')'));
    }

    void CopySources() {
        Records rows = Read(
            QStringLiteral("SELECT DISTINCTROW R.Region,R.RegionGId, S.Source, S.SourceGId, S.Info, "
                           "I_S.RecommendedSource, ") +
            kCombinationKey + QStringLiteral(" FROM ") + kCombinations.arg(QStringLiteral(", Source")) +
            QStringLiteral(" INNER JOIN (Indicator_Source AS I_S INNER JOIN (Source AS S INNER JOIN Region AS R ON "
                           "S.RegionNId = R.RegionNId) ON I_S.SourceNId = S.SourceNId) ON (IUS.IUSNId = I_S.IUSNId) "
                           "AND (D.Source = S.Source) ORDER BY R.Region, S.Source"));
        QHash<QString, qint64> regions;
        QHash<QString, qint64> sources;
        for (; !rows.atEnd(); rows.MoveNext()) {
            qint64& region = regions[rows.Text("RegionGId").toCaseFolded()];
            if (region == 0) region = InsertRegion(rows);
            qint64& source = sources[rows.Text("SourceGId").toCaseFolded()];
            if (source == 0) source = InsertSource(rows, region);
            LinkSource(CombinationOf(rows), source, rows.Flag("RecommendedSource"));
        }
    }

    qint64 InsertRegion(const Records& row) {
        const qint64 nid = target_.GetNewNId(QStringLiteral("RegionNId"), QStringLiteral("[Region]"));
        target_.Run(QStringLiteral("INSERT INTO Region (RegionGId, RegionNId, Region) VALUES(") +
                    Quoted(row.Text("RegionGId")) + QStringLiteral(",%1,").arg(nid) + Quoted(row.Text("Region")) +
                    QLatin1Char(')'));
        return nid;
    }

    qint64 InsertSource(const Records& row, qint64 region) {
        const QString table = target_.InLanguage(QStringLiteral("Source"));
        const qint64 nid = target_.GetNewNId(QStringLiteral("SourceNId"), table);
        target_.Run(QStringLiteral("INSERT INTO ") + table +
                    QStringLiteral(" (SourceGId, SourceNId, RegionNId, Source, Info) VALUES(") +
                    Quoted(row.Text("SourceGId")) + QStringLiteral(",%1,%2,").arg(nid).arg(region) +
                    Quoted(row.Text("Source")) + QLatin1Char(',') +
                    (row.IsNull(4) ? QStringLiteral("NULL") : Quoted(row.Text("Info"))) + QLatin1Char(')'));
        return nid;
    }

    void LinkSource(qint64 iusNId, qint64 sourceNId, bool recommended) {
        if (!IsNew(QStringLiteral("Indicator_Source"), {QString::number(iusNId), QString::number(sourceNId)})) return;
        target_.Run(QStringLiteral("INSERT INTO Indicator_Source (IUSNId, SourceNId, RecommendedSource) VALUES(%1,%2,"
                                   "%3)")
                        .arg(iusNId)
                        .arg(sourceNId)
                        .arg(recommended ? QLatin1String("True") : QLatin1String("False")));
    }

    /// A source whose region the open database lacks, or that it does not list for its combination, still has rows.
    void CopyFurtherSources() {
        Records rows = Read(QStringLiteral("SELECT DISTINCT IndicatorGId, UnitGId, SubpopGId, Source FROM _Data "));
        for (; !rows.atEnd(); rows.MoveNext())
            (void)target_.GetSourceNID(rows.Text("Source"), CombinationOf(rows));
    }

    void CopyTimes() {
        Records rows = Read(QStringLiteral("Select distinct TimePeriod From _Data "));
        for (; !rows.atEnd(); rows.MoveNext())
            target_.Run(QStringLiteral("Insert into TimePeriod (TimePeriodNId, TimePeriod)  Values (%1,")
                            .arg(target_.GetNewNId(QStringLiteral("TimePeriodNId"), QStringLiteral("[TimePeriod]"))) +
                        Quoted(rows.Text(std::size_t{0})) + QLatin1Char(')'));
    }

    void CopyAreas() {
        const QStringList ids = AreasWithParents();
        if (ids.isEmpty()) return;
        Records rows =
            Read(QStringLiteral("Select AreaGId, AreaId, AreaName, AreaLevel, MapFile FROM Area WHERE AreaID in (") +
                 QuotedList(ids) + QLatin1Char(')'));
        const QString table = target_.InLanguage(QStringLiteral("Area"));
        for (; !rows.atEnd(); rows.MoveNext()) {
            if (!IsNew(table, {rows.Text("AreaId")})) continue;
            target_.Run(QStringLiteral("INSERT INTO ") + table +
                        QStringLiteral(" (AreaGId, AreaId, AreaName, AreaLevel, MapFile, DataExists) VALUES(") +
                        QuotedList({rows.Text("AreaGId"), rows.Text("AreaId"), rows.Text("AreaName")}) +
                        QStringLiteral(",%1,").arg(rows.Number("AreaLevel")) + Quoted(rows.Text("MapFile")) +
                        QStringLiteral(",1)"));
        }
    }

    static QStringList AreasWithParents() {
        Records rows = Read(QStringLiteral("Select Distinct AreaID, AreaName From _Data"));
        QSet<QString> ids;
        for (; !rows.atEnd(); rows.MoveNext())
            for (QString id = rows.Text(std::size_t{0}).trimmed(); !id.isEmpty() && !ids.contains(id);
                 id.chop(schema::kCharactersPerLevel))
                ids.insert(id);
        QStringList sorted(ids.cbegin(), ids.cend());
        sorted.sort();
        return sorted;
    }

    TargetDatabase& target_;
    QSet<QString> made_;
    QHash<QStringList, qint64> combinations_;
};

} // namespace

void CopyMasters(TargetDatabase& target) {
    Masters(target).Copy();
}

} // namespace tessaro
