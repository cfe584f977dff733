#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <span>

class QAction;
class QMainWindow;
class QMenu;

namespace tessaro {

struct FrontState;
struct MenuRow;

/// The menus of a window, made from the rows of a table.
class MainMenu final : public QObject {
    Q_OBJECT

  public:
    /// The rows must outlive the menus, and name "mnuViewLanguage", "mnumnu_Favorites" and "mnu_Help_5".
    MainMenu(QMainWindow* window, std::span<const MenuRow> rows);

    /// An entry by its name ("mnuFileOpen", "mnu_Help_0"); never null for a name of the table.
    [[nodiscard]] QAction* Entry(const QString& name) const;
    /// Enables the entries that can be used with the page in front.
    void OfferCommands(const FrontState& front);

    /// Captions of all entries in the current language.
    void SetMenuCaptions();
    /// Pictures of the entries; the settings must have been read.
    void SetPictures();
    /// The languages that have a file, the current one ticked.
    void FillLanguages();
    /// mnuCustomFavorites: one entry for each favourite.
    void FillFavourites();

  Q_SIGNALS:
    /// An entry with a command was chosen; `checked` is its new state.
    void CommandChosen(const MenuRow& row, bool checked);
    void FavouriteChosen(const QString& path);
    void LanguageChosen(const QString& label);

  private:
    void MakeEntries();
    void ShowWhyNot(const MenuRow& row);

    QMainWindow* window_;
    std::span<const MenuRow> rows_;
    QMenu* languages_ = nullptr;
    QMenu* favourites_ = nullptr;
    QList<QAction*> favouriteEntries_;
};

} // namespace tessaro
