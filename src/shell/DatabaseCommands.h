#pragma once

#include "shell/FrameParts.h"

namespace tessaro {

class DatabaseOpener;
class StageNavigator;

/// What the menus offer on the open database as a whole: favourites, the summary report and the information sheets.
class DatabaseCommands final {
  public:
    DatabaseCommands(const FrameParts& parts, StageNavigator& stages, DatabaseOpener& databases);

    /// Makes or removes favourites; only while the data view is in front.
    void AddFavorites();
    /// Writes the summary report and shows it; message "026" without a database.
    void mnuDBSummReport_Click();
    /// Brings in values of files; opens the database that they are in afterwards.
    void mnuFilemnu_ImportExport_Click();
    /// Takes the last import into the open database back, after a question.
    void UndoLastImport();
    /// The sheets of a kind: "IND", "GOALS", "THEMES", "SOURCES", "RIGHTS".
    void ShowInformationSheets(const char* code);

  private:
    FrameParts parts_;
    StageNavigator& stages_;
    DatabaseOpener& databases_;
};

} // namespace tessaro
