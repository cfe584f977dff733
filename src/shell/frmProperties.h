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

/// The user's preferences on four tabs. The controls are a draft: OK and Apply take it into the session and save it;
/// Cancel leaves all as it was. Whoever shows the form brings the running program into line.
class frmProperties final : public QDialog {
    Q_OBJECT

  public:
    /// `volume` is the loudness of the session's sound, in per cent.
    explicit frmProperties(int volume, QWidget* parent = nullptr);
    ~frmProperties() override;

    void cmdOK_Click();
    void cmdApply_Click();
    void cmdImport_Click();

  Q_SIGNALS:
    /// The session has new values and this loudness; `before` is what the values were.
    void Applied(const tessaro::Preferences& before, int volume);
    /// A language file was added, or has replaced one of its name.
    void LanguageImported(const QString& file);

  private:
    void SetFormCaptions();
    void SetGeneralCaptions();
    void SetOtherCaptions();
    void setTheFontForProp();
    void WalkTabsByKey();
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
