#pragma once

#include "controls/KeyedItem.h"
#include "database/AreaIds.h"

#include <QSet>
#include <QString>

#include <vector>

/// The chosen areas: _SelArea, the set of their AreaIDs that the screen keeps beside it, and the lists of the screen.
/// List keys are "A" + AreaNId; tree keys "A" + AreaID, the root "___".
namespace tessaro::selection {

constexpr const char* kAreaRootKey = "___";
using schema::kCharactersPerLevel;

/// An area as the lists show it and as the tree needs it.
struct AreaRow {
    KeyedItem item;
    QString areaId;
};

/// The children of a tree node, by name.
[[nodiscard]] QString AvailableAreasSql(const QString& nodeKey);
[[nodiscard]] std::vector<AreaRow> AvailableAreas(const QString& nodeKey);
[[nodiscard]] QString TreeKeyOfArea(const QString& areaId);
/// Ids, in capitals, of those children of a tree node that have children themselves.
[[nodiscard]] QSet<QString> ParentsAmongChildren(const QString& nodeKey);
/// The deepest AreaLevel of the database, as deep as an AreaID can be; 0 when it has no areas.
[[nodiscard]] int AreaDepth();

/// All areas of a level at or below a node. With `onlyWithData`, those that Data has rows for.
[[nodiscard]] QString AreasOfLevelSql(int level, const QString& nodeKey, bool onlyWithData);

class AreaSelection final {
  public:
    /// Fills the set from _SelArea.
    void Load();
    [[nodiscard]] bool IsEmpty() const { return ids_.isEmpty(); }
    [[nodiscard]] const QSet<QString>& Ids() const { return ids_; }

    // --- Writes. Each raises SelectionChanged and gives False when a statement failed.
    // --------------------------------------------------------------------------
    /// Adds the areas of a comma list of AreaNIds that are not there yet.
    bool AddAreas(const QString& idList);
    /// The same for items of the list, found through their AreaIDs.
    bool AddItems(const std::vector<KeyedItem>& items);
    bool Remove(const std::vector<KeyedItem>& items);
    bool RemoveAll();

    /// The items of the set, by name.
    [[nodiscard]] std::vector<KeyedItem> Items() const;

  private:
    QSet<QString> ids_;
};

/// Areas of a statement that gives AreaName, AreaID, AreaNId and AreaGId, as the lists show them.
[[nodiscard]] std::vector<KeyedItem> AreaItems(const QString& sql);
/// Areas of a comma list of AreaNIds as the Available list shows them after a level was picked.
[[nodiscard]] std::vector<KeyedItem> AreasOfList(const QString& idList);

} // namespace tessaro::selection
