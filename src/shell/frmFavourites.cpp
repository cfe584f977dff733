#include "shell/frmFavourites.h"

#include "controls/Captions.h"
#include "platform/ShellOpen.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/Favourite.h"
#include "ui_frmFavourites.h"

#include <QFileInfo>
#include <QLocale>

namespace tessaro {

frmFavourites::frmFavourites(QWidget* parent, RowsInView rows)
    : QDialog(parent), ui_(std::make_unique<Ui::frmFavourites>()), rows_(std::move(rows)) {
    const ErrorTrap trap("frmFavourites_Load");
    ui_->setupUi(this);
    SetFormCaptions();
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmFavourites::cmdOK_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->cmdCreateIn, &QPushButton::clicked, this, &frmFavourites::cmdCreateIn_Click);
    connect(ui_->cmdRemove, &QPushButton::clicked, this, &frmFavourites::cmdRemove_Click);
    connect(ui_->cmdcustomize, &QPushButton::clicked, this, [] { ShellOpen(FavoritesFolder); });
    KeyedList& list = *ui_->lvFavorite;
    connect(&list, &KeyedList::DeletePressed, this, &frmFavourites::cmdRemove_Click);
    connect(&list, &KeyedList::HighlightChanged, this,
            [this] { ui_->cmdRemove->setEnabled(ui_->lvFavorite->HasHighlighted()); });
    const auto open = [this] {
        const QString key = ui_->lvFavorite->CurrentKey();
        if (key.isEmpty()) return;
        wanted_ = FavouritePath(IdOfKey(key));
        accept();
    };
    connect(&list, &KeyedList::ItemActivated, this, open);
    connect(&list, &KeyedList::EnterPressed, this, open);
    FillFavorites();
    ui_->cmdRemove->setEnabled(false);
    ui_->txtFavoriteAddress->setFocus();
}

frmFavourites::~frmFavourites() = default;

void frmFavourites::SetFormCaptions() {
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("TLB_FAVORITES")));
    SetCaption(ui_->Label1, QStringLiteral("FAV NAME"));
    SetCaption(ui_->lblCreateIn, QStringLiteral("FAV CREATEIN"));
    SetCaption(ui_->cmdcustomize, QStringLiteral("Comm_Cutomize"));
    SetToolTip(ui_->cmdcustomize, QStringLiteral("TS_FavouritesFolder"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    SetCaption(ui_->cmdCreateIn, QStringLiteral("FAV CREATIN BUT VIS"));
    SetCaption(ui_->cmdRemove, QStringLiteral("Remove layer"));
    for (QWidget* control : {static_cast<QWidget*>(ui_->txtFavoriteAddress), static_cast<QWidget*>(ui_->cmdOK),
                             static_cast<QWidget*>(ui_->CmdCancel), static_cast<QWidget*>(ui_->cmdCreateIn)})
        control->setFont(DefaultFont());
    ui_->lvFavorite->SetColumns({PlainText(QStringLiteral("FAV NAME")), PlainText(QStringLiteral("Size")),
                                 PlainText(QStringLiteral("LOG_DATE_TIME"))});
    ui_->lvFavorite->SetEmptyHint(GetText(QStringLiteral("TS_NoFavourites")), {});
}

void frmFavourites::FillFavorites() {
    std::vector<KeyedItem> items;
    const QStringList names = FavouriteFiles();
    const QLocale locale = LocaleOfLanguage();
    for (const QString& name : names) {
        const QFileInfo file(FavouritePath(name));
        items.push_back({QLatin1Char('F') + name,
                         {name, locale.formattedDataSize(file.size()),
                          locale.toString(file.lastModified(), QLocale::ShortFormat)}});
    }
    ui_->lvFavorite->Items().SetItems(std::move(items));
}

void frmFavourites::cmdOK_Click() {
    const ErrorTrap trap("cmdOk_Click");
    setEnabled(false);
    TheFrame().SetStatusText(GetText(QStringLiteral("COMM_PROCESSING")));
    const FavouriteResult result = [this] {
        const WaitPointer wait;
        return MakeFavourite(ui_->txtFavoriteAddress->text(), rows_);
    }();
    TheFrame().SetStatusText({});
    setEnabled(true);
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
        ShowMessage(GetText(QStringLiteral("TS_FavouriteFailed")), MessageType::Ok, MessageIcon::Note, {}, false);
        break;
    }
    ui_->txtFavoriteAddress->setFocus();
    ui_->txtFavoriteAddress->selectAll();
}

void frmFavourites::cmdCreateIn_Click() {
    ShowLowerHalf(!ui_->picFavorites->isVisibleTo(this));
}

void frmFavourites::ShowLowerHalf(bool shown) {
    if (!shown) lowerHeight_ = ui_->picFavorites->height();
    ui_->picFavorites->setVisible(shown);
    SetCaption(ui_->cmdCreateIn,
               shown ? QStringLiteral("FAV CREATIN BUT VIS") : QStringLiteral("FAV CREATIN BUT HIDDEN"));
    // minimumSizeHint() counts the lower half only after the layout has been activated again.
    layout()->invalidate();
    layout()->activate();
    resize(width(), shown ? minimumSizeHint().height() + lowerHeight_ : minimumSizeHint().height());
}

void frmFavourites::cmdRemove_Click() {
    const ErrorTrap trap("cmdRemove_Click");
    QSet<QString> gone;
    const std::vector<KeyedItem> chosen = ui_->lvFavorite->HighlightedItems();
    for (const KeyedItem& item : chosen) {
        const QString name = IdOfKey(item.key);
        if (IsOpenFavourite(name)) {
            ShowMessage(QStringLiteral("012"));
        } else if (RemoveFavourite(name)) {
            gone << item.key;
        } else {
            ReportError(FileError::PermissionDenied, QStringLiteral("The favourite can't be removed: ") + name,
                        QStringLiteral("cmdRemove_Click"));
        }
    }
    ui_->lvFavorite->Items().RemoveKeys(gone);
}

} // namespace tessaro
