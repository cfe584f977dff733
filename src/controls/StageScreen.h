#pragma once

#include <QAction>
#include <QList>
#include <QString>
#include <QWidget>

namespace tessaro {

/// One of the four stage screens, as the frame sees it: a widget with a name, its actions and what the common
/// commands mean on it. The frame knows no more of a screen.
class StageScreen : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

    /// "frmIndicators", …: the name in VisitedStages.
    [[nodiscard]] virtual QString FormName() const = 0;
    /// Called each time the stage is shown / left. The data view stops its timer when left.
    virtual void Enter() {}
    virtual void Leave() {}
    /// The common commands: Edit menu, toolbar and shortcuts.
    virtual void SelectAll() {}
    virtual void Copy() {}
    virtual void Find() {}
    virtual void Filter() {}
    virtual void Refresh() {}
    /// Ends a load that is running, which CanStop tells; a change of it is told with SelectionSummaryChanged.
    virtual void Stop() {}
    [[nodiscard]] virtual bool CanStop() const { return false; }
    virtual void Print() {}
    virtual void SaveAs() {}
    /// Whether this screen prints and saves: the frame offers the commands by it.
    [[nodiscard]] virtual bool CanPrint() const { return false; }
    [[nodiscard]] virtual bool CanSaveAs() const { return false; }
    /// True when what the screen shows can be kept as a favourite; otherwise the screen has shown the reason.
    [[nodiscard]] virtual bool MayKeep() { return true; }
    /// Captions again after a change of language, fonts after a change of font.
    virtual void SetFormCaptions() {}
    /// The texts of the database are those of another language from now on; what is chosen is the same.
    virtual void TextsChanged() {}
    /// What is chosen here, in one line, for the banner: "12 indicators"; empty when nothing is.
    [[nodiscard]] virtual QString SelectionSummary() const { return {}; }

  Q_SIGNALS:
    void SelectionSummaryChanged();
};

} // namespace tessaro
