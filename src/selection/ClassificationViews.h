#pragma once

#include "controls/KeyedItem.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

/// The seven ways of classifying indicators, as rows of one table.
namespace tessaro::selection {

constexpr int kClassificationCount = 7;

/// The statement that reads the children of a node, in parts: `select` up to WHERE, then the conditions on the levels
/// above, the GlobalLocalFilter on `gidColumn`, and `tail` with the order.
struct ChildQuery {
    const char* select;
    const char* gidColumn;
    const char* tail;
    std::size_t gidField = 0; ///< where the rows have the GId
};

/// A classification view. `conditions`: for each level the term up to the value, as " S.SectorLabel1GId = ".
struct ClassificationView {
    const char* tree;       ///< object name: "TV_IND"
    const char* captionKey; ///< of its label in the strip
    const char* rootCaptionKey;
    const char* rootKey;           ///< empty: the first level stands at the top
    const char* firstLevel;        ///< query of the first level
    const char* firstFilterColumn; ///< what GlobalLocalFilter looks at; empty: no filter
    const char* firstOrder;
    std::size_t idField, gidField, textField; ///< positions in the first-level query
    const char* from;                         ///< indicator mode; the other mode joins Subpop and Unit on
    const char* alias;                        ///< " S."
    bool quoted;                              ///< node ids are texts
    std::array<const char*, 3> conditions;    ///< one a level; nullptr beyond the last
    std::array<ChildQuery, 2> children;       ///< of level 1 and level 2
    /// Joins and condition of the indicator filter while DataExistsCriterion is not empty.
    const char *filterPrefix, *filterSuffix, *filterWhere;
};

[[nodiscard]] const std::array<ClassificationView, kClassificationCount>& Classifications();
[[nodiscard]] inline const ClassificationView& Classification(int view) {
    return Classifications()[static_cast<std::size_t>(view)];
}

/// True when the user's preferences show this view.
[[nodiscard]] bool IsViewEnabled(int view);
/// The view that opens first: the preferred one, else "1", else the first that is shown.
[[nodiscard]] int FirstView();

/// The key of a node: its id, the tag of its level ("S", then "C") and a number that makes it unique in its tree.
[[nodiscard]] QString NodeKey(const QString& id, char tag, int counter);
[[nodiscard]] QString IdOfNodeKey(const QString& key); ///< up to the first separator
[[nodiscard]] bool IsRootKey(const QString& key);      ///< a key without a tag

[[nodiscard]] QString FirstLevelSql(int view);
/// Nodes of the first level; `counter` goes up by one for each.
[[nodiscard]] std::vector<KeyedNode> FirstLevelNodes(int view, int& counter);

/// `path`: keys of the nodes from the first level down to the one meant; empty for the root.
[[nodiscard]] QString ChildSql(int view, const QStringList& path); ///< empty when the level has no children
[[nodiscard]] std::vector<KeyedNode> ChildNodes(int view, const QStringList& path, int& counter);
[[nodiscard]] QString FromOf(int view);
[[nodiscard]] QString WhereOf(int view, const QStringList& path);

} // namespace tessaro::selection
