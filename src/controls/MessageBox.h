#pragma once

#include "session/Messages.h"

#include <QDialog>

#include <vector>

class QWidget;

/// The message box of the program (frmMessage); tests can answer in its place.
namespace tessaro {

/// A button of a message: its caption key and the code that it gives.
struct MessageButton {
    const char* captionKey;
    int code;
};
/// The buttons of a type, in order; the first one answers Enter, the last one that of a careful message.
[[nodiscard]] const std::vector<MessageButton>& ButtonsOf(MessageType type);

/// The window of ShowMessage: a picture by its MessageIcon, the text,
/// and up to three buttons. Texts of keys stand in the language's font, literal ones in the product's. Escape and the
/// window's own closing button give the closing code. The text can be copied (Ctrl+C).
class MessageBox final : public QDialog {
    Q_OBJECT

  public:
    explicit MessageBox(const Message& message, QWidget* parent = nullptr);

    /// Shows the window and waits; gives the code.
    [[nodiscard]] int Ask();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void AddText(const Message& message);
    void AddButtons(const Message& message);

    QString text_;
    int code_;
};

/// Shows a message over the active window.
int AskWithMessageBox(const Message& message);

} // namespace tessaro
