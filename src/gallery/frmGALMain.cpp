#include "gallery/frmGALMain.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "gallery/GalleryModel.h"
#include "gallery/Thumbnails.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "ui_frmGALMain.h"

#include <QFile>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QSortFilterProxyModel>
#include <QTimer>

#include <algorithm>

namespace tessaro {

frmGALMain::frmGALMain(QWidget* parent)
    : StageScreen(parent), ui_(std::make_unique<Ui::frmGALMain>()), model_(new GalleryModel(this)),
      shownRows_(new QSortFilterProxyModel(this)),
      thumbnails_(new Thumbnails(JoinPath({CacheFolder, QStringLiteral("Thumbnails")}),
                                 JoinPath({CacheFolder, QStringLiteral("Office"), QStringLiteral("Pictures")}), this)) {
    const ErrorTrap trap("Form_Load");
    ui_->setupUi(this);
    setWindowIcon(theme::Icon(QStringLiteral("gallery.png")));
    ui_->SSSplitter1->setSizes({320, 780});
    ui_->SSSplitter1->setStretchFactor(1, 1);
    if (OfficeHost::CanHost()) office::SpreadsheetApplication::Hosted().StartInAdvance();
    ConnectControls();
    ConnectList();
    ConnectSlides();
    SetFormCaptions();
    GetPresentationsFromGallery();
}

frmGALMain::~frmGALMain() {
    CloseShown();
    ui_->PicPPT->CloseHostedExcel(false);
    hide(); // hidden here, while the members that handle the loss of focus still exist
}

void frmGALMain::ConnectControls() {
    connect(ui_->cmdBrowse, &QPushButton::clicked, this, &frmGALMain::cmdBrowse_Click);
    connect(ui_->cmdBrowseUp, &QPushButton::clicked, this, &frmGALMain::cmdBrowseUp_Click);
    connect(ui_->cmdDelete, &QPushButton::clicked, this, &frmGALMain::cmdDelete_Click);
    connect(ui_->txtPresFolder, &QLineEdit::returnPressed, this, [this] { ShowFolder(ui_->txtPresFolder->text()); });
    connect(ui_->txtPresFolder, &QLineEdit::editingFinished, this, [this] { ui_->txtPresFolder->setText(folder_); });
    connect(ui_->txtFilter, &QLineEdit::textChanged, this, [this](const QString& text) {
        shownRows_->setFilterFixedString(text.trimmed());
        ShowCounts();
    });
    connect(ui_->PicExcel, &OfficeHost::Lost, this, [this] {
        currentPresentation_.clear(); // a click opens it again
        OfferCommands();
    });
}

void frmGALMain::ConnectList() {
    shownRows_->setSourceModel(model_);
    shownRows_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    PresentationList* list = ui_->lstPresentations;
    list->setModel(shownRows_);
    list->setItemDelegate(new PresentationDelegate(
        *model_, [this](const GalleryEntry& entry) { return thumbnails_->Picture(folder_, entry); }, list));
    connect(thumbnails_, &Thumbnails::Changed, list->viewport(), qOverload<>(&QWidget::update));
    connect(list, &QListView::clicked, this, &frmGALMain::lstPresentations_Click);
    connect(list, &PresentationList::EnterPressed, this, &frmGALMain::OpenCurrent);
    connect(list, &PresentationList::UpPressed, this, &frmGALMain::cmdBrowseUp_Click);
    connect(list, &PresentationList::DeletePressed, this, &frmGALMain::cmdDelete_Click);
    connect(list, &PresentationList::RefreshPressed, this, &frmGALMain::Refresh);
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { OfferCommands(); });
    connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { OfferCommands(); });
}

