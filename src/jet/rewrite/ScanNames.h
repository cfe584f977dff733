#pragma once

#include <cstddef>
#include <string>

namespace jet {

/// A figure of the groups as the statement names it.
[[nodiscard]] inline std::string ScanFigureName(std::size_t figure) {
    return "jet$a" + std::to_string(figure);
}
/// A field of a side as the statement names it.
[[nodiscard]] inline std::string ScanFieldName(std::size_t field) {
    return "jet$x" + std::to_string(field);
}

} // namespace jet
