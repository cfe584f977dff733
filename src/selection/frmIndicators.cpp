#include "selection/frmIndicators.h"

#include "controls/Captions.h"
#include "controls/KeyedTree.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "metadata/Details.h"
#include "metadata/frmInformationSheet.h"
#include "metadata/frmShowDetails.h"
#include "selection/IndicatorSelection.h"
#include "selection/PrintSummaryView.h"
#include "selection/ScreenParts.h"
#include "selection/Search.h"
#include "selection/frmAutoSelect.h"
#include "selection/frmSearch.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "ui_frmIndicators.h"

namespace tessaro {

namespace {

QString Latin(const char* text) {
    return QString::fromLatin1(text);
}

} // namespace

frmIndicators::frmIndicators(QWidget* parent) : StageScreen(parent), ui_(std::make_unique<Ui::frmIndicators>()) {
    ui_->setupUi(this);
    SelectionLists& lists = *ui_->picLVContainer;
    lists.SetHints(QStringLiteral("TS_NothingHere"), QStringLiteral("TS_NoIndicatorsSelected"));
    lists.SetIcons({QStringLiteral("IND_IMG_AVL_ICON"), QStringLiteral("DATA_UNIT_AVL_ICON"),
                    QStringLiteral("DATA_SUBPOP_AVL_ICON")},
                   {QStringLiteral("IND_IMG_SEL_ICON"), QStringLiteral("DATA_UNIT_SEL_ICON"),
                    QStringLiteral("DATA_SUBPOP_SEL_ICON")});
    StyleFilterButton(ui_->cmdAllFilter, FilterButton::All);
    StyleFilterButton(ui_->cmdAvlFilter, FilterButton::Available);
    StyleStrip(ui_->picTop, ui_->hairLine);
    ui_->SSSplitter1->setStretchFactor(0, 0);
    ui_->SSSplitter1->setStretchFactor(1, 1);
    ui_->SSSplitter1->setSizes({28 * theme::kGrid, 132 * theme::kGrid});
    MakeTrees();
    MakeOptions();
    ConnectControls();
    SetFormCaptions();
    Form_Load();
}

frmIndicators::~frmIndicators() = default;

KeyedList& frmIndicators::lstAvailable() const {
    return ui_->picLVContainer->Available();
}

KeyedList& frmIndicators::lstSelected() const {
    return ui_->picLVContainer->Selected();
}

int frmIndicators::SelectedCount() const {
    return lstSelected().Items().Count();
}

void frmIndicators::MakeTrees() {
    QWidget* before = ui_->cmdAllFilter; // tab order: strip, trees, lists
    for (int view = 0; view < selection::kClassificationCount; ++view) {
        if (!selection::IsViewEnabled(view)) continue;
        auto* tree = new KeyedTree(ui_->picTrees);
        tree->setObjectName(Latin(selection::Classification(view).tree));
        tree->setMinimumWidth(20 * theme::kGrid);
        tree->SetCollapseOthers(CollapseTreeSelections.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0);
        tree->Nodes().SetIcons(theme::Icon(Setting(QStringLiteral("TV_Img_Closed_Icon"))));
        tree->Nodes().SetGlobalColor(GlobalItemColor());
        tree->Nodes().SetLoader([this, view](const QString& key) {
            return selection::ChildNodes(view, PathOf(view, key), counters_[static_cast<std::size_t>(view)]);
        });
        connect(tree, &KeyedTree::NodeChosen, this,
                [this, view](const QString& key) { FillClassification(view, key); });
        connect(tree, &KeyedTree::EnterPressed, this, [this] { lstAvailable().setFocus(); });
        connect(tree, &KeyedTree::PopupRequested, this, &frmIndicators::ShowTreePopup);
        ui_->picTrees->addWidget(tree);
        setTabOrder(before, tree);
        before = tree;
        trees_[static_cast<std::size_t>(view)] = tree;
    }
}

void frmIndicators::MakeOptions() {
    QTabBar* strip = ui_->lblIndicatorOptions;
    for (int view = 0; view < selection::kClassificationCount; ++view)
        if (Tree(view) != nullptr) strip->setTabData(strip->addTab(QString()), view);
}

void frmIndicators::ConnectControls() {
    SelectionLists* lists = ui_->picLVContainer;
    connect(lists, &SelectionLists::AddHighlighted, this, [this] { AddSelectedIndicators(false); });
    connect(lists, &SelectionLists::AddAll, this, [this] { AddSelectedIndicators(true); });
    connect(lists, &SelectionLists::AddOne, this, &frmIndicators::AddOneIndicator);
    connect(lists, &SelectionLists::RemoveHighlighted, this, [this] { RemoveSelectedIndicators(false); });
    connect(lists, &SelectionLists::RemoveAll, this, [this] { RemoveSelectedIndicators(true); });
    connect(lists, &SelectionLists::SearchRequested, this, &frmIndicators::SeacrhIndStrings);
    connect(lists, &SelectionLists::BranchWanted, this, &frmIndicators::Refresh);
    connect(lists, &SelectionLists::AvailablePopup, this, &frmIndicators::ShowAvailablePopup);
    connect(lists, &SelectionLists::SelectedPopup, this, &frmIndicators::ShowSelectedPopup);
    connect(lists, &SelectionLists::SelectedCountChanged, this, &StageScreen::SelectionSummaryChanged);
    connect(lists, &SelectionLists::LeaveBackwards, this, [this] {
        if (Tree(view_) != nullptr) Tree(view_)->setFocus();
    });
    for (KeyedList* list : {&lstAvailable(), &lstSelected()})
        list->SetPlainArrowsLeave(true);
    connect(ui_->cmdAllFilter, &QPushButton::clicked, this, &frmIndicators::cmdAllFilter_Click);
    connect(ui_->cmdAvlFilter, &QPushButton::clicked, this, &frmIndicators::cmdAvlFilter_Click);
    connect(ui_->lblIndicatorOptions, &QTabBar::currentChanged, this, [this](int tab) {
        if (tab >= 0) ShowThisIndicatorOption(ui_->lblIndicatorOptions->tabData(tab).toInt());
    });
    connect(&lstAvailable().Items(), &KeyedListModel::CountChanged, this,
            [this] { ui_->cmdAvlFilter->setEnabled(lstAvailable().Items().rowCount() > 0); });
}

void frmIndicators::SetFormCaptions() {
    SetFormFonts(this);
    QTabBar* strip = ui_->lblIndicatorOptions;
    for (int tab = 0; tab < strip->count(); ++tab) {
        const int view = strip->tabData(tab).toInt();
        const QString caption = PlainText(Latin(selection::Classification(view).captionKey));
        strip->setTabText(tab, caption);
        Tree(view)->setAccessibleName(caption);
        Tree(view)->SetEmptyHint(GetText(QStringLiteral("TS_NothingHere")));
        Tree(view)->Nodes().SetText(Latin(selection::Classification(view).rootKey),
                                    PlainText(Latin(selection::Classification(view).rootCaptionKey)));
    }
    strip->setAccessibleName(PlainText(QStringLiteral("TS_Classification")));
    SetCaption(ui_->cmdAllFilter, QStringLiteral("TS_AutoSelect"));
    SetToolTip(ui_->cmdAllFilter, QStringLiteral("TS_AutoSelectTip"));
    SetCaption(ui_->cmdAvlFilter, QStringLiteral("TS_AutoSelectAvailable"));
    SetToolTip(ui_->cmdAvlFilter, QStringLiteral("TS_AutoSelectAvailableTip"));
    ui_->picLVContainer->SetFormCaptions();
    SetColumns();
}

void frmIndicators::SetColumns() {
    QStringList heads{PlainText(QStringLiteral("Comm_Indicator"))};
    if (selection::ByCombination())
        heads << PlainText(QStringLiteral("Comm_Unit")) << PlainText(QStringLiteral("Subpop"));
    for (KeyedList* list : {&lstAvailable(), &lstSelected()}) {
        list->SetColumns(heads);
        list->SetColumnWeights(heads.size() == 3 ? QList<double>{2, 1, 1.25} : QList<double>());
        list->Items().SetGlobalColor(GlobalItemColor());
    }
}

void frmIndicators::Form_Load() {
    ErrorTrap trap("Form_Load");
    LoadTreeViews();
    const int first = selection::FirstView();
    for (int tab = 0; tab < ui_->lblIndicatorOptions->count(); ++tab)
        if (ui_->lblIndicatorOptions->tabData(tab).toInt() == first) {
            const QSignalBlocker quiet(ui_->lblIndicatorOptions);
            ui_->lblIndicatorOptions->setCurrentIndex(tab);
        }
    ShowThisIndicatorOption(first);
    std::vector<KeyedItem> chosen = selection::SelectedIndicators();
    if (!chosen.empty()) SelectionChanged = true;
    lstSelected().Items().SetItems(std::move(chosen));
}

void frmIndicators::LoadTreeViews() {
    ErrorTrap trap("LoadTreeViews");
    const WaitState wait;
    for (int view = 0; view < selection::kClassificationCount; ++view) {
        KeyedTree* tree = Tree(view);
        if (tree == nullptr) continue;
        int& counter = counters_[static_cast<std::size_t>(view)];
        counter = 1;
        tree->Nodes().Clear();
        const selection::ClassificationView& row = selection::Classification(view);
        std::vector<KeyedNode> nodes = selection::FirstLevelNodes(view, counter);
        const QString root = Latin(row.rootKey);
        if (!nodes.empty() && !root.isEmpty())
            tree->Nodes().AddNodes({}, {{root, PlainText(Latin(row.rootCaptionKey)), false, false}});
        tree->Nodes().AddNodes(root, std::move(nodes));
        if (!root.isEmpty()) tree->expand(tree->Nodes().IndexOfKey(root));
        tree->ShowKey(tree->Nodes().KeyAt(tree->Nodes().index(0, 0)));
        TheFrame().SetProgress((view + 1) * 100 / selection::kClassificationCount);
    }
}

void frmIndicators::ShowThisIndicatorOption(int view) {
    ErrorTrap trap("ShowThisIndicatorOption");
    KeyedTree* tree = Tree(view);
    if (tree == nullptr) return;
    view_ = view;
    ui_->picTrees->setCurrentWidget(tree);
    if (!ui_->lblIndicatorOptions->hasFocus()) tree->setFocus();
    FillClassification(view, tree->CurrentKey());
}

QStringList frmIndicators::PathOf(int view, const QString& nodeKey) const {
    QStringList path;
    for (QString key = nodeKey; !key.isEmpty() && !selection::IsRootKey(key); key = Tree(view)->Nodes().ParentKey(key))
        path.prepend(key);
    return path;
}

void frmIndicators::FillClassification(int view, const QString& nodeKey) {
    KeyedTree* tree = Tree(view);
    if (tree == nullptr) return;
    ui_->picLVContainer->ShowBranch();
    if (nodeKey.isEmpty()) { // an empty tree holds nothing
        lstAvailable().Items().Clear();
        return;
    }
    tree->Nodes().LoadChildren(nodeKey);
    FillAvailableIndicators(selection::FromOf(view), selection::WhereOf(view, PathOf(view, nodeKey)), true);
}

void frmIndicators::FillAvailableIndicators(const QString& from, const QString& where, bool showNotFound) {
    ErrorTrap trap("FillAvailableIndicators");
    lstAvailable().Items().SetItems(selection::AvailableIndicators(from, where));
    const bool found = lstAvailable().Items().Count() > 0;
    if (showNotFound) TheFrame().SetStatusText(found ? QString() : GetText(QStringLiteral("Not found")));
}

void frmIndicators::AddSelectedIndicators(bool all) {
    ErrorTrap trap("AddSelectedIndicators");
    const std::vector<KeyedItem> items = all ? lstAvailable().Items().ShownItems() : lstAvailable().HighlightedItems();
    if (items.empty()) return;
    lstSelected().Items().AddItems(items);
    ShowKept(selection::AddIndicators(items));
}

/// When a write has failed, shows what the table holds.
void frmIndicators::ShowKept(bool written) {
    if (written) return;
    lstSelected().Items().SetItems(selection::SelectedIndicators());
    TellNotKept();
}

void frmIndicators::AddOneIndicator(const QString& key) {
    ErrorTrap trap("lstAvailable_DblClick");
    const int row = lstAvailable().Items().RowOfKey(key);
    if (row < 0) return;
    const KeyedItem item = lstAvailable().Items().ItemAt(row);
    SelectionChanged = true;
    // Only when it is new: a second INSERT would double its rows.
    if (lstSelected().Items().AddItems({item}) > 0) ShowKept(selection::AddIndicator(item));
}

void frmIndicators::RemoveSelectedIndicators(bool all) {
    ErrorTrap trap("RemoveSelectedIndicators");
    if (all) {
        lstSelected().Items().Clear();
        ShowKept(selection::RemoveAllIndicators());
        return;
    }
    const std::vector<KeyedItem> removed = lstSelected().HighlightedItems();
    lstSelected().Items().RemoveKeys(KeysOf(removed));
    ShowKept(selection::RemoveIndicators(removed));
}

void frmIndicators::SortSelIndsBySector() {
    ErrorTrap trap("SortSelIndsBySector");
    lstSelected().Items().SetItemsInOrder(selection::SortedBySector(lstSelected().Items().Items()));
}

void frmIndicators::cmdAllFilter_Click() {
    ErrorTrap trap("cmdAllFilter_Click");
    const auto by = selection::DecideOtherStages(selection::Stage::Indicators, AskAutoSelect(this));
    if (by) RunFilter({by->first, by->second, view_, false, {}});
}

void frmIndicators::cmdAvlFilter_Click() {
    ErrorTrap trap("cmdAvlFilter_Click");
    const std::vector<KeyedItem> available = lstAvailable().Items().ShownItems();
    if (available.empty()) return;
    const auto by = selection::DecideOtherStages(selection::Stage::Indicators, AskAutoSelect(this));
    if (by) RunFilter({by->first, by->second, view_, true, selection::IdList(available)});
}

void frmIndicators::RunFilter(const selection::IndicatorFilter& filter) {
    selection::FoundIndicators found;
    bool written = false;
    {
        const WaitState wait;
        found = selection::FindIndicators(filter);
        lstSelected().Items().Clear();
        SetColumns();
        written = selection::ReplaceIndicators(found.iusList);
        TheFrame().SetProgress(100);
    }
    if (!written) return ShowKept(false);
    if (found.items.empty()) {
        TellNothingFound(*ui_->picLVContainer);
        return;
    }
    lstSelected().Items().SetItems(std::move(found.items));
    if (Tree(view_) != nullptr) Tree(view_)->setFocus();
}

void frmIndicators::Enter() {
    if (Tree(view_) != nullptr) Tree(view_)->setFocus();
}

void frmIndicators::SelectAll() {
    ui_->picLVContainer->HighlightAll();
}

void frmIndicators::Copy() {
    ui_->picLVContainer->CopyHighlighted();
}

void frmIndicators::Find() {
    frmSearch dialog(this);
    dialog.exec();
    if (!dialog.Text().isEmpty()) SeacrhIndStrings(dialog.Text());
}

void frmIndicators::SeacrhIndStrings(const QString& text) {
    ErrorTrap trap("SeacrhIndStrings");
    if (text.isEmpty()) return;
    ui_->picLVContainer->ClearFilter(); // it was typed for the list before the search
    FillAvailableIndicators(selection::FromOf(view_), selection::SearchIndicatorsWhere(view_, text), true);
    ShowSearch(*ui_->picLVContainer, text);
}

void frmIndicators::DisplayINDDetails() {
    ErrorTrap trap("DisplayINDDetails");
    frmShowDetails form(this);
    form.DisplayINDDetails(
        metadata::DetailsOfIndicators(selection::IdList(lstSelected().HighlightedItems()), selection::ByCombination()));
    form.exec();
}

void frmIndicators::Print() {
    PrintSummaryView(QStringLiteral("IND"), lstSelected(), this, view_);
}

/// The information of the first highlighted indicator of a list.
void frmIndicators::ShowInformationOf(const KeyedList& list) {
    const std::vector<KeyedItem> items = list.HighlightedItems();
    if (items.empty()) return;
    const bool byCombination = selection::ByCombination();
    // The number of a combination is looked up in the way that the data view does.
    ShowInformationInBROW(IdOfKey(items.front().key), QStringLiteral("IND"),
                          byCombination ? QStringLiteral("frmData") : FormName(), !byCombination, this);
}

/// The information of the node of the tree, where its level has any.
void frmIndicators::ShowInformationOfNode() {
    const QString code = NodeInformationCode();
    if (!code.isEmpty())
        ShowInformationInBROW(selection::IdOfNodeKey(Tree(view_)->CurrentKey()), code, FormName(), true, this);
}

/// The code of what the current node stands for; empty for a level without information.
QString frmIndicators::NodeInformationCode() const {
    if (Tree(view_) == nullptr || Tree(view_)->CurrentKey().isEmpty() ||
        selection::IsRootKey(Tree(view_)->CurrentKey()))
        return {};
    const auto depth = PathOf(view_, Tree(view_)->CurrentKey()).size();
    switch (view_) {
    case 1:
        return depth == 3 ? QStringLiteral("GOALS") : QString();
    case 2:
        return QStringLiteral("CF");
    case 3:
        return QStringLiteral("THEMES");
    case 4:
        return depth == 2 ? QStringLiteral("SOURCES") : QString();
    case 6:
        return depth == 3 ? QStringLiteral("RIGHTS") : QString();
    default:
        return {};
    }
}

void frmIndicators::Refresh() {
    if (Tree(view_) != nullptr) FillClassification(view_, Tree(view_)->CurrentKey());
}

QString frmIndicators::SelectionSummary() const {
    return SummaryOf(QStringLiteral("TS_IndicatorCount"), SelectedCount());
}

void frmIndicators::ShowAvailablePopup(const QPoint& place) {
    const bool any = lstAvailable().Items().Count() > 0;
    ShowPopup(this, QStringLiteral("mnu_popup_ind_avl_Options"), place,
              {{0, "mnu_Edit_SelectAll", [this] { AddSelectedIndicators(true); }, any, kWhyListEmpty},
               {1, "mnu_popIndicatorsAvl_SelectHighlighted", [this] { AddSelectedIndicators(false); },
                lstAvailable().HasHighlighted(), kWhyNoneHighlighted},
               {2, nullptr, {}},
               {3, "Count", [this] { ui_->picLVContainer->ShowCount(lstAvailable()); }},
               {4, "TS_HighlightAll", [this] { lstAvailable().selectAll(); }, any, kWhyListEmpty},
               {6, nullptr, {}},
               {5, "Information", [this] { ShowInformationOf(lstAvailable()); }, lstAvailable().HasHighlighted(),
                kWhyNoneHighlighted}});
}

void frmIndicators::ShowSelectedPopup(const QPoint& place) {
    const bool any = lstSelected().Items().Count() > 0;
    ShowPopup(this, QStringLiteral("mnu_popup_ind_sel_Options"), place,
              {{0, "mnu_popDataSort_ClearAll", [this] { RemoveSelectedIndicators(true); }, any, kWhyListEmpty},
               {1, "mnu_popDataSort_ClearHighlighted", [this] { RemoveSelectedIndicators(false); },
                lstSelected().HasHighlighted(), kWhyNoneHighlighted},
               {2, nullptr, {}},
               {3, "Count", [this] { ui_->picLVContainer->ShowCount(lstSelected()); }},
               {11, "mnu_popIndicatorsSel_Sort", [this] { SortSelIndsBySector(); }, any, kWhyListEmpty},
               {4, nullptr, {}},
               {5, "mnu_DataView_ViewDetails", [this] { DisplayINDDetails(); }, lstSelected().HasHighlighted(),
                kWhyNoneHighlighted},
               {6, "PRINT BUTTON", [this] { Print(); }, any, kWhyListEmpty},
               {7, "COMM_EXCEL_FILE", [this] { Print(); }, any, kWhyListEmpty},
               {9, "Information", [this] { ShowInformationOf(lstSelected()); }, lstSelected().HasHighlighted(),
                kWhyNoneHighlighted}});
}

void frmIndicators::ShowTreePopup(const QPoint& place) {
    ShowPopup(this, QStringLiteral("mnu_PUP_IND_SelectAll"), place,
              {{0, "mnu_Edit_SelectAll", [this] { AddSelectedIndicators(true); }, lstAvailable().Items().Count() > 0,
                kWhyListEmpty},
               {1, "Information", [this] { ShowInformationOfNode(); }, !NodeInformationCode().isEmpty(),
                "TS_WhyNoInformation"}});
}

} // namespace tessaro
