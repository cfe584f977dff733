#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmSearch;
}

namespace tessaro {

/// Asks for a part of a name; the screen that opens it searches.
class frmSearch final : public QDialog {
    Q_OBJECT

  public:
    explicit frmSearch(QWidget* parent = nullptr);
    ~frmSearch() override;

    /// What was typed; empty when the dialog was left without a search.
    [[nodiscard]] QString Text() const;

  private:
    void cmdSearch_Click();

    std::unique_ptr<Ui::frmSearch> ui_;
};

} // namespace tessaro
