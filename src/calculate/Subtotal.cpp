// One indicator added up along the tree of areas: children into their parents, level by level.

#include "calculate/Calculations.h"
#include "calculate/LogParts.h"
#include "calculate/Numbers.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"
#include "view/DataFilters.h"

#include <QMap>

#include <cmath>
#include <map>

namespace tessaro {

namespace {

constexpr int kFirstRow = kHeadRow + 1;
constexpr int kLevelLength = 3; ///< characters of an id that a level has
constexpr int kMostNamed = 5;   ///< areas that a remark names of each time

QString ParentOf(const QString& areaId) {
    return areaId.left(areaId.size() - kLevelLength);
}

/// What an area's children come to in one subgroup.
struct Total {
    QString areaId;
    QString subpop;
    double sum = 0;
    QString time; ///< of the first child, as are unit and source
    QString unit;
    QString source;
    QMap<QString, QStringList> parts; ///< names of the children by their time
};

/// Identifies a total: longer ids come first, so that a walk goes from the deepest level to the highest.
struct TotalKey {
    qsizetype length;
    QString area;
    QString subpop;

    TotalKey(const QString& areaId, const QString& subpopName)
        : length(areaId.size()), area(AreaKey(areaId)), subpop(subpopName.trimmed().toLower()) {}
    bool operator<(const TotalKey& other) const {
        return std::tie(other.length, area, subpop) < std::tie(length, other.area, other.subpop);
    }
};

class Subtotal final {
  public:
    explicit Subtotal(const CalculationDraft& draft)
        : draft_(draft), indicator_(draft.items.front().indicator),
          isIndicator_(QStringLiteral("[Indicator] = ") + Quoted(indicator_)) {
        QStringList lengths;
        for (std::size_t level = 0; level < draft.levels.size(); ++level)
            if (draft.levels[level]) lengths << QString::number(kLevelLength * static_cast<int>(level + 1));
        lengths_ = QLatin1Char('(') + lengths.join(QLatin1Char(',')) + QLatin1Char(')');
    }

    [[nodiscard]] CalculationLog Log(const Progress& progress) {
        const QString table = QStringLiteral("CalcTempNew2");
        if (!CreateDistinctTempTables(BracketedList({indicator_}), {}, progress) || !ReadChildren() || !ReadSums())
            return Failed(ReasonOfFailure(table));
        if (names_.isEmpty()) return Failed(PlainText(QStringLiteral("041")));
        AddUpwards();
        ReadNames();
        CalculationLog log;
        if (!WriteTable() || !ReadPivot(log) || !ReadResults(log)) return Failed(ReasonOfFailure(table));
        log.detail = Detail();
        AddRemarks(log);
        return log;
    }

  private:
    // --- The first level: from the data. ---

    /// The first child of each parent lends its time, unit and source.
    bool ReadChildren() {
        Records rows = Select(QStringLiteral("Select AreaId, AreaName, Subpop, TimePeriod, [Unit],[Source] From "
                                             "CalcTempNew2 where ") +
                                  isIndicator_,
                              jet::CursorType::ForwardOnly);
        for (; !rows.atEnd(); rows.MoveNext()) {
            const QString id = rows.Text(std::size_t{0}).trimmed();
            const QString subpop = rows.Text(std::size_t{2});
            names_.insert(AreaKey(id), rows.Text(std::size_t{1}));
            withData_.insert(PairKey(AreaKey(id), subpop.trimmed().toLower()));
            if (id.size() <= kLevelLength) continue;
            Total& total = TotalOf(ParentOf(id), subpop,
                                   {rows.Text(std::size_t{3}), rows.Text(std::size_t{4}), rows.Text(std::size_t{5})});
            total.parts[rows.Text(std::size_t{3})] << rows.Text(std::size_t{1});
        }
        return rows.isOpen();
    }

    struct Sample {
        QString time, unit, source;
    };
    Total& TotalOf(const QString& areaId, const QString& subpop, const Sample& sample) {
        const TotalKey key(areaId, subpop);
        const auto found = totals_.find(key);
        if (found != totals_.end()) return found->second;
        return totals_.emplace(key, Total{areaId, subpop, 0, sample.time, sample.unit, sample.source, {}})
            .first->second;
    }

