#pragma once

namespace tessaro {

/// Sets the time limit of calls to the spreadsheet program for a sheet of so many values: longer for many. 0 sets it
/// back.
void GiveTimeFor(int values);

} // namespace tessaro
