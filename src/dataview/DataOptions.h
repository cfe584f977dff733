#pragma once

#include "controls/KeyedItem.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace tessaro {

/// The panels that take items out of the data view: pairs of combination and source, units, subpopulations.
enum class DataPanel { Sources, Units, Subpops };
constexpr std::array<DataPanel, 3> DataPanels{DataPanel::Sources, DataPanel::Units, DataPanel::Subpops};

/// Which panel holds which row of _SelIUSNId out of the view: comma lists of RowNId, each number with a comma behind
/// it. They keep a row that one panel took out from coming back through another.
struct PanelRows {
    QString SourceDeletedRows;
    QString UnitDeletedRows;
    QString SubpopDeletedRows;

    [[nodiscard]] QString& Of(DataPanel panel);
    [[nodiscard]] const QString& Of(DataPanel panel) const;
};

/// The statement of a panel's items: those of the selection that have data.
[[nodiscard]] QString PanelStatement(DataPanel panel);
/// The items themselves. A recommended source is marked.
[[nodiscard]] std::vector<KeyedItem> PanelItems(DataPanel panel);
/// Keys of the heads of a panel's columns.
[[nodiscard]] QStringList PanelHeads(DataPanel panel);

/// Takes the items with these keys out of the view; `all` takes out everything.
void TakeOut(DataPanel panel, const QStringList& keys, bool all, PanelRows& rows);
/// Puts them back, except rows that another panel holds.
void PutBack(DataPanel panel, const QStringList& keys, PanelRows& rows);

/// The columns that the sort panel offers: key is the sort expression.
[[nodiscard]] std::vector<KeyedItem> SortItems();
/// " ORDER BY …" of the chosen columns in order, descending where an item is marked; empty for none.
[[nodiscard]] QString OrderByOf(const std::vector<KeyedItem>& chosen);

} // namespace tessaro
