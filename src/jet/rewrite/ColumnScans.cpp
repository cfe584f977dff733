#include "jet/rewrite/ColumnScans.h"

#include "jet/rewrite/ClassScan.h"
#include "jet/rewrite/JoinedScan.h"
#include "jet/rewrite/RowScan.h"

#include <algorithm>

namespace jet {

using namespace tree;

bool ScanColumns(Query& query, const Catalogue& catalogue) {
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
    return transform.query.arms.size() == 1 && ScanClasses(transform, catalogue);
}

} // namespace jet
