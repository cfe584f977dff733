#pragma once

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
    [[nodiscard]] QString Text() const { return text_; }
    void StartProgress();
    void SetProgress(int percent);
    void EndProgress();

    /// Date and time of now. `asPanels`: as the language writes them; otherwise as plain text in the product's form.
    void ShowNow(bool asPanels);
    void ShowSound(bool muted);
    void SetFormCaptions();

  Q_SIGNALS:
    void SoundPanelClicked();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowText();

    QLabel* lblText_;
    QWidget* Picture1_;
    QProgressBar* PB_Child_;
    QLabel* lblDate_;
    QLabel* lblTime_;
    QToolButton* picSound_;
    QString text_;
};

} // namespace tessaro
