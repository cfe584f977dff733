#include "shell/frmLanguage.h"

#include "controls/Captions.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "ui_frmLanguage.h"

namespace tessaro {

frmLanguage::frmLanguage(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmLanguage>()) {
    ui_->setupUi(this);
    connect(ui_->cmdProperties, &QPushButton::clicked, this, &frmLanguage::PropertiesWanted);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmLanguage::cmdOK_Click);
    connect(ui_->lstAvailable, &QListWidget::itemActivated, this, &frmLanguage::cmdOK_Click);
    ShowLanguages();
}

frmLanguage::~frmLanguage() = default;

void frmLanguage::cmdOK_Click() {
    const QListWidgetItem* item = ui_->lstAvailable->currentItem();
    if (item && FileOfLanguage(item->text()).isEmpty()) {
        ShowFilledMessage(QStringLiteral("TS_LanguageWithoutTexts"), {item->text()}, MessageIcon::Note);
        return;
    }
    if (item) chosen_ = item->text();
    accept();
}

void frmLanguage::ShowLanguages() {
    const ErrorTrap trap("frmLanguage_Load");
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("PROP GENERAL LANGUAGE")));
    SetCaption(ui_->lblCustom, QStringLiteral("Mismatch"));
    ui_->lblSelected->setText(QStringLiteral("%1: %2").arg(PlainText(QStringLiteral("Selected")), Language));
    SetCaption(ui_->lblLanguage, QStringLiteral("Available"));
    SetCaption(ui_->cmdProperties, QStringLiteral("TS_Preferences"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    ui_->lstAvailable->clear();
    const auto connection = CreateTheConnection(CurrentDatabase);
    if (!connection) return;
    Records rows =
        Select(QStringLiteral("SELECT LanguageName FROM [Language]"), jet::CursorType::Static, connection.get());
    for (; !rows.atEnd(); rows.MoveNext())
        ui_->lstAvailable->addItem(rows.Text("LanguageName"));
    if (ui_->lstAvailable->count() > 0) ui_->lstAvailable->setCurrentRow(0);
}

} // namespace tessaro
