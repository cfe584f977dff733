#include "controls/ArrowPointer.h"
#include "gallery/frmSaveGalleryAdvance.h"
#include "platform/Paths.h"
#include "presentation/frmGraphWizard.h"
#include "presentation/frmTableWizard.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "shell/frmMain.h"

namespace tessaro {

namespace {

constexpr int kSavedMilliseconds = 10000;

/// The last step of the presentation wizards.
bool SaveToGallery(const FinishedPresentation& finished, QWidget* parent) {
    frmSaveGalleryAdvance form(parent);
    form.SetPresentationType(finished.PresentationType);
    form.SetSourceFile(finished.SourceFile);
    form.SetFileTitle(finished.FileTitle);
    form.SetFormCaption(finished.FormCaption);
    {
        const ArrowPointer arrow;
        form.exec();
    }
    if (!form.SavedFile().isEmpty())
        TheFrame().ShowStatusTextFor(
            GetText(QStringLiteral("TS_Exported")).replace(QStringLiteral("%1"), FileNameOf(form.SavedFile())),
            kSavedMilliseconds);
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