    // One statement for all parents and subgroups, where each would have one of its own.
    bool ReadSums() {
        Records rows =
            Select(QStringLiteral("Select mid(Areaid,1,len(Areaid)-3), Subpop, sum(CDbl(DataValue)) from CalcTempNew2 "
                                  "where %1 And len(Areaid) > 3 Group By mid(Areaid,1,len(Areaid)-3), Subpop")
                       .arg(isIndicator_));
        for (; !rows.atEnd(); rows.MoveNext()) {
            const auto found = totals_.find(TotalKey(rows.Text(std::size_t{0}).trimmed(), rows.Text(std::size_t{1})));
            if (found != totals_.end()) found->second.sum = rows.rows().Get(2).toDouble();
        }
        return rows.isOpen();
    }

    // --- The levels above: each from the totals of the one below. ---

    // A child with data of its own is in its parent's sum already.
    void AddUpwards() {
        for (auto each = totals_.begin(); each != totals_.end(); ++each) {
            const Total& child = each->second;
            if (child.areaId.size() <= kLevelLength ||
                withData_.contains(PairKey(each->first.area, each->first.subpop)))
                continue;
            Total& parent = TotalOf(ParentOf(child.areaId), child.subpop, {child.time, child.unit, child.source});
            parent.sum += child.sum;
            for (auto part = child.parts.begin(); part != child.parts.end(); ++part)
                parent.parts[part.key()] << part.value();
        }
    }

    void ReadNames() {
        constexpr qsizetype kAtOnce = 500;
        QStringList ids;
        for (const auto& [key, total] : totals_)
            ids << total.areaId;
        ids.removeDuplicates();
        for (qsizetype from = 0; from < ids.size(); from += kAtOnce) {
            Records rows = Select(QStringLiteral("Select AreaId, AreaName From Area Where AreaId In ") +
                                  BracketedList(ids.mid(from, kAtOnce)));
            for (; !rows.atEnd(); rows.MoveNext())
                names_.insert(AreaKey(rows.Text(std::size_t{0})), rows.Text(std::size_t{1}));
        }
    }

    // --- SubWiz. ---

    // The table is made without rows, which would be deleted at once.
    bool WriteTable() {
        DropWorkingTable("SubWiz");
        if (!Execute(QStringLiteral("SELECT * INTO SubWiz FROM [_Data] WHERE 1 = 0"))) return false;
        std::vector<QString> insertions;
        for (const auto& [key, total] : totals_)
            if (std::isfinite(total.sum)) insertions.push_back(InsertionOf(total));
        return ExecuteTogether(insertions);
    }

    [[nodiscard]] QString InsertionOf(const Total& total) const {
        const QStringList values{total.time, SumText(total.sum), total.areaId, names_.value(AreaKey(total.areaId)),
                                 indicator_, total.unit,         total.subpop, total.source};
        return QStringLiteral("Insert into SubWiz (TimePeriod, DataValue, AreaID, AreaName, [Indicator], Unit, Subpop, "
                              "Source)  Values (") +
               QuotedList(values) + QLatin1Char(')');
    }

    // --- The sheets. ---

    bool ReadPivot(CalculationLog& log) {
        Records rows = Select(QStringLiteral("TRANSFORM Sum(CDbl(DataValue)) SELECT AreaId, AreaName FROM SubWiz WHERE "
                                             "[Subpop] in %1 And Len(AreaId) in %2 GROUP BY AreaId, AreaName ORDER BY "
                                             "AreaId PIVOT Subpop")
                                  .arg(BracketedList(Subpops()), lengths_),
                              jet::CursorType::ForwardOnly);
        if (!rows.isOpen()) return false;
        std::vector<office::Cell> headings = Headings({"Comm_Area Id", "Comm_Area Name"});
        for (std::size_t field = 2; field < rows.rows().FieldCount(); ++field) {
            const QString subpop = QString::fromStdString(rows.rows().Field(field).name);
            columnOf_.insert(subpop.trimmed().toLower(), static_cast<int>(field) + 1);
            headings.push_back(TextCell(subpop));
        }
        office::Block block;
        for (; !rows.atEnd(); rows.MoveNext()) {
            rowOf_.insert(AreaKey(rows.Text(std::size_t{0})), kFirstRow + static_cast<int>(block.size()));
            std::vector<office::Cell> cells{TextCell(rows.Text(std::size_t{0})), TextCell(rows.Text(std::size_t{1}))};
            for (std::size_t field = 2; field < headings.size(); ++field)
                cells.push_back(rows.IsNull(field) ? office::Cell() : NumberCell(rows.rows().Get(field).toDouble()));
            block.push_back(std::move(cells));
        }
        log.working = WorkingSheet({std::move(headings)}, std::move(block), kFirstRow);
        return true;
    }

