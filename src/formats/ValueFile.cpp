#include "formats/ValueFile.h"

#include "platform/Rights.h"

namespace tessaro {

// A commit doesn't look at what was still waiting to be written: the disk may be full by then.
bool ValueFile::Finish(const std::vector<NewFile>& beside) {
    if (!good_ || !file_.flush() || !ReplaceFiles(beside) || !file_.commit()) return false;
    GiveUsersRights(file_.fileName());
    return true;
}

} // namespace tessaro