void frmGALMain::SetFormCaptions() {
    SetFormFonts(this);
    SetCaption(ui_->lblPresFolder, QStringLiteral("GALLERY Location"));
    SetCaption(ui_->cmdBrowse, QStringLiteral("BROWSE"));
    SetCaption(ui_->cmdBrowseUp, QStringLiteral("Up One Level"));
    SetCaption(ui_->cmdDelete, QStringLiteral("GALLERY DELETE"));
    SetCaption(ui_->cmdSavePPT, QStringLiteral("Comm_Save"));
    SetCaption(ui_->cmdSavePPTAs, QStringLiteral("mnu_File_SaveAs"));
    SetCaption(ui_->cmdClosePPT, QStringLiteral("GALLERY CLOSE PPT"));
    // QLayout doesn't mirror its margins for right-to-left.
    const auto turned = [this](int left, int top, int right, int bottom) {
        return isRightToLeft() ? QMargins(right, top, left, bottom) : QMargins(left, top, right, bottom);
    };
    ui_->layList->setContentsMargins(turned(2 * theme::kGrid, theme::kGrid, 0, 2 * theme::kGrid));
    ui_->layPPTHead->setContentsMargins(turned(0, 0, 2 * theme::kGrid, 0));
    ui_->txtPresFolder->setAccessibleName(PlainText(QStringLiteral("GALLERY Location")));
    ui_->txtFilter->setPlaceholderText(PlainText(QStringLiteral("TS_FilterPlaceholder")));
    ui_->txtFilter->setAccessibleName(PlainText(QStringLiteral("TS_FilterPlaceholder")));
    ui_->lstPresentations->setAccessibleName(PlainText(QStringLiteral("Available Presentations")));
    ui_->PicExcel->setAccessibleName(PlainText(QStringLiteral("Present")));
    ui_->PicPPT->setAccessibleName(PlainText(QStringLiteral("TS_FilterSlides")));
    ui_->PicExcel->SetFormCaptions();
    ui_->PicPPT->SetFormCaptions();
    if (currentPresentation_.isEmpty()) ui_->PicExcel->SetHint(PlainText(QStringLiteral("TS_GalleryChoose")));
    model_->TellKindsAgain();
    ShowCaption();
    ShowCounts();
    ShowPPTState();
}

void frmGALMain::Enter() {
    ui_->lstPresentations->setFocus();
    if (firstWaits_) QTimer::singleShot(0, this, &frmGALMain::ShowFirst);
}

void frmGALMain::Leave() {
    CloseShown();
}

void frmGALMain::SelectAll() {
    ui_->lstPresentations->selectAll();
}

void frmGALMain::Find() {
    ui_->txtFilter->setFocus();
    ui_->txtFilter->selectAll();
}

void frmGALMain::ShowCaption() {
    const QString caption = currentPresentation_.isEmpty()
                                ? PlainText(QStringLiteral("Present"))
                                : PlainText(QStringLiteral("TS_GalleryCaption"))
                                      .replace(QStringLiteral("%1"), InOnePiece(currentPresentation_));
    setWindowTitle(caption);
    ui_->lblCaption->setText(caption);
}

void frmGALMain::ShowCounts() {
    const QString heading = PlainText(QStringLiteral("Available Presentations"));
    const int count = model_->PresentationCount();
    ui_->lblPresentations->setText(count > 0 ? QStringLiteral("%1 (%2)").arg(heading, QLocale().toString(count))
                                             : heading);
    const bool filtered = model_->Count() > 0;
    ui_->lstPresentations->SetEmptyHint(
        PlainText(filtered ? QStringLiteral("TS_GalleryNoMatch") : QStringLiteral("TS_GalleryEmpty")));
}

const GalleryEntry* frmGALMain::Entry(const QModelIndex& index) const {
    return index.isValid() ? &model_->At(index.data(GalleryModel::RowRole).toInt()) : nullptr;
}

std::vector<GalleryEntry> frmGALMain::HighlightedPresentations() const {
    QModelIndexList rows = ui_->lstPresentations->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<GalleryEntry> entries;
    for (const QModelIndex& row : std::as_const(rows))
        if (const GalleryEntry* entry = Entry(row); !entry->IsFolder()) entries.push_back(*entry);
    return entries;
}

void frmGALMain::OfferCommands() {
    const GalleryEntry* entry = Entry(ui_->lstPresentations->currentIndex());
    const bool onWorkbook = !entry || !entry->IsFolder();
    ui_->cmdDelete->setEnabled(onWorkbook && !HighlightedPresentations().empty());
    ui_->cmdCopyToPPT->setEnabled(copied_ || (onWorkbook && ui_->PicExcel->xlBook().IsOpen()));
}

