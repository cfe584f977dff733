#include "shell/frmFavourites.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/Favourite.h"
#include "ui_frmFavourites.h"

#include <QFile>

namespace tessaro {

frmFavourites::frmFavourites(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmFavourites>()) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("mnu_Favorites_Add")));
    SetCaption(ui_->Label1, QStringLiteral("FAV NAME"));
    ui_->Label1->setBuddy(ui_->txtFavoriteAddress);
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    SetCaption(ui_->cmdRemove, QStringLiteral("Remove layer"));
    for (QWidget* part : {static_cast<QWidget*>(ui_->txtFavoriteAddress), static_cast<QWidget*>(ui_->cmdOK),
                          static_cast<QWidget*>(ui_->CmdCancel)})
        part->setFont(DefaultFont());
    ui_->lvFavorite->setAccessibleName(PlainText(QStringLiteral("TLB_FAVORITES")));
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmFavourites::cmdOK_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->cmdRemove, &QPushButton::clicked, this, &frmFavourites::cmdRemove_Click);
    connect(ui_->cmdCreateIn, &QPushButton::clicked, this, [this] { ShowLower(ui_->picLower->isHidden()); });
    connect(ui_->lvFavorite, &QListWidget::itemSelectionChanged, this,
            [this] { ui_->cmdRemove->setEnabled(!ui_->lvFavorite->selectedItems().isEmpty()); });
    FillList();
    ShowLower(true);
}

frmFavourites::~frmFavourites() = default;

void frmFavourites::FillList() {
    ui_->lvFavorite->clear();
    const QStringList files = FavouriteFiles();
    for (const QString& file : files) {
        auto* item = new QListWidgetItem(theme::Icon(QStringLiteral("database.png")), file, ui_->lvFavorite);
        item->setData(Qt::UserRole, QLatin1Char('F') + file);
    }
    ui_->cmdRemove->setEnabled(false);
}

void frmFavourites::ShowLower(bool shown) {
    ui_->picLower->setVisible(shown);
    SetCaption(ui_->cmdCreateIn,
               shown ? QStringLiteral("FAV CREATIN BUT VIS") : QStringLiteral("FAV CREATIN BUT HIDDEN"));
}

void frmFavourites::cmdOK_Click() {
    TheFrame().SetBusy(true);
    TheFrame().SetStatusText(GetText(QStringLiteral("COMM_PROCESSING")));
    setEnabled(false);
    const FavouriteResult result = MakeFavourite(ui_->txtFavoriteAddress->text());
    setEnabled(true);
    TheFrame().SetStatusText({});
    TheFrame().SetBusy(false);
    switch (result) {
    case FavouriteResult::Made:
        return accept();
    case FavouriteResult::BadName:
        ShowMessage(QStringLiteral("037"));
        break;
    case FavouriteResult::Taken:
        ShowMessage(QStringLiteral("021"));
        break;
    case FavouriteResult::Failed:
        ShowMessage(GetText(QStringLiteral("TS_ExportFailed"))
                        .replace(QStringLiteral("%1"), FavouritePath(ui_->txtFavoriteAddress->text().trimmed())),
                    MessageType::Ok, 102, {}, false);
        break;
    }
    ui_->txtFavoriteAddress->setFocus();
    ui_->txtFavoriteAddress->selectAll();
}

void frmFavourites::cmdRemove_Click() {
    ErrorTrap trap("cmdRemove_Click");
    const auto chosen = ui_->lvFavorite->selectedItems();
    for (const QListWidgetItem* item : chosen) {
        const QString path = FavouritePath(item->data(Qt::UserRole).toString().mid(1));
        if (SamePath(path, CurrentDatabase)) {
            ShowMessage(QStringLiteral("012"));
            continue;
        }
        if (!QFile::remove(path)) LogNote(QStringLiteral("cmdRemove_Click: can't remove ") + path);
    }
    FillList();
}

} // namespace tessaro
