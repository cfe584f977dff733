#pragma once

#include "map/MapPage.h"
#include "map/wizard/ThemeMap.h"
#include "wizards/HostedWizard.h"
#include "wizards/WizardProgress.h"

class QPushButton;
class QSplitter;

namespace tessaro {

class ClassesPage;
class MapCustomizePage;
class MapPane;
class MapThemePage;
class frmMAPIdentify;

/// From the data in view to a thematic map: theme, classes, texts and layout, the workbook in the hosted spreadsheet,
/// and its place in the gallery. The map stands beside the first three pages and follows every change.
class frmMapWizard final : public HostedWizard {
    Q_OBJECT

  public:
    explicit frmMapWizard(SavePresentation save, QWidget* parent = nullptr);
    ~frmMapWizard() override;

    /// All that the user has chosen so far, with the layers and the extent as they are now.
    [[nodiscard]] const MapDraft& Draft();
    [[nodiscard]] const ThemeMap& Theme() const { return theme_; }
    [[nodiscard]] ClassesPage& Classes() const { return *classes_; }

    void cmdAdvanced_Click();
    /// What lies at a place of the map, in a window beside it.
    void Identify(const QPointF& map);
    /// Writes an ArcView project with its table.
    void cmdExport_Click();
    /// Saves the map with its legend and notes as a picture.
    void cmdPicture_Click();

  protected:
    [[nodiscard]] bool GoForward(int step) override;
    void GoBack(int left, int entered) override;
    void PageShown(int step) override;
    void Start() override;
    [[nodiscard]] bool MayFinish() const override { return started_ && Step() < SaveStep; }
    [[nodiscard]] bool MayGoForward() const override { return started_; }
    [[nodiscard]] QString CancelQuestion() const override;

  private:
    enum Steps { ThemeStep = 1, OptionStep, CustomizeStep, PreviewStep, SaveStep };

    void Form_Load();
    void MakeButtons();
    void ConnectPages();
    void ConnectMap();
    void SetToolTipParam();
    [[nodiscard]] QSplitter* PageBesideMap(QWidget* page);

    [[nodiscard]] bool LeaveTheme();
    [[nodiscard]] bool LeaveOptions();
    [[nodiscard]] bool BuildAndShow();
    [[nodiscard]] bool Save();
    [[nodiscard]] MapPage Page();
    [[nodiscard]] QString SuggestedName() const;
    /// The draft as text, without what the map shows of it.
    [[nodiscard]] QString ChosenText() const;
    /// The workbook that the draft asks for; throws what MakeMapWorkbook throws.
    [[nodiscard]] QString MakeWorkbook(const WizardProgress& progress);

    void TakeNewTheme();
    void ShowFirstView();
    void ClassesChanged();
    void ShowPeriod(const QString& period);
    void ShowAdvice();
    void TakeAdvice();
    void ShowLabels();
    void LabelsChosen();
    void CombineLabels();
    void ChooseLabels();
    void SSCmdCustomize_Click();
    void ShowPointed(const QPointF& map);
    void ShowNothingPointed();
    void OutlineClass(int row);
    void LayersChanged();

    MapDraft draft_;
    MapPane* pane_;
    ThemeMap theme_;
    MapThemePage* themePage_;
    ClassesPage* classes_;
    MapCustomizePage* customize_;
    QList<QSplitter*> pagesBesideMap_;
    QPushButton* cmdExport_;
    QPushButton* cmdPicture_;
    QPushButton* cmdPrint_; ///< the workbook in the preview
    std::unique_ptr<frmMAPIdentify> identify_;
    QString untouched_;       ///< the draft as the wizard itself has made it
    ClassTable looksOfAreas_; ///< from before points took their place
    bool started_ = false;
    bool dataSaved_ = false; ///< the classes stand in `_MapData`
};

} // namespace tessaro
