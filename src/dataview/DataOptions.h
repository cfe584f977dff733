#pragma once

#include "controls/KeyedItem.h"
#include "dataview/RowNumbers.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <utility>
#include <vector>

/// What the panels of the data view take out of it: sources, units and subpopulations.
namespace tessaro {

/// The options whose panels take things out of the view, in the order of their lists.
enum class OptionList { Sources, Units, Subpops };

/// What the panels of sources, units and subpopulations list, and what they have taken out of the view. A row of
/// _SelIUSNId that is taken out has its Deleted flag set, and one of three lists records which panel did it, so that
/// another panel doesn't put it back.
class DataOptions final {
  public:
    /// The selected sources, units or subpopulations that have data, with their keys; a source that is recommended for
    /// its combination is marked.
    [[nodiscard]] std::vector<KeyedItem> LoadDataInto_SOURCES_UNIT_SUBPOPS(OptionList option);
    /// Takes the rows of these items out of the view. False when a statement failed; nothing has changed then.
    bool RemoveIndicatorFromSel(OptionList option, const QStringList& keys);
    /// Takes every row out. Rows that another panel has taken out before stay in that panel's list.
    bool RemoveAllFromSel(OptionList option);
    /// Puts the rows of these items back, except those that another panel has taken out.
    bool AddIndicatorToSel(OptionList option, const QStringList& keys);
    [[nodiscard]] bool AnythingTakenOut() const;
    /// A new selection: nothing is listed or taken out.
    void Reset();

    [[nodiscard]] QString SourceDeletedRows() const { return ListOf(OptionList::Sources).Text(); }
    [[nodiscard]] QString UnitDeletedRows() const { return ListOf(OptionList::Units).Text(); }
    [[nodiscard]] QString SubpopDeletedRows() const { return ListOf(OptionList::Subpops).Text(); }

    /// The statement that lists what a panel offers.
    [[nodiscard]] static QString ListStatement(OptionList option);

  private:
    using KeyParts = std::pair<QString, QString>;

    [[nodiscard]] RowNumbers& ListOf(OptionList option) { return lists_.at(static_cast<std::size_t>(option)); }
    [[nodiscard]] const RowNumbers& ListOf(OptionList option) const {
        return lists_.at(static_cast<std::size_t>(option));
    }
    [[nodiscard]] KeyParts PartsOf(OptionList option, const QString& key) const;
    [[nodiscard]] QString RowsStatement(OptionList option, const QString& key) const;
    [[nodiscard]] QString NotHeldByOthers(OptionList option) const;
    [[nodiscard]] std::optional<std::vector<qint64>> RowsOf(OptionList option, const QStringList& keys,
                                                            const QString& tail) const;

    std::array<RowNumbers, 3> lists_;
    /// Identifiers may hold the sign that joins them in a key, so the parts of each key are kept.
    std::array<QHash<QString, KeyParts>, 3> parts_;
};

} // namespace tessaro
