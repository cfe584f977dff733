#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "gallery/PresentationPicture.h"
#include "gallery/TableSlides.h"
#include "gallery/frmGALMain.h"
#include "gallery/frmGalPPT.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "ui_frmGALMain.h"

#include <QFileInfo>
#include <QLocale>
#include <QShortcut>

// The slides: what is shown is copied to a slide of a presentation in the pane beside it.

namespace tessaro {

namespace {

constexpr int kMostSlides = 30; ///< made at once of one table
const QString kExtension = QStringLiteral(".ppt");

/// Runs a call into the slides program; false after its failure has been shown.
template <class Call> bool Managed(const char* procedureName, Call&& call) {
    const WaitPointer wait;
    try {
        call();
        return true;
    } catch (const office::Error& error) {
        ShowOfficeError(error, procedureName);
        return false;
    }
}

} // namespace

void frmGALMain::ConnectSlides() {
    connect(ui_->cmdCopyToPPT, &QPushButton::clicked, this, &frmGALMain::cmdCopyToPPT_Click);
    connect(ui_->cmdSavePPT, &QPushButton::clicked, this, &frmGALMain::SavePPT);
    connect(ui_->cmdSavePPTAs, &QPushButton::clicked, this, &frmGALMain::SavePPTAs);
    connect(ui_->cmdClosePPT, &QPushButton::clicked, this, [this] { QuitPPT(); });
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this, [this] {
        if (ui_->PicPPT->IsOpen()) SavePPT();
    });
    connect(ui_->PicPPT, &OfficeHost::SaveWanted, this, [this](bool asNew) { asNew ? SavePPTAs() : SavePPT(); });
    connect(ui_->PicPPT, &OfficeHost::Lost, this, [this] {
        copied_ = false;
        ShowPPTState();
        OfferCommands();
    });
}

void frmGALMain::ShowPPTState() {
    SetCaption(ui_->cmdCopyToPPT,
               copied_ ? QStringLiteral("GALLERY CLOSE PPT") : QStringLiteral("GALLERY Copy To PPT"));
    const QString name =
        pptFile_.isEmpty() ? PlainText(QStringLiteral("TS_SlidesUnnamed")) : QFileInfo(pptFile_).fileName();
    const QString caption =
        PlainText(QStringLiteral("TS_SlidesCaption")).replace(QStringLiteral("%1"), InOnePiece(name));
    ui_->lblPPT->setText(caption);
    ui_->lblPPT->setToolTip(pptFile_.isEmpty() ? caption : pptFile_);
    for (QPushButton* save : {ui_->cmdSavePPT, ui_->cmdSavePPTAs})
        save->setEnabled(ui_->PicPPT->IsOpen());
}

bool frmGALMain::AskForSlides(QString& file) {
    frmGalPPT form(this);
    if (form.exec() != QDialog::Accepted) return false;
    file = form.NewPPT() ? QString() : form.GetPPTFileName();
    return true;
}

void frmGALMain::cmdCopyToPPT_Click() {
    const ErrorTrap trap("cmdCopyToPPT_Click");
    if (copied_) {
        QuitPPT();
        return;
    }
    if (opening_ || !ui_->PicExcel->xlBook().IsOpen()) return;
    QString file;
    if (!ui_->PicPPT->IsOpen() && !AskForSlides(file)) return;
    const QList<QByteArray> pictures = CopyPresentation();
    if (pictures.isEmpty() || !ShowPPT(file.isEmpty(), file)) return;
    copied_ = Managed("InsertSlide_PasteClipboard", [&] {
        for (const QByteArray& picture : pictures)
            InsertSlide_PasteClipboard(picture);
    });
    ui_->PicPPT->TakeKeyboard();
    ShowPPTState();
    OfferCommands();
}

/// What goes to slides, a picture for each; nothing after its failure has been shown, or when the user gives up.
QList<QByteArray> frmGALMain::CopyPresentation() {
    const office::Workbook& book = ui_->PicExcel->xlBook();
    QList<QByteArray> pictures;
    QChar kind;
    SlidePlan plan;
    const bool looked = Managed("CopyPresentation", [&] {
        kind = KindToCopy(book, currentPresentation_);
        if (kind == QLatin1Char('T')) plan = PlanSlides(SizesOf(book.ActiveSheet()));
    });
    const int parts = looked ? AskForParts(plan.Count()) : 0;
    if (parts == 0) return pictures;
    Managed("CopyPresentation", [&] {
        if (parts > 1)
            pictures = PicturesOfTable(book, plan);
        else
            pictures << PictureOfPresentation(book, kind);
    });
    return pictures;
}

