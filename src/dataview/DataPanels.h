#pragma once

#include "controls/SelectionLists.h"
#include "dataview/DataOptions.h"

namespace tessaro {

/// The panel that takes sources, units or subpopulations out of the view: what has data on one side, what stays in view
/// on the other.
class OptionPanel final : public QWidget {
    Q_OBJECT

  public:
    OptionPanel(DataPanel panel, PanelRows& rows, QWidget* parent = nullptr);

    /// Fills both lists anew, once after each change of the selection.
    void LoadDataInto_SOURCES_UNIT_SUBPOPS();
    /// The lists are filled again when the panel is shown next.
    void Forget() { loaded_ = false; }
    [[nodiscard]] bool IsLoaded() const { return loaded_; }
    /// True when items could be in view, but none is.
    [[nodiscard]] bool IsEmptied() const;
    void SetFormCaptions();
    [[nodiscard]] SelectionLists& Lists() { return *lists_; }

  Q_SIGNALS:
    /// Other rows are in view than before.
    void Changed();

  private:
    void AddIndicatorToSel(const QStringList& keys);
    void RemoveIndicatorFromSel(bool all);

    DataPanel panel_;
    PanelRows& rows_;
    SelectionLists* lists_;
    bool loaded_ = false;
};

/// The panel of an order over several columns. A double click on a chosen column turns its direction round.
class SortPanel final : public QWidget {
    Q_OBJECT

  public:
    explicit SortPanel(QWidget* parent = nullptr);

    /// Starts with the order that the view has: areas upwards.
    void Reset();
    [[nodiscard]] QString OrderBy() const;
    [[nodiscard]] bool IsEmptied() const;
    void SetFormCaptions();
    [[nodiscard]] SelectionLists& Lists() { return *lists_; }

  Q_SIGNALS:
    void Changed();

  private:
    void Add(const QStringList& keys);
    void Remove(bool all);
    void TurnRound();
    [[nodiscard]] std::vector<KeyedItem> Chosen() const;

    SelectionLists* lists_;
};

} // namespace tessaro
