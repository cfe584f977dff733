#pragma once

#include "shell/FrameParts.h"

#include <QObject>
#include <QString>

namespace tessaro {

class StageNavigator;

/// Opens databases: at start, from the address bar, the File menu, the home page and the favourites. When a database is
/// refused, the one that was open and its selection stay.
class DatabaseOpener final : public QObject {
    Q_OBJECT

  public:
    DatabaseOpener(const FrameParts& parts, StageNavigator& stages);

    /// At start: opens the database of the last run, otherwise the product's default one, and shows the home page or
    /// stage 0.
    void OpenStartPage();
    /// Fills cmbAddress with the databases of the data folder and the one that is open.
    void FillAddresses();
    /// Brings cmbAddress up to date with files that were added to the data folder or removed.
    void RescanAddresses();

    /// Opens the database whose address or path stands in cmbAddress.
    void SelectDataBase();
    /// Opens a database by its path or address and shows stage 0 with an empty selection.
    void LoadNewMDB(const QString& path);
    /// Opens a favourite by its path. When its file is gone, the user is told and the menu is filled again.
    void OpenFavourite(const QString& path);
    /// Asks for a file with the file dialog and opens it.
    void mnuFileOpen_Click();
    /// The go button and Enter: open what stands in cmbAddress; LanguageMissing follows when it lacks the language.
    void picGo_Click();
    void cmbAddress_Click();
    /// Opens a database by its address, chosen on the home page.
    void OpenAddress(const QString& address);
    /// Empties the selection tables and the list of visited stages, and unloads the stage screens.
    void RestoreBlanks();
    /// Shows CurrentDatabase in the address bar.
    void ShowAddress();

  Q_SIGNALS:
    /// Another database is open, or none, or the list of databases has changed.
    void Changed();
    /// The database that was opened has no texts in the current language.
    void LanguageMissing();

  private:
    void OpenRememberedDatabase();
    void OpenDefaultDatabase();
    bool OpenAtStart(const QString& file);
    [[nodiscard]] bool OpenInPlace(const QString& path);
    [[nodiscard]] QString CheckedFile(const QString& path);
    void TellMissingLanguage();

    FrameParts parts_;
    StageNavigator& stages_;
};

} // namespace tessaro
