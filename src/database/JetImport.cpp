#include "database/JetImport.h"

#include "database/JetFile.h"
#include "database/Schema.h"
#include "jet/engine/Connection.h"
#include "platform/Apart.h"
#include "platform/Paths.h"
#include "platform/Rights.h"
#include "session/ErrorSink.h"
#include "session/JetCopies.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <numeric>
#include <sqlite3.h>
#include <stdexcept>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>

namespace tessaro {

namespace {

constexpr ApartLimits kLimits{std::chrono::minutes(30), std::chrono::seconds(15), 200ULL << 20, 64ULL << 20};
constexpr std::uint64_t kGrowth = 8;     ///< the copy with its indexes is not larger than the file that many times
constexpr std::int64_t kShortestRow = 4; ///< bytes; a file that yields more rows than it has room for goes in circles
constexpr int kRowsRead = 80;            ///< per cent; what follows is the indexes
constexpr std::size_t kMostLanguages = 50;
constexpr std::size_t kShownText = 200;
constexpr char kSeparator = '\x1f';

/// Why a file is refused, as the child tells it: a key of the string table and what fills its places.
class Refusal final : public std::runtime_error {
  public:
    explicit Refusal(const std::string& key, const std::vector<std::string>& fillings = {})
        : std::runtime_error(
              std::accumulate(fillings.begin(), fillings.end(), key, [](std::string text, const std::string& filling) {
                  return std::move(text) + kSeparator + filling;
              })) {}
};

/// The same in the user's language; empty when the child told nothing.
QString ReasonInWords(const std::string& told) {
    if (told.empty()) return FilledText(QStringLiteral("TS_JetDamaged"), {});
    QStringList parts = QString::fromStdString(told).split(QLatin1Char(kSeparator));
    const QString key = parts.takeFirst();
    return FilledText(key, parts);
}

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

    /// The columns' declared types turn the texts into numbers where they are numbers. False when the table doesn't
    /// take the row.
    [[nodiscard]] bool Insert(sqlite3_stmt* statement, const std::vector<JetFile::Field>& row) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const int position = static_cast<int>(i) + 1;
            if (row[i].isNull)
                sqlite3_bind_null(statement, position);
            else
                sqlite3_bind_text(statement, position, row[i].text.data(), static_cast<int>(row[i].text.size()),
                                  SQLITE_TRANSIENT);
        }
        const int code = sqlite3_step(statement);
        if (code == SQLITE_FULL || code == SQLITE_IOERR || code == SQLITE_CANTOPEN) Fail();
        sqlite3_reset(statement);
        return code == SQLITE_DONE;
    }

  private:
    [[noreturn]] void Fail() const {
        const int code = sqlite3_errcode(database_);
        if (code == SQLITE_FULL || code == SQLITE_IOERR || code == SQLITE_CANTOPEN)
            throw Refusal("TS_FolderNotWritable", {FolderOfJetCopies().toStdString()});
        throw std::runtime_error(sqlite3_errmsg(database_));
    }

    sqlite3* database_ = nullptr;
};

struct TableCopy {
    std::string name; ///< in our file and, but for its case, in the genuine one
    std::vector<std::string> columns;
};

