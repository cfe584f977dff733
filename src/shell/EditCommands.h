#pragma once

namespace tessaro {

class StageScreen;

enum class EditCommand { Cut, Copy, Paste, SelectAll };

/// Runs a command of the Edit menu: on the text field that has the focus, otherwise on the screen in front (or null).
/// Copy works on every list and tree, also in dialogs.
void RunEditCommand(EditCommand command, StageScreen* screen);

} // namespace tessaro
