#pragma once

#include "presentation/SortChoice.h"
#include "presentation/TableWorkbook.h"

#include <QWidget>

#include <memory>

namespace Ui {
class TableOptionsPage;
}

namespace tessaro {

/// The second page of the table wizard: titles with their fonts, and what is done to the table.
class TableOptionsPage final : public QWidget {
    Q_OBJECT

  public:
    explicit TableOptionsPage(QWidget* parent = nullptr);
    ~TableOptionsPage() override;

    /// What the controls say, without the ranges of colours, which have a panel of their own.
    [[nodiscard]] TableOptions Options() const;
    /// Shows these in the controls; with `titleTyped` no titles are suggested any more.
    void SetOptions(const TableOptions& options, bool titleTyped);
    /// Titles that the wizard suggests; those that the user wrote stay.
    void SuggestTitles(const QString& title, const QString& subTitle);
    [[nodiscard]] bool TitleChanged() const { return bTitleChanged_; }
    [[nodiscard]] bool AddsColor() const;
    void SetFormCaptions();
    [[nodiscard]] const ColumnSort& Sorting() const { return sort_; }
    /// The chosen column, and its head, which is shown beside the button.
    void SetSorting(const ColumnSort& sort, const QString& head);

  Q_SIGNALS:
    void SortRequested();  ///< CmdSort
    void ColorRequested(); ///< cmdAddColor
    void AddColorChanged(bool on);

  private:
    void ConnectControls();
    void ChooseFont(QWidget* field, const QString& key);

    std::unique_ptr<Ui::TableOptionsPage> ui_;
    ColumnSort sort_;
    bool bTitleChanged_ = false;
};

} // namespace tessaro
