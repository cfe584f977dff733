#pragma once

#include <QTranslator>

namespace tessaro {

/// Qt's own translations (dialogs for files, colours, fonts and printing, popup menus of text fields) in the language
/// of the session, for as long as the object lives.
class ToolkitTexts final {
  public:
    /// Loads the translation of the session's language. Without one the texts stay English, and the log says so.
    void Load();

  private:
    QTranslator translator_;
};

} // namespace tessaro
