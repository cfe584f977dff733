#include "jet/rewrite/ColumnScans.h"

#include "jet/rewrite/ClassScan.h"
#include "jet/rewrite/JoinedScan.h"
#include "jet/rewrite/RowScan.h"
#include "jet/rewrite/ScanShape.h"

#include <algorithm>

namespace jet {

using namespace tree;

namespace {

/// True when a table of values among them has an image. Most databases are small and have none: nothing else of their
/// statements is looked at then.
bool HasImage(const TableReference& reference, const Catalogue& catalogue) {
    if (const auto* join = std::get_if<Join>(&reference.node))
        return HasImage(*join->left, catalogue) || HasImage(*join->right, catalogue);
    const auto* named = std::get_if<NamedTable>(&reference.node);
    const TableInfo* info = named != nullptr ? catalogue.find(named->name) : nullptr;
    return info != nullptr && HoldsValues(*info) && catalogue.image(*info) != nullptr;
}

bool HasImage(const Query& query, const Catalogue& catalogue) {
    return std::ranges::any_of(query.arms, [&](const Select& arm) {
        return std::ranges::any_of(arm.from, [&](const auto& each) { return HasImage(*each, catalogue); });
    });
}

} // namespace

bool ScanColumns(Query& query, const Catalogue& catalogue) {
    if (!HasImage(query, catalogue)) return false;
    static const std::vector<OrderItem> noOrder;
    // a part of such a union gives its rows before the next one is begun, and could not be begun again
    if (std::ranges::find(query.keepAll, true) != query.keepAll.end()) return false;
    const bool alone = query.arms.size() == 1;
    bool changed = false;
    if (alone && ScanInOrder(query.arms.front(), query.orderBy, catalogue)) return true;
    for (Select& select : query.arms)
        changed = ScanJoined(select, alone ? query.orderBy : noOrder, catalogue) ||
                  ScanClasses(select, alone ? &query.orderBy : nullptr, catalogue) || changed;
    return changed;
}

bool ScanColumns(Transform& transform, const Catalogue& catalogue) {
    return transform.query.arms.size() == 1 && HasImage(transform.query, catalogue) &&
           ScanClasses(transform, catalogue);
}

} // namespace jet
