#pragma once

#include <QAbstractButton>
#include <QWidget>

#include <array>

/// The banner with the four stage buttons.
namespace tessaro {

/// The state of a step: still to do, on the screen, or done (something is selected in it).
enum class StepState { Next, Current, Done };

/// One of picBannerButtons: the button of a stage, with its picture, its name and a summary of what is selected.
class StageButton final : public QAbstractButton {
    Q_OBJECT

  public:
    StageButton(int stage, QWidget* parent);

    void SetState(StepState state);
    [[nodiscard]] StepState State() const { return state_; }
    void SetSummary(const QString& summary);
    [[nodiscard]] QString Summary() const { return summary_; }
    /// Hides the summary, without forgetting it, or shows it again; also for screen readers.
    void ShowSummary(bool shown);
    void SetFormCaptions();
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void PaintPlace(class QPainter& painter) const;
    void PaintMark(class QPainter& painter, const QRect& circle) const;
    void PaintTexts(class QPainter& painter, const QRect& place) const;
    void Describe();

    int stage_;
    StepState state_ = StepState::Next;
    QString caption_;
    QString summary_;
    bool summaryShown_ = true;
};

/// picBanner item 1: the four stages side by side. Shown while a database is in use.
class StageBanner final : public QWidget {
    Q_OBJECT

  public:
    explicit StageBanner(QWidget* parent = nullptr);

    [[nodiscard]] StageButton* Button(int stage) const { return buttons_.at(static_cast<std::size_t>(stage)); }
    /// Marks the stage on the screen; navigation::HomePage for none.
    void SetCurrent(int stage);
    /// One line on what is selected in a stage; empty for nothing. A stage with a summary is marked as done.
    void SetSummary(int stage, const QString& summary);
    void ClearSummaries();
    void SetFormCaptions();

  Q_SIGNALS:
    void Pressed(int stage);

  private:
    void ShowStates();

    std::array<StageButton*, 4> buttons_{};
    int current_ = -1;
};

} // namespace tessaro
