#pragma once

#include "jet/engine/Connection.h"
#include "office/CellStyle.h"

#include <QString>
#include <QStringList>

#include <vector>

/// The tables of the database summary report.
namespace tessaro {

/// A sheet of the summary report.
struct ReportTable {
    QString name;
    QStringList heads;
    office::Block rows;
};

/// The sixteen tables in their order, read on a connection to the database itself; number from 1.
[[nodiscard]] ReportTable ReadReportTable(int number, jet::Connection& database);
/// Heads and rows of a log: file, action, time, user.
[[nodiscard]] ReportTable ReadLogTable(bool ofTemplates, jet::Connection& database);

} // namespace tessaro
