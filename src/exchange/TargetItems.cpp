#include "exchange/TargetItems.h"

#include "database/TargetDatabase.h"

#include <algorithm>

namespace tessaro {

namespace {

/// Numbers of both signs, of which there are less than two millions, in one.
std::uint64_t KeyOf(const TargetItems::Combination& parts) {
    constexpr std::uint64_t mask = (std::uint64_t{1} << 21U) - 1;
    const auto part = [](int number) { return static_cast<std::uint64_t>(number) & mask; };
    return part(parts.indicator) << 42U | part(parts.unit) << 21U | part(parts.subgroup);
}

class ItemReader final {
  public:
    ItemReader(const QString& file, const QString& suffix) : database_(file, suffix) {
        codes_ = database_.LanguageCodes();
        const QString own = suffix.mid(1);
        codes_.removeIf([&](const QString& code) { return code.compare(own, Qt::CaseInsensitive) == 0; });
        codes_.prepend(own);
        codes_.removeIf([&](const QString& code) {
            return database_.connection().catalogue().find("Area_" + code.toStdString()) == nullptr;
        });
    }

    TargetItems Read() {
        ReadNamed("Indicator", "Indicator", items_.indicators, items_.indicatorGIds);
        ReadNamed("Unit", "Unit", items_.units, items_.unitGIds);
        ReadNamed("Subpop", "Subpop", items_.subgroups, items_.subgroupGIds);
        ReadNumbered("Source", "SourceNId", items_.sources);
        ReadNumbered("Footnote", "FootNoteNId", items_.footnotes);
        for (Records rows = Open("SELECT TimePeriodNId, TimePeriod FROM TimePeriod"); !rows.atEnd(); rows.MoveNext())
            items_.periods.Know(Text(rows, 1), Number(rows));
        ReadAreas();
        ReadCombinations();
        return std::move(items_);
    }

  private:
    Records Open(const QString& sql) { return database_.Open(sql); }
    Records Open(const char* sql) { return database_.Open(QLatin1String(sql)); }
    static std::string Text(Records& rows, std::size_t field) { return rows.rows().Get(field).toText(); }
    static int Number(Records& rows) { return static_cast<int>(rows.Number(std::size_t{0})); }

    /// Items that go by GId: the number of one is its place in `gids`, from 1.
    void ReadNamed(const char* table, const char* name, ItemNames& names, std::vector<std::string>& gids) {
        TextMap<int>& numbers = gidNumbers_[table];
        for (const QString& code : std::as_const(codes_)) {
            Records rows = Open(
                QStringLiteral("SELECT %1GId, [%2] FROM [%1_%3]").arg(QLatin1String(table), QLatin1String(name), code));
            for (; !rows.atEnd(); rows.MoveNext()) {
                const std::string gid = Text(rows, 0);
                const auto [found, isNew] = numbers.try_emplace(gid, static_cast<int>(gids.size()) + 1);
                if (isNew) gids.push_back(gid);
                names.Know(Text(rows, 1), found->second);
            }
        }
    }

    void ReadNumbered(const char* table, const char* number, ItemNames& names) {
        for (const QString& code : std::as_const(codes_)) {
            Records rows = Open(
                QStringLiteral("SELECT %1, %2 FROM [%2_%3]").arg(QLatin1String(number), QLatin1String(table), code));
            for (; !rows.atEnd(); rows.MoveNext())
                names.Know(Text(rows, 1), Number(rows));
        }
    }

    void ReadAreas() {
        std::unordered_map<int, std::size_t> places;
        for (const QString& code : std::as_const(codes_)) {
            Records rows =
                Open(QStringLiteral("SELECT AreaNId, AreaID, AreaGId, AreaLevel, AreaName FROM [Area_%1]").arg(code));
            for (; !rows.atEnd(); rows.MoveNext()) {
                const auto [place, isNew] = places.try_emplace(Number(rows), items_.areas.size());
                if (isNew)
                    items_.areas.push_back({Number(rows),
                                            Text(rows, 1),
                                            Text(rows, 2),
                                            static_cast<int>(rows.Number(std::size_t{3})),
                                            {}});
                items_.areas[place->second].names.push_back(Text(rows, 4));
            }
        }
    }

    void ReadCombinations() {
        Records rows = Open("SELECT IUSNId, IndicatorGId, UnitGId, SubpopGId FROM Indicator_Unit_Subpop");
        const auto number = [&](const char* table, std::size_t field) {
            const TextMap<int>& numbers = gidNumbers_[table];
            const auto found = numbers.find(Text(rows, field));
            return found == numbers.end() ? 0 : found->second;
        };
        for (; !rows.atEnd(); rows.MoveNext()) {
            const TargetItems::Combination parts{number("Indicator", 1), number("Unit", 2), number("Subpop", 3)};
            items_.combinations.try_emplace(KeyOf(parts), Number(rows));
            items_.partsOf.try_emplace(Number(rows), parts);
        }
    }

    TargetDatabase database_;
    QStringList codes_;
    TargetItems items_;
    std::unordered_map<std::string, TextMap<int>> gidNumbers_;
};

} // namespace

int TargetItems::CombinationOf(const Combination& parts) {
    const auto [found, isNew] = combinations.try_emplace(KeyOf(parts), 0);
    if (isNew) {
        madeCombinations.push_back(parts);
        found->second = -static_cast<int>(madeCombinations.size());
    }
    return found->second;
}

TargetItems::Combination TargetItems::PartsOf(int combination) const {
    if (combination < 0) return madeCombinations[static_cast<std::size_t>(-combination) - 1];
    const auto found = partsOf.find(combination);
    return found == partsOf.end() ? Combination{} : found->second;
}

TargetItems ReadTargetItems(const QString& file, const QString& suffix) {
    return ItemReader(file, suffix).Read();
}

} // namespace tessaro
