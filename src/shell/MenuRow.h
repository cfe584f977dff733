#pragma once

/// A row of the menu table.
namespace tessaro {

struct CommandTargets;
struct FrontState;

/// When an entry can be chosen.
struct MenuOffer {
    bool (*when)(const FrontState& front);
    const char* whyNotKey; ///< of the text that says why, while it can't
};

enum class MenuKind { Menu, Command, Checked, Separator };

/// One line of the menu table.
struct MenuRow {
    const char* parent; ///< name of the menu that holds it; empty for the bar
    const char* name;
    const char* key; ///< of its caption
    MenuKind kind;
    /// Called when it is chosen. Null for a part of the program that does not exist yet: the entry is disabled then.
    void (*command)(const CommandTargets& on, bool checked) = nullptr;
    const MenuOffer* offered = nullptr; ///< null for always
    const char* picture = "";
    const char* shortcut = "";
};

} // namespace tessaro
