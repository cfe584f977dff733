#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QToolButton;

namespace tessaro {

/// sbStatusBar: a text with the progress meter in it, date, time, and the sound panel; 70, 12, 10 and 8 per cent of the
/// width.
class StatusBar final : public QWidget {
    Q_OBJECT

  public:
    explicit StatusBar(QWidget* parent = nullptr);

    void SetText(const QString& text);
    /// Shows a text for a while, then the one before it again, unless another has been set meanwhile. Doesn't wait.
    void SetTextFor(const QString& text, int milliseconds);
    [[nodiscard]] QString Text() const { return text_; }
    void StartProgress();
    void SetProgress(int percent);
    void EndProgress();

    /// Date and time of now, as the language writes them.
    void ShowNow();
    void ShowSound(bool muted);
    void SetFormCaptions();

  Q_SIGNALS:
    void SoundPanelClicked();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void PutText(const QString& text);
    void ShowText();

    QLabel* lblText_;
    QWidget* Picture1_;
    QProgressBar* PB_Child_;
    QLabel* lblDate_;
    QLabel* lblTime_;
    QToolButton* picSound_;
    QString text_;
    QString textAfter_; ///< comes back when the one that is shown for a while has had its time
    QTimer whileShown_;
};

} // namespace tessaro
