#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmLanguage;
}

namespace tessaro {

/// Comes up when the open database has no texts in the current language, and lists the languages that it has.
class frmLanguage final : public QDialog {
    Q_OBJECT

  public:
    explicit frmLanguage(QWidget* parent = nullptr);
    ~frmLanguage() override;

    /// The current language, and the languages of the open database.
    void ShowLanguages();
    /// The language that was chosen with OK; empty when the dialog was left otherwise.
    [[nodiscard]] QString Chosen() const { return chosen_; }

  Q_SIGNALS:
    /// The language is to be changed in the preferences.
    void PropertiesWanted();

  private:
    void cmdOK_Click();

    QString chosen_;
    std::unique_ptr<Ui::frmLanguage> ui_;
};

} // namespace tessaro
