#include "shell/MainMenu.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/Documents.h"
#include "shell/Favourite.h"

#include <QActionGroup>
#include <QLocale>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace tessaro {

namespace {

enum class Kind { Menu, Command, Checked, Later, Separator };

struct Row {
    const char* parent; ///< name of the menu that holds it; empty for the bar
    const char* name;
    const char* key;
    Kind kind;
    const char* picture = "";
    const char* shortcut = "";
};

const Row Rows[] = {
    {"", "mnuFile", "mnu_File", Kind::Menu},
    {"mnuFile", "mnuFileNew", "mnu_File_New", Kind::Later, "new.png"},
    {"mnuFile", "mnuFileOpen", "mnu_File_Open", Kind::Command, "database.png", "Ctrl+O"},
    {"mnuFile", "mnuFileSave", "Comm_Save", Kind::Later, "save.png"},
    {"mnuFile", "mnuFileSaveAs", "mnu_File_SaveAs", Kind::Command, "", "Ctrl+Shift+S"},
    {"mnuFile", "", "", Kind::Separator},
    {"mnuFile", "mnuFilePrint", "PRINT BUTTON", Kind::Command, "print.png", "Ctrl+P"},
    {"mnuFile", "mnuFilemnu_ImportExport", "mnu_File_ImportExport", Kind::Later},
    {"mnuFile", "", "", Kind::Separator},
    {"mnuFile", "mnuFilemnu_Properties", "mnu_File_Properties", Kind::Command, "properties.png"},
    {"mnuFile", "", "", Kind::Separator},
    {"mnuFile", "mnuFileExit", "mnu_File_Exit", Kind::Command, "exit.png", "Ctrl+Q"},
    {"", "mnuEdit", "TLB_EDIT", Kind::Menu},
    {"mnuEdit", "mnuEditCut", "mnu_Edit_Cut", Kind::Command, "cut.png", "Ctrl+X"},
    {"mnuEdit", "mnuEditCopy", "mnu_Edit_Copy", Kind::Command, "copy.png", "Ctrl+C"},
    {"mnuEdit", "mnuEditPaste", "mnu_Edit_Paste", Kind::Command, "paste.png", "Ctrl+V"},
    {"mnuEdit", "", "", Kind::Separator},
    {"mnuEdit", "mnuEditmnu_SelectAll", "mnu_Edit_SelectAll", Kind::Command, "", "Ctrl+A"},
    {"mnuEdit", "mnuEditmnu_find", "mnu_Edit_Find", Kind::Command, "search.png", "Ctrl+F"},
    {"", "mnuView", "View", Kind::Menu},
    {"mnuView", "mnuViewToolbar", "mnu_View_ToolBars", Kind::Menu},
    {"mnuViewToolbar", "mnu_ToolBars_Buttons_0", "mnu_View_ToolBars_StandardBtn", Kind::Checked},
    {"mnuViewToolbar", "mnu_ToolBars_Buttons_1", "mnu_View_ToolBars_AddressBar", Kind::Checked},
    {"mnuView", "mnuViewStatusBar", "mnu_View_StatusBar", Kind::Checked},
    {"mnuView", "mnuViewFilters", "TS_FiltersButton", Kind::Command, "filter.png", "Ctrl+Shift+F"},
    {"mnuView", "", "", Kind::Separator},
    {"mnuView", "mnuViewLanguage", "PROP GENERAL LANGUAGE", Kind::Menu, "language.png"},
    {"", "mnumnu_Favorites", "TLB_FAVORITES", Kind::Menu},
    {"mnumnu_Favorites", "mnumnu_Favoritesmnu_AddFavorites", "mnu_Favorites_Add", Kind::Command, "favourites.png"},
    {"", "mnuTools", "mnu_Tools", Kind::Menu},
    {"mnuTools", "mnuToolsGallery", "FP_LBL_GALL_CAPTION", Kind::Menu, "gallery.png"},
    {"mnuToolsGallery", "mnu_Gallery_Options_0", "mnu_Presentations", Kind::Command},
    {"mnuToolsGallery", "mnu_Gallery_Options_1", "FP_LBL_GALL_OPTION2_CAPTION", Kind::Command},
    {"mnuToolsGallery", "mnu_Gallery_Options_2", "FP_LBL_GALL_OPTION3_CAPTION", Kind::Command},
    {"mnuTools", "mnuDBSummReport", "mnuDBSummReport", Kind::Command},
    {"", "mnuInformation", "Home Information", Kind::Menu},
    {"mnuInformation", "mnuInfoSheets_0", "Comm_Indicator", Kind::Command, "indicator.png"},
    {"mnuInformation", "mnuInfoSheets_1", "Goal", Kind::Command},
    {"mnuInformation", "", "", Kind::Separator},
    {"mnuInformation", "mnuInfoSheets_3", "Theme", Kind::Command},
    {"mnuInformation", "mnuInfoSheets_4", "Comm_Source", Kind::Command, "source.png"},
    {"mnuInformation", "mnuInfoSheets_5", "Right", Kind::Command},
    {"", "mnuHelp", "FP_LBL_HELP_CAPTION", Kind::Menu},
    {"mnuHelp", "mnu_Help_0", "mnu_Help_Content", Kind::Command, "help.png", "F1"},
    {"mnuHelp", "", "", Kind::Separator},
    {"mnuHelp", "mnu_Help_2", "mnu_Help_Tour", Kind::Command, "tour.png"},
    {"mnuHelp", "mnu_Help_3", "mnu_Help_Helpdesk", Kind::Command},
    {"mnuHelp", "", "", Kind::Separator},
    {"mnuHelp", "mnu_Help_5", "TS_AboutTitle", Kind::Command},
};

/// "French [fr]" in its own language: "français"; the label itself for a code that nobody knows.
QString OwnNameOf(const QString& label) {
    const QString code = label.section(QLatin1Char('['), 1).section(QLatin1Char(']'), 0, 0);
    const QLocale locale(code);
    if (code.isEmpty() || locale.language() == QLocale::C) return label;
    // The plain language, without the country that the platform adds to English and Spanish.
    const QString name = QLocale(locale.language()).nativeLanguageName();
    const QString own = code == QLatin1String("en")   ? QStringLiteral("English")
                        : code == QLatin1String("es") ? QStringLiteral("español")
                                                      : name;
    return own.isEmpty() ? label : own.left(1).toUpper() + own.mid(1);
}

} // namespace

