#pragma once

#include "presentation/RowsColumnsFile.h"

#include <QWidget>

#include <memory>

namespace Ui {
class RowsColumnsPage;
}

namespace tessaro {

class KeyedList;

/// The first page of the table and of the graph wizard: fields are put on the rows and columns (the graph's Y and X
/// axis) by double click, by dragging, by the arrow buttons and by keys; the arrangement is reset, saved and loaded.
class RowsColumnsPage final : public QWidget {
    Q_OBJECT

  public:
    RowsColumnsPage(WizardKind kind, QWidget* parent = nullptr);
    ~RowsColumnsPage() override;

    [[nodiscard]] const RowsColumns& Arrangement() const { return arrangement_; }
    void SetArrangement(const RowsColumns& arrangement);
    void SetFormCaptions();

    void CmdReset_Click();
    /// Asks for a file and writes the arrangement to it.
    void CmdSave_Click();
    /// Shows frmLoadRC and takes the arrangement of the chosen file.
    void CmdLoad_Click();

  Q_SIGNALS:
    void ArrangementChanged();

  private:
    void NameLists();
    void ConnectList(KeyedList* list, Placement placement);
    void ConnectButtons();
    void Move(KeyedList* from, Placement placement, int row = kPivotFieldCount);
    void Shift(Placement placement, int by);
    void ShowLists();
    void ShowDetails(const QString& key);
    void ShowButtons();
    [[nodiscard]] KeyedList* ListOf(Placement placement) const;

    std::unique_ptr<Ui::RowsColumnsPage> ui_;
    WizardKind kind_;
    RowsColumns arrangement_;
};

} // namespace tessaro
