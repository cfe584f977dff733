#pragma once

#include "jet/rewrite/JoinedTables.h"
#include "jet/sql/Tree.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace jet {

/// Puts the small tables of a SELECT together that are joined with one another otherwise than through the large one.
/// `LinkType` has table and field of a small table, and the large table's field.
template <class LinkType> class SidesOf final {
  public:
    struct Side {
        TableSet tables = 0;
        std::vector<LinkType> links;
        std::vector<tree::ColumnName> fields; ///< that tell groups apart
        std::vector<tree::ColumnName> ranked;
    };

    void Add(LinkType link) { links_.push_back(std::move(link)); }
    /// A condition reads these tables.
    void Join(TableSet tables) { joins_.push_back(tables); }

    /// Makes the sides of the tables; False when one isn't linked with the large table.
    bool Finish(TableSet small) {
        for (std::size_t table = 0; small >> table != 0; ++table)
            if ((small & Bit(table)) != 0) sides_.push_back({Bit(table), {}, {}, {}});
        for (const TableSet tables : joins_)
            PutTogether(tables);
        for (LinkType& link : links_)
            sides_[SideOf(link.table)].links.push_back(std::move(link));
        for (const Side& side : sides_)
            if (side.links.empty()) return false;
        return true;
    }

    void AddField(std::size_t table, const tree::ColumnName& name) {
        static_cast<void>(PlaceIn(sides_[SideOf(table)].fields, name));
    }
    /// Gives the side and the place among its ranked fields.
    std::pair<std::size_t, std::size_t> AddRanked(std::size_t table, const tree::ColumnName& name) {
        const std::size_t side = SideOf(table);
        return {side, PlaceIn(sides_[side].ranked, name)};
    }
    /// The place of a field among those of all sides.
    [[nodiscard]] std::size_t PlaceOf(std::size_t table, const tree::ColumnName& name) {
        const std::size_t side = SideOf(table);
        std::size_t before = 0;
        for (std::size_t i = 0; i < side; ++i)
            before += sides_[i].fields.size();
        return before + PlaceIn(sides_[side].fields, name);
    }
    [[nodiscard]] std::size_t fields() const {
        std::size_t all = 0;
        for (const Side& side : sides_)
            all += side.fields.size();
        return all;
    }
    [[nodiscard]] const std::vector<Side>& all() const { return sides_; }

  private:
    [[nodiscard]] std::size_t SideOf(std::size_t table) const {
        std::size_t side = 0;
        while ((sides_[side].tables & Bit(table)) == 0)
            ++side;
        return side;
    }

    void PutTogether(TableSet tables) {
        Side made;
        std::vector<Side> others;
        std::size_t place = 0;
        for (const Side& side : sides_) {
            if ((side.tables & tables) == 0) {
                others.push_back(side);
                continue;
            }
            if (made.tables == 0) place = others.size();
            made.tables |= side.tables;
        }
        if (made.tables == 0) return; // the condition reads no table
        others.insert(others.begin() + static_cast<std::ptrdiff_t>(place), std::move(made));
        sides_ = std::move(others);
    }

    /// The same field may be named with its table and without.
    static std::size_t PlaceIn(std::vector<tree::ColumnName>& names, const tree::ColumnName& name) {
        for (std::size_t i = 0; i < names.size(); ++i)
            if (SameName(names[i].name, name.name) && SameName(names[i].table, name.table)) return i;
        names.push_back(name);
        return names.size() - 1;
    }

    std::vector<LinkType> links_;
    std::vector<TableSet> joins_;
    std::vector<Side> sides_;
};

} // namespace jet
