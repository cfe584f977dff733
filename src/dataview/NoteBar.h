#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace tessaro {

/// A line above the rows that says what they don't show and why, with a button if something can be done about it. It is
/// hidden while there is nothing to say.
class NoteBar final : public QFrame {
    Q_OBJECT

  public:
    explicit NoteBar(QWidget* parent = nullptr);

    /// Shows a text, with a button of this caption's key when there is one; an empty text hides the line.
    void Say(const QString& text, const QString& buttonKey = {});
    [[nodiscard]] QString Text() const;

  Q_SIGNALS:
    void Pressed();

  private:
    QLabel* lblNote_;
    QPushButton* cmdNote_;
};

} // namespace tessaro
