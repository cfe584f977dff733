#include "map/output/KeptMapData.h"

#include "office/Error.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro {

namespace {

bool PutBack() {
    return Execute(QStringLiteral("DELETE * FROM _MapData")) &&
           Execute(QStringLiteral("INSERT INTO _MapData SELECT * FROM _MapDataKept"));
}

} // namespace

KeptMapData::KeptMapData() {
    const ErrorTrap trap("KeptMapData");
    Execute(QStringLiteral("DROP TABLE _MapDataKept")); // mostly there is none
    if (!Execute(QStringLiteral("SELECT * INTO _MapDataKept FROM _MapData")))
        throw office::Error(office::Failure::Call, QStringLiteral("the values of the map can't be kept"));
}

KeptMapData::~KeptMapData() {
    ErrorTrap trap("KeptMapData");
    if (!Connection || !trap.Try([] { Connection->Begin(); })) return;
    if (PutBack() && trap.Try([] { Connection->Commit(); }))
        Execute(QStringLiteral("DROP TABLE _MapDataKept"));
    else
        trap.Try([] { Connection->Rollback(); });
}

} // namespace tessaro
