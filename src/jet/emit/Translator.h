#pragma once

#include "jet/emit/Translation.h"

#include <string_view>

namespace jet {

/// Translates one Jet statement: lexer, parser, name resolution, SQLite text. Throws Error (SyntaxError, NoSuchTable,
/// NoSuchColumn, AlreadyExists). Functions of the dialect become calls of jet_<name in lower case>, see Functions.h.
/// Of the rewrites (Rewrites.h) those named in `leftOut` are not taken.
[[nodiscard]] Translation Translate(std::string_view sql, const Catalogue& catalogue, const LeftOutSteps& leftOut = {});

} // namespace jet
