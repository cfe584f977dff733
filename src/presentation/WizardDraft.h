#pragma once

#include "presentation/GraphWorkbook.h"
#include "presentation/RowsColumns.h"
#include "presentation/TableWorkbook.h"

#include <QString>

#include <optional>

namespace tessaro {

/// All that a user chooses in the table wizard. The pages edit it; the workbook is built from it alone.
struct TableDraft {
    RowsColumns arrangement;
    TableOptions options;
    bool titleTyped = false; ///< the titles are the user's own; none is suggested any more

    bool operator==(const TableDraft&) const = default;
};

/// The same of the graph wizard.
struct GraphDraft {
    RowsColumns arrangement;
    GraphOptions options;
    bool kindChosen = false; ///< the kind is the user's own; none is suggested any more

    bool operator==(const GraphDraft&) const = default;
};

/// A draft as lines "name=value", in plain text whatever the titles hold.
[[nodiscard]] QString DraftText(const TableDraft& draft);
[[nodiscard]] QString DraftText(const GraphDraft& draft);
/// Reads such lines. What isn't named keeps its first value; names that are unknown are passed over. Nothing when a
/// line has no name or a value can't be read.
[[nodiscard]] std::optional<TableDraft> ReadTableDraft(const QString& text);
[[nodiscard]] std::optional<GraphDraft> ReadGraphDraft(const QString& text);

} // namespace tessaro
