#include "map/wizard/frmMapWizard.h"

#include "controls/ArrowPointer.h"
#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeHost.h"
#include "map/classes/ClassesPage.h"
#include "map/wizard/FirstView.h"
#include "map/wizard/LayerDrafts.h"
#include "map/wizard/MapCustomizePage.h"
#include "map/wizard/MapPane.h"
#include "map/wizard/MapTexts.h"
#include "map/wizard/MapThemePage.h"
#include "map/wizard/PeriodSlider.h"
#include "map/wizard/frmMAPAdvanced.h"
#include "map/wizard/frmMAPIdentify.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"

#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTimer>

#include <algorithm>

namespace tessaro {

namespace {

constexpr QSize kWished(1240, 760);
constexpr int kPageWidth = 540;

/// Asks for a layer's file that is not in its place, as long as the user wants to look for it.
QString LocateLayer(QWidget* parent, const QString& key, const QString& path) {
    const QString name = FileNameOf(path);
    const QString text = name.isEmpty() ? GetText(key) : GetText(key) + QLatin1Char('\n') + name;
    if (ShowMessage(text, MessageType::LocateIgnore, MessageIcon::Warning, {}, false) != MessageCode::Ok) return {};
    const ArrowPointer arrow;
    return AskForFile(parent, {PlainText(QStringLiteral("Select file for new layer")), FolderOf(path),
                               GetText(QStringLiteral("TS_FilterShape")) + QStringLiteral(" (*.shp)")});
}

} // namespace

frmMapWizard::frmMapWizard(SavePresentation save, QWidget* parent)
    : HostedWizard(std::move(save), parent), draft_(NewMapDraft()), pane_(new MapPane(this)),
      theme_(pane_->Map().Layers(), draft_,
             [this](const QString& key, const QString& path) { return LocateLayer(this, key, path); }),
      themePage_(new MapThemePage), classes_(new ClassesPage), customize_(new MapCustomizePage(draft_)),
      cmdExport_(new QPushButton(this)), cmdPicture_(new QPushButton(this)), cmdPrint_(new QPushButton(this)),
      identify_(std::make_unique<frmMAPIdentify>(this)) {
    setObjectName(QStringLiteral("frmMapWizard"));
    Form_Load();
}

frmMapWizard::~frmMapWizard() = default;

void frmMapWizard::Form_Load() {
    const ErrorTrap trap("Form_Load");
    SetTitle(PlainText(QStringLiteral("GALLERY Map")));
    const std::pair<QWidget*, const char*> pages[] = {
        {themePage_, "TS_PageMapTheme"}, {classes_, "TS_PageMapOptions"}, {customize_, "TS_PageCustomize"}};
    for (const auto& [page, key] : pages)
        AddStep(PageBesideMap(page), QLatin1String(key));
    AddStep(&fraExcel(), QStringLiteral("TS_PagePreview"));
    AddStep(nullptr, QStringLiteral("TS_PageSaveAs"));
    MakeButtons();
    SetFormFonts(this);
    SetToolTipParam();
    ConnectPages();
    ConnectMap();
    resize(screen() ? kWished.boundedTo(screen()->availableSize() - QSize(16, 40)) : kWished);
    Begin();
}

QSplitter* frmMapWizard::PageBesideMap(QWidget* page) {
    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(page);
    pagesBesideMap_ << splitter;
    return splitter;
}

void frmMapWizard::MakeButtons() {
    const std::tuple<QPushButton*, const char*, void (frmMapWizard::*)()> buttons[] = {
        {cmdPicture_, "cmdPicture", &frmMapWizard::cmdPicture_Click},
        {cmdExport_, "cmdExport", &frmMapWizard::cmdExport_Click}};
    for (const auto& [button, name, click] : buttons) {
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, click);
        AddButton(button);
    }
    cmdPrint_->setObjectName(QStringLiteral("cmdPrint"));
    cmdPrint_->setAutoDefault(false);
    connect(cmdPrint_, &QPushButton::clicked, &fraExcel(), &OfficeHost::Print);
    connect(&fraExcel(), &OfficeHost::Lost, cmdPrint_, [this] { cmdPrint_->setEnabled(false); });
    AddButton(cmdPrint_);
}

void frmMapWizard::SetToolTipParam() {
    SetCaption(cmdExport_, QStringLiteral("TS_ExportProject"));
    SetCaption(cmdPicture_, QStringLiteral("TS_SavePicture"));
    SetCaption(cmdPrint_, QStringLiteral("PRINT BUTTON"));
    pane_->SetToolTipParam();
    themePage_->SetFormCaptions();
    classes_->SetFormCaptions();
    customize_->SetFormCaptions();
}

