#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;

namespace tessaro {

/// The frame's menus, built from one table of names, caption keys, pictures and shortcuts. Entries of screens that
/// don't exist yet are shown but can't be chosen, and say so.
class MainMenu final : public QObject {
    Q_OBJECT

  public:
    explicit MainMenu(QMainWindow* frame);

    /// An entry by its name ("mnuFileOpen", "mnu_Help_0"); never null for a name of the table.
    [[nodiscard]] QAction* Entry(const QString& name) const;
    /// True for an entry whose command exists.
    [[nodiscard]] static bool IsReady(const QString& name);

    /// Captions of all entries in the current language.
    void SetMenuCaptions();
    /// Pictures, once the settings say where they are.
    void SetPictures();
    /// The languages that have a file, the current one ticked.
    void FillLanguages();
    /// mnuCustomFavorites: one entry for each favourite.
    void FillFavourites();

  Q_SIGNALS:
    void Chosen(const QString& name, bool checked);
    void FavouriteChosen(const QString& path);
    void LanguageChosen(const QString& label);

  private:
    void MakeEntries();

    QMainWindow* frame_;
    QMenu* languages_ = nullptr;
    QMenu* favourites_ = nullptr;
    QList<QAction*> favouriteEntries_;
};

} // namespace tessaro
