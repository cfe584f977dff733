#include "calculate/frmCalculates.h"
#include "map/wizard/frmMapWizard.h"
#include "presentation/frmGraphWizard.h"
#include "presentation/frmTableWizard.h"
#include "session/TempFiles.h"
#include "shell/DatabaseOpener.h"
#include "shell/frmMain.h"
#include "wizards/SaveStep.h"

#include <QTimer>

namespace tessaro {

bool frmMain::OffersCalculation(int calcType) const {
    return calcType >= 0 && calcType < kCalculations;
}

void frmMain::StartCalculation(int calcType) {
    if (!OffersCalculation(calcType)) return;
    QString result;
    {
        frmCalculates wizard(static_cast<CalcType>(calcType), this);
        wizard.exec();
        if (wizard.OpensResult()) result = wizard.BuiltFile();
    }
    // Once the data view has come back from its own event: it goes with the database that it shows.
    if (!result.isEmpty()) QTimer::singleShot(0, this, [this, result] { Databases().LoadNewMDB(result); });
}

bool frmMain::OffersPresentation(QChar type) const {
    return type == QLatin1Char('T') || type == QLatin1Char('G') || type == QLatin1Char('M');
}

void frmMain::StartPresentation(QChar type) {
    if (type == QLatin1Char('T'))
        frmTableWizard(SaveToGallery, this).exec();
    else if (type == QLatin1Char('G'))
        frmGraphWizard(SaveToGallery, this).exec();
    else if (type == QLatin1Char('M'))
        frmMapWizard(SaveToGallery, this).exec();
    ClearTempFolder();
}

} // namespace tessaro
