#pragma once

#include "shell/FrameParts.h"

namespace tessaro {

class DatabaseCommands;
class DatabaseOpener;
class SettingsChange;
class StageNavigator;

/// What the commands of the menu table are handed: the parts of the window and the classes that do the work. The frame
/// owns them all.
struct CommandTargets {
    FrameParts parts;
    StageNavigator& stages;
    DatabaseOpener& databases;
    SettingsChange& settings;
    DatabaseCommands& database;
};

} // namespace tessaro
