#include "map/wizard/frmMAPAdvanced.h"

#include "controls/ArrowPointer.h"
#include "controls/Captions.h"
#include "controls/EmptyHint.h"
#include "controls/FileDialogs.h"
#include "map/wizard/ThemeLists.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "ui_frmMAPAdvanced.h"

#include <algorithm>

namespace tessaro {

namespace {

/// The chosen text of a list; empty for none.
QString Chosen(const QListView& list) {
    return list.currentIndex().data().toString();
}

/// Makes a text the chosen one, or the first when there is no such text.
void Choose(QListView& list, const QString& text) {
    const QAbstractItemModel& texts = *list.model();
    int row = 0;
    for (int i = 0; i < texts.rowCount(); ++i)
        if (texts.index(i, 0).data().toString() == text) row = i;
    list.setCurrentIndex(texts.index(row, 0));
}

} // namespace

frmMAPAdvanced::frmMAPAdvanced(const MapTheme& theme, const MapFiles& maps, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMAPAdvanced>()), theme_(theme), maps_(maps) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    SetFormFonts(this);
    SetFormCaptions();
    ConnectLists();
    const ErrorTrap trap("Form_Load");
    FillMaps();
    indicators_.setStringList(IndicatorsInView());
    Choose(*ui_->lvIndicators, theme.indicator);
    if (!theme.subpop.isEmpty()) Choose(*ui_->lvSubPops, theme.subpop);
    Choose(*ui_->lvUnits, theme.unit);
    EnableOK();
}

frmMAPAdvanced::~frmMAPAdvanced() = default;

void frmMAPAdvanced::SetFormCaptions() {
    setWindowTitle(PlainText(QStringLiteral("TS_OtherTheme")));
    SetCaption(ui_->lblIndicators, QStringLiteral("Comm_Indicator"));
    SetCaption(ui_->lblSubPops, QStringLiteral("Subpop"));
    SetCaption(ui_->lblUnits, QStringLiteral("Comm_Unit"));
    SetCaption(ui_->lblBaseMap, QStringLiteral("Base Map"));
    SetCaption(ui_->cmdBrowse, QStringLiteral("BROWSE"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->cmdCancel, QStringLiteral("CANCEL BUTTON"));
    const std::pair<QLabel*, QAbstractItemView*> named[] = {{ui_->lblIndicators, ui_->lvIndicators},
                                                            {ui_->lblSubPops, ui_->lvSubPops},
                                                            {ui_->lblUnits, ui_->lvUnits},
                                                            {ui_->lblBaseMap, ui_->cboMaps}};
    for (const auto& [label, list] : named) {
        label->setBuddy(list);
        list->setAccessibleName(label->accessibleName());
        list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    }
    ShowWhenEmpty(ui_->lvIndicators, PlainText(QStringLiteral("TS_NoMapValues")));
}

void frmMAPAdvanced::ConnectLists() {
    ui_->lvIndicators->setModel(&indicators_);
    ui_->lvSubPops->setModel(&subpops_);
    ui_->lvUnits->setModel(&units_);
    const auto onChoice = [this](QListView* list, void (frmMAPAdvanced::*then)()) {
        connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this, then);
    };
    onChoice(ui_->lvIndicators, &frmMAPAdvanced::IndicatorChosen);
    onChoice(ui_->lvSubPops, &frmMAPAdvanced::SubpopChosen);
    onChoice(ui_->lvUnits, &frmMAPAdvanced::EnableOK);
    connect(ui_->cboMaps, &QListWidget::itemChanged, this, &frmMAPAdvanced::EnableOK);
    connect(ui_->cmdBrowse, &QPushButton::clicked, this, &frmMAPAdvanced::cmdBrowse_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmMAPAdvanced::cmdOK_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmMAPAdvanced::AddMap(const MapFile& file, bool ticked) {
    listed_.push_back(file);
    auto* item = new QListWidgetItem(file.name, ui_->cboMaps);
    item->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    item->setToolTip(file.folder);
}

void frmMAPAdvanced::FillMaps() {
    for (const MapFile& file : maps_)
        AddMap(file, true);
    for (const MapFile& file : InstalledMaps())
        if (std::find(listed_.begin(), listed_.end(), file) == listed_.end()) AddMap(file, false);
    if (!listed_.empty()) ui_->cboMaps->setCurrentRow(0);
}

void frmMAPAdvanced::IndicatorChosen() {
    QStringList subpops = SubpopsOf(Chosen(*ui_->lvIndicators));
    if (subpops.size() > 1) subpops.prepend(PlainText(QStringLiteral("TS_AllSubgroups")));
    subpops_.setStringList(subpops);
    ui_->lvSubPops->setCurrentIndex(subpops_.index(0, 0));
    SubpopChosen();
}

QString frmMAPAdvanced::Subpop() const {
    return ui_->lvSubPops->currentIndex().row() <= 0 ? QString() : Chosen(*ui_->lvSubPops);
}

void frmMAPAdvanced::SubpopChosen() {
    const QString unit = Chosen(*ui_->lvUnits);
    units_.setStringList(UnitsOf(Chosen(*ui_->lvIndicators), Subpop()));
    Choose(*ui_->lvUnits, unit);
    EnableOK();
}

MapFiles frmMAPAdvanced::Ticked() const {
    MapFiles ticked;
    for (int row = 0; row < ui_->cboMaps->count(); ++row)
        if (ui_->cboMaps->item(row)->checkState() == Qt::Checked)
            ticked.push_back(listed_[static_cast<std::size_t>(row)]);
    return ticked;
}

void frmMAPAdvanced::EnableOK() {
    ui_->cmdOK->setEnabled(ui_->lvIndicators->currentIndex().isValid() && ui_->lvUnits->currentIndex().isValid() &&
                           !Ticked().empty());
}

void frmMAPAdvanced::cmdBrowse_Click() {
    const ErrorTrap trap("cmdBrowse_Click");
    const ArrowPointer arrow;
    const QString filter = GetText(QStringLiteral("TS_FilterShape")) + QStringLiteral(" (*.shp)");
    const QString folder = maps_.empty() ? QString() : maps_.front().folder;
    const QString path = AskForFile(this, {PlainText(QStringLiteral("Select file for new layer")), folder, filter});
    if (path.isEmpty()) return;
    const MapFile file{FileNameOf(path), FolderOf(path)};
    const auto at = std::find(listed_.begin(), listed_.end(), file);
    if (at == listed_.end())
        AddMap(file, true);
    else
        ui_->cboMaps->item(static_cast<int>(at - listed_.begin()))->setCheckState(Qt::Checked);
}

void frmMAPAdvanced::cmdOK_Click() {
    theme_ = {Chosen(*ui_->lvIndicators), Subpop(), Chosen(*ui_->lvUnits)};
    maps_ = Ticked();
    accept();
}

} // namespace tessaro
