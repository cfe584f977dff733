#include "map/custom/frmMapLabels.h"

#include "controls/Captions.h"
#include "controls/ColorDialogs.h"
#include "controls/FontDialogs.h"
#include "controls/Theme.h"
#include "map/MapLayerList.h"
#include "map/custom/LabelFields.h"
#include "map/custom/RenderLabels.h"
#include "map/custom/frmMAPAdvLbl.h"
#include "session/ErrorSink.h"
#include "ui_frmMapLabels.h"

namespace tessaro {

frmMapLabels::frmMapLabels(LayerStack& map, int layer, QString& labelFormula, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMapLabels>()), map_(map), layer_(layer), labelFormula_(labelFormula),
      draft_(map.At(layer).labels) {
    if (draft_.field.isEmpty()) draft_ = FirstLabels();
    ui_->setupUi(this);
    SetFormFonts(this);
    SetFormCaptions();
    FillFields();
    ui_->chkLabel->setChecked(draft_.on);
    ui_->chkHalo->setChecked(draft_.halo.isValid());
    ui_->chkHideColliding->setChecked(!draft_.overlaps);
    ShowLooks();
    connect(ui_->cmbLabelField, &QComboBox::currentIndexChanged, this, &frmMapLabels::ShowLooks);
    connect(ui_->cmdAdvField, &QPushButton::clicked, this, &frmMapLabels::cmdAdvField_Click);
    connect(ui_->cmdLabelFont, &QPushButton::clicked, this, &frmMapLabels::cmdLabelFont_Click);
    connect(ui_->cmdLabelColor, &QPushButton::clicked, this, &frmMapLabels::cmdLabelColor_Click);
    connect(ui_->cmdOKLabel, &QPushButton::clicked, this, &frmMapLabels::cmdOKLabel_Click);
    connect(ui_->cmdCancelLabel, &QPushButton::clicked, this, &QDialog::reject);
}

frmMapLabels::~frmMapLabels() = default;

void frmMapLabels::SetFormCaptions() {
    setWindowTitle(PlainText(QStringLiteral("Labels")) + QStringLiteral(" - ") + map_.At(layer_).data.name);
    SetCaption(ui_->chkLabel, QStringLiteral("TS_ShowLabels"));
    SetCaption(ui_->lblField, QStringLiteral("TS_LabelField"));
    SetCaption(ui_->cmdAdvField, QStringLiteral("TS_ComposeLabel"));
    SetCaption(ui_->cmdLabelFont, QStringLiteral("COMM_Font"));
    SetCaption(ui_->cmdLabelColor, QStringLiteral("COMM_Color"));
    SetCaption(ui_->chkHalo, QStringLiteral("TS_LabelHalo"));
    SetCaption(ui_->chkHideColliding, QStringLiteral("TS_HideColliding"));
    SetCaption(ui_->cmdOKLabel, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->cmdCancelLabel, QStringLiteral("CANCEL BUTTON"));
    ui_->cmbLabelField->setAccessibleName(ui_->lblField->accessibleName());
    ui_->lblLabelPreview->setAutoFillBackground(true);
    ui_->lblLabelPreview->setBackgroundRole(QPalette::Base);
}

void frmMapLabels::FillFields() {
    const QSignalBlocker quiet(ui_->cmbLabelField);
    ui_->cmbLabelField->clear();
    for (const QString& key : FieldsOffered(IsOfTheme(map_.At(layer_)), draft_.field))
        ui_->cmbLabelField->addItem(PlainText(key), key);
    ui_->cmbLabelField->setCurrentIndex(std::max(0, ui_->cmbLabelField->findData(draft_.field)));
}

QString frmMapLabels::Field() const {
    return ui_->cmbLabelField->currentData().toString();
}

void frmMapLabels::ShowLooks() {
    const bool combined = Field() == QLatin1String(kCombinedField);
    const QString captions = combined ? CaptionsOfFormula(labelFormula_) : QString();
    QLabel& preview = *ui_->lblLabelPreview;
    preview.setText(captions.isEmpty() ? ui_->cmbLabelField->currentText() : captions);
    preview.setFont(draft_.font);
    QPalette letters = preview.palette();
    letters.setColor(QPalette::WindowText, theme::TextColor(draft_.color));
    preview.setPalette(letters);
    ui_->cmdLabelColor->setIcon(ColorSquare(draft_.color, theme::kIconSize));
}

bool frmMapLabels::Compose() {
    frmMAPAdvLbl window(labelFormula_, this);
    if (window.exec() != QDialog::Accepted) return false;
    labelFormula_ = window.Formula();
    composed_ = true;
    return true;
}

void frmMapLabels::cmdAdvField_Click() {
    const ErrorTrap trap("cmdAdvField_Click");
    if (!Compose()) return;
    draft_.field = QLatin1String(kCombinedField);
    FillFields();
    ShowLooks();
}

void frmMapLabels::cmdLabelFont_Click() {
    if (const auto font = AskForFont(this, PlainText(QStringLiteral("COMM_Font")), draft_.font)) draft_.font = *font;
    ShowLooks();
}

void frmMapLabels::cmdLabelColor_Click() {
    const QColor color = AskForColor(this, PlainText(QStringLiteral("COMM_Color")), draft_.color);
    if (color.isValid()) draft_.color = color;
    ShowLooks();
}

void frmMapLabels::cmdOKLabel_Click() {
    const ErrorTrap trap("cmdOKLabel_Click");
    draft_.on = ui_->chkLabel->isChecked();
    draft_.field = Field();
    draft_.halo = ui_->chkHalo->isChecked() ? HaloOf(draft_.color) : QColor();
    draft_.overlaps = !ui_->chkHideColliding->isChecked();
    if (draft_.on && draft_.field == QLatin1String(kCombinedField) && !composed_ && !Compose()) return;
    map_.SetLabels(layer_, draft_);
    RenderLabels(map_, labelFormula_);
    accept();
}

} // namespace tessaro
