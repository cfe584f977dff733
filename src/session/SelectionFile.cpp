#include "session/SelectionFile.h"

#include "jet/engine/BulkLoad.h"
#include "jet/engine/Connection.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/DatabasePassword.h"
#include "session/ErrorSink.h"
#include "session/Leftovers.h"
#include "session/Session.h"
#include "session/Templates.h"

#include <QFile>

#include <algorithm>

namespace tessaro {

namespace {

const QString FileName = QStringLiteral("UserSelections.mdb");

struct TableColumns {
    std::string table;
    std::vector<std::string> columns;
};

std::shared_ptr<jet::Connection> Open(const QString& path) {
    return jet::Connection::Open(path.toStdString(), DatabasePassword());
}

void PutAside(const QString& path) {
    LogNote(QStringLiteral("%1 is no database and was put aside as %1.damaged").arg(path));
    QFile::remove(path + QLatin1String(".damaged"));
    QFile::rename(path, path + QLatin1String(".damaged"));
}

bool HasAllDeclarationsOf(const jet::Connection& file, const jet::Connection& pattern) {
    const std::vector<std::string> has = file.Declarations();
    return std::ranges::all_of(pattern.Declarations(),
                               [&](const std::string& each) { return std::ranges::count(has, each) > 0; });
}

/// The tables and columns that both files have, by the names of `pattern`.
std::vector<TableColumns> CommonColumns(const jet::Connection& file, const jet::Connection& pattern) {
    std::vector<TableColumns> common;
    for (const jet::TableInfo& table : pattern.Tables()) {
        const jet::TableInfo* const old = file.catalogue().find(table.name);
        TableColumns shared{table.name, {}};
        for (const jet::ColumnInfo& column : pattern.catalogue().find(table.name)->columns)
            if (old != nullptr && old->column(column.name) != nullptr) shared.columns.push_back(column.name);
        if (!shared.columns.empty()) common.push_back(std::move(shared));
    }
    return common;
}

void CopyRows(jet::Connection& from, const TableColumns& what, jet::BulkLoad& into) {
    std::string names;
    for (const std::string& column : what.columns)
        names += (names.empty() ? "[" : ", [") + column + "]";
    into.Into(what.table, what.columns);
    for (const auto& row : from.OpenRecordset("SELECT " + names + " FROM [" + what.table + "]").GetRows())
        into.Add(row);
}

/// Makes the file anew beside it. Throws jet::Error.
void MakeFromTemplate(const QString& templateFile, jet::Connection& old, const std::vector<TableColumns>& tables,
                      const QString& made) {
    if (!CopyFileOver(templateFile, made))
        throw jet::Error(jet::ErrorNumber::ReadOnly, "The template can't be copied to " + made.toStdString());
    jet::BulkLoad load(made.toStdString());
    for (const TableColumns& table : tables)
        CopyRows(old, table, load);
    load.Finish();
}

void BringUpToDate(const QString& path, std::shared_ptr<jet::Connection> old) {
    const QString templateFile = TemplateFile(FileName);
    if (!FileExists(templateFile)) return;
    const auto pattern = Open(templateFile);
    if (HasAllDeclarationsOf(*old, *pattern)) return;
    ClearUnfinished(path);
    const QString made = UnfinishedName(path);
    const bool whole = ErrorTrap("LocalizeApp").Try([&] {
        MakeFromTemplate(templateFile, *old, CommonColumns(*old, *pattern), made);
    });
    old.reset();
    const bool replaced = whole && PutInPlace(made, path);
    QFile::remove(made);
    LogNote(QStringLiteral("%1 is of an earlier version; it %2")
                .arg(path, replaced ? QStringLiteral("was made anew with its rows")
                                    : QStringLiteral("can't be made anew and stays as it is")));
}

} // namespace

void SettleSelectionFile() {
    const QString path = FindPath(JoinPath({CacheFolder, FileName}));
    if (!FileExists(path)) return;
    std::shared_ptr<jet::Connection> file;
    try {
        file = Open(path);
    } catch (const jet::Error& error) {
        if (error.number() == jet::ErrorNumber::NotADatabase || error.number() == jet::ErrorNumber::WrongPassword)
            PutAside(path);
        return;
    }
    ErrorTrap("LocalizeApp").Try([&] { BringUpToDate(path, std::move(file)); });
}

} // namespace tessaro
