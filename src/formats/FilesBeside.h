#pragma once

#include "formats/ValueTable.h"
#include "platform/Files.h"

#include <QSet>
#include <QStringList>

#include <vector>

/// Files beside a file of values, for what that has no room for.
namespace tessaro {

/// "Name.notes.csv" for "Name.wide.csv" and ".notes.csv": in the same folder.
[[nodiscard]] QString NameBeside(const QString& file, const QString& ending);

/// The notes and the sources of the rows of a table, collected while it is read.
class NotesAndSources final {
  public:
    /// The table is borrowed.
    explicit NotesAndSources(const ValueTable& table) : table_(table) {}

    /// The same table; its rows are looked at as they are read.
    [[nodiscard]] ValueTable Watched();
    /// The files beside one of values: rows with footnotes, below the titles where the table has any, and the sources
    /// with what is known of them. None for what there is not, but one of an earlier time doesn't stay.
    [[nodiscard]] std::vector<NewFile> FilesOf(const QString& file) const;

  private:
    void Take(const ValueRow& row);

    const ValueTable& table_;
    QByteArray notes_;
    QStringList sources_;
    QSet<QString> known_;
    QString last_; ///< source of the row before
};

/// The heads of a row of values as they stand in files, in the language of the program, and a row below them.
[[nodiscard]] QStringList ValueHeads();
[[nodiscard]] QStringList ValueFields(const ValueRow& row);
/// The sources, each with what is known of it, as separated values with heads.
[[nodiscard]] QByteArray SourcesText(const QStringList& sources,
                                     const std::function<QString(const QString&)>& aboutSource);

} // namespace tessaro
