#include "wizards/frmSaveGalleryAdvance.h"

#include "controls/Captions.h"
#include "controls/EmptyHint.h"
#include "controls/FileDialogs.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Presentations.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "ui_frmSaveGalleryAdvance.h"

#include <QFile>

namespace tessaro {

frmSaveGalleryAdvance::frmSaveGalleryAdvance(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmSaveGalleryAdvance>()) {
    ui_->setupUi(this);
    SetFormCaptions();
    ui_->CmdNext->setEnabled(false); // this is the last step
    connect(ui_->cmdBrowse, &QPushButton::clicked, this, &frmSaveGalleryAdvance::cmdBrowse_Click);
    connect(ui_->CmdBack, &QPushButton::clicked, this, &frmSaveGalleryAdvance::CmdBack_Click);
    connect(ui_->CmdFinish, &QPushButton::clicked, this, &frmSaveGalleryAdvance::CmdFinish_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &frmSaveGalleryAdvance::CmdCancel_Click);
    const auto take = [this](const QListWidgetItem* item) { ui_->txtPresentationName->setText(item->text()); };
    connect(ui_->lstPresentations, &QListWidget::itemClicked, this, take);
    connect(ui_->lstPresentations, &QListWidget::itemActivated, this, take);
}

frmSaveGalleryAdvance::~frmSaveGalleryAdvance() = default;

void frmSaveGalleryAdvance::SetFormCaptions() {
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("SAVE_PRES"))); // until the wizard says more
    SetCaption(ui_->lblGallLocation, QStringLiteral("GALLERY Location"));
    SetCaption(ui_->lblPresentationName, QStringLiteral("GALLERY PPT Name"));
    SetCaption(ui_->lblPresentations, QStringLiteral("Available Presentations"));
    SetCaption(ui_->cmdBrowse, QStringLiteral("BROWSE"));
    SetCaption(ui_->CmdBack, QStringLiteral("Comm_Back"));
    SetCaption(ui_->CmdNext, QStringLiteral("COMM_NEXT"));
    SetCaption(ui_->CmdFinish, QStringLiteral("Comm_Save"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ShowWhenEmpty(ui_->lstPresentations, PlainText(QStringLiteral("TS_GalleryEmpty")));
    ui_->lblPresentationName->setBuddy(ui_->txtPresentationName);
    ui_->txtPresentationName->setAccessibleName(PlainText(QStringLiteral("GALLERY PPT Name")));
    ui_->txtGallLocation->setAccessibleName(PlainText(QStringLiteral("GALLERY Location")));
    ui_->lstPresentations->setAccessibleName(PlainText(QStringLiteral("Available Presentations")));
    // Names are written in the product's own language unless the user works in another one.
    if (Language.contains(QLatin1String("[en]"), Qt::CaseInsensitive)) ui_->txtPresentationName->setFont(DefaultFont());
}

void frmSaveGalleryAdvance::Initialize() {
    const ErrorTrap trap("Initialize");
    initialized_ = true;
    ui_->txtGallLocation->setText(GalleryFolder());
    ui_->txtPresentationName->setText(fileTitle_);
    ui_->txtPresentationName->selectAll();
    ui_->txtPresentationName->setFocus();
    GetPresentationsFromGallery();
}

void frmSaveGalleryAdvance::showEvent(QShowEvent* event) {
    if (!initialized_) Initialize();
    QDialog::showEvent(event);
}

void frmSaveGalleryAdvance::GetPresentationsFromGallery() {
    ui_->lstPresentations->clear();
    ui_->lstPresentations->addItems(PresentationsOf(ui_->txtGallLocation->text()));
}

void frmSaveGalleryAdvance::cmdBrowse_Click() {
    const QString folder =
        AskForFolder(this, {GetText(QStringLiteral("Locate Gallery Folder")), ui_->txtGallLocation->text(), {}});
    if (folder.isEmpty()) return;
    SetGalleryFolder(folder);
    ui_->txtGallLocation->setText(folder);
    GetPresentationsFromGallery();
}

void frmSaveGalleryAdvance::RefuseName() {
    ShowMessage(QStringLiteral("037"));
    ui_->txtPresentationName->setFocus();
}

bool frmSaveGalleryAdvance::MayReplace(const QString& target) {
    if (!FileExists(target)) return true;
    if (AskBeforeLoss(QStringLiteral("285")) == MessageCode::Yes) return true;
    ui_->txtPresentationName->setFocus();
    return false;
}

void frmSaveGalleryAdvance::CmdFinish_Click() {
    const ErrorTrap trap("CmdFinish_Click");
    const QString name = ui_->txtPresentationName->text().trimmed();
    if (!IsPresentationName(name)) {
        RefuseName();
        return;
    }
    const QString folder = ui_->txtGallLocation->text();
    if (!FolderExists(folder)) {
        ShowMessage(GetText(QStringLiteral("Select Gallery folder to save in")), MessageType::Ok, MessageIcon::Warning,
                    {}, false);
        return;
    }
    const QString target = PresentationFile(FindPath(folder), type_, name);
    // An old one may be spelt in another case; the new one always ends in ".Xls".
    const QString old = FindPath(target);
    if (!MayReplace(old)) return;
    bool copied = false;
    {
        const WaitPointer hourglass;
        copied = CopyFileOver(sourceFile_, target); // the old file stays until the new one is whole
    }
    if (!copied) {
        ReportError(FileError::NoAccess, QStringLiteral("Path/File access error: ") + target,
                    QStringLiteral("CmdFinish_Click"));
        ShowMessage(QStringLiteral("TS_GalleryFull"));
        return;
    }
    if (old != target) QFile::remove(old);
    savedFile_ = target;
    Close(1);
}

void frmSaveGalleryAdvance::CmdBack_Click() {
    Close(0);
}

void frmSaveGalleryAdvance::CmdCancel_Click() {
    if (AskBeforeLoss(QStringLiteral("006")) == MessageCode::Yes) Close(1);
}

void frmSaveGalleryAdvance::Close(int status) {
    closeStatus_ = status;
    done(status == 1 && !savedFile_.isEmpty() ? QDialog::Accepted : QDialog::Rejected);
}

} // namespace tessaro
