#include "calculate/SaveAsPage.h"

#include "controls/Captions.h"
#include "ui_SaveAsPage.h"

#include <utility>

namespace tessaro {

SaveAsPage::SaveAsPage(CalcType type, QWidget* parent)
    : CalculationPage(parent), ui_(std::make_unique<Ui::SaveAsPage>()) {
    ui_->setupUi(this);
    SetFormCaptions();
    ShowFields(type);
    for (QComboBox* box : {ui_->cmbSector, ui_->cmbClass, ui_->cmbIndicator, ui_->cmbSubpop})
        connect(box, &QComboBox::editTextChanged, this, &SaveAsPage::Changed);
    for (QLineEdit* field : {ui_->txtUnit, ui_->txtDecimals, ui_->txtScaleMin, ui_->txtScaleMax})
        connect(field, &QLineEdit::textEdited, this, &SaveAsPage::Changed);
    connect(ui_->chkSaveAs, &QCheckBox::clicked, this, &SaveAsPage::Changed);
}

SaveAsPage::~SaveAsPage() = default;

void SaveAsPage::SetFormCaptions() {
    ui_->lblHint->setText(GetText(QStringLiteral("TS_HintSaveAs")));
    ui_->lblHint->setAlignment(ReadingSide() | Qt::AlignVCenter);
    SetCaption(ui_->chkSaveAs, QStringLiteral("Save with Data View"));
    SetToolTip(ui_->chkSaveAs, QStringLiteral("TS_SaveWithDataTip"));
    struct Named {
        QLabel* label;
        QWidget* field;
        const char* key;
    };
    const Named fields[] = {{ui_->lblSector, ui_->cmbSector, "Comm_Sector"},
                            {ui_->lblClass, ui_->cmbClass, "Comm_Class"},
                            {ui_->lblIndicator, ui_->cmbIndicator, "Comm_Indicator"},
                            {ui_->lblUnit, ui_->txtUnit, "Comm_Unit"},
                            {ui_->lblSubpop, ui_->cmbSubpop, "Subpop"},
                            {ui_->lblDecimals, ui_->txtDecimals, "Comm_DECIMAL"},
                            {ui_->lblScaleMin, ui_->txtScaleMin, "INDEX_SCALE_MIN"},
                            {ui_->lblScaleMax, ui_->txtScaleMax, "INDEX_SCALE_MAX"}};
    for (const Named& one : fields) {
        SetCaption(one.label, QLatin1String(one.key));
        one.label->setBuddy(one.field);
        one.field->setAccessibleName(PlainText(QLatin1String(one.key)));
    }
}

void SaveAsPage::ShowFields(CalcType type) {
    const std::pair<QWidget*, bool> fields[] = {{ui_->lblUnit, AsksForUnit(type)},
                                                {ui_->txtUnit, AsksForUnit(type)},
                                                {ui_->lblSubpop, AsksForSubpop(type)},
                                                {ui_->cmbSubpop, AsksForSubpop(type)},
                                                {ui_->lblScaleMin, type == CalcType::CompositeIndex},
                                                {ui_->txtScaleMin, type == CalcType::CompositeIndex},
                                                {ui_->lblScaleMax, type == CalcType::CompositeIndex},
                                                {ui_->txtScaleMax, type == CalcType::CompositeIndex}};
    for (const auto& [field, shown] : fields)
        field->setVisible(shown);
}

void SaveAsPage::SetChoices(const NameChoices& choices, const std::vector<CalculationItem>& items) {
    QStringList indicators;
    for (const CalculationItem& item : items)
        if (!indicators.contains(item.indicator)) indicators << item.indicator;
    const std::pair<QComboBox*, QStringList> lists[] = {{ui_->cmbSector, choices.sectors},
                                                        {ui_->cmbClass, choices.classes},
                                                        {ui_->cmbIndicator, indicators},
                                                        {ui_->cmbSubpop, choices.subpops}};
    for (const auto& [box, texts] : lists) {
        const QString text = box->currentText();
        box->clear();
        box->addItems(texts);
        box->setCurrentText(text);
    }
}

void SaveAsPage::ShowDraft(const CalculationDraft& draft) {
    ui_->cmbSector->setCurrentText(draft.sector);
    ui_->cmbClass->setCurrentText(draft.indicatorClass);
    ui_->cmbIndicator->setCurrentText(draft.indicator);
    ui_->txtUnit->setText(draft.unit);
    ui_->cmbSubpop->setCurrentText(draft.subpop);
    ui_->txtDecimals->setText(draft.decimals);
    ui_->txtScaleMin->setText(draft.scaleMin);
    ui_->txtScaleMax->setText(draft.scaleMax);
    ui_->chkSaveAs->setChecked(draft.saveWithDataView);
    ui_->cmbIndicator->setFocus();
    ui_->cmbIndicator->lineEdit()->selectAll();
}

void SaveAsPage::TakeInto(CalculationDraft& draft) const {
    draft.sector = ui_->cmbSector->currentText().trimmed();
    draft.indicatorClass = ui_->cmbClass->currentText().trimmed();
    draft.indicator = ui_->cmbIndicator->currentText().trimmed();
    draft.unit = ui_->txtUnit->text().trimmed();
    draft.subpop = ui_->cmbSubpop->currentText().trimmed();
    draft.decimals = ui_->txtDecimals->text().trimmed();
    draft.scaleMin = ui_->txtScaleMin->text().trimmed();
    draft.scaleMax = ui_->txtScaleMax->text().trimmed();
    draft.saveWithDataView = ui_->chkSaveAs->isChecked();
}

} // namespace tessaro
