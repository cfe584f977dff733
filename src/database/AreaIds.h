#pragma once

/// The rule of area ids: so many characters a level, the parent's id being the child's without its last ones.
namespace tessaro::schema {

constexpr int kCharactersPerLevel = 3;
constexpr int kAreaIdWidth = 255; ///< of the column AreaID

} // namespace tessaro::schema
