#include "calculate/SelectionPage.h"

#include "calculate/Choices.h"
#include "controls/Captions.h"
#include "controls/SelectionLists.h"
#include "session/ErrorSink.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kMargin = 24;
constexpr int kGap = 16;

QString KeyOf(const CalculationItem& item) {
    return item.indicator + QChar(0x1F) + item.subpop;
}

KeyedItem RowOf(const CalculationItem& item, bool withSubpops) {
    return {KeyOf(item), withSubpops ? QStringList{item.indicator, item.subpop} : QStringList{item.indicator}};
}

QStringList KeysInOrder(const std::vector<KeyedItem>& rows) {
    QStringList keys;
    for (const KeyedItem& row : rows)
        keys << row.key;
    return keys;
}

const char* HintKey(CalcType type, SelectionPage::Role role) {
    if (role == SelectionPage::Role::Denominators) return "TS_HintDenominators";
    if (type == CalcType::PerCent) return "TS_HintNumerators";
    return TakesOneIndicator(type) ? "TS_HintOneIndicator" : "TS_HintIndexIndicators";
}

} // namespace

SelectionPage::SelectionPage(CalcType type, Role role, QWidget* parent)
    : CalculationPage(parent), type_(type), role_(role), chkShowSubpop_(new QCheckBox), lists_(new SelectionLists) {
    chkShowSubpop_->setObjectName(QStringLiteral("chkShowSubpop"));
    chkShowSubpop_->setVisible(role == Role::Items && OffersSubpops(type));
    lists_->SetListNames(QStringLiteral("lstAvailable_Step1"), role == Role::Items
                                                                   ? QStringLiteral("lstSelected_Step1_0")
                                                                   : QStringLiteral("lstSelected_Step1_1"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kGap, kMargin, kGap);
    layout->setSpacing(kGap);
    layout->addWidget(MakeHint(QLatin1String(HintKey(type, role))));
    layout->addWidget(lists_, 1);
    layout->addWidget(chkShowSubpop_);
    SetFormCaptions();
    ConnectLists();
}

void SelectionPage::SetFormCaptions() {
    SetCaption(chkShowSubpop_, QStringLiteral("TS_ShowSubpops"));
    lists_->SetHints(QStringLiteral("TS_NothingToCalculate"), QStringLiteral("TS_ChooseForCalculation"));
    const char* caption = role_ == Role::Denominators  ? "TS_PageDenominator"
                          : type_ == CalcType::PerCent ? "TS_PageNumerator"
                                                       : "SELECTED";
    lists_->SetCaptionKeys(QStringLiteral("AVAILABLE"), QLatin1String(caption));
    lists_->SetFormCaptions();
    for (KeyedList* list : {&lists_->Available(), &lists_->Selected()}) {
        list->SetPlainArrowsLeave(true);
        if (TakesOneIndicator(type_)) list->setSelectionMode(QAbstractItemView::SingleSelection);
    }
}

void SelectionPage::ConnectLists() {
    const auto highlighted = [](const KeyedList& list) { return KeysInOrder(list.HighlightedItems()); };
    KeyedList& available = lists_->Available();
    KeyedList& selected = lists_->Selected();
    connect(lists_, &SelectionLists::AddHighlighted, this, [=, this, &available] { Add(highlighted(available)); });
    connect(lists_, &SelectionLists::AddAll, this,
            [this, &available] { Add(KeysInOrder(available.Items().ShownItems())); });
    connect(lists_, &SelectionLists::AddOne, this, [this](const QString& key) { Add({key}); });
    connect(lists_, &SelectionLists::RemoveHighlighted, this, [=, this, &selected] { Remove(highlighted(selected)); });
    connect(lists_, &SelectionLists::RemoveAll, this,
            [this, &selected] { Remove(KeysInOrder(selected.Items().Items())); });
    connect(chkShowSubpop_, &QCheckBox::clicked, this, &SelectionPage::chkShowSubpop_Click);
}

const std::vector<CalculationItem>& SelectionPage::Offered(bool withSubpops) const {
    auto& offered = offered_[withSubpops ? 1 : 0];
    if (!offered) offered = ItemsToChoose(withSubpops);
    return *offered;
}

void SelectionPage::ShowDraft(const CalculationDraft& draft) {
    const ErrorTrap trap("FillStep1ForCalcs");
    showSubpop_ = draft.showSubpop;
    chkShowSubpop_->setChecked(showSubpop_);
    chosen_ = role_ == Role::Items ? draft.items : draft.denominators;
    ShowLists();
    lists_->Available().setFocus();
}

void SelectionPage::TakeInto(CalculationDraft& draft) const {
    if (role_ == Role::Denominators) {
        draft.denominators = chosen_;
        return;
    }
    if (draft.showSubpop != showSubpop_)
        draft.denominators = WithSubpops(draft.denominators, showSubpop_, Offered(true));
    draft.showSubpop = showSubpop_;
    const std::vector<CalculationItem> before = std::exchange(draft.items, chosen_);
    if (type_ == CalcType::CompositeIndex) KeepWeights(draft, before);
}

void SelectionPage::chkShowSubpop_Click() {
    const ErrorTrap trap("chkShowSubpop_Click");
    showSubpop_ = chkShowSubpop_->isChecked();
    chosen_ = WithSubpops(chosen_, showSubpop_, Offered(true));
    ShowLists();
    Q_EMIT Changed();
}

void SelectionPage::Add(const QStringList& keys) {
    if (keys.isEmpty()) return;
    if (TakesOneIndicator(type_)) chosen_.clear();
    for (const QString& key : TakesOneIndicator(type_) ? keys.mid(0, 1) : keys)
        for (const CalculationItem& item : Offered(showSubpop_))
            if (KeyOf(item) == key) chosen_.push_back(item);
    ShowLists();
    Q_EMIT Changed();
}

void SelectionPage::Remove(const QStringList& keys) {
    std::erase_if(chosen_, [&](const CalculationItem& item) { return keys.contains(KeyOf(item)); });
    ShowLists();
    Q_EMIT Changed();
}

void SelectionPage::ShowLists() {
    std::vector<KeyedItem> available;
    for (const CalculationItem& item : Offered(showSubpop_))
        if (std::find(chosen_.begin(), chosen_.end(), item) == chosen_.end())
            available.push_back(RowOf(item, showSubpop_));
    std::vector<KeyedItem> selected;
    for (const CalculationItem& item : chosen_)
        selected.push_back(RowOf(item, showSubpop_));
    QStringList heads{PlainText(QStringLiteral("Comm_Indicator"))};
    if (showSubpop_) heads << PlainText(QStringLiteral("Subpop"));
    for (KeyedList* list : {&lists_->Available(), &lists_->Selected()})
        if (list->Items().columnCount() != heads.size() || list->Items().Count() == 0) list->SetColumns(heads);
    const int row = std::max(lists_->Available().currentIndex().row(), 0);
    lists_->Available().Items().SetItems(std::move(available));
    lists_->Selected().Items().SetItemsInOrder(std::move(selected));
    HighlightRow(row);
}

/// The row in this place, or the last one: what Return takes next.
void SelectionPage::HighlightRow(int row) {
    KeyedList& list = lists_->Available();
    if (const int rows = list.model()->rowCount(); rows > 0)
        list.setCurrentIndex(list.model()->index(std::min(row, rows - 1), 0));
}

} // namespace tessaro
