#include "database/JetImport.h"

#include "database/JetFile.h"
#include "database/Schema.h"
#include "jet/Connection.h"
#include "platform/Apart.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/JetCopies.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <sqlite3.h>
#include <stdexcept>

namespace tessaro {

namespace {

constexpr std::chrono::minutes ImportLimit{15};

using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

/// The new database while it is filled, row by row with one prepared statement a table: a Data table may hold millions
/// of rows.
class BulkTarget final {
  public:
    explicit BulkTarget(const std::string& path) {
        if (sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) Fail();
        Run("BEGIN");
    }
    ~BulkTarget() { sqlite3_close(database_); }
    BulkTarget(const BulkTarget&) = delete;
    BulkTarget& operator=(const BulkTarget&) = delete;

    void Commit() { Run("COMMIT"); }
    void Run(const std::string& sql) {
        if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
    }

    [[nodiscard]] Statement PrepareInsert(const std::string& table, const std::vector<std::string>& columns) {
        std::string names;
        std::string marks;
        for (const std::string& column : columns) {
            names += (names.empty() ? "[" : ", [") + column + "]";
            marks += marks.empty() ? "?" : ", ?";
        }
        sqlite3_stmt* statement = nullptr;
        const std::string sql = "INSERT INTO [" + table + "] (" + names + ") VALUES (" + marks + ")";
        if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) Fail();
        return Statement(statement, &sqlite3_finalize);
    }

    /// The columns' declared types turn the texts into numbers where they are numbers.
    void Insert(sqlite3_stmt* statement, const std::vector<JetFile::Field>& row) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const int position = static_cast<int>(i) + 1;
            if (row[i].isNull)
                sqlite3_bind_null(statement, position);
            else
                sqlite3_bind_text(statement, position, row[i].text.data(), static_cast<int>(row[i].text.size()),
                                  SQLITE_TRANSIENT);
        }
        if (sqlite3_step(statement) != SQLITE_DONE) Fail();
        sqlite3_reset(statement);
    }

  private:
    [[noreturn]] void Fail() const { throw std::runtime_error(sqlite3_errmsg(database_)); }

    sqlite3* database_ = nullptr;
};

struct TableCopy {
    std::string name; ///< in our file and, but for its case, in the genuine one
    std::vector<std::string> columns;
};

std::vector<schema::DatabaseLanguage> LanguagesOf(const JetFile& source) {
    std::vector<schema::DatabaseLanguage> languages;
    (void)source.ReadRows("Language", {"LanguageName", "LanguageCode", "LanguageDefault"}, [&](const auto& row) {
        languages.push_back({std::string(row[0].text), std::string(row[1].text), row[2].text == "-1"});
        return true;
    });
    return languages;
}

/// Makes the tables that the genuine file has, with the columns of our schema, and gives their names. A required table
/// that it lacks is taken out again, so that the check of a data database finds the lack.
std::vector<TableCopy> MakeTables(const JetFile& source, const std::string& target) {
    jet::Database::Create(target, DatabasePassword());
    const auto connection = jet::Connection::Open(target, DatabasePassword());
    const auto languages = LanguagesOf(source);
    schema::CreateDataDatabase(*connection, languages);
    connection->Execute("DELETE * FROM [Language]");
    std::vector<TableCopy> copies;
    for (const jet::TableInfo& table : connection->Tables()) {
        if (source.HasTable(table.name)) {
            TableCopy& copy = copies.emplace_back(TableCopy{table.name, {}});
            for (const jet::ColumnInfo& column : connection->catalogue().find(table.name)->columns)
                copy.columns.push_back(column.name);
        } else if (table.name != "GUId" && !table.name.ends_with("_Log")) {
            connection->Execute("DROP TABLE [" + table.name + "]");
        }
    }
    return copies;
}

void CopyRows(const JetFile& source, const std::string& target, const std::vector<TableCopy>& tables) {
    BulkTarget bulk(target);
    for (const TableCopy& table : tables) {
        const Statement insert = bulk.PrepareInsert(table.name, table.columns);
        (void)source.ReadRows(table.name, table.columns, [&](const std::vector<JetFile::Field>& row) {
            bulk.Insert(insert.get(), row);
            return true;
        });
    }
    bulk.Commit();
}

bool CopyDatabase(const std::string& path, const std::string& target) {
    const JetFile source(path);
    if (!source.isOpen() || !source.HasTable("Language") || !source.HasTable("Data")) return false;
    const std::vector<TableCopy> tables = MakeTables(source, target);
    CopyRows(source, target, tables);
    schema::IndexData(*jet::Connection::Open(target, DatabasePassword()));
    return true;
}

void RemoveOlderCopies(const QString& path, const QString& current) {
    const QDir folder(FolderOf(current));
    const QString prefix = CopyPrefixOfJetFile(path);
    const QStringList copies = folder.entryList(QDir::Files);
    for (const QString& name : copies)
        if (name.startsWith(prefix) && name != FileNameOf(current)) QFile::remove(folder.filePath(name));
}

} // namespace

bool ImportJetFile(const QString& path) {
    ErrorTrap trap("ImportJetFile");
    const QString source = FindPath(path);
    const QString target = CopyOfJetFile(source);
    if (QFileInfo::exists(target)) return true;
    QDir().mkpath(FolderOf(target));
    const QString work = target + QStringLiteral(".%1.part").arg(QCoreApplication::applicationPid());
    QFile::remove(work);
    TheFrame().SetBusy(true);
    const bool copied = RunApart(
        [&] {
            return trap.Try([&] {
                if (!CopyDatabase(source.toStdString(), work.toStdString()))
                    throw std::runtime_error("The file has no tables of a data database.");
            });
        },
        ImportLimit);
    TheFrame().SetBusy(false);
    if (!copied || !QFile::rename(work, target)) {
        LogNote(QLatin1String("a Jet database can't be copied: ") + source);
        QFile::remove(work);
        return false;
    }
    RemoveOlderCopies(source, target);
    return true;
}

} // namespace tessaro
