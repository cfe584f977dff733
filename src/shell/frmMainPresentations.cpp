#include "controls/ArrowPointer.h"
#include "gallery/frmGALMain.h"
#include "gallery/frmSaveGalleryAdvance.h"
#include "platform/Paths.h"
#include "presentation/frmGraphWizard.h"
#include "presentation/frmTableWizard.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "shell/Documents.h"
#include "shell/StageScreens.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"
#include "ui_frmMain.h"

#include <utility>

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

/// The pictures that the product brings for presentations; where there are none, all of its pictures.
QString ImagesFolder() {
    const QString images = JoinPath({AppPath, Setting(QStringLiteral("Presentation Images Folder"))});
    return FilesOf(images).isEmpty() ? JoinPath({AppPath, Setting(QStringLiteral("Common Graphics Folder"))}) : images;
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

void frmMain::ShowGallery(int kind) {
    const ErrorTrap trap("mnu_Gallery_Options_Click");
    if (kind == 2) {
        OpenOutside(FindPath(ImagesFolder()));
        return;
    }
    const QString gallery = JoinPath({AppPath, Setting(QStringLiteral("Gallery Folder"))});
    const QString samples = JoinPath({gallery, QStringLiteral("Samples")});
    if (kind == 1 && FolderExists(samples))
        SetGalleryFolder(samples);
    else if (kind == 0 && FindPath(GalleryCustomFolder) == FindPath(samples))
        SetGalleryFolder(JoinPath({gallery, QStringLiteral("Presentations")}));
    SetStatusText({});
    if (gallery_) return gallery_->GetPresentationsFromGallery();
    if (!splash_) screens_->HideStage(CurrentStage);
    gallery_ = new frmGALMain(ui_->stkChildren);
    ui_->stkChildren->addWidget(gallery_);
    ui_->stkChildren->setCurrentWidget(gallery_);
    ui_->picBanner_1->SetCurrent(navigation::HomePage);
    ui_->picToolBar->SetEnabled(StandardToolBar::Back, true);
    OfferCommands();
    gallery_->Enter();
}

/// Takes the gallery down. False when the user stays with slides that aren't saved, which `mayStay` offers.
bool frmMain::LeaveGallery(bool mayStay) {
    if (!gallery_) return true;
    if (!gallery_->MayLeave(mayStay)) return false;
    frmGALMain* gone = std::exchange(gallery_, nullptr);
    gone->Leave();
    if (splash_)
        ui_->stkChildren->setCurrentWidget(splash_);
    else if (StageScreen* screen = ActiveScreen())
        ui_->stkChildren->setCurrentWidget(screen);
    ui_->stkChildren->removeWidget(gone);
    gone->deleteLater();
    ui_->picToolBar->SetEnabled(StandardToolBar::Back, !splash_ && navigation::BackTarget().has_value());
    OfferCommands();
    return true;
}

void frmMain::ReturnFromGallery() {
    if (splash_)
        GoToHome();
    else
        GoToStage(CurrentStage);
}

} // namespace tessaro
