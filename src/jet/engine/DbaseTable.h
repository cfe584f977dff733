#pragma once

#include "jet/engine/Recordset.h"

#include <string>

namespace jet {

/// Writes the rows from the current one on, which can be moved over twice, as a dBase IV table (UTF-8, with a .cpg file
/// beside it), as SELECT … INTO [dBase IV;database=folder].name.dbf asks. Field names are cut to 10 characters and kept
/// distinct; text and memo fields hold 254 bytes, longer text is cut at a whole character; whole numbers are N(11),
/// wider where they need it, doubles N(20,5) with more decimals in the text where they need them, yes/no L. Gives the
/// number of rows. Throws Error and leaves no file: AlreadyExists when the file is there, TypeMismatch for a number
/// that no field holds, EngineError when the table can't be made or written.
std::int64_t WriteDbaseTable(const std::string& file, Recordset& rows);

} // namespace jet