/// The codes become parts of table names.
bool IsLanguageCode(std::string_view code) {
    return !code.empty() && code.size() <= 10 && std::ranges::all_of(code, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
}

std::vector<schema::DatabaseLanguage> LanguagesOf(const JetFile& source) {
    std::vector<schema::DatabaseLanguage> languages;
    (void)source.ReadRows("Language", {"LanguageName", "LanguageCode", "LanguageDefault"}, [&](const auto& row) {
        if (!IsLanguageCode(row[1].text) || languages.size() >= kMostLanguages)
            throw Refusal("TS_JetRow", {"Language", std::string(row[1].text.substr(0, kShownText))});
        languages.push_back({std::string(row[0].text), std::string(row[1].text), row[2].text == "-1"});
        return true;
    });
    return languages;
}

/// The width that the genuine file gives a text; 1, so less than any of ours, for what it lacks.
int WidthIn(const JetFile& source, std::string_view table, std::string_view name) {
    const auto columns = source.TextColumns(table);
    const auto column = std::ranges::find_if(columns, [&](const auto& c) { return jet::SameName(c.name, name); });
    return column == columns.end() ? 1 : column->width;
}

/// The columns of a table of ours that the genuine file has too.
std::vector<std::string> CommonColumns(const JetFile& source, const jet::TableInfo& table) {
    const std::vector<std::string> there = source.Columns(table.name);
    std::vector<std::string> common;
    for (const jet::ColumnInfo& column : table.columns)
        if (std::ranges::any_of(there, [&](const std::string& name) { return jet::SameName(name, column.name); }))
            common.push_back(column.name);
    return common;
}

/// Makes the tables of our schema that the Jet file has, and gives their names. A required table that it lacks is
/// dropped, so that the later check reports it as missing.
std::vector<TableCopy> MakeTables(const JetFile& source, const std::string& target) {
    jet::Database::Create(target, DatabasePassword());
    const auto connection = jet::Connection::Open(target, DatabasePassword());
    schema::CreateDataDatabase(*connection, LanguagesOf(source), [&](std::string_view table, std::string_view column) {
        return WidthIn(source, table, column);
    });
    connection->Execute("DELETE * FROM [Language]");
    std::vector<TableCopy> copies;
    for (const jet::TableInfo& table : connection->Tables()) {
        if (source.HasTable(table.name))
            copies.push_back({table.name, CommonColumns(source, *connection->catalogue().find(table.name))});
        else if (table.name != "GUId" && !table.name.ends_with("_Log"))
            connection->Execute("DROP TABLE [" + table.name + "]");
    }
    for (const TableCopy& copy : copies) // the page that defines its columns may be lost
        if (copy.columns.empty()) throw Refusal("TS_JetTable", {copy.name});
    return copies;
}

/// The texts of a row as a message can show them.
std::string Shown(const std::vector<JetFile::Field>& row) {
    std::string shown;
    for (const JetFile::Field& field : row)
        if (!field.isNull) shown += (shown.empty() ? "" : " | ") + std::string(field.text);
    QString text = QString::fromUtf8(shown.data(), static_cast<qsizetype>(shown.size())).simplified();
    if (text.size() > static_cast<qsizetype>(kShownText)) text = text.left(kShownText) + QStringLiteral("...");
    return text.toStdString();
}

/// Copies the rows of all tables and tells how many are done.
class RowCopy final {
  public:
    RowCopy(const JetFile& source, const std::vector<TableCopy>& tables, std::int64_t fileSize, ApartReport& report)
        : source_(source), tables_(tables), most_(fileSize / kShortestRow), report_(report) {
        for (const TableCopy& table : tables)
            total_ += source.RowCount(table.name);
    }

    void Into(const std::string& target) {
        BulkTarget bulk(target);
        for (const TableCopy& table : tables_) {
            const std::int64_t promised = done_ + source_.RowCount(table.name);
            const Statement insert = bulk.PrepareInsert(table.name, table.columns);
            const bool read = source_.ReadRows(table.name, table.columns, [&](const auto& row) {
                if (!bulk.Insert(insert.get(), row)) throw Refusal("TS_JetRow", {table.name, Shown(row)});
                Count();
                return true;
            });
            if (!read || done_ < promised) throw Refusal("TS_JetTable", {table.name});
        }
        bulk.Commit();
    }

  private:
    void Count() {
        if (++done_ > most_) throw Refusal("TS_JetDamaged");
        if (done_ % 256 == 0) report_.Progress(static_cast<int>(done_ * kRowsRead / std::max(total_, done_)));
    }

    const JetFile& source_;
    const std::vector<TableCopy>& tables_;
    std::int64_t most_;
    std::int64_t total_ = 0;
    std::int64_t done_ = 0;
    ApartReport& report_;
};

/// The engine can't say how far it is, and an index over millions of rows takes its time.
void MakeIndexes(const std::string& target, ApartReport& report) {
    const std::jthread alive([&report](const std::stop_token& done) {
        for (int percent = kRowsRead; !done.stop_requested(); percent = std::min(percent + 1, 99)) {
            report.Progress(percent);
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
        }
    });
    schema::IndexData(*jet::Connection::Open(target, DatabasePassword()));
}

void CopyDatabase(const std::string& path, const std::string& target, std::int64_t size, ApartReport& report) {
    report.Progress(0);
    const JetFile source(path);
    if (!source.isOpen()) throw Refusal("TS_JetDamaged");
    for (const char* table : {"Language", "Data"})
        if (!source.HasTable(table)) throw Refusal("TS_TablesMissing", {table});
    const std::vector<TableCopy> tables = MakeTables(source, target);
    RowCopy(source, tables, size, report).Into(target);
    MakeIndexes(target, report);
}

/// What the library writes to the standard error while this lives: it has no other way to say that a page of a long
/// text is beyond the end of the file, and gives a part of the text.
class LibraryErrors final {
  public:
    LibraryErrors() : file_(::memfd_create("errors", MFD_CLOEXEC)) { ::dup2(file_, STDERR_FILENO); }
    ~LibraryErrors() { ::close(file_); }
    LibraryErrors(const LibraryErrors&) = delete;
    LibraryErrors& operator=(const LibraryErrors&) = delete;

    [[nodiscard]] bool TellOfLostPages() const {
        std::string text(1 << 20, '\0');
        std::fflush(stderr);
        const ssize_t size = ::pread(file_, text.data(), text.size(), 0);
        return size > 0 && text.find("beyond EOF") < static_cast<std::size_t>(size);
    }

  private:
    int file_;
};

/// In the process of its own.
bool Work(const QString& source, const QString& target, ApartReport& report) {
    const LibraryErrors errors;
    try {
        CopyDatabase(source.toStdString(), target.toStdString(), QFileInfo(source).size(), report);
        if (errors.TellOfLostPages()) throw Refusal("TS_JetDamaged");
        return true;
    } catch (const Refusal& refusal) {
        report.Reason(refusal.what());
    } catch (const std::exception& error) {
        ReportError(error, QStringLiteral("ImportJetFile"));
    }
    return false;
}

void RemoveOlderCopies(const QString& path, const QString& current) {
    const QDir folder(FolderOf(current));
    const QString prefix = CopyPrefixOfJetFile(path);
    const QStringList copies = folder.entryList(QDir::Files);
    for (const QString& name : copies)
        if (name.startsWith(prefix) && name != FileNameOf(current)) QFile::remove(folder.filePath(name));
}

void RemoveWork(const QString& work) {
    for (const char* companion : {"", "-journal", "-wal", "-shm"})
        QFile::remove(work + QLatin1String(companion));
}

ApartResult CopyApart(const QString& source, const QString& work, const CopyProgress& goOn) {
    ApartLimits limits = kLimits;
    limits.file += kGrowth * static_cast<std::uint64_t>(QFileInfo(source).size());
    return RunApart([&](ApartReport& report) { return Work(source, work, report); }, limits, goOn);
}

} // namespace

