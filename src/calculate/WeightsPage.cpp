#include "calculate/WeightsPage.h"

#include "calculate/FillGrid.h"
#include "calculate/LogParts.h"
#include "controls/Captions.h"
#include "controls/Theme.h"
#include "session/Messages.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace tessaro {

namespace {

constexpr int kMargin = 24;
constexpr int kGap = 16;
constexpr double kAllWeights = 100;
enum Columns { ItemColumn, WeightColumn, HighColumn };

} // namespace

WeightsPage::WeightsPage(QWidget* parent)
    : CalculationPage(parent), grdW_(new FillGrid), chkHighAll_(new QCheckBox(grdW_)), lblSum_(new QLabel),
      cmdShare_(new QPushButton) {
    grdW_->setObjectName(QStringLiteral("grdW"));
    chkHighAll_->setObjectName(QStringLiteral("chkHighAll"));
    lblSum_->setObjectName(QStringLiteral("lblSum"));
    cmdShare_->setObjectName(QStringLiteral("cmdShare"));
    cmdShare_->setAutoDefault(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kGap, kMargin, kGap);
    layout->setSpacing(kGap);
    layout->addWidget(MakeHint(QStringLiteral("TS_HintWeights")));
    layout->addWidget(grdW_, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblSum_);
    bottom->addStretch();
    bottom->addWidget(cmdShare_);
    layout->addLayout(bottom);
    SetFormCaptions();
    connect(grdW_, &QTableWidget::cellChanged, this, [this] {
        ShowSum();
        ShowHighAll();
        Q_EMIT Changed();
    });
    connect(grdW_->horizontalHeader(), &QHeaderView::sectionResized, this, &WeightsPage::PlaceHighAll);
    connect(grdW_->horizontalHeader(), &QHeaderView::geometriesChanged, this, &WeightsPage::PlaceHighAll);
    connect(chkHighAll_, &QCheckBox::clicked, this, &WeightsPage::chkHighAll_Click);
    connect(cmdShare_, &QPushButton::clicked, this, &WeightsPage::cmdShare_Click);
}

void WeightsPage::SetFormCaptions() {
    SetCaption(cmdShare_, QStringLiteral("TS_ShareWeights"));
    SetCaption(chkHighAll_, QStringLiteral("INDEX GRID HIGH"));
    SetToolTip(chkHighAll_, QStringLiteral("TS_HighAllTip"));
    grdW_->setAccessibleName(PlainText(QStringLiteral("TS_PageWeights")));
    // The box stands in place of the last head's text, which keeps the column wide enough for it.
    grdW_->SetHeads({PlainText(QStringLiteral("Comm_Indicator")), PlainText(QStringLiteral("INDEX GRID WEIGHT")),
                     QStringLiteral("        ") + PlainText(QStringLiteral("INDEX GRID HIGH"))});
    grdW_->horizontalHeaderItem(HighColumn)->setForeground(Qt::transparent);
    chkHighAll_->setAutoFillBackground(true);
}

void WeightsPage::ShowDraft(const CalculationDraft& draft) {
    {
        const QSignalBlocker quiet(grdW_);
        grdW_->setRowCount(static_cast<int>(draft.items.size()));
        for (std::size_t i = 0; i < draft.items.size(); ++i) {
            const int row = static_cast<int>(i);
            const IndexWeight weight = i < draft.weights.size() ? draft.weights[i] : IndexWeight();
            grdW_->SetLabel(row, ItemColumn, NameOf(draft.items[i]));
            grdW_->SetField(row, WeightColumn, weight.weight);
            grdW_->SetLabel(row, HighColumn, {});
            QTableWidgetItem* high = grdW_->item(row, HighColumn);
            high->setFlags(high->flags() | Qt::ItemIsUserCheckable);
            high->setData(Qt::AccessibleTextRole, PlainText(QStringLiteral("INDEX GRID HIGH")));
            high->setCheckState(weight.highIsGood ? Qt::Checked : Qt::Unchecked);
        }
        if (grdW_->rowCount() > 0) grdW_->setCurrentCell(0, WeightColumn);
    }
    ShowSum();
    ShowHighAll();
    PlaceHighAll();
    grdW_->setFocus();
}

std::vector<IndexWeight> WeightsPage::Weights() const {
    std::vector<IndexWeight> weights;
    for (int row = 0; row < grdW_->rowCount(); ++row)
        weights.push_back(
            {grdW_->TextOf(row, WeightColumn), grdW_->item(row, HighColumn)->checkState() == Qt::Checked});
    return weights;
}

void WeightsPage::TakeInto(CalculationDraft& draft) const {
    grdW_->EndTyping();
    draft.weights = Weights();
}

void WeightsPage::FocusOn(const char* /*control*/, int row) {
    grdW_->setFocus(Qt::OtherFocusReason);
    grdW_->setCurrentCell(row, WeightColumn);
}

void WeightsPage::ShowSum() {
    std::vector<IndexWeight> weights = Weights();
    const double sum = SumOfWeights(weights);
    const bool whole = sum == kAllWeights;
    lblSum_->setText(FilledText(whole ? QStringLiteral("TS_WeightSum") : QStringLiteral("TS_WeightSumWrong"),
                                {InOnePiece(QLocale().toString(sum, 'g', 10))}));
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, whole ? theme::Accent() : palette().color(QPalette::WindowText));
    lblSum_->setPalette(colors);
}

void WeightsPage::cmdShare_Click() {
    const QStringList weights = EvenWeights(grdW_->rowCount());
    for (int row = 0; row < grdW_->rowCount(); ++row)
        grdW_->SetField(row, WeightColumn, weights.at(row));
    ShowSum();
    Q_EMIT Changed();
}

void WeightsPage::chkHighAll_Click() {
    const Qt::CheckState state = chkHighAll_->isChecked() ? Qt::Checked : Qt::Unchecked;
    for (int row = 0; row < grdW_->rowCount(); ++row)
        grdW_->item(row, HighColumn)->setCheckState(state);
}

void WeightsPage::ShowHighAll() {
    bool all = true;
    for (const IndexWeight& weight : Weights())
        all = all && weight.highIsGood;
    chkHighAll_->setChecked(all);
}

void WeightsPage::PlaceHighAll() {
    const QHeaderView* head = grdW_->horizontalHeader();
    const QRect place(head->sectionViewportPosition(HighColumn), 0, head->sectionSize(HighColumn), head->height());
    chkHighAll_->setGeometry(place.translated(head->viewport()->mapTo(grdW_, QPoint())).adjusted(4, 1, -1, -1));
}

void WeightsPage::changeEvent(QEvent* event) {
    CalculationPage::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::FontChange) PlaceHighAll();
}

} // namespace tessaro
