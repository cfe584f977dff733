#pragma once

#include <QFocusEvent>
#include <QWidget>

namespace tessaro {

/// The panel of one option of the data view's strip, as frmData sees it.
class DataPanel : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

    /// The panel comes into view, or its stage does.
    virtual void Enter() {}
    /// Asked before another option is shown; False (after a message) keeps this one.
    [[nodiscard]] virtual bool MayLeave() { return true; }
    /// Another option is shown.
    virtual void Leave() {}
    /// The selection has changed: all options are back at their start.
    virtual void Reset() {}
    virtual void SetFormCaptions() {}
    /// The common commands while the panel is shown.
    virtual void SelectAll() {}
    virtual void Copy() {}
    virtual void Find() {}

  protected:
    /// The control that gets the focus of the panel. No focus proxy, for Tab would pass over what stands before it.
    void SetFirstControl(QWidget* control) { first_ = control; }
    void focusInEvent(QFocusEvent* event) override {
        if (first_) first_->setFocus(event->reason());
    }

  Q_SIGNALS:
    /// What the panel decides about has changed; the rows must be queried again.
    void Changed();
    /// The rows in view are to be printed.
    void PrintWanted();
    /// The information sheet of a source is to be shown.
    void InformationWanted(const QString& sourceNId);

  private:
    QWidget* first_ = nullptr;
};

} // namespace tessaro
