#include "shell/MenuTable.h"

#include "controls/StageScreen.h"
#include "exchange/DatabaseExport.h"
#include "exchange/ImportUndo.h"
#include "session/Session.h"
#include "shell/AddressBar.h"
#include "shell/CommandTargets.h"
#include "shell/DatabaseCommands.h"
#include "shell/DatabaseOpener.h"
#include "shell/Documents.h"
#include "shell/EditCommands.h"
#include "shell/SettingsChange.h"
#include "shell/StageNavigator.h"
#include "shell/StandardToolBar.h"
#include "shell/StatusBar.h"
#include "shell/frmAbout.h"

#include <QMainWindow>

namespace tessaro {

namespace {

using Kind = MenuKind;

// What the entries do.
template <void (StageScreen::*command)()> void OnScreen(const CommandTargets& on, bool /*checked*/) {
    on.stages.OnScreen(command);
}
template <int kind> void Gallery(const CommandTargets& on, bool /*checked*/) {
    on.stages.ShowGallery(kind);
}
template <EditCommand command> void Edit(const CommandTargets& on, bool /*checked*/) {
    RunEditCommand(command, on.stages.ActiveScreen());
}
template <int item> void Help(const CommandTargets& /*on*/, bool /*checked*/) {
    ShowHelpFileLinks(item);
}
void Goals(const CommandTargets& on, bool /*checked*/) {
    on.database.ShowInformationSheets("GOALS");
}
void Indicators(const CommandTargets& on, bool /*checked*/) {
    on.database.ShowInformationSheets("IND");
}
void Themes(const CommandTargets& on, bool /*checked*/) {
    on.database.ShowInformationSheets("THEMES");
}
void Sources(const CommandTargets& on, bool /*checked*/) {
    on.database.ShowInformationSheets("SOURCES");
}
void Rights(const CommandTargets& on, bool /*checked*/) {
    on.database.ShowInformationSheets("RIGHTS");
}
void Open(const CommandTargets& on, bool /*checked*/) {
    on.databases.mnuFileOpen_Click();
}
void Import(const CommandTargets& on, bool /*checked*/) {
    on.database.mnuFilemnu_ImportExport_Click();
}
void Export(const CommandTargets& on, bool /*checked*/) {
    ExportDatabase(&on.parts.window);
}
void UndoImport(const CommandTargets& on, bool /*checked*/) {
    on.database.UndoLastImport();
}
void Properties(const CommandTargets& on, bool /*checked*/) {
    on.settings.mnuFilemnu_Properties_Click();
}
void Exit(const CommandTargets& on, bool /*checked*/) {
    on.parts.window.close();
}
void Find(const CommandTargets& on, bool /*checked*/) {
    on.stages.Search();
}
void ToolBar(const CommandTargets& on, bool shown) {
    on.parts.toolBar.setVisible(shown);
}
void Address(const CommandTargets& on, bool shown) {
    on.parts.address.setVisible(shown);
}
void Status(const CommandTargets& on, bool shown) {
    on.parts.status.setVisible(shown);
}
void AddFavorites(const CommandTargets& on, bool /*checked*/) {
    on.database.AddFavorites();
}
void Report(const CommandTargets& on, bool /*checked*/) {
    on.database.mnuDBSummReport_Click();
}
void About(const CommandTargets& on, bool /*checked*/) {
    frmAbout(&on.parts.window).exec();
}

// When they are offered.
const MenuOffer SavesAs{[](const FrontState& front) { return front.savesAs; }, "TS_WhyOnlyData"};
const MenuOffer Prints{[](const FrontState& front) { return front.prints; }, "TS_WhyOnlyStages"};
const MenuOffer HasScreen{[](const FrontState& front) { return front.screen; }, "TS_WhyOnlyStages"};
const MenuOffer Finds{[](const FrontState& front) { return front.finds; }, "TS_WhyNoSearch"};
const MenuOffer ShowsData{[](const FrontState& front) { return front.data; }, "TS_WhyOnlyData"};
const MenuOffer HasDatabase{[](const FrontState& /*front*/) { return DatabaseOpen && LanguageInDatabase; }, "026"};
const MenuOffer HasImport{
    [](const FrontState& /*front*/) { return DatabaseOpen && KeepsStateBeforeImport(CurrentDatabase); },
    "TS_WhyNoUndo"};
const MenuOffer HasHelpDesk{[](const FrontState& /*front*/) { return HasHelpLink(3); }, "TS_WhyNoHelpDesk"};

const MenuRow Rows[] = {
    {"", "mnuFile", "mnu_File", Kind::Menu},
    {"mnuFile", "mnuFileNew", "mnu_File_New", Kind::Command, nullptr, nullptr, "new.png"},
    {"mnuFile", "mnuFileOpen", "mnu_File_Open", Kind::Command, Open, nullptr, "database.png", "Ctrl+O"},
    {"mnuFile", "mnuFileSave", "Comm_Save", Kind::Command, nullptr, nullptr, "save.png"},
    {"mnuFile", "mnuFileSaveAs", "mnu_File_SaveAs", Kind::Command, OnScreen<&StageScreen::SaveAs>, &SavesAs, "",
     "Ctrl+Shift+S"},
    {"mnuFile", "", "", Kind::Separator},
    {"mnuFile", "mnuFilePrint", "PRINT BUTTON", Kind::Command, OnScreen<&StageScreen::Print>, &Prints, "print.png",
     "Ctrl+P"},
    {"mnuFile", "mnuFilemnu_ImportExport", "mnu_File_ImportExport", Kind::Command, Import, nullptr, "", "Ctrl+I"},
    {"mnuFile", "mnuFileExportDatabase", "TS_ExportDatabase", Kind::Command, Export, &HasDatabase},
    {"mnuFile", "mnuFileUndoImport", "TS_UndoImport", Kind::Command, UndoImport, &HasImport},
    {"mnuFile", "", "", Kind::Separator},
    {"mnuFile", "mnuFilemnu_Properties", "mnu_File_Properties", Kind::Command, Properties, nullptr, "properties.png"},
    {"mnuFile", "", "", Kind::Separator},
    {"mnuFile", "mnuFileExit", "mnu_File_Exit", Kind::Command, Exit, nullptr, "exit.png", "Ctrl+Q"},
    {"", "mnuEdit", "TLB_EDIT", Kind::Menu},
    {"mnuEdit", "mnuEditCut", "mnu_Edit_Cut", Kind::Command, Edit<EditCommand::Cut>, nullptr, "cut.png", "Ctrl+X"},
    {"mnuEdit", "mnuEditCopy", "mnu_Edit_Copy", Kind::Command, Edit<EditCommand::Copy>, nullptr, "copy.png", "Ctrl+C"},
    {"mnuEdit", "mnuEditPaste", "mnu_Edit_Paste", Kind::Command, Edit<EditCommand::Paste>, nullptr, "paste.png",
     "Ctrl+V"},
    {"mnuEdit", "", "", Kind::Separator},
    {"mnuEdit", "mnuEditmnu_SelectAll", "mnu_Edit_SelectAll", Kind::Command, Edit<EditCommand::SelectAll>, &HasScreen,
     "", "Ctrl+A"},
    {"mnuEdit", "mnuEditmnu_find", "mnu_Edit_Find", Kind::Command, Find, &Finds, "search.png", "Ctrl+F"},
    {"", "mnuView", "View", Kind::Menu},
    {"mnuView", "mnuViewToolbar", "mnu_View_ToolBars", Kind::Menu},
    {"mnuViewToolbar", "mnu_ToolBars_Buttons_0", "mnu_View_ToolBars_StandardBtn", Kind::Checked, ToolBar},
    {"mnuViewToolbar", "mnu_ToolBars_Buttons_1", "mnu_View_ToolBars_AddressBar", Kind::Checked, Address},
    {"mnuView", "mnuViewStatusBar", "mnu_View_StatusBar", Kind::Checked, Status},
    {"mnuView", "mnuViewFilters", "TS_FiltersButton", Kind::Command, OnScreen<&StageScreen::Filter>, &ShowsData,
     "filter.png", "Ctrl+Shift+F"},
    {"mnuView", "", "", Kind::Separator},
    {"mnuView", "mnuViewLanguage", "PROP GENERAL LANGUAGE", Kind::Menu, nullptr, nullptr, "language.png"},
    {"", "mnumnu_Favorites", "TLB_FAVORITES", Kind::Menu},
    {"mnumnu_Favorites", "mnumnu_Favoritesmnu_AddFavorites", "mnu_Favorites_Add", Kind::Command, AddFavorites,
     &ShowsData, "favourites.png"},
    {"", "mnuTools", "mnu_Tools", Kind::Menu},
    {"mnuTools", "mnuToolsGallery", "FP_LBL_GALL_CAPTION", Kind::Menu, nullptr, nullptr, "gallery.png"},
    {"mnuToolsGallery", "mnu_Gallery_Options_0", "mnu_Presentations", Kind::Command, Gallery<0>},
    {"mnuToolsGallery", "mnu_Gallery_Options_1", "FP_LBL_GALL_OPTION2_CAPTION", Kind::Command, Gallery<1>},
    {"mnuToolsGallery", "mnu_Gallery_Options_2", "FP_LBL_GALL_OPTION3_CAPTION", Kind::Command, Gallery<2>},
    {"mnuTools", "mnuDBSummReport", "mnuDBSummReport", Kind::Command, Report, &HasDatabase},
    {"", "mnuInformation", "Home Information", Kind::Menu},
    {"mnuInformation", "mnuInfoSheets_0", "Comm_Indicator", Kind::Command, Indicators, nullptr, "indicator.png"},
    {"mnuInformation", "mnuInfoSheets_1", "Goal", Kind::Command, Goals},
    {"mnuInformation", "", "", Kind::Separator},
    {"mnuInformation", "mnuInfoSheets_3", "Theme", Kind::Command, Themes},
    {"mnuInformation", "mnuInfoSheets_4", "Comm_Source", Kind::Command, Sources, nullptr, "source.png"},
    {"mnuInformation", "mnuInfoSheets_5", "Right", Kind::Command, Rights},
    {"", "mnuHelp", "FP_LBL_HELP_CAPTION", Kind::Menu},
    {"mnuHelp", "mnu_Help_0", "mnu_Help_Content", Kind::Command, Help<0>, nullptr, "help.png", "F1"},
    {"mnuHelp", "", "", Kind::Separator},
    {"mnuHelp", "mnu_Help_2", "mnu_Help_Tour", Kind::Command, Help<2>, nullptr, "tour.png"},
    {"mnuHelp", "mnu_Help_3", "mnu_Help_Helpdesk", Kind::Command, Help<3>, &HasHelpDesk},
    {"mnuHelp", "", "", Kind::Separator},
    {"mnuHelp", "mnu_Help_5", "TS_AboutTitle", Kind::Command, About},
};

} // namespace

std::span<const MenuRow> MenuRows() {
    return Rows;
}

} // namespace tessaro