void frmGALMain::ReadFolder() {
    folder_ = BrowsedFolder();
    thumbnails_->ForgetWaiting();
    model_->SetEntries(EntriesOf(folder_));
    ui_->txtPresFolder->setText(folder_);
    ShowCounts();
    OfferCommands();
}

void frmGALMain::GetPresentationsFromGallery() {
    const ErrorTrap trap("GetPresentationsFromGallery");
    if (!MayCloseShown(true)) return;
    ui_->txtFilter->clear();
    ReadFolder();
    firstWaits_ = true;
    if (isVisible()) QTimer::singleShot(0, this, &frmGALMain::ShowFirst);
}

// After the list has been painted: a program's start takes its time.
void frmGALMain::ShowFirst() {
    if (!firstWaits_ || opening_) return;
    firstWaits_ = false;
    for (int row = 0; row < model_->Count(); ++row)
        if (!model_->At(row).IsFolder()) return ShowNext(row);
    CloseShown();
    if (model_->Count() > 0) ui_->lstPresentations->setCurrentIndex(shownRows_->index(0, 0));
}

/// Shows the workbook of a row of the model, or the last one above it.
void frmGALMain::ShowNext(int row) {
    row = std::min(row, model_->Count() - 1);
    while (row >= 0 && model_->At(row).IsFolder())
        --row;
    if (row < 0) return CloseShown();
    const QString file = model_->At(row).file;
    HighlightFile(file);
    ShowCurrentPresentation(file, false);
}

void frmGALMain::HighlightFile(const QString& file) {
    const int row = model_->RowOfFile(file);
    const QModelIndex shown = row < 0 ? QModelIndex() : shownRows_->mapFromSource(model_->index(row));
    if (shown.isValid()) ui_->lstPresentations->setCurrentIndex(shown);
}

void frmGALMain::Refresh() {
    const ErrorTrap trap("GetPresentationsFromGallery");
    const GalleryEntry* current = Entry(ui_->lstPresentations->currentIndex());
    const QString file = current ? current->file : QString();
    ReadFolder();
    HighlightFile(file);
    const bool gone = !currentPresentation_.isEmpty() && model_->RowOfFile(currentPresentation_) < 0;
    if (gone && MayCloseShown(true)) CloseShown();
}

void frmGALMain::CloseShown() {
    currentPresentation_.clear();
    ui_->PicExcel->CloseHostedExcel(false);
    ui_->PicExcel->SetHint(PlainText(QStringLiteral("TS_GalleryChoose")));
    ShowCaption();
    OfferCommands();
}

/// Asks about what has been changed in the workbook on show: Yes saves it, No drops it. False when the user stays with
/// it, which `mayStay` offers.
bool frmGALMain::MayCloseShown(bool mayStay) {
    while (ui_->PicExcel->HasEdits()) {
        const QString text =
            GetText(QStringLiteral("TS_GalleryEdited")).replace(QStringLiteral("%1"), InOnePiece(currentPresentation_));
        const int answer = ShowMessage(text, mayStay ? MessageType::YesNoCancel : MessageType::YesNo,
                                       MessageIcon::Question, {}, false);
        if (mayStay && answer == MessageCode::Cancel) return false;
        if (answer != MessageCode::Yes) {
            CloseShown();
            return true;
        }
        if (!SaveShown() && mayStay) return false;
    }
    return true;
}

/// Saves the workbook on show; where its file can't be written, under another name.
bool frmGALMain::SaveShown() {
    if (!ui_->PicExcel->Save()) {
        ShowMessage(ui_->PicExcel->ErrorText(), MessageType::Ok, MessageIcon::Note, {}, false);
        const QString file = AskForNewFile(
            this, {PlainText(QStringLiteral("TS_PageSaveAs")), GalleryFolder(),
                   PlainText(QStringLiteral("TS_FilterWorkbook")) + QStringLiteral(" (*.xls)"), currentPresentation_});
        if (file.isEmpty()) return false;
        try {
            ui_->PicExcel->xlBook().SaveAs(file);
        } catch (const office::Error& error) {
            ShowOfficeError(error, "SavePresentation");
            return false;
        }
    }
    if (const int row = model_->RowOfFile(currentPresentation_); row >= 0 && currentFolder_ == folder_)
        model_->ReadFileAgain(row, folder_);
    return true;
}

