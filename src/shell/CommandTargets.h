#pragma once

#include "shell/FrameParts.h"

namespace tessaro {

class DatabaseCommands;
class DatabaseOpener;
class SettingsChange;
class StageNavigator;

/// What the commands of the menus work on. The frame owns it all.
struct CommandTargets {
    FrameParts parts;
    StageNavigator& stages;
    DatabaseOpener& databases;
    SettingsChange& settings;
    DatabaseCommands& database;
};

} // namespace tessaro
