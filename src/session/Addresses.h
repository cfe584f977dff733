#pragma once

#include <QString>
#include <QStringList>

namespace tessaro {

/// The folder of data databases, and the path of one of its files: the user's own copy below the cache folder first.
[[nodiscard]] QString DataFolder();
[[nodiscard]] QString FileInDataFolder(const QString& fileName);
/// Names of all files of the data folder, the user's own ones among them.
[[nodiscard]] QStringList FilesOfDataFolder();

/// "Local://Product 1.0/name.mdb": how a database of the data folder is shown in cmbAddress.
[[nodiscard]] QString AddressOfDatabase(const QString& fileName);
/// The path that an address stands for: its last component in the data folder.
[[nodiscard]] QString PathOfAddress(const QString& address);
/// True for a text that holds the beginning of an address of this product (any version).
[[nodiscard]] bool IsAddress(const QString& text);
/// True when the path lies in the data folder itself.
[[nodiscard]] bool IsInDataFolder(const QString& path);
/// What cmbAddress shows for a database: its address when it lies in the data folder, otherwise the path, or the
/// DEFAULT DATABASE text itself.
[[nodiscard]] QString ShownAddress(const QString& database);
/// True for the text that stands for "no database is open".
[[nodiscard]] bool IsNoDatabase(const QString& text);

/// The addresses that cmbAddress is filled with at start: files whose name holds "mdb", without the working database
/// and the gallery's.
[[nodiscard]] QStringList ListOfDatabases();

/// What the rescan of every second changes in cmbAddress. Unlike the first filling it takes every ".mdb" file.
struct AddressChanges {
    QStringList added;   ///< addresses to append
    QStringList removed; ///< items whose file is gone
};
[[nodiscard]] AddressChanges RescanDataFolder(const QStringList& items);

/// What the typed text of cmbAddress asks for (SelectDataBase).
struct TypedDatabase {
    enum class Action {
        Nothing,       ///< the text is blank
        Load,          ///< LoadNewMDB(text)
        SelectAddress, ///< select the item `text` of cmbAddress; its click does the rest
    };
    Action action = Action::Nothing;
    QString text;
};
[[nodiscard]] TypedDatabase ResolveTypedDatabase(const QString& typed);

/// What FileSelectedISOK finds of a chosen file, given the items of cmbAddress.
struct SelectedFile {
    enum class Verdict {
        Good,           ///< open `path`
        NoDatabaseFile, ///< not ".mdb": message "025"
        Missing,        ///< not there: message "025"
    };
    Verdict verdict = Verdict::Missing;
    QString path;    ///< the file to open
    QString address; ///< its item in cmbAddress, when it was found by name in the data folder
};
[[nodiscard]] SelectedFile CheckSelectedFile(const QString& path, const QStringList& items);

/// The database that opens on a start with none remembered; empty when none is named or the file is missing.
[[nodiscard]] QString DefaultDatabaseFile();

} // namespace tessaro
