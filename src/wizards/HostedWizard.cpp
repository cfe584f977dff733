#include "wizards/HostedWizard.h"

#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QStackedWidget>

namespace tessaro {

HostedWizard::HostedWizard(SavePresentation save, QWidget* parent)
    : WizardFrame(parent), save_(std::move(save)), fraExcel_(new OfficeHost(this)) {
    fraExcel_->setObjectName(QStringLiteral("fraExcel"));
}

void HostedWizard::StartSpreadsheet() {
    office::SpreadsheetApplication::Instance().StartInAdvance();
    if (OfficeHost::CanHost()) office::SpreadsheetApplication::Hosted().StartInAdvance();
}

void HostedWizard::ForgetWorkbook() {
    if (!workbookFile_.isEmpty()) QFile::remove(workbookFile_);
    workbookFile_.clear();
}

void HostedWizard::ShowPreview(const QString& file, const QString& suggestedName) {
    workbookFile_ = file;
    suggestedName_ = suggestedName;
    ClearProgress();
    // The place has to be in sight before another program's window can lie in it.
    for (QWidget* page = fraExcel_; page != this; page = page->parentWidget())
        if (auto* pages = qobject_cast<QStackedWidget*>(page->parentWidget())) pages->setCurrentWidget(page);
    fraExcel_->SetHint(GetText(QStringLiteral("TS_OfficeOpening")));
    repaint();
    fraExcel_->SetToolBars(isMaximized());
    fraExcel_->ShowWorkbook(workbookFile_);
}

void HostedWizard::ClosePreview(bool save) {
    fraExcel_->CloseHostedExcel(save);
}

bool HostedWizard::SaveAs(QChar presentationType, int step) {
    if (fraExcel_->IsOpen() && !fraExcel_->Save()) {
        ShowMessage(fraExcel_->ErrorText(), MessageType::Ok, MessageIcon::Note, {}, false);
        return false;
    }
    const QString title = suggestedName_.isEmpty() ? QFileInfo(workbookFile_).completeBaseName() : suggestedName_;
    return save_ && save_({presentationType, workbookFile_, title, StepCaption(step)}, this);
}

void HostedWizard::EndWizard() {
    ClosePreview();
}

void HostedWizard::changeEvent(QEvent* event) {
    WizardFrame::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) fraExcel_->SetToolBars(isMaximized());
}

} // namespace tessaro
