#pragma once

#include "view/DataFilters.h"

#include <QDialog>
#include <QString>

#include <memory>

namespace Ui {
class frmFavourites;
}

namespace tessaro {

/// Makes favourites of what the data view shows, and removes them. A double click on one asks for it to be opened.
class frmFavourites final : public QDialog {
    Q_OBJECT

  public:
    /// `rows` are what the data view shows, which a new favourite keeps.
    explicit frmFavourites(QWidget* parent = nullptr, RowsInView rows = {});
    ~frmFavourites() override;

    /// Path of the favourite that the user wants to open; empty when none.
    [[nodiscard]] const QString& Wanted() const { return wanted_; }

    void cmdOK_Click();
    void cmdRemove_Click();
    void cmdCreateIn_Click();

  private:
    void SetFormCaptions();
    void FillFavorites();
    void ShowLowerHalf(bool shown);

    std::unique_ptr<Ui::frmFavourites> ui_;
    RowsInView rows_;
    QString wanted_;
    int lowerHeight_ = 0;
};

} // namespace tessaro
