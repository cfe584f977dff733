#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QMenu;

namespace tessaro {

class frmMain;
struct FrontState;

/// The frame's menus, made from MenuRows().
class MainMenu final : public QObject {
    Q_OBJECT

  public:
    explicit MainMenu(frmMain* frame);

    /// An entry by its name ("mnuFileOpen", "mnu_Help_0"); never null for a name of the table.
    [[nodiscard]] QAction* Entry(const QString& name) const;
    /// Enables what can be done with what is in front.
    void OfferCommands(const FrontState& front);

    /// Captions of all entries in the current language.
    void SetMenuCaptions();
    /// Pictures, once the settings say where they are.
    void SetPictures();
    /// The languages that have a file, the current one ticked.
    void FillLanguages();
    /// mnuCustomFavorites: one entry for each favourite.
    void FillFavourites();

  Q_SIGNALS:
    void FavouriteChosen(const QString& path);
    void LanguageChosen(const QString& label);

  private:
    void MakeEntries();

    frmMain* frame_;
    QMenu* languages_ = nullptr;
    QMenu* favourites_ = nullptr;
    QList<QAction*> favouriteEntries_;
};

} // namespace tessaro
