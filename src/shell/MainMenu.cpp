#include "shell/MainMenu.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "platform/Paths.h"
#include "session/CaptionText.h"
#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/Favourite.h"
#include "shell/MenuRow.h"

#include <QActionGroup>
#include <QLocale>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace tessaro {

namespace {

/// "French [fr]" in its own language: "français"; the label itself for an unknown code.
QString OwnNameOf(const QString& label) {
    const QString code = CodeOfLanguage(label);
    const QLocale locale(code);
    if (code.isEmpty() || locale.language() == QLocale::C) return label;
    // Qt names English and Spanish with a country.
    const QString name = QLocale(locale.language()).nativeLanguageName();
    const QString own = code == QLatin1String("en")   ? QStringLiteral("English")
                        : code == QLatin1String("es") ? QStringLiteral("español")
                                                      : name;
    return own.isEmpty() ? label : own.left(1).toUpper() + own.mid(1);
}

} // namespace

MainMenu::MainMenu(QMainWindow* window, std::span<const MenuRow> rows) : QObject(window), window_(window), rows_(rows) {
    MakeEntries();
}

void MainMenu::MakeEntries() {
    for (const MenuRow& row : rows_) {
        auto* parent = window_->findChild<QMenu*>(QLatin1String(row.parent));
        const QString name = QLatin1String(row.name);
        if (row.kind == MenuKind::Separator) {
            parent->addSeparator();
        } else if (row.kind == MenuKind::Menu) {
            QMenu* menu = parent ? parent->addMenu(QString()) : window_->menuBar()->addMenu(QString());
            menu->setObjectName(name);
            menu->setToolTipsVisible(true);
            menu->menuAction()->setObjectName(name);
        } else {
            QAction* entry = parent->addAction(QString());
            entry->setObjectName(name);
            entry->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
            entry->setEnabled(row.command != nullptr);
            entry->setCheckable(row.kind == MenuKind::Checked);
            entry->setChecked(row.kind == MenuKind::Checked);
            if (row.command)
                connect(entry, &QAction::triggered, this,
                        [this, &row](bool checked) { Q_EMIT CommandChosen(row, checked); });
        }
    }
    languages_ = window_->findChild<QMenu*>(QStringLiteral("mnuViewLanguage"));
    favourites_ = window_->findChild<QMenu*>(QStringLiteral("mnumnu_Favorites"));
    connect(favourites_, &QMenu::aboutToShow, this, &MainMenu::FillFavourites);
}

QAction* MainMenu::Entry(const QString& name) const {
    return window_->findChild<QAction*>(name);
}

void MainMenu::OfferCommands(const FrontState& front) {
    for (const MenuRow& row : rows_) {
        if (!row.offered) continue;
        Entry(QLatin1String(row.name))->setEnabled(row.offered->when(front));
        ShowWhyNot(row);
    }
}

/// The tool tip of an entry that can't be chosen says why.
void MainMenu::ShowWhyNot(const MenuRow& row) {
    QAction* entry = Entry(QLatin1String(row.name));
    const bool missing = !row.command && row.kind != MenuKind::Menu;
    const char* key = missing ? "TS_NotYetAvailable" : row.offered && !entry->isEnabled() ? row.offered->whyNotKey : "";
    entry->setToolTip(PlainText(QLatin1String(key)));
}

void MainMenu::SetMenuCaptions() {
    for (const MenuRow& row : rows_) {
        if (row.kind == MenuKind::Separator) continue;
        SetCaption(Entry(QLatin1String(row.name)), QLatin1String(row.key));
        ShowWhyNot(row);
    }
    QAction* about = Entry(QStringLiteral("mnu_Help_5"));
    about->setText(about->text().replace(QLatin1String("%1"), Setting(QStringLiteral("PRODUCT NAME"))));
    window_->menuBar()->setFont(LanguageFont());
    const auto menus = window_->menuBar()->findChildren<QMenu*>();
    for (QMenu* menu : menus)
        menu->setFont(LanguageFont());
    FillLanguages();
    FillFavourites();
}

void MainMenu::SetPictures() {
    for (const MenuRow& row : rows_)
        if (*row.picture) Entry(QLatin1String(row.name))->setIcon(theme::Icon(QLatin1String(row.picture)));
}

void MainMenu::FillFavourites() {
    qDeleteAll(favouriteEntries_);
    favouriteEntries_.clear();
    const QStringList paths = FavouritePaths();
    if (!paths.isEmpty()) favouriteEntries_ << favourites_->addSeparator();
    for (const QString& path : paths) {
        QAction* entry = favourites_->addAction(CaptionOfName(FileNameOf(path).chopped(4)));
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
        QAction* entry = languages_->addAction(CaptionOfName(OwnNameOf(file.label)));
        entry->setObjectName(QStringLiteral("mnuLanguage_") + file.label);
        entry->setCheckable(true);
        entry->setChecked(file.label.compare(Language, Qt::CaseInsensitive) == 0);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, label = file.label] { Q_EMIT LanguageChosen(label); });
    }
    languages_->menuAction()->setEnabled(LanguageFiles.size() > 1);
}

} // namespace tessaro
