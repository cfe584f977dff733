#include "formats/ValueFile.h"

#include "platform/Rights.h"

namespace tessaro {

bool ValueFile::Finish() {
    if (!good_ || !file_.commit()) return false;
    GiveUsersRights(file_.fileName());
    return true;
}

} // namespace tessaro