JetImportResult ImportJetFile(const QString& path, const CopyProgress& goOn) {
    const ErrorTrap trap("ImportJetFile");
    const QString source = FindPath(path);
    const QString target = CopyOfJetFile(source);
    if (QFileInfo::exists(target)) return {JetImport::Copied, {}};
    if (!MakePrivateFolder(FolderOf(target)))
        return {JetImport::Refused, FilledText(QStringLiteral("TS_FolderNotWritable"), {FolderOf(target)})};
    const QString work = target + QStringLiteral(".%1.part").arg(QCoreApplication::applicationPid());
    RemoveWork(work);
    const ApartResult result = CopyApart(source, work, goOn);
    if (result.good && QFile::rename(work, target)) {
        RemoveOlderCopies(source, target);
        return {JetImport::Copied, {}};
    }
    RemoveWork(work);
    if (result.stopped) return {JetImport::Stopped, {}};
    LogNote(QStringLiteral("a Jet database can't be copied: %1: %2")
                .arg(source,
                     result.reason.empty()
                         ? QStringLiteral("damaged")
                         : QString::fromStdString(result.reason).replace(QLatin1Char(kSeparator), QLatin1Char(' '))));
    return {JetImport::Refused, ReasonInWords(result.reason)};
}

} // namespace tessaro