void frmGALMain::lstPresentations_Click(const QModelIndex& index) {
    const GalleryEntry* entry = Entry(index);
    // With these keys the user is selecting several entries.
    const bool selecting = QGuiApplication::keyboardModifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    if (!entry || entry->IsFolder() || selecting) return OfferCommands();
    ShowCurrentPresentation(entry->file, false);
}

void frmGALMain::OpenCurrent() {
    const GalleryEntry* entry = Entry(ui_->lstPresentations->currentIndex());
    if (!entry) return;
    if (entry->IsFolder())
        OpenFolderOf(*entry);
    else
        ShowCurrentPresentation(QString(entry->file), false);
}

void frmGALMain::OpenFolderOf(const GalleryEntry& entry) {
    ShowFolder(JoinPath({folder_, entry.file}));
}

void frmGALMain::ShowFolder(const QString& folder) {
    if (folder.isEmpty() || folder == folder_ || !MayCloseShown(true)) return;
    SetGalleryFolder(folder);
    GetPresentationsFromGallery();
    ui_->lstPresentations->setFocus();
}

void frmGALMain::ShowCurrentPresentation(const QString& name, bool asNew) {
    const ErrorTrap trap("ShowCurrentPresentation");
    if (opening_ || (name == currentPresentation_ && folder_ == currentFolder_ && !asNew)) return;
    const QScopedValueRollback opening(opening_, true);
    firstWaits_ = false;
    if (!MayCloseShown(true)) return HighlightFile(currentPresentation_);
    const QString path = JoinPath({folder_, name});
    if (!QFileInfo(path).isFile()) { // to open a pipe would wait for its other end
        if (const int row = model_->RowOfFile(name); row >= 0) model_->Remove(row);
        ShowCounts();
        OfferCommands();
        return;
    }
    const bool keepsKeyboard = window()->isActiveWindow();
    currentPresentation_ = name;
    currentFolder_ = folder_;
    copied_ = false;
    ShowCaption();
    ShowPPTState();
    const WaitPointer wait;
    ui_->PicExcel->CloseHostedExcel(false);
    ui_->PicExcel->SetToolBars(false);
    if (ui_->PicExcel->ShowWorkbook(path)) {
        try {
            ui_->PicExcel->xlBook().ActivateSheet(1);
        } catch (const office::Error& error) {
            ErrorTrap::Report(error);
        }
    }
    if (keepsKeyboard) ui_->PicExcel->TakeKeyboard();
    OfferCommands();
}

void frmGALMain::cmdBrowse_Click() {
    const ErrorTrap trap("cmdBrowse_Click");
    ShowFolder(AskForFolder(this, {GetText(QStringLiteral("Locate Gallery Folder")), folder_, {}}));
}

void frmGALMain::cmdBrowseUp_Click() {
    const ErrorTrap trap("cmdBrowseUp_Click");
    ShowFolder(FolderAbove(folder_));
}

bool frmGALMain::DeletePresentation(const GalleryEntry& entry) {
    if (entry.file == currentPresentation_) CloseShown();
    const QString path = JoinPath({folder_, entry.file});
    QFile file(path);
    if (file.exists() && !file.remove()) {
        ReportError(FileError::NoAccess, QStringLiteral("Path/File access error: %1: %2").arg(path, file.errorString()),
                    QStringLiteral("cmdDelete_Click"));
        return false;
    }
    if (const int row = model_->RowOfFile(entry.file); row >= 0) model_->Remove(row);
    return true;
}

void frmGALMain::cmdDelete_Click() {
    const ErrorTrap trap("cmdDelete_Click");
    const std::vector<GalleryEntry> entries = HighlightedPresentations();
    if (entries.empty() || opening_) return;
    if (AskBeforeLoss(QStringLiteral("315")) != MessageCode::Yes) return;
    const int first = model_->RowOfFile(entries.front().file);
    bool all = true;
    for (const GalleryEntry& entry : entries)
        all = DeletePresentation(entry) && all;
    ShowCounts();
    if (all) ShowNext(first);
    OfferCommands();
    ui_->lstPresentations->setFocus();
}

} // namespace tessaro
