#pragma once

#include <QString>

namespace jet {
class Connection;
}

namespace tessaro::test {

/// Writes all tables of a database of ours as a genuine Jet 4 file: header, one usage map page, the catalogue, and for
/// each table its definition and one page of rows. Enough for a reader; tables must fit a page (4096 bytes) each.
void WriteJetFile(const QString& path, jet::Connection& source);

} // namespace tessaro::test
