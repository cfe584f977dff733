#include "calculate/UnitFactorsPage.h"

#include "calculate/FillGrid.h"
#include "controls/Captions.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace tessaro {

namespace {

constexpr int kMargin = 24;
constexpr int kGap = 16;
enum Columns { UnitColumn, FactorColumn };

} // namespace

UnitFactorsPage::UnitFactorsPage(QWidget* parent)
    : CalculationPage(parent), lblTUnit_(new QLabel), rtbTUnit_(new QLineEdit), grdUnit_(new FillGrid) {
    rtbTUnit_->setObjectName(QStringLiteral("rtbTUnit"));
    grdUnit_->setObjectName(QStringLiteral("grdUnit"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kGap, kMargin, kGap);
    layout->setSpacing(kGap);
    layout->addWidget(MakeHint(QStringLiteral("TS_HintFactors")));
    auto* top = new QHBoxLayout;
    top->setSpacing(kGap);
    top->addWidget(lblTUnit_);
    top->addWidget(rtbTUnit_, 1);
    layout->addLayout(top);
    layout->addWidget(grdUnit_, 1);
    SetCaption(lblTUnit_, QStringLiteral("TS_TargetUnit"));
    lblTUnit_->setBuddy(rtbTUnit_);
    rtbTUnit_->setAccessibleName(PlainText(QStringLiteral("TS_TargetUnit")));
    grdUnit_->setAccessibleName(PlainText(QStringLiteral("TS_PageConversionFactors")));
    grdUnit_->SetHeads(
        {PlainText(QStringLiteral("TRANSFORM GRID SOURCE")), PlainText(QStringLiteral("TRANSFORM TARGET CONVERSION"))});
    connect(rtbTUnit_, &QLineEdit::textEdited, this, &UnitFactorsPage::Changed);
    connect(grdUnit_, &QTableWidget::cellChanged, this, &UnitFactorsPage::Changed);
}

void UnitFactorsPage::ShowDraft(const CalculationDraft& draft) {
    const QSignalBlocker quiet(grdUnit_);
    rtbTUnit_->setText(draft.targetUnit);
    grdUnit_->setRowCount(static_cast<int>(draft.factors.size()));
    for (std::size_t i = 0; i < draft.factors.size(); ++i) {
        grdUnit_->SetLabel(static_cast<int>(i), UnitColumn, draft.factors[i].unit);
        grdUnit_->SetField(static_cast<int>(i), FactorColumn, draft.factors[i].factor);
    }
    if (grdUnit_->rowCount() > 0) grdUnit_->setCurrentCell(0, FactorColumn);
    rtbTUnit_->setFocus();
}

void UnitFactorsPage::TakeInto(CalculationDraft& draft) const {
    grdUnit_->EndTyping();
    draft.targetUnit = rtbTUnit_->text().trimmed();
    for (std::size_t i = 0; i < draft.factors.size(); ++i)
        draft.factors[i].factor = grdUnit_->TextOf(static_cast<int>(i), FactorColumn);
}

void UnitFactorsPage::FocusOn(const char* control, int row) {
    CalculationPage::FocusOn(control, row);
    if (grdUnit_->hasFocus()) grdUnit_->setCurrentCell(row, FactorColumn);
}

} // namespace tessaro
