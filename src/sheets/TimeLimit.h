#pragma once

namespace tessaro {

/// Lets calls of the spreadsheet program take longer for many values, until none are told.
void GiveTimeFor(int values);

} // namespace tessaro
