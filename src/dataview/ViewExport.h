#pragma once

#include <QString>

class QWidget;

namespace tessaro {

class ViewRows;

/// Saves and prints what the data view shows: all of its rows in the grid's order, those included that the grid hasn't
/// loaded yet, with progress and a button that stops it. The load goes on afterwards from where it was.
class ViewExport final {
  public:
    /// `owner` is the window of its dialogs. Both are borrowed.
    ViewExport(ViewRows& rows, QWidget* owner) : rows_(rows), owner_(owner) {}

    /// Asks for a file and saves the rows in it.
    void AskAndSave();
    /// Writes the kind of file that the name says: .xls, .xlsx, .ods, .txt, .csv, .px, .json, or a web page. False
    /// after the message, or when the user stopped it; the old file stands then.
    bool Save(const QString& file);
    /// Shows the rows as a workbook for reading and printing.
    void Print();

  private:
    int Write(const QString& file, const char* textKey);

    ViewRows& rows_;
    QWidget* owner_;
};

} // namespace tessaro
