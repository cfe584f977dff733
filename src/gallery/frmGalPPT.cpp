#include "gallery/frmGalPPT.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "platform/Paths.h"
#include "ui_frmGalPPT.h"

namespace tessaro {

frmGalPPT::frmGalPPT(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmGalPPT>()) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("GALLERY Insert")));
    SetCaption(ui_->FrmPPT, QStringLiteral("GALLERY Insert"));
    SetCaption(ui_->optNew, QStringLiteral("Gallery New Ppt"));
    SetCaption(ui_->optOpen, QStringLiteral("GALLERY EXISTING PPT"));
    SetCaption(ui_->cmdBrowse, QStringLiteral("BROWSE"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->txtFileName->setAccessibleName(PlainText(QStringLiteral("GALLERY EXISTING PPT")));
    ui_->optNew->setChecked(true);
    connect(ui_->optNew, &QRadioButton::toggled, this, &frmGalPPT::OfferControls);
    connect(ui_->txtFileName, &QLineEdit::textChanged, this, &frmGalPPT::OfferControls);
    connect(ui_->cmdBrowse, &QPushButton::clicked, this, &frmGalPPT::cmdBrowse_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmGalPPT::accept);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &frmGalPPT::reject);
    OfferControls();
}

frmGalPPT::~frmGalPPT() = default;

bool frmGalPPT::NewPPT() const {
    return ui_->optNew->isChecked();
}

void frmGalPPT::OfferControls() {
    const bool existing = ui_->optOpen->isChecked();
    ui_->txtFileName->setEnabled(existing);
    ui_->cmdBrowse->setEnabled(existing);
    ui_->cmdOK->setEnabled(!existing || !ui_->txtFileName->text().trimmed().isEmpty());
}

void frmGalPPT::cmdBrowse_Click() {
    const QString before = ui_->txtFileName->text();
    const QString file = AskForFile(this, {PlainText(QStringLiteral("GALLERY EXISTING PPT")), FolderOf(before),
                                           PlainText(QStringLiteral("TS_FilterSlides")) + QStringLiteral(" (*.ppt)")});
    if (FileExists(file)) ui_->txtFileName->setText(file);
}

void frmGalPPT::done(int result) {
    fileName_ = result == Accepted && !NewPPT() ? ui_->txtFileName->text().trimmed() : QString();
    QDialog::done(result);
}

} // namespace tessaro
