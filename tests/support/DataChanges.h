#pragma once

class QString;

namespace tessaro::test {

/// Runs a statement on the session's tables, also on those of the data database, which the program itself only reads.
/// Throws jet::Error.
void ChangeData(const QString& sql);

} // namespace tessaro::test
