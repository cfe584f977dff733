#include "gallery/frmSaveGalleryAdvance.h"
#include "presentation/frmGraphWizard.h"
#include "presentation/frmTableWizard.h"
#include "session/TempFiles.h"
#include "shell/frmMain.h"

namespace tessaro {

namespace {

/// The last step of the presentation wizards.
bool SaveToGallery(const FinishedPresentation& finished, QWidget* parent) {
    frmSaveGalleryAdvance form(parent);
    form.SetPresentationType(finished.PresentationType);
    form.SetSourceFile(finished.SourceFile);
    form.SetFileTitle(finished.FileTitle);
    form.SetFormCaption(finished.FormCaption);
    form.exec();
    return form.CloseStatus() == 1;
}

} // namespace

bool frmMain::OffersPresentation(QChar type) const {
    return type == QLatin1Char('T') || type == QLatin1Char('G');
}

void frmMain::StartPresentation(QChar type) {
    if (type == QLatin1Char('T'))
        frmTableWizard(SaveToGallery, this).exec();
    else if (type == QLatin1Char('G'))
        frmGraphWizard(SaveToGallery, this).exec();
    ClearTempFolder();
}

} // namespace tessaro
