#include "wizards/SaveStep.h"

#include "controls/ArrowPointer.h"
#include "platform/Paths.h"
#include "session/Frame.h"
#include "session/Strings.h"
#include "wizards/frmSaveGalleryAdvance.h"

namespace tessaro {

bool SaveToGallery(const FinishedPresentation& finished, QWidget* parent) {
    constexpr int kToldMilliseconds = 10000;
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
            kToldMilliseconds);
    return form.CloseStatus() == 1;
}

} // namespace tessaro