/// Over how many slides a large table goes: the number it needs, one, or none when the user gives up.
int frmGALMain::AskForParts(int needed) {
    if (needed < 2) return 1;
    if (needed > kMostSlides) {
        const QString text = GetText(QStringLiteral("TS_TooLongTable"))
                                 .replace(QStringLiteral("%1"), QLocale().toString(needed))
                                 .replace(QStringLiteral("%2"), QLocale().toString(kMostSlides));
        return ShowMessage(text, MessageType::YesNo, MessageIcon::Question, {}, false) == MessageCode::Yes ? 1 : 0;
    }
    const QString text =
        GetText(QStringLiteral("TS_LongTable")).replace(QStringLiteral("%1"), QLocale().toString(needed));
    const int answer = ShowMessage(text, MessageType::YesNoCancel, MessageIcon::Question, {}, false);
    return answer == MessageCode::Yes ? needed : answer == MessageCode::Cancel ? 0 : 1;
}

/// Makes sure that slides are open: those that are open are used, otherwise new ones or the file are opened.
bool frmGALMain::ShowPPT(bool newPresentation, const QString& file) {
    if (ui_->PicPPT->IsOpen()) return true;
    const WaitPointer wait;
    if (!ui_->framePPT->isVisible()) {
        // Half of the room of the workbook.
        const int room = ui_->SSSplitter2->width();
        ui_->framePPT->show();
        ui_->SSSplitter2->setSizes({room / 2, room / 2});
    }
    pptFile_ = file;
    ui_->PicPPT->SetToolBars(true);
    const bool open = ui_->PicPPT->ShowSlides(file);
    if (open && newPresentation) CreateNewPresentation();
    if (!open) {
        const QString reason = ui_->PicPPT->ErrorText();
        ClosePPT();
        ShowMessage(reason, MessageType::Ok, MessageIcon::Note, {}, false);
    }
    ShowPPTState();
    return open;
}

// A new presentation has an empty slide, which is replaced by the slide of the first picture.
void frmGALMain::CreateNewPresentation() {
    emptyFirst_ = true;
}

void frmGALMain::InsertSlide_PasteClipboard(const QByteArray& picture) {
    office::SlideShow& slides = ui_->PicPPT->Slides();
    int number = slides.AppendPictures({picture});
    if (std::exchange(emptyFirst_, false)) {
        slides.RemoveSlide(1);
        --number;
    }
    slides.GoToSlide(number);
}

bool frmGALMain::SavePPT() {
    const ErrorTrap trap("SavePPT");
    return ui_->PicPPT->IsOpen() && StorePPT(pptFile_.isEmpty() ? AskForPPTFile() : pptFile_);
}

bool frmGALMain::SavePPTAs() {
    const ErrorTrap trap("SavePPTAs");
    return ui_->PicPPT->IsOpen() && StorePPT(AskForPPTFile());
}

QString frmGALMain::AskForPPTFile() {
    const QString name = QFileInfo(pptFile_.isEmpty() ? currentPresentation_ : pptFile_).completeBaseName();
    QString file = AskForNewFile(
        this, {PlainText(QStringLiteral("TS_SlidesSaveAs")), pptFile_.isEmpty() ? QString() : FolderOf(pptFile_),
               PlainText(QStringLiteral("TS_FilterSlides")) + QStringLiteral(" (*.ppt)"), name + kExtension});
    if (!file.isEmpty() && !file.endsWith(kExtension, Qt::CaseInsensitive)) file += kExtension;
    return file;
}

/// An empty name saves nothing.
bool frmGALMain::StorePPT(const QString& file) {
    if (file.isEmpty() || !Managed("SavePPT", [&] { ui_->PicPPT->Slides().SaveAs(file); })) return false;
    pptFile_ = file;
    ShowPPTState();
    return true;
}

bool frmGALMain::HasUnsavedSlides() {
    try {
        return ui_->PicPPT->IsOpen() && ui_->PicPPT->Slides().IsModified();
    } catch (const office::Error& error) {
        ErrorTrap::Report(error); // the process has just ended: there is nothing to save
        return false;
    }
}

bool frmGALMain::QuitPPT(bool mayStay) {
    const ErrorTrap trap("QuitPPT");
    while (HasUnsavedSlides()) {
        const int answer = ShowMessage(QStringLiteral("TS_SlidesUnsaved"),
                                       mayStay ? MessageType::YesNoCancel : MessageType::YesNo, MessageIcon::Question);
        if (mayStay && answer == MessageCode::Cancel) return false;
        if (answer != MessageCode::Yes) break;
        if (!SavePPT() && mayStay) return false;
    }
    ClosePPT();
    return true;
}

void frmGALMain::ClosePPT() {
    ui_->PicPPT->CloseHostedExcel(false);
    ui_->framePPT->hide();
    // Once the slides are closed, the workbook's window shows its tool bars again; switched on and off they are gone.
    for (const bool shown : {true, false})
        ui_->PicExcel->SetToolBars(shown);
    pptFile_.clear();
    emptyFirst_ = false;
    copied_ = false;
    ShowPPTState();
    OfferCommands();
}

} // namespace tessaro
