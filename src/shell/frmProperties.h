#pragma once

#include "shell/Preferences.h"
#include "shell/SoundLoop.h"

#include <QDialog>

#include <memory>

class QButtonGroup;

namespace Ui {
class frmProperties;
}

namespace tessaro {

class frmMain;

/// The user's preferences on four tabs. The controls are a draft: OK and Apply take it into the session, save it, and
/// bring the running frame into line; Cancel leaves all as it was.
class frmProperties final : public QDialog {
    Q_OBJECT

  public:
    explicit frmProperties(frmMain& frame);
    ~frmProperties() override;

    void cmdOK_Click();
    void cmdApply_Click();
    void cmdImport_Click();

  private:
    void SetFormCaptions();
    void SetGeneralCaptions();
    void SetOtherCaptions();
    void setTheFontForProp();
    void ConnectGeneral();
    void ConnectOthers();
    void FillChoices();
    void FillLanguages();
    void FillFontStyles();
    void FillSounds();
    void FillProduct();
    void ArrangeIndicatorOptions();
    void Show(const Preferences& values);
    [[nodiscard]] Preferences Draft() const;
    void Apply();
    void cmbLanguages_Click();
    void ShowPreview();
    void ShowColor();
    void cmdBrowseColor_Click();
    void cmdBrowseSound_Click();
    void cmdPreview_Click();
    void ChooseFont(const QString& family, int size);
    void ChooseSound(const QString& path);
    void KeepDefaultView();

    frmMain& frame_;
    std::unique_ptr<Ui::frmProperties> ui_;
    QButtonGroup* optContentOption_;
    QButtonGroup* optDefault_;
    QButtonGroup* chkIndOptions_;
    SoundLoop preview_;
    Preferences before_; ///< what the session had when the form came up, or after the last Apply
    long color_ = 0;
    QString sample_;
};

} // namespace tessaro
