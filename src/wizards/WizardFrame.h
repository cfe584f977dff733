#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QAbstractButton;
class QLabel;

namespace Ui {
class WizardFrame;
}

namespace tessaro {

/// What all wizards have in common: pages of which one is shown, the names of the steps above it, the buttons Back,
/// Next, Finish and Cancel that stay where they are, a line of status and two progress bars. The caption tells title,
/// step and page. A wizard only says what happens between its steps.
class WizardFrame : public QDialog {
    Q_OBJECT

  public:
    /// Step once the wizard is done.
    static constexpr int kDoneStep = 65535;

    explicit WizardFrame(QWidget* parent = nullptr);
    ~WizardFrame() override;

    /// From 1.
    [[nodiscard]] int Step() const { return step_; }
    [[nodiscard]] int StepCount() const { return static_cast<int>(pageKeys_.size()); }

    void CmdNext_Click();
    void CmdBack_Click();
    /// Goes forward until a step wants something of the user; on the last step, finishes.
    void CmdFinish_Click();
    /// Asks before everything is given up.
    void CmdCancel_Click();
    /// Escape and the window's own button are Cancel.
    void reject() override { CmdCancel_Click(); }

  protected:
    void SetTitle(const QString& title);
    /// A step with its page and the key of its name. Without a page it is a step that is done in a window of its own.
    void AddStep(QWidget* page, const QString& nameKey);
    /// A button of the wizard's own, at the left of the bottom row.
    void AddButton(QAbstractButton* button);
    /// Shows the first step.
    void Begin();
    /// Caption and buttons again; `nameKey` stands for the page's own name while a panel covers it.
    void ShowStep(const QString& nameKey = {});
    /// " - Step 2 of 4 - " and the name of a page, behind the title.
    [[nodiscard]] QString StepCaption(int step, const QString& nameKey = {}) const;
    void SetStatus(const QString& text);
    void SetMainProgress(int percent);
    void SetChildProgress(int percent);
    void ClearProgress();
    /// Shows a dialog, with an arrow instead of the wait cursor; gives its result.
    static int ShowDialog(QDialog& dialog);
    /// While a panel covers the page the way back and forth is closed.
    void SetWayOpen(bool open);

    /// Leaves the step before `step`: False, and the wizard stays. The wait cursor is on meanwhile.
    [[nodiscard]] virtual bool GoForward(int step) = 0;
    /// Leaves a step backwards for the one before it.
    virtual void GoBack(int /*left*/, int /*entered*/) {}
    /// A page has come to the front, by whatever way.
    virtual void PageShown(int /*step*/) {}
    /// What takes time when the wizard opens: called once, after the first paint of its window, with the wait cursor
    /// and closed to clicks.
    virtual void Start() {}
    /// Finish on the last step: True, and the wizard is over. Not for a last step in a window of its own.
    [[nodiscard]] virtual bool Finish() { return false; }
    /// True when Finish may be used on the step that is shown.
    [[nodiscard]] virtual bool MayFinish() const { return true; }
    /// True when Next may be used on the step that is shown.
    [[nodiscard]] virtual bool MayGoForward() const { return true; }
    /// The key of the question that Cancel asks; empty: none is asked.
    [[nodiscard]] virtual QString CancelQuestion() const { return QStringLiteral("007"); }
    /// Whatever way the wizard ends.
    virtual void EndWizard() {}
    void done(int result) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool Forward();
    void RunStart();
    void EnterStep(int step);
    void MarkStep(int step, const QString& nameKey = {});

    std::unique_ptr<Ui::WizardFrame> ui_;
    QString title_;
    QStringList pageKeys_;
    QList<QWidget*> pages_;
    QList<QLabel*> trail_;
    int step_ = 0;
    bool wayOpen_ = true;
    bool busy_ = false;
    bool painted_ = false;
};

} // namespace tessaro
