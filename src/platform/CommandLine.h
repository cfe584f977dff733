#pragma once

#include <QString>

/// Reads the switches of the command line.
namespace tessaro {

/// What a switch's value may name, for the cut of a final separator.
enum class SwitchAttribute { None, Directory };

/// The value of a switch: what stands from the second character after the switch's start up to the next "/" or the end
/// of the line, trimmed. The switch is found in any case, the value keeps its own. With Directory, and when a folder of
/// that name exists, a final "\" is cut off. Empty when the line is blank or lacks the switch.
[[nodiscard]] QString CommandLineValue(const QString& line, const QString& switchName,
                                       SwitchAttribute attribute = SwitchAttribute::None);
/// The arguments of the running program as one line.
[[nodiscard]] QString CommandLine();

} // namespace tessaro
