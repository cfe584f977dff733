#include "presentation/frmLoadRC.h"

#include "controls/Captions.h"
#include "controls/EmptyHint.h"
#include "platform/NaturalOrder.h"
#include "session/Strings.h"
#include "ui_frmLoadRC.h"

#include <QDir>
#include <QStorageInfo>

namespace tessaro {

namespace {

const QString kParent = QStringLiteral("..");

} // namespace

frmLoadRC::frmLoadRC(WizardKind kind, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmLoadRC>()), kind_(kind) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(GetText(QStringLiteral("Custom Rows & Columns")));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->cmdOK->setToolTip(PlainText(QStringLiteral("OK BUTTON")));
    ui_->CmdCancel->setToolTip(PlainText(QStringLiteral("CANCEL BUTTON")));
    for (QListView* list : {ui_->DirSourceDir, ui_->FileSourcePath})
        list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ui_->DirSourceDir->setModel(&folders_);
    ui_->FileSourcePath->setModel(&files_);
    ui_->DriveSource->setAccessibleName(PlainText(QStringLiteral("TS_Drive")));
    ui_->DirSourceDir->setAccessibleName(PlainText(QStringLiteral("TS_Folder")));
    ui_->FileSourcePath->setAccessibleName(PlainText(QStringLiteral("TS_File")));
    ShowWhenEmpty(ui_->FileSourcePath, PlainText(QStringLiteral("TS_NoLayouts")));
    connect(ui_->DirSourceDir, &QListView::activated, this, &frmLoadRC::EnterFolder);
    connect(ui_->FileSourcePath, &QListView::activated, this, &frmLoadRC::cmdOK_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmLoadRC::cmdOK_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->FileSourcePath->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { ui_->cmdOK->setEnabled(ui_->FileSourcePath->selectionModel()->hasSelection()); });
    FillDrives();
    ShowFolder(LayoutFolder());
}

frmLoadRC::~frmLoadRC() = default;

void frmLoadRC::FillDrives() {
    QStringList drives{LayoutFolder(), QDir::homePath()};
    const auto volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo& volume : volumes)
        if (volume.isReady() && QDir(volume.rootPath()).isReadable() &&
            (volume.isRoot() || volume.rootPath().startsWith(QStringLiteral("/media")) ||
             volume.rootPath().startsWith(QStringLiteral("/mnt")) ||
             volume.rootPath().startsWith(QStringLiteral("/run/media"))))
            drives << volume.rootPath();
    drives.removeDuplicates();
    ui_->DriveSource->addItems(drives);
    connect(ui_->DriveSource, &QComboBox::activated, this, [this] { ShowFolder(ui_->DriveSource->currentText()); });
}

void frmLoadRC::ShowFolder(const QString& folder) {
    folder_ = QDir::cleanPath(folder);
    const QDir dir(folder_);
    QStringList folders = InNaturalOrder(dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Readable));
    if (!dir.isRoot()) folders.prepend(kParent);
    folders_.setStringList(folders);
    files_.setStringList(InNaturalOrder(dir.entryList({QLatin1Char('*') + LayoutExtension(kind_)}, QDir::Files)));
    ui_->lblFolder->setText(QDir::toNativeSeparators(folder_));
    ui_->lblFolder->setToolTip(ui_->lblFolder->text());
    ui_->cmdOK->setEnabled(false);
}

void frmLoadRC::EnterFolder(const QModelIndex& index) {
    ShowFolder(folder_ + QLatin1Char('/') + index.data().toString());
}

void frmLoadRC::cmdOK_Click() {
    const QModelIndexList chosen = ui_->FileSourcePath->selectionModel()->selectedIndexes();
    if (chosen.isEmpty()) return;
    path_ = folder_ + QLatin1Char('/') + chosen.front().data().toString();
    accept();
}

} // namespace tessaro
