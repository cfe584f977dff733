#include "database/NewGId.h"

#include "session/ErrorSink.h"
#include "session/Query.h"

namespace tessaro {

QString NewGId(jet::Connection* connection) {
    if (connection == nullptr || !connection->isOpen()) return {};
    const ErrorTrap trap("NewGId");
    Execute(QStringLiteral("DELETE * FROM [GUId]"), connection);
    Execute(QStringLiteral("INSERT INTO [GUId] (GUIdText) VALUES('s')"), connection);
    const Records rows = Select(QStringLiteral("SELECT [GUId] FROM [GUId]"), jet::CursorType::Static, connection);
    return rows.isOpen() && !rows.atEnd() ? rows.Text(std::size_t{0}) : QString();
}

} // namespace tessaro
