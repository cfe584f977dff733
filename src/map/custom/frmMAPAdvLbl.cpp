#include "map/custom/frmMAPAdvLbl.h"

#include "controls/Captions.h"
#include "controls/SelectionLists.h"
#include "map/custom/LabelFields.h"
#include "session/Messages.h"
#include "ui_frmMAPAdvLbl.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QToolButton>

namespace tessaro {

namespace {

/// The six fields in their own order, less those that are chosen.
std::vector<KeyedItem> FieldsWithout(const QStringList& chosen) {
    std::vector<KeyedItem> items;
    for (const LabelField& field : LabelFields())
        if (field.formulaKey != nullptr && !chosen.contains(QLatin1String(field.formulaKey)))
            items.push_back({QLatin1String(field.formulaKey), {PlainText(QLatin1String(field.key))}});
    return items;
}

std::vector<KeyedItem> FieldsOf(const QStringList& keys) {
    std::vector<KeyedItem> items;
    for (const QString& key : keys)
        for (const LabelField& field : LabelFields())
            if (field.formulaKey != nullptr && key == QLatin1String(field.formulaKey))
                items.push_back({key, {PlainText(QLatin1String(field.key))}});
    return items;
}

QStringList KeysIn(const KeyedList& list) {
    QStringList keys;
    for (const KeyedItem& item : list.Items().Items())
        keys << item.key;
    return keys;
}

/// Six fields need neither a filter nor an order by name; the chosen ones have the order of the label.
void LeaveOutTools(SelectionLists& lists) {
    for (const char* name : {"txtFilter", "cmdAvailableIcon", "cmdSelectedIcon"})
        if (auto* tool = lists.findChild<QWidget*>(QLatin1String(name))) tool->hide();
    for (KeyedList* list : {&lists.Available(), &lists.Selected()}) {
        list->header()->setSectionsClickable(false);
        list->header()->setSortIndicatorShown(false);
    }
}

} // namespace

frmMAPAdvLbl::frmMAPAdvLbl(const QString& formula, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMAPAdvLbl>()) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("Advanced Labels")));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->cmdCancel, QStringLiteral("CANCEL BUTTON"));
    FillLists(formula);
    ConnectLists();
    LeaveOutTools(*ui_->lists);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmMAPAdvLbl::cmdOK_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmMAPAdvLbl::~frmMAPAdvLbl() = default;

void frmMAPAdvLbl::FillLists(const QString& formula) {
    SelectionLists& lists = *ui_->lists;
    lists.SetListNames(QStringLiteral("LVAvailable"), QStringLiteral("LVSelected"));
    lists.SetCaptionKeys(QStringLiteral("Available"), QStringLiteral("Selected"));
    lists.SetHints(QStringLiteral("TS_AllFieldsChosen"), QStringLiteral("TS_ChooseLabelFields"));
    const QStringList heads{PlainText(QStringLiteral("TS_LabelField"))};
    lists.Available().SetColumns(heads);
    lists.Selected().SetColumns(heads);
    lists.SetFormCaptions();
    const QStringList chosen = KeysOfFormula(formula);
    lists.Selected().Items().SetItemsInOrder(FieldsOf(chosen));
    lists.Available().Items().SetItemsInOrder(FieldsWithout(chosen));
    ShowSample();
}

void frmMAPAdvLbl::ConnectLists() {
    SelectionLists& lists = *ui_->lists;
    KeyedList& available = lists.Available();
    KeyedList& selected = lists.Selected();
    connect(&lists, &SelectionLists::AddHighlighted, this, [&] { Choose(available.HighlightedItems()); });
    connect(&lists, &SelectionLists::AddAll, this, [&] { Choose(available.Items().Items()); });
    connect(&lists, &SelectionLists::AddOne, this, [this](const QString& key) { Choose(FieldsOf({key})); });
    connect(&lists, &SelectionLists::RemoveHighlighted, this, [&] { TakeOut(selected.HighlightedItems()); });
    connect(&lists, &SelectionLists::RemoveAll, this, [&] { TakeOut(selected.Items().Items()); });
    connect(&selected, &KeyedList::ItemActivated, this, [this](const QString& key) { TakeOut(FieldsOf({key})); });
    connect(&lists, &SelectionLists::AvailablePopup, this, &frmMAPAdvLbl::ShowAvailablePopup);
    connect(&lists, &SelectionLists::SelectedPopup, this, &frmMAPAdvLbl::ShowSelectedPopup);
}

QString frmMAPAdvLbl::Formula() const {
    return FormulaOf(KeysIn(ui_->lists->Selected()));
}

void frmMAPAdvLbl::Choose(std::vector<KeyedItem> fields) {
    const QSet<QString> keys = KeysOf(fields);
    ui_->lists->Selected().Items().AddItems(std::move(fields));
    ui_->lists->Available().Items().RemoveKeys(keys);
    ShowSample();
}

void frmMAPAdvLbl::TakeOut(const std::vector<KeyedItem>& fields) {
    ui_->lists->Selected().Items().RemoveKeys(KeysOf(fields));
    ui_->lists->Available().Items().SetItemsInOrder(FieldsWithout(KeysIn(ui_->lists->Selected())));
    ShowSample();
}

void frmMAPAdvLbl::ShowAvailablePopup(const QPoint& place) {
    KeyedList& list = ui_->lists->Available();
    const bool some = list.Items().Count() > 0;
    ShowPopup(this, QStringLiteral("Lst_AVL_PopUpMenuOptions"), place,
              {{0, "mnu_Edit_SelectAll", [&list, this] { Choose(list.Items().Items()); }, some, kWhyListEmpty},
               {1, "mnu_popIndicatorsAvl_SelectHighlighted", [&list, this] { Choose(list.HighlightedItems()); },
                list.HasHighlighted(), kWhyNoneHighlighted}});
}

void frmMAPAdvLbl::ShowSelectedPopup(const QPoint& place) {
    KeyedList& list = ui_->lists->Selected();
    const bool some = list.Items().Count() > 0;
    ShowPopup(this, QStringLiteral("Lst_SEL_PopUpMenuOptions"), place,
              {{0, "mnu_popDataSort_ClearAll", [&list, this] { TakeOut(list.Items().Items()); }, some, kWhyListEmpty},
               {1, "mnu_popDataSort_ClearHighlighted", [&list, this] { TakeOut(list.HighlightedItems()); },
                list.HasHighlighted(), kWhyNoneHighlighted}});
}

void frmMAPAdvLbl::ShowSample() {
    ui_->lblSample->setText(FilledText(QStringLiteral("TS_LabelledLine"),
                                       {PlainText(QStringLiteral("Label")), CaptionsOfFormula(Formula())}));
}

void frmMAPAdvLbl::cmdOK_Click() {
    if (!ApplyFormula(Formula()))
        ShowMessage(QStringLiteral("TS_LabelNotComposed"));
    else
        accept();
}

} // namespace tessaro
