#include "shell/frmAbout.h"

#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "platform/Paths.h"
#include "platform/Registry.h"
#include "platform/ShellOpen.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/SystemInfo.h"
#include "shell/frmDocument.h"
#include "ui_frmAbout.h"

namespace tessaro {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
    const ErrorTrap trap("frmAbout_Load");
    ui_->setupUi(this);
    SetFormCaptions();
    SetToolTipParam();
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->cmdDiscliamer, &QPushButton::clicked, this, &frmAbout::cmdDiscliamer_Click);
    connect(ui_->cmdDatabase, &QPushButton::clicked, this, [this] { ShowLog(LogKind::Database); });
    connect(ui_->cmdTemplate, &QPushButton::clicked, this, [this] { ShowLog(LogKind::Template); });
    connect(ui_->cmdSysInfo, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
    ui_->cmdOK->setFocus();
}

frmAbout::~frmAbout() = default;

void frmAbout::SetFormCaptions() {
    SetFormFonts(this);
    const QString product = Setting(QStringLiteral("PRODUCT NAME"));
    setWindowTitle(PlainText(QStringLiteral("TS_AboutTitle")).replace(QLatin1String("%1"), product));
    const int side = 10 * theme::kGrid;
    ui_->picIcon->setPixmap(theme::Icon(Setting(QStringLiteral("APP ICON"))).pixmap(side, side));
    ui_->lblTitle->setText(product);
    SetCaption(ui_->lblVersion, QStringLiteral("VERSION"));
    ui_->lblVersionNumber->setText(Setting(QStringLiteral("PRODUCT VERSION")));
    ui_->lblDisclaimer->setText(GetText(QStringLiteral("TS_DisclaimerShort")).replace(QLatin1String("%1"), product));
    SetCaption(ui_->cmdDatabase, QStringLiteral("TS_DatabaseLog"));
    SetCaption(ui_->cmdTemplate, QStringLiteral("TS_TemplateLog"));
    SetCaption(ui_->cmdDiscliamer, QStringLiteral("Disclaimer"));
    SetCaption(ui_->cmdSysInfo, QStringLiteral("SYSTEM INFO"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    QFont title = DefaultFont();
    title.setPointSizeF(title.pointSizeF() * 2);
    title.setBold(true);
    ui_->lblTitle->setFont(title);
    ui_->lblVersionNumber->setFont(DefaultFont());
    for (QLabel* label : {ui_->lblTitle, ui_->lblVersionNumber})
        label->setAlignment(ReadingSide());
}

void frmAbout::SetToolTipParam() {
    SetToolTip(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetToolTip(ui_->cmdSysInfo, QStringLiteral("SYSTEM INFO"));
    SetToolTip(ui_->cmdDiscliamer, QStringLiteral("Disclaimer"));
    SetToolTip(ui_->cmdDatabase, QStringLiteral("PROP DB TAB"));
    SetToolTip(ui_->cmdTemplate, QStringLiteral("Template"));
}

void frmAbout::ShowLog(LogKind kind) {
    const char* const procedure = kind == LogKind::Template ? "cmdTemplate_Click" : "cmdDatabase_Click";
    const ErrorTrap trap(procedure);
    ShowMadeWorkbook(procedure, [kind] { return WriteLogReport(kind); });
}

void frmAbout::cmdDiscliamer_Click() {
    frmDisclaimer form(this);
    form.exec();
}

/// Starts the program that the registry names for this; without one shows a form with the same facts.
void frmAbout::StartSysInfo() {
    const ErrorTrap trap("StartSysInfo");
    const QString root = QString::fromLatin1(kLocalMachine);
    QString program = GetRegistryValue(AppPath, root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                                       QStringLiteral("PATH"));
    if (program.isEmpty()) {
        const QString folder = GetRegistryValue(
            AppPath, root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"), QStringLiteral("MSINFO"));
        if (!folder.isEmpty()) program = JoinPath({folder, QStringLiteral("MSINFO32.EXE")});
    }
    if (FileExists(program) && ShellOpen(FindPath(program))) return;
    frmSystemInfo form(this);
    form.exec();
}

} // namespace tessaro
