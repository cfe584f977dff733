#pragma once

namespace tessaro {

struct CommandTargets;
struct FrontState;

enum class MenuKind { Menu, Command, Checked, Separator };

/// A line of the menus: all that is known of it stands here.
struct MenuRow {
    const char* parent; ///< name of the menu that holds it; empty for the bar
    const char* name;
    const char* key; ///< of its caption
    MenuKind kind;
    /// What choosing it does; null for an entry of a part that does not exist yet, which can't be chosen and says so.
    void (*command)(const CommandTargets& on, bool checked) = nullptr;
    /// Whether it can be chosen now; null for always.
    bool (*offered)(const FrontState& front) = nullptr;
    const char* picture = "";
    const char* shortcut = "";
};

} // namespace tessaro
