#include "selection/frmAreas.h"

#include "controls/Captions.h"
#include "controls/KeyedTree.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "layers/MapFiles.h"
#include "metadata/frmShowDetails.h"
#include "selection/AreaMapPanel.h"
#include "selection/AreaMaps.h"
#include "selection/CrossFilters.h"
#include "selection/PrintSummaryView.h"
#include "selection/ScreenParts.h"
#include "selection/Search.h"
#include "selection/SelectionTexts.h"
#include "selection/frmAutoSelect.h"
#include "selection/frmSearch.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "ui_frmAreas.h"

#include <QLocale>
#include <QMenu>

namespace tessaro {

namespace {

constexpr int kLevelCount = 10;
enum AreaOption { NameOption, MapOption };

QString RootKey() {
    return QString::fromLatin1(selection::kAreaRootKey);
}

/// Caption key of a level, counted from 1. Its two commands have the same key with "_All" or "_Data" appended.
QString LevelKey(int level) {
    if (level == 1) return QStringLiteral("mnu_popArea_Regions");
    if (level == 2) return QStringLiteral("mnu_popArea_Countries");
    return QStringLiteral("mnu_popArea_Subnational%1").arg(level - 2);
}

} // namespace

frmAreas::frmAreas(QWidget* parent)
    : StageScreen(parent), ui_(std::make_unique<Ui::frmAreas>()), map_(new AreaMapPanel(this)) {
    ui_->setupUi(this);
    SelectionLists& lists = *ui_->picLVContainer;
    lists.SetListNames(QStringLiteral("lstAvailable1"), QStringLiteral("lstSelected1"));
    lists.SetHints(QStringLiteral("TS_PickTreeNode"), QStringLiteral("TS_NoAreasSelected"));
    lists.SetIcons({QStringLiteral("AREA_IMG_AVL_ICON")}, {QStringLiteral("AREA_IMG_SEL_ICON")});
    StyleFilterButton(ui_->cmdAllFilter, FilterButton::All);
    StyleFilterButton(ui_->cmdAvlFilter, FilterButton::Available);
    StyleStrip(ui_->picTop, ui_->hairLine);
    ui_->cmdLevels->setIcon(theme::Icon(Setting(QStringLiteral("AREA_IMG_AVL_ICON"))));
    ui_->cmdLevels->setFocusPolicy(Qt::StrongFocus);
    ui_->TV_Areas->setMinimumWidth(20 * theme::kGrid);
    ui_->SSSplitter1->setStretchFactor(0, 0);
    ui_->SSSplitter1->setStretchFactor(1, 1);
    ui_->SSSplitter1->setSizes({264, 1000});
    lists.SetOtherView(map_);
    map_->FollowInTabOrder(&lstAvailable1());
    depth_ = selection::AreaDepth();
    MakeOptions();
    ConnectControls();
    SetFormCaptions();
    Form_Load();
}

frmAreas::~frmAreas() = default;

KeyedList& frmAreas::lstAvailable1() const {
    return ui_->picLVContainer->Available();
}

KeyedList& frmAreas::lstSelected1() const {
    return ui_->picLVContainer->Selected();
}

void frmAreas::ConnectControls() {
    SelectionLists* lists = ui_->picLVContainer;
    connect(lists, &SelectionLists::AddHighlighted, this, [this] { AddSelectedAreas(false); });
    connect(lists, &SelectionLists::AddAll, this, [this] { AddSelectedAreas(true); });
    connect(lists, &SelectionLists::AddOne, this, &frmAreas::AddOneArea);
    connect(lists, &SelectionLists::RemoveHighlighted, this, [this] { RemoveSelectedAreas(false); });
    connect(lists, &SelectionLists::RemoveAll, this, [this] { RemoveSelectedAreas(true); });
    connect(lists, &SelectionLists::SearchRequested, this, &frmAreas::SeacrhAreaStrings);
    connect(lists, &SelectionLists::BranchWanted, this, &frmAreas::Refresh);
    connect(lists, &SelectionLists::AvailablePopup, this, &frmAreas::ShowAvailablePopup);
    connect(lists, &SelectionLists::SelectedPopup, this, &frmAreas::ShowSelectedPopup);
    connect(lists, &SelectionLists::SelectedCountChanged, this, &StageScreen::SelectionSummaryChanged);
    connect(lists, &SelectionLists::LeaveBackwards, this, [this] { ui_->TV_Areas->setFocus(); });
    for (KeyedList* list : {&lstAvailable1(), &lstSelected1()})
        list->SetPlainArrowsLeave(true);
    ConnectTree();
    connect(map_, &AreaMapPanel::AreaPicked, this, &frmAreas::PickOnMap);
    connect(map_, &AreaMapPanel::AreaIdentified, this, &frmAreas::Identify);
    connect(map_, &AreaMapPanel::PopupRequested, this, &frmAreas::ShowTreePopup);
    connect(ui_->lblAreaOptions, &QTabBar::currentChanged, this, [this](int tab) {
        if (tab >= 0) ShowThisAreaOption(ui_->lblAreaOptions->tabData(tab).toInt());
    });
    connect(ui_->cmdAllFilter, &QPushButton::clicked, this, &frmAreas::cmdAllFilter_Click);
    connect(ui_->cmdAvlFilter, &QPushButton::clicked, this, &frmAreas::cmdAvlFilter_Click);
    connect(&lstAvailable1().Items(), &KeyedListModel::CountChanged, this, &frmAreas::EnableFilterOfList);
}

void frmAreas::ConnectTree() {
    KeyedTree* tree = ui_->TV_Areas;
    tree->SetCollapseOthers(CollapseTreeSelections.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0);
    tree->Nodes().SetIcons(theme::Icon(Setting(QStringLiteral("TV_Img_Closed_Icon"))));
    tree->Nodes().SetLoader([this](const QString& key) { return ChildrenOf(key); });
    connect(tree, &KeyedTree::NodeChosen, this, &frmAreas::FillAvailableAreas);
    connect(tree, &KeyedTree::NodeChosen, this, [this](const QString& key) {
        if (ShowsMap()) ShowMapOfNode(key);
    });
    connect(tree, &KeyedTree::EnterPressed, this,
            [this] { ShowsMap() ? map_->Map().setFocus() : lstAvailable1().setFocus(); });
    connect(tree, &KeyedTree::PopupRequested, this, &frmAreas::ShowTreePopup);
}

/// The options that the product offers; the map cannot be chosen while no area has one.
void frmAreas::MakeOptions() {
    QTabBar* strip = ui_->lblAreaOptions;
    const bool map = SettingFlag(QStringLiteral("AREA_MAP"));
    if (SettingFlag(QStringLiteral("AREA_NAME")) || !map) strip->setTabData(strip->addTab(QString()), NameOption);
    if (map) {
        const int tab = strip->addTab(QString());
        strip->setTabData(tab, MapOption);
        strip->setTabEnabled(tab, selection::HasAreaMaps());
    }
    strip->setVisible(strip->count() > 1);
}

bool frmAreas::ShowsMap() const {
    return map_->isVisibleTo(ui_->picLVContainer);
}

void frmAreas::EnableFilterOfList() {
    ui_->cmdAvlFilter->setEnabled(!ShowsMap() && lstAvailable1().Items().rowCount() > 0);
}

void frmAreas::ShowThisAreaOption(int option) {
    ErrorTrap trap("ShowThisAreaOption");
    const bool map = option == MapOption;
    if (map) {
        ui_->picLVContainer->ClearFilter();
        FillAvailableAreas(CurrentNode());
    }
    ui_->picLVContainer->ShowOtherView(map);
    EnableFilterOfList();
    if (map) ShowMapOfNode(CurrentNode());
    TheFrame().SetStatusText({});
}

/// The map of the children where they have one of their own, so that a country shows its states; otherwise the map that
/// the area itself lies on.
void frmAreas::ShowMapOfNode(const QString& nodeKey) {
    ErrorTrap trap("ShowMapOfNode");
    const QString ofChildren = selection::MapOfChildren(nodeKey);
    const QString id = nodeKey == RootKey() ? QString() : IdOfKey(nodeKey);
    if (!ofChildren.isEmpty()) {
        if (ShowMapFile(ofChildren)) map_->ShowBranch(id);
    } else if (!id.isEmpty()) {
        LoadAreaMap(id);
    }
}

void frmAreas::LoadAreaMap(const QString& areaId) {
    ErrorTrap trap("LoadAreaMap");
    const QString path = selection::MapOfArea(areaId);
    if (path.isEmpty())
        ShowMessage(QStringLiteral("222"));
    else if (ShowMapFile(path))
        map_->ShowBranch(areaId);
}

bool frmAreas::ShowMapFile(const QString& path) {
    if (path == map_->File()) return true;
    const WaitPointer wait;
    LayerReading reading = OpenAreaMap(path);
    if (!reading.layer) {
        const QString reason = ReasonOf(reading.fault);
        ReportError(FileError::NoAccess, path + QStringLiteral(": ") + reason, ErrorTrap::CurrentProcedure());
        ShowMessageWithReason(QStringLiteral("222"), reason);
        return false;
    }
    map_->ShowLayer(std::move(*reading.layer), path);
    map_->ShowChosen(chosen_.Ids());
    return true;
}

void frmAreas::PickOnMap(const QString& areaId) {
    ErrorTrap trap("AreaMap_MouseDown");
    const QString list = selection::NumberOfArea(areaId);
    if (list.isEmpty()) return;
    if (!chosen_.AddAreas(list)) return ShowKept(false);
    FillSelectedAreas();
}

void frmAreas::Identify(const QString& areaId) {
    ErrorTrap trap("Identify");
    if (!selection::NumberOfArea(areaId).isEmpty()) ShowDetailsOf(areaId);
}

void frmAreas::Form_Load() {
    ErrorTrap trap("Form_Load");
    for (KeyedList* list : {&lstAvailable1(), &lstSelected1()})
        list->Items().SetGlobalColor(GlobalItemColor());
    KeyedTree* tree = ui_->TV_Areas;
    tree->Nodes().SetGlobalColor(GlobalItemColor());
    tree->Nodes().AddNodes({}, {{RootKey(), PlainText(QStringLiteral("Area")), false, depth_ > 0}});
    chosen_.Load();
    if (!chosen_.IsEmpty()) FillSelectedAreas();
    tree->ShowKey(RootKey());
    FillAvailableAreas(RootKey());
    tree->expand(tree->Nodes().IndexOfKey(RootKey()));
    const QTabBar* strip = ui_->lblAreaOptions; // the map alone, where the product offers no list
    if (strip->tabData(0).toInt() == MapOption && strip->isTabEnabled(0)) ShowThisAreaOption(MapOption);
}

void frmAreas::SetFormCaptions() {
    SetFormFonts(this);
    ShowHeading(ui_->lblHeading, QStringLiteral("TS_ChooseAreas"));
    SetCaption(ui_->cmdLevels, QStringLiteral("TS_AddLevel"));
    SetCaption(ui_->cmdAllFilter, QStringLiteral("TS_AutoSelect"));
    SetToolTip(ui_->cmdAllFilter, QStringLiteral("TS_AutoSelectTip"));
    SetCaption(ui_->cmdAvlFilter, QStringLiteral("TS_AutoSelectAvailable"));
    SetToolTip(ui_->cmdAvlFilter, QStringLiteral("TS_AutoSelectAvailableTip"));
    ui_->TV_Areas->Nodes().SetText(RootKey(), PlainText(QStringLiteral("Area")));
    ui_->TV_Areas->setAccessibleName(PlainText(QStringLiteral("TS_AreaTree")));
    QTabBar* strip = ui_->lblAreaOptions;
    for (int tab = 0; tab < strip->count(); ++tab) {
        const bool map = strip->tabData(tab).toInt() == MapOption;
        strip->setTabText(tab, PlainText(map ? QStringLiteral("Map") : QStringLiteral("Name")));
        strip->setTabToolTip(tab, strip->isTabEnabled(tab) ? QString() : PlainText(QStringLiteral("TS_NoAreaMaps")));
    }
    strip->setAccessibleName(PlainText(QStringLiteral("TS_WaysToChooseAreas")));
    map_->SetFormCaptions();
    ui_->picLVContainer->SetFormCaptions();
    for (KeyedList* list : {&lstAvailable1(), &lstSelected1()})
        list->SetColumns({PlainText(QStringLiteral("Comm_Area Name")), PlainText(QStringLiteral("Comm_Area Id"))});
    auto* levels = new QMenu(ui_->cmdLevels);
    FillLevelMenu(levels);
    delete ui_->cmdLevels->menu();
    ui_->cmdLevels->setMenu(levels);
    ui_->cmdLevels->setEnabled(depth_ > 0);
}

QString frmAreas::CurrentNode() const {
    const QString key = ui_->TV_Areas->CurrentKey();
    return key.isEmpty() ? RootKey() : key;
}

std::vector<KeyedNode> frmAreas::ChildrenOf(const QString& nodeKey) {
    if (rowsOf_ != nodeKey) {
        rows_ = selection::AvailableAreas(nodeKey);
        rowsOf_ = nodeKey;
    }
    const QSet<QString> parents = selection::ParentsAmongChildren(nodeKey);
    std::vector<KeyedNode> nodes;
    for (const selection::AreaRow& row : rows_)
        nodes.push_back({selection::TreeKeyOfArea(row.areaId), row.item.cells.value(0), row.item.globalCells != 0,
                         parents.contains(row.areaId.toUpper())});
    return nodes;
}

void frmAreas::FillAvailableAreas(const QString& nodeKey) {
    ErrorTrap trap("FillAvailableAreas");
    rows_ = selection::AvailableAreas(nodeKey);
    rowsOf_ = nodeKey;
    std::vector<KeyedItem> items;
    for (const selection::AreaRow& row : rows_)
        items.push_back(row.item);
    ui_->TV_Areas->Nodes().LoadChildren(nodeKey);
    ui_->picLVContainer->ShowBranch();
    lstAvailable1().Items().SetItems(std::move(items));
    TheFrame().SetStatusText({});
}

void frmAreas::FillSelectedAreas() {
    ErrorTrap trap("FillSelectedAreas");
    lstSelected1().Items().AddItems(chosen_.Items());
    map_->ShowChosen(chosen_.Ids());
    SelectionChanged = true;
}

void frmAreas::AddItems(const std::vector<KeyedItem>& items) {
    if (items.empty()) return;
    if (chosen_.AddItems(items))
        FillSelectedAreas();
    else
        ShowKept(false);
}

/// When a write has failed, shows what the table holds.
void frmAreas::ShowKept(bool written) {
    map_->ShowChosen(chosen_.Ids());
    if (written) return;
    chosen_.Load();
    map_->ShowChosen(chosen_.Ids());
    lstSelected1().Items().SetItems(chosen_.Items());
    TellNotKept();
}

void frmAreas::AddOneArea(const QString& key) {
    ErrorTrap trap("lstAvailable1_DblClick");
    const int row = lstAvailable1().Items().RowOfKey(key);
    if (row >= 0) AddItems({lstAvailable1().Items().ItemAt(row)});
}

void frmAreas::AddSelectedAreas(bool all) {
    ErrorTrap trap("AddSelectedAreas");
    AddItems(all ? lstAvailable1().Items().ShownItems() : lstAvailable1().HighlightedItems());
}

void frmAreas::RemoveSelectedAreas(bool all) {
    ErrorTrap trap("RemoveSelectedAreas");
    if (all) {
        lstSelected1().Items().Clear();
        ShowKept(chosen_.RemoveAll());
        return;
    }
    const std::vector<KeyedItem> removed = lstSelected1().HighlightedItems();
    lstSelected1().Items().RemoveKeys(KeysOf(removed));
    ShowKept(chosen_.Remove(removed));
}

void frmAreas::AddFound(const QString& idList) {
    if (idList.isEmpty()) return;
    if (!chosen_.AddAreas(idList)) return ShowKept(false);
    TheFrame().SetProgress(90);
    FillSelectedAreas();
}

void frmAreas::SelectAreasOfLevel(int level, bool onlyWithData) {
    ErrorTrap trap("SelectAreasOfLevel");
    const WaitState wait;
    TheFrame().SetProgress(10);
    const QString found = selection::FindAreas(selection::AreasOfLevelSql(level, CurrentNode(), onlyWithData));
    TheFrame().SetProgress(50);
    if (found.isEmpty()) { // the level lies above the node, or has no data below it: the list stays
        TheFrame().SetStatusText(GetText(QStringLiteral("TS_NoAreasOfLevel")));
        return;
    }
    AddFound(found);
    ui_->picLVContainer->ClearFilter();
    lstAvailable1().Items().SetItems(selection::AreasOfList(found));
    const QString count = QLocale().toString(lstAvailable1().Items().Count());
    ui_->picLVContainer->ShowInstead(PlainText(LevelKey(level)) + QStringLiteral(" (") + count + QLatin1Char(')'));
    TheFrame().SetProgress(100);
}

void frmAreas::cmdAllFilter_Click() {
    ErrorTrap trap("cmdAllFilter_Click");
    const auto by = selection::DecideOtherStages(selection::Stage::Areas, AskAutoSelect(this));
    if (!by) return;
    const WaitState wait;
    TheFrame().SetProgress(10);
    lstSelected1().Items().Clear();
    if (!chosen_.RemoveAll()) return ShowKept(false);
    TheFrame().SetProgress(30);
    const QString found = selection::FindAreas(selection::AreaFilterSql(by->first, by->second));
    TheFrame().SetProgress(70);
    AddFound(found);
    TheFrame().SetProgress(100);
    if (found.isEmpty()) TellNothingFound(*ui_->picLVContainer);
}

void frmAreas::cmdAvlFilter_Click() {
    ErrorTrap trap("cmdAvlFilter_Click");
    const std::vector<KeyedItem> available = lstAvailable1().Items().ShownItems();
    if (available.empty()) return;
    const auto by = selection::DecideOtherStages(selection::Stage::Areas, AskAutoSelect(this), true);
    if (!by) return;
    const WaitState wait;
    TheFrame().SetProgress(10);
    const QString sql = ui_->picLVContainer->ShowsOther()
                            ? selection::AreaFilterOfListSql(by->first, by->second, selection::NumberList(available))
                            : selection::AreaFilterBelowSql(by->first, by->second, CurrentNode());
    const QString found = selection::FindAreas(sql);
    TheFrame().SetProgress(70);
    AddFound(found);
    TheFrame().SetProgress(100);
    if (found.isEmpty()) TellNothingFound(*ui_->picLVContainer);
}

void frmAreas::Enter() {
    ui_->TV_Areas->setFocus();
}

void frmAreas::SelectAll() {
    if (ShowsMap()) return lstSelected1().selectAll();
    ui_->picLVContainer->HighlightAll();
}

void frmAreas::Copy() {
    ui_->picLVContainer->CopyHighlighted();
}

void frmAreas::Find() {
    frmSearch dialog(this);
    dialog.exec();
    if (!dialog.Text().isEmpty()) SeacrhAreaStrings(dialog.Text());
}

void frmAreas::SeacrhAreaStrings(const QString& text) {
    ErrorTrap trap("SeacrhAreaStrings");
    if (text.isEmpty()) return;
    ui_->lblAreaOptions->setCurrentIndex(0); // what is found stands in the list
    if (ShowsMap()) ShowThisAreaOption(NameOption);
    ui_->picLVContainer->ClearFilter(); // it was typed for the list before the search
    std::vector<KeyedItem> found = selection::SearchAreas(text);
    TheFrame().SetStatusText(found.empty() ? GetText(QStringLiteral("Not found")) : QString());
    lstAvailable1().Items().SetItems(std::move(found));
    ShowSearch(*ui_->picLVContainer, text);
}

void frmAreas::ShowAreaDetails() {
    ErrorTrap trap("ShowAreaDetails");
    const std::vector<KeyedItem> items = lstSelected1().HighlightedItems();
    if (!items.empty()) ShowDetailsOf(items.front().cells.value(1));
}

void frmAreas::ShowDetailsOf(const QString& areaId) {
    frmShowDetails form(this);
    form.ShowAreaDetails(areaId);
    form.exec();
}

void frmAreas::Print() {
    PrintSummaryView(QStringLiteral("AREA"), lstSelected1(), this);
}

void frmAreas::Refresh() {
    FillAvailableAreas(CurrentNode());
}

QString frmAreas::SelectionSummary() const {
    return SummaryOf(QStringLiteral("TS_AreaCount"), lstSelected1().Items().Count());
}

void frmAreas::FillLevelMenu(QMenu* menu) {
    for (int level = 1; level <= std::min(depth_, kLevelCount); ++level) {
        const QString key = LevelKey(level);
        QMenu* commands = menu->addMenu(GetText(key));
        commands->setObjectName(key);
        for (const bool onlyWithData : {false, true}) {
            const QString commandKey = key + (onlyWithData ? QStringLiteral("_Data") : QStringLiteral("_All"));
            QAction* command = commands->addAction(GetText(commandKey));
            command->setObjectName(commandKey);
            connect(command, &QAction::triggered, this,
                    [this, level, onlyWithData] { SelectAreasOfLevel(level, onlyWithData); });
        }
    }
}

void frmAreas::ShowTreePopup(const QPoint& place) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnu_popup_Area_sel_Options"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    FillLevelMenu(menu);
    menu->popup(place);
}

