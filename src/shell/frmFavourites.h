#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmFavourites;
}

namespace tessaro {

/// Makes a favourite of what the data view shows, and removes favourites.
class frmFavourites final : public QDialog {
    Q_OBJECT

  public:
    explicit frmFavourites(QWidget* parent = nullptr);
    ~frmFavourites() override;

    void cmdOK_Click();
    void cmdRemove_Click();

  private:
    void FillList();
    void ShowLower(bool shown);

    std::unique_ptr<Ui::frmFavourites> ui_;
};

} // namespace tessaro