    [[nodiscard]] QStringList Subpops() const {
        QStringList subpops;
        Records rows = Select(QStringLiteral("SELECT distinct Subpop FROM _Data WHERE ") + isIndicator_);
        for (; !rows.atEnd(); rows.MoveNext())
            subpops << rows.Text(std::size_t{0});
        return subpops;
    }

    bool ReadResults(CalculationLog& log) {
        Records rows = Select(QStringLiteral("Select * From SubWiz Where len(AreaID) in ") + lengths_);
        for (; !rows.atEnd(); rows.MoveNext())
            log.results.push_back({{rows.Text("TimePeriod"), rows.Text("AreaID"), rows.Text("AreaName"),
                                    rows.Text("Datavalue"), rows.Text("Subpop"), rows.Text("Source")},
                                   rowOf_.value(AreaKey(rows.Text("AreaID"))),
                                   columnOf_.value(rows.Text("Subpop").trimmed().toLower())});
        return rows.isOpen();
    }

    // One statement gives the rows of all areas in the order in which one for each area would.
    [[nodiscard]] LogSheet Detail() const {
        DetailSheet sheet(Headings({"Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Subpop", "Comm_Time",
                                    "Comm_Datavalue", "Comm_Unit", "Comm_Source"}));
        Records rows =
            Select(QStringLiteral("Select AreaId, AreaName, [Indicator], Subpop, TimePeriod, Datavalue, [Unit], "
                                  "[Source] from CalcTempNew2 pt Where pt.%1 Order By AreaId")
                       .arg(isIndicator_),
                   jet::CursorType::ForwardOnly);
        for (; !rows.atEnd(); rows.MoveNext())
            sheet.Add(rows.Text(std::size_t{0}), rows.Text(std::size_t{1}),
                      {TextCell(rows.Text(std::size_t{2})), TextCell(rows.Text(std::size_t{3})),
                       TimeCell(rows.Text(std::size_t{4})), ValueCell(rows.Text(std::size_t{5})),
                       TextCell(rows.Text(std::size_t{6})), TextCell(rows.Text(std::size_t{7}))});
        LogSheet taken = sheet.Taken();
        taken.alignments = {AsTexts(5)};
        return taken;
    }

    // --- Remarks. ---

    [[nodiscard]] bool IsWanted(const Total& total) const {
        const auto level = static_cast<std::size_t>(total.areaId.size() / kLevelLength);
        return level > 0 && level <= draft_.levels.size() && draft_.levels[level - 1];
    }

    void AddRemarks(CalculationLog& log) const {
        for (const auto& [key, total] : totals_) {
            if (!std::isfinite(total.sum) && IsWanted(total))
                log.remarks.push_back(
                    {total.areaId, names_.value(key.area),
                     total.subpop + QStringLiteral(": ") + PlainText(QStringLiteral("TS_CalcTooLarge"))});
            if (total.parts.size() < 2 || !rowOf_.contains(key.area)) continue;
            QStringList times;
            for (auto part = total.parts.begin(); part != total.parts.end(); ++part) {
                const QStringList named = part.value().mid(0, kMostNamed);
                times << part.key() + QStringLiteral(": ") + named.join(QStringLiteral(", ")) +
                             (named.size() < part.value().size() ? QStringLiteral(" …") : QString());
            }
            log.remarks.push_back(
                {total.areaId, names_.value(key.area),
                 FilledText(QStringLiteral("TS_CalcYears"), {total.subpop, times.join(QStringLiteral("; "))})});
        }
    }

    const CalculationDraft& draft_;
    QString indicator_;
    QString isIndicator_;
    QString lengths_;
    std::map<TotalKey, Total> totals_;
    QSet<QString> withData_;        ///< areas and subgroups, in small letters, that have data of their own
    QHash<QString, QString> names_; ///< of areas
    QHash<QString, int> rowOf_;     ///< of areas in the working sheet
    QHash<QString, int> columnOf_;  ///< of subgroups
};

} // namespace

CalculationLog CalculateSubtotal(const CalculationDraft& draft, const Progress& progress) {
    if (draft.items.empty()) return Failed(PlainText(QStringLiteral("016")));
    if (std::ranges::none_of(draft.levels, [](bool wanted) { return wanted; }))
        return Failed(PlainText(QStringLiteral("106")));
    return Subtotal(draft).Log(progress);
}

} // namespace tessaro
