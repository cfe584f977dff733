#pragma once

class QApplication;

namespace tessaro::theme {

/// Style, palette and base font of the application.
void Apply(QApplication& application);

} // namespace tessaro::theme