void frmMapWizard::ConnectPages() {
    connect(themePage_, &MapThemePage::AdvancedRequested, this, &frmMapWizard::cmdAdvanced_Click);
    connect(themePage_, &MapThemePage::AreaChosen, this,
            [this](const QString& id) { pane_->Map().Outline(theme_.FeaturesOfArea(id)); });
    connect(classes_, &ClassesPage::Changed, this, &frmMapWizard::ClassesChanged);
    connect(customize_, &MapCustomizePage::LabelsChanged, this, &frmMapWizard::LabelsChosen);
    connect(customize_, &MapCustomizePage::CombinedLabelsRequested, this, &frmMapWizard::CombineLabels);
    connect(customize_, &MapCustomizePage::CustomizeRequested, this, &frmMapWizard::SSCmdCustomize_Click);
    connect(classes_, &ClassesPage::RowHovered, this, &frmMapWizard::OutlineClass);
}

void frmMapWizard::Start() {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    theme_.Begin();
    TakeNewTheme();
    started_ = true;
    untouched_ = ChosenText();
    ShowStep();
    // Not before the map is there: both want the processor.
    QTimer::singleShot(0, this, [] { StartSpreadsheet(); });
}

void frmMapWizard::TakeNewTheme() {
    themePage_->ShowTheme(draft_.theme, theme_.Areas());
    pane_->Periods().SetPeriods(theme_.Periods(), draft_.period, draft_.sameClasses);
    identify_->Forget();
    pane_->Map().Outline({});
    classes_->Start(theme_.Kind(), FeaturesOfTheme(pane_->Map().Layers()), theme_.UnreadableValues());
    ShowFirstView();
    LayersChanged();
    ShowAdvice();
    customize_->OfferSmallMaps(theme_.Periods().size() > 1);
}

void frmMapWizard::ShowFirstView() {
    const FirstView view = FirstViewOf(pane_->Map().Layers(), theme_.Areas());
    const QString note =
        view.outside > 0 ? FilledText(QStringLiteral("TS_OutsideView"), {QLocale().toString(view.outside)}) : QString();
    pane_->ShowFirst(view.extent, InReadingOrder(note));
}

void frmMapWizard::LayersChanged() {
    draft_.layers = DraftsOf(pane_->Map().Layers());
    customize_->ShowDraft();
}

const MapDraft& frmMapWizard::Draft() {
    draft_.layers = DraftsOf(pane_->Map().Layers());
    draft_.extent = pane_->Map().Extent();
    return draft_;
}

QString frmMapWizard::ChosenText() const {
    MapDraft now = draft_;
    now.layers = DraftsOf(pane_->Map().Layers());
    now.extent = {}; // moving the map is no work that could be lost
    return DraftText(now);
}

QString frmMapWizard::CancelQuestion() const {
    const bool untouched = !started_ || (WorkbookFile().isEmpty() && ChosenText() == untouched_);
    return untouched ? QString() : WizardFrame::CancelQuestion();
}

void frmMapWizard::PageShown(int step) {
    if (step <= CustomizeStep) {
        QSplitter* splitter = pagesBesideMap_.at(step - 1);
        splitter->addWidget(pane_);
        splitter->setStretchFactor(0, 0);
        splitter->setStretchFactor(1, 1);
        int page = std::min(kPageWidth, width() * 9 / 20); // the map has the larger part
        if (step == ThemeStep) page = std::max(page, std::min(themePage_->LeastWidth(), width() * 2 / 3));
        splitter->setSizes({page, width() - page});
    }
    for (QPushButton* button : {cmdExport_, cmdPicture_})
        button->setEnabled(step == CustomizeStep || step == PreviewStep);
    cmdPrint_->setVisible(step == PreviewStep);
    cmdPrint_->setEnabled(fraExcel().IsOpen());
    if (step == CustomizeStep) LayersChanged();
    pane_->Map().Outline({});
}

bool frmMapWizard::GoForward(int step) {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    switch (step) {
    case OptionStep:
        return LeaveTheme();
    case CustomizeStep:
        return LeaveOptions();
    case PreviewStep:
        return BuildAndShow();
    case SaveStep:
        return Save();
    default:
        return false;
    }
}

bool frmMapWizard::LeaveTheme() {
    if (pane_->Map().Layers().Count() > 0) return true;
    ShowMessage(QStringLiteral("222"));
    return false;
}

bool frmMapWizard::LeaveOptions() {
    if (!SaveData(draft_.classes)) return false;
    dataSaved_ = true;
    ShowLabels();
    pane_->Map().Refresh();
    return true;
}

void frmMapWizard::GoBack(int left, int entered) {
    if (left == PreviewStep) ClosePreview();
    if (entered == OptionStep) {
        pane_->Map().SetTool(MapTool::Select);
        pane_->Map().Refresh();
    }
}

void frmMapWizard::cmdAdvanced_Click() {
    if (!started_) return;
    const ErrorTrap trap("cmdAdvanced_Click");
    frmMAPAdvanced form(draft_.theme, theme_.Files(), this);
    if (ShowDialog(form) != QDialog::Accepted) return;
    const WaitPointer wait;
    if (theme_.Choose(form.Theme(), form.Maps())) TakeNewTheme();
}

} // namespace tessaro