MainMenu::MainMenu(QMainWindow* frame) : QObject(frame), frame_(frame) {
    MakeEntries();
}

void MainMenu::MakeEntries() {
    for (const Row& row : Rows) {
        auto* parent = frame_->findChild<QMenu*>(QLatin1String(row.parent));
        const QString name = QLatin1String(row.name);
        if (row.kind == Kind::Separator) {
            parent->addSeparator();
        } else if (row.kind == Kind::Menu) {
            QMenu* menu = parent ? parent->addMenu(QString()) : frame_->menuBar()->addMenu(QString());
            menu->setObjectName(name);
            menu->setToolTipsVisible(true);
            menu->menuAction()->setObjectName(name);
        } else {
            QAction* entry = parent->addAction(QString());
            entry->setObjectName(name);
            entry->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
            entry->setEnabled(row.kind != Kind::Later);
            entry->setCheckable(row.kind == Kind::Checked);
            entry->setChecked(row.kind == Kind::Checked);
            connect(entry, &QAction::triggered, this, [this, name](bool checked) { Q_EMIT Chosen(name, checked); });
        }
    }
    languages_ = frame_->findChild<QMenu*>(QStringLiteral("mnuViewLanguage"));
    favourites_ = frame_->findChild<QMenu*>(QStringLiteral("mnumnu_Favorites"));
    connect(favourites_, &QMenu::aboutToShow, this, &MainMenu::FillFavourites);
}

QAction* MainMenu::Entry(const QString& name) const {
    return frame_->findChild<QAction*>(name);
}

bool MainMenu::IsReady(const QString& name) {
    for (const Row& row : Rows)
        if (name == QLatin1String(row.name)) return row.kind == Kind::Command || row.kind == Kind::Checked;
    return false;
}

void MainMenu::SetMenuCaptions() {
    const QString later = PlainText(QStringLiteral("TS_NotYetAvailable"));
    for (const Row& row : Rows) {
        if (row.kind == Kind::Separator) continue;
        QAction* entry = Entry(QLatin1String(row.name));
        SetCaption(entry, QLatin1String(row.key));
        if (row.kind == Kind::Later) entry->setToolTip(later);
    }
    QAction* about = Entry(QStringLiteral("mnu_Help_5"));
    about->setText(about->text().replace(QLatin1String("%1"), Setting(QStringLiteral("PRODUCT NAME"))));
    Entry(QStringLiteral("mnu_Help_3"))->setEnabled(HasHelpLink(3));
    frame_->menuBar()->setFont(LanguageFont());
    const auto menus = frame_->menuBar()->findChildren<QMenu*>();
    for (QMenu* menu : menus)
        menu->setFont(LanguageFont());
    FillLanguages();
    FillFavourites();
}

void MainMenu::SetPictures() {
    for (const Row& row : Rows)
        if (*row.picture) Entry(QLatin1String(row.name))->setIcon(theme::Icon(QLatin1String(row.picture)));
}

void MainMenu::FillFavourites() {
    qDeleteAll(favouriteEntries_);
    favouriteEntries_.clear();
    const QStringList paths = FavouritePaths();
    if (!paths.isEmpty()) favouriteEntries_ << favourites_->addSeparator();
    for (const QString& path : paths) {
        // An "&" in the name is no mnemonic.
        const QString name = FileNameOf(path).chopped(4).replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction* entry = favourites_->addAction(name);
        entry->setObjectName(QStringLiteral("mnuCustomFavorites_%1").arg(favouriteEntries_.size()));
        entry->setToolTip(path);
        connect(entry, &QAction::triggered, this, [this, path] { Q_EMIT FavouriteChosen(path); });
        favouriteEntries_ << entry;
    }
}

void MainMenu::FillLanguages() {
    languages_->clear();
    auto* group = new QActionGroup(languages_);
    for (const LanguageFile& file : std::as_const(LanguageFiles)) {
        QAction* entry = languages_->addAction(OwnNameOf(file.label));
        entry->setObjectName(QStringLiteral("mnuLanguage_") + file.label);
        entry->setCheckable(true);
        entry->setChecked(file.label.compare(Language, Qt::CaseInsensitive) == 0);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, label = file.label] { Q_EMIT LanguageChosen(label); });
    }
    languages_->menuAction()->setEnabled(LanguageFiles.size() > 1);
}

} // namespace tessaro
