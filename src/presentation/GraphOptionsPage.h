#pragma once

#include "presentation/GraphWorkbook.h"
#include "presentation/SortChoice.h"

#include <QWidget>

#include <memory>

namespace Ui {
class GraphOptionsPage;
}

namespace tessaro {

/// The second page of the graph wizard: the kind of chart by its picture, the sorting and the look of its table.
class GraphOptionsPage final : public QWidget {
    Q_OBJECT

  public:
    explicit GraphOptionsPage(QWidget* parent = nullptr);
    ~GraphOptionsPage() override;

    [[nodiscard]] GraphOptions Options() const;
    /// Shows these in the controls; with `kindChosen` no kind is suggested any more.
    void SetOptions(const GraphOptions& options, bool kindChosen);
    [[nodiscard]] bool KindChosen() const { return kindChosen_; }
    /// The kind that the wizard suggests; one that the user chose stays.
    void SuggestKind(office::ChartKind kind);
    void SetFormCaptions();
    [[nodiscard]] const ColumnSort& Sorting() const { return sort_; }
    void SetSorting(const ColumnSort& sort, const QString& head);

  Q_SIGNALS:
    void SortRequested(); ///< SSCmdSort

  private:
    void FillKinds();
    void ShowKind(office::ChartKind kind);

    std::unique_ptr<Ui::GraphOptionsPage> ui_;
    ColumnSort sort_;
    bool kindChosen_ = false;
};

} // namespace tessaro
