#include "dataview/DataOptions.h"

#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "view/ViewJoins.h"

#include <algorithm>
#include <optional>

namespace tessaro {

namespace {

constexpr auto Sources =
    "SELECT DISTINCT IUS.IUSNId, IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.Subpop, IUS.Source,  IUS.SourceNId, "
    "IUS.RecommendedSource, IUS.UnitGId, IUS.SubpopGId ";
constexpr auto kUnits = "SELECT DISTINCT IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.UnitGId ";
constexpr auto kSubpops = "SELECT DISTINCT IUS.IndicatorGId, IUS.[Indicator], IUS.Subpop, IUS.SubpopGId ";
constexpr auto kRows = "SELECT RowNId FROM [_SelIUSNId] as IUS ";
constexpr qsizetype kPrefixLength = 3;

bool IsShared(const QString& gId) {
    return gId.startsWith(QLatin1Char('-'));
}

QString Shown(const Records& rows, const char* field) {
    return GetText(rows.Text(field), true);
}

/// A list item and the two identifiers that its key is made of.
struct Entry {
    std::pair<QString, QString> parts;
    KeyedItem item;
};

Entry SourceEntry(const Records& rows) {
    const auto bit = [&rows](const char* field, int place) { return IsShared(rows.Text(field)) ? 1 << place : 0; };
    KeyedItem item;
    item.cells = {Shown(rows, "Indicator"), Shown(rows, "Unit"), Shown(rows, "Subpop"), Shown(rows, "Source")};
    item.globalCells = static_cast<quint8>(bit("IndicatorGId", 0) | bit("UnitGId", 1) | bit("SubpopGId", 2));
    item.marked = rows.Flag("RecommendedSource");
    return {{rows.Text("IUSNId"), rows.Text("SourceNId")}, std::move(item)};
}

Entry PairEntry(const Records& rows, const char* name, const char* gId) {
    KeyedItem item;
    item.cells = {Shown(rows, "Indicator"), Shown(rows, name)};
    item.globalCells =
        static_cast<quint8>((IsShared(rows.Text("IndicatorGId")) ? 1 : 0) | (IsShared(rows.Text(gId)) ? 2 : 0));
    return {{rows.Text("IndicatorGId"), rows.Text(gId)}, std::move(item)};
}

/// The numbers that a query gives; nothing when it failed.
std::optional<std::vector<qint64>> NumbersOf(const QString& sql) {
    Records rows = Select(sql, jet::CursorType::ForwardOnly);
    if (!rows.isOpen()) return std::nullopt;
    std::vector<qint64> numbers;
    for (; !rows.atEnd(); rows.MoveNext())
        numbers.push_back(rows.Number(std::size_t{0}));
    return numbers;
}

bool SetDeleted(const std::vector<qint64>& rows, bool deleted) {
    if (rows.empty()) return true;
    return Execute(QStringLiteral("UPDATE _SelIUSNId IUS SET IUS.[Deleted] = ") +
                   (deleted ? QStringLiteral("True") : QStringLiteral("False")) +
                   QStringLiteral("  WHERE IUS.RowNId in(") + RowNumbers::Joined(rows) + QStringLiteral(")"));
}

} // namespace

QString DataOptions::ListStatement(OptionList option) {
    const char* select = option == OptionList::Sources ? Sources : option == OptionList::Units ? kUnits : kSubpops;
    return QLatin1String(select) + QLatin1String(joins::kPanelLists.from);
}

std::vector<KeyedItem> DataOptions::LoadDataInto_SOURCES_UNIT_SUBPOPS(OptionList option) {
    ErrorTrap trap("LoadDataInto_SOURCES_UNIT_SUBPOPS");
    QHash<QString, KeyParts>& parts = parts_.at(static_cast<std::size_t>(option));
    parts.clear();
    const QString prefix = option == OptionList::Units ? QStringLiteral("IU_") : QStringLiteral("IS_");
    std::vector<KeyedItem> items;
    for (Records rows = Select(ListStatement(option)); !rows.atEnd(); rows.MoveNext()) {
        Entry entry = option == OptionList::Sources ? SourceEntry(rows)
                      : option == OptionList::Units ? PairEntry(rows, "Unit", "UnitGId")
                                                    : PairEntry(rows, "Subpop", "SubpopGId");
        entry.item.key = prefix + entry.parts.first + QLatin1Char('_') + entry.parts.second;
        parts.insert(entry.item.key, entry.parts);
        items.push_back(std::move(entry.item));
    }
    return items;
}

DataOptions::KeyParts DataOptions::PartsOf(OptionList option, const QString& key) const {
    const QHash<QString, KeyParts>& parts = parts_.at(static_cast<std::size_t>(option));
    if (const auto known = parts.constFind(key); known != parts.constEnd()) return *known;
    const QString rest = key.mid(kPrefixLength);
    return {rest.section(QLatin1Char('_'), 0, 0), rest.section(QLatin1Char('_'), 1)};
}

QString DataOptions::RowsStatement(OptionList option, const QString& key) const {
    const auto [a, b] = PartsOf(option, key);
    if (option == OptionList::Sources)
        return QLatin1String(kRows) + QStringLiteral(" WHERE IUSNId = ") + QString::number(a.toLongLong()) +
               QStringLiteral(" AND SourceNId = ") + QString::number(b.toLongLong());
    const QString second =
        option == OptionList::Units ? QStringLiteral(" AND UnitGID = ") : QStringLiteral(" AND SubpopGID = ");
    return QLatin1String(kRows) + QStringLiteral(" WHERE IndicatorGId = ") + Quoted(a) + second + Quoted(b);
}

QString DataOptions::NotHeldByOthers(OptionList option) const {
    QString clause;
    for (const OptionList other : {OptionList::Sources, OptionList::Units, OptionList::Subpops}) {
        if (other == option || ListOf(other).isEmpty()) continue;
        clause += QStringLiteral(" AND IUS.RowNId not in(") + RowNumbers::Joined(ListOf(other).Numbers()) +
                  QStringLiteral(") ");
    }
    return clause;
}

/// RowNIds of the items with these keys, without those in the lists of other panels; nothing when a statement failed.
std::optional<std::vector<qint64>> DataOptions::RowsOf(OptionList option, const QStringList& keys,
                                                       const QString& tail) const {
    const QString others = NotHeldByOthers(option);
    std::vector<qint64> rows;
    for (const QString& key : keys) {
        const auto found = NumbersOf(RowsStatement(option, key) + others + tail);
        if (!found) return std::nullopt;
        rows.insert(rows.end(), found->begin(), found->end());
    }
    return rows;
}

bool DataOptions::RemoveIndicatorFromSel(OptionList option, const QStringList& keys) {
    ErrorTrap trap("RemoveIndicatorFromSel");
    const auto rows = RowsOf(option, keys, {});
    if (!rows || !SetDeleted(*rows, true)) return false;
    ListOf(option).Append(*rows);
    return true;
}

bool DataOptions::RemoveAllFromSel(OptionList option) {
    ErrorTrap trap("RemoveIndicatorFromSel");
    const auto rows = NumbersOf(QLatin1String(kRows) + QStringLiteral(" WHERE True") + NotHeldByOthers(option));
    if (!rows || !Execute(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True"))) return false;
    ListOf(option).Append(*rows);
    return true;
}

bool DataOptions::AddIndicatorToSel(OptionList option, const QStringList& keys) {
    ErrorTrap trap("AddIndicatorToSel");
    const auto rows = RowsOf(option, keys, QStringLiteral(" AND DELETED = True"));
    if (!rows || !SetDeleted(*rows, false)) return false;
    ListOf(option).Remove(*rows);
    return true;
}

bool DataOptions::AnythingTakenOut() const {
    return std::ranges::any_of(lists_, [](const RowNumbers& list) { return !list.isEmpty(); });
}

void DataOptions::Reset() {
    for (RowNumbers& list : lists_)
        list.Clear();
    for (auto& parts : parts_)
        parts.clear();
}

} // namespace tessaro
