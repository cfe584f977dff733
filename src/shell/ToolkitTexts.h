#pragma once

#include <QTranslator>

namespace tessaro {

/// The texts of the toolkit's own windows (files, colours, fonts, printing, the popups of text fields) in the language
/// of the session, for as long as the object lives. They come with the toolkit, not with the language files.
class ToolkitTexts final {
  public:
    /// Takes the language of the session into use. One that the toolkit has no texts for leaves them in English; the
    /// log says so.
    void Load();

  private:
    QTranslator translator_;
};

} // namespace tessaro