void frmAreas::ShowAvailablePopup(const QPoint& place) {
    const bool any = lstAvailable1().Items().Count() > 0;
    ShowPopup(this, QStringLiteral("mnu_popup_area_avl_Options"), place,
              {{0, "mnu_Edit_SelectAll", [this] { AddSelectedAreas(true); }, any, kWhyListEmpty},
               {1, "mnu_popIndicatorsAvl_SelectHighlighted", [this] { AddSelectedAreas(false); },
                lstAvailable1().HasHighlighted(), kWhyNoneHighlighted},
               {2, nullptr, {}},
               {3, "Count", [this] { ui_->picLVContainer->ShowCount(lstAvailable1()); }},
               {4, "TS_HighlightAll", [this] { lstAvailable1().selectAll(); }, any, kWhyListEmpty}});
}

void frmAreas::ShowSelectedPopup(const QPoint& place) {
    const bool any = lstSelected1().Items().Count() > 0;
    ShowPopup(this, QStringLiteral("mnu_popup_area_chosen_Options"), place,
              {{0, "mnu_popDataSort_ClearAll", [this] { RemoveSelectedAreas(true); }, any, kWhyListEmpty},
               {1, "mnu_popDataSort_ClearHighlighted", [this] { RemoveSelectedAreas(false); },
                lstSelected1().HasHighlighted(), kWhyNoneHighlighted},
               {2, nullptr, {}},
               {3, "Count", [this] { ui_->picLVContainer->ShowCount(lstSelected1()); }},
               {4, nullptr, {}},
               {5, "Area Detail", [this] { ShowAreaDetails(); }, lstSelected1().HasHighlighted(), kWhyNoneHighlighted},
               {6, "PRINT BUTTON", [this] { Print(); }, any, kWhyListEmpty}});
}

} // namespace tessaro
