#include "controls/StageScreen.h"
#include "gallery/frmGALMain.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "shell/OpenOutside.h"
#include "shell/StageBanner.h"
#include "shell/StageNavigator.h"
#include "shell/StandardToolBar.h"
#include "shell/StatusBar.h"
#include "shell/frmSplash.h"

#include <QStackedWidget>

#include <utility>

// The part of StageNavigator that shows and closes the gallery.

namespace tessaro {

namespace {

/// The folder of the product's pictures for presentations; when it is empty, that of all its pictures.
QString ImagesFolder() {
    const QString images = JoinPath({AppPath, Setting(QStringLiteral("Presentation Images Folder"))});
    return FilesOf(images).isEmpty() ? JoinPath({AppPath, Setting(QStringLiteral("Common Graphics Folder"))}) : images;
}

/// Sets the folder in which a kind of the gallery begins.
void SetFolderOf(int kind) {
    const QString gallery = JoinPath({AppPath, Setting(QStringLiteral("Gallery Folder"))});
    const QString samples = JoinPath({gallery, QStringLiteral("Samples")});
    if (kind == 1 && FolderExists(samples))
        SetGalleryFolder(samples);
    else if (kind == 0 && FindPath(GalleryCustomFolder) == FindPath(samples))
        SetGalleryFolder(JoinPath({gallery, QStringLiteral("Presentations")}));
}

} // namespace

void StageNavigator::ShowGallery(int kind) {
    const ErrorTrap trap("mnu_Gallery_Options_Click");
    if (kind == 2) {
        OpenOutside(FindPath(ImagesFolder()));
        return;
    }
    SetFolderOf(kind);
    parts_.status.SetText({});
    if (gallery_) return gallery_->GetPresentationsFromGallery();
    if (!splash_) HideStage();
    gallery_ = new frmGALMain(&parts_.pages);
    parts_.pages.addWidget(gallery_);
    parts_.pages.setCurrentWidget(gallery_);
    parts_.banner.SetCurrent(navigation::kHomePage);
    parts_.toolBar.SetEnabled(StandardToolBar::Back, true);
    Q_EMIT FrontChanged();
    gallery_->Enter();
}

bool StageNavigator::LeaveGallery(bool mayStay) {
    if (!gallery_) return true;
    if (!gallery_->MayLeave(mayStay)) return false;
    frmGALMain* gone = std::exchange(gallery_, nullptr);
    gone->Leave();
    if (splash_)
        parts_.pages.setCurrentWidget(splash_);
    else if (StageScreen* screen = ActiveScreen())
        parts_.pages.setCurrentWidget(screen);
    parts_.pages.removeWidget(gone);
    gone->deleteLater();
    parts_.toolBar.SetEnabled(StandardToolBar::Back, !splash_ && navigation::BackTarget().has_value());
    Q_EMIT FrontChanged();
    return true;
}

void StageNavigator::ReturnFromGallery() {
    if (splash_)
        GoToHome();
    else
        GoToStage(CurrentStage);
}

} // namespace tessaro
