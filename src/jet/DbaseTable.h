#pragma once

#include "jet/Recordset.h"

#include <string>

namespace jet {

/// Writes the rows from the current one on as a dBase IV table (UTF-8, with a .cpg file beside it), as SELECT … INTO
/// [dBase IV;database=folder].name.dbf asks. Field names are cut to 10 characters and kept distinct; text and memo
/// fields hold 254 bytes, longer text is cut at a whole character; whole numbers are N(11), doubles N(20,5), yes/no L.
/// Gives the number of rows. Throws Error (AlreadyExists when the file is there, EngineError when it can't be made or
/// written).
std::int64_t WriteDbaseTable(const std::string& file, Recordset& rows);

} // namespace jet
