#include "presentation/frmGraphWizard.h"
#include "presentation/frmTableWizard.h"
#include "session/TempFiles.h"
#include "shell/frmMain.h"
#include "wizards/SaveStep.h"

namespace tessaro {

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
