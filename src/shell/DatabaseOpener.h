#pragma once

#include "shell/FrameParts.h"

#include <QObject>
#include <QString>

namespace tessaro {

class StageNavigator;

/// Takes databases into use: at start, from the address bar, the File menu, the home page and the favourites. A
/// database that is refused leaves everything as it was.
class DatabaseOpener final : public QObject {
    Q_OBJECT

  public:
    DatabaseOpener(const FrameParts& parts, StageNavigator& stages);

    /// The first page: the database of the last run or of the product, or none.
    void OpenStartPage();
    /// cmbAddress with the databases of the data folder and the one that is open.
    void FillAddresses();
    /// Files that have come or gone meanwhile.
    void RescanAddresses();

    /// Opens what cmbAddress names.
    void SelectDataBase();
    void LoadNewMDB(const QString& path);
    /// Opens a favourite by its path; one that is gone is told and leaves the menu.
    void OpenFavourite(const QString& path);
    /// The file dialog of the File menu.
    void mnuFileOpen_Click();
    /// The go button: opens what is typed, and tells when the database lacks the language.
    void picGo_Click();
    void cmbAddress_Click();
    /// The address of a database, chosen on the home page.
    void OpenAddress(const QString& address);
    /// Empties the selection and takes the stages down.
    void RestoreBlanks();
    /// Shows CurrentDatabase in the address bar.
    void ShowAddress();

  Q_SIGNALS:
    /// Another database is open, or none, or the list of databases is another one.
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
