#pragma once

/// The rule of area ids: so many characters a level, the parent's id being the child's without its last ones.
namespace tessaro::schema {

constexpr int CharactersPerLevel = 3;
constexpr int AreaIdWidth = 255; ///< of the column AreaID

} // namespace tessaro::schema
