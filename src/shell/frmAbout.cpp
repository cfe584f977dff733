#include "shell/frmAbout.h"

#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "controls/Theme.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/Registry.h"
#include "platform/ShellOpen.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "session/TempFiles.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSysInfo>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace tessaro {

namespace {

/// A dialog with a text and an OK button, as the disclaimer and the system information have it.
void ShowText(QWidget* parent, const QString& name, const QString& title, const QString& text) {
    QDialog dialog(parent);
    dialog.setObjectName(name);
    dialog.setWindowTitle(title);
    dialog.resize(560, 360);
    auto* browser = new QTextBrowser(&dialog);
    browser->setObjectName(QStringLiteral("TXTextControl1"));
    browser->document()->setDocumentMargin(theme::Grid * 2);
    browser->setOpenExternalLinks(true);
    Qt::mightBeRichText(text) ? browser->setHtml(text) : browser->setPlainText(text);
    auto* cmdOK = new QPushButton(&dialog);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    SetCaption(cmdOK, QStringLiteral("OK BUTTON"));
    auto* column = new QVBoxLayout(&dialog);
    column->setContentsMargins(theme::Grid * 2, theme::Grid * 2, theme::Grid * 2, theme::Grid * 2);
    column->setSpacing(theme::Grid * 2);
    column->addWidget(browser);
    column->addWidget(cmdOK, 0, Qt::AlignTrailing);
    QObject::connect(cmdOK, &QPushButton::clicked, &dialog, &QDialog::accept);
    SetFormFonts(&dialog);
    dialog.exec();
}

QPushButton* Button(QWidget* parent, const char* name, const char* key) {
    auto* button = new QPushButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    SetCaption(button, QLatin1String(key));
    return button;
}

} // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    const QString product = Setting(QStringLiteral("PRODUCT NAME"));
    setWindowTitle(PlainText(QStringLiteral("TS_AboutTitle")).replace(QStringLiteral("%1"), product));
    auto* picIcon = new QLabel(this);
    picIcon->setObjectName(QStringLiteral("picIcon"));
    picIcon->setPixmap(theme::Icon(Setting(QStringLiteral("APP ICON"))).pixmap(72, 72));
    auto* lblTitle = new QLabel(product, this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    auto* lblVersion = new QLabel(
        PlainText(QStringLiteral("VERSION")) + QLatin1Char(' ') + Setting(QStringLiteral("PRODUCT VERSION")), this);
    lblVersion->setObjectName(QStringLiteral("lblVersionNumber"));
    auto* lblDisclaimer = new QLabel(GetText(QStringLiteral("TS_DisclaimerText")), this);
    lblDisclaimer->setObjectName(QStringLiteral("lblDisclaimer"));
    lblDisclaimer->setWordWrap(true);
    QPushButton* disclaimer = Button(this, "cmdDiscliamer", "Disclaimer");
    QPushButton* database = Button(this, "cmdDatabase", "PROP DB TAB");
    QPushButton* templates = Button(this, "cmdTemplate", "Template");
    QPushButton* system = Button(this, "cmdSysInfo", "SYSTEM INFO");
    QPushButton* ok = Button(this, "cmdOK", "OK BUTTON");
    ok->setDefault(true);
    for (QPushButton* log : {database, templates})
        log->setText(log->text() + QStringLiteral(" - ") + PlainText(QStringLiteral("LOG_LOG")));

    auto* outer = new QGridLayout(this);
    outer->setContentsMargins(theme::Grid * 3, theme::Grid * 3, theme::Grid * 3, theme::Grid * 2);
    outer->setSpacing(theme::Grid);
    outer->setHorizontalSpacing(theme::Grid * 3);
    outer->addWidget(picIcon, 0, 0, 3, 1, Qt::AlignTop);
    outer->addWidget(lblTitle, 0, 1);
    outer->addWidget(lblVersion, 1, 1);
    outer->addWidget(lblDisclaimer, 2, 1);
    outer->setColumnMinimumWidth(1, 280);
    outer->setRowStretch(2, 1);
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(theme::Grid);
    for (QPushButton* button : {ok, disclaimer, database, templates, system})
        buttons->addWidget(button);
    buttons->addStretch();
    outer->addLayout(buttons, 0, 2, 3, 1);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(disclaimer, &QPushButton::clicked, this, &frmAbout::cmdDiscliamer_Click);
    connect(database, &QPushButton::clicked, this, [this] { ShowLog(LogKind::Database); });
    connect(templates, &QPushButton::clicked, this, [this] { ShowLog(LogKind::Template); });
    connect(system, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
    SetFormFonts(this);
    QFont large = DefaultFont();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    lblTitle->setFont(large);
}

void frmAbout::cmdDiscliamer_Click() {
    const QString file = FindPath(JoinPath({AppPath, QStringLiteral("Bin/Disclaimer.Doc")}));
    const auto bytes = FileExists(file) ? ReadWholeFile(file) : std::nullopt;
    ShowText(this, QStringLiteral("frmDisclaimer"), PlainText(QStringLiteral("Disclaimer")),
             bytes ? QString::fromUtf8(*bytes) : GetText(QStringLiteral("TS_DisclaimerText")));
}

void frmAbout::ShowLog(LogKind kind) {
    if (!DatabaseOpen || !Connection) {
        ShowMessage(QStringLiteral("011"));
        return;
    }
    TheFrame().SetBusy(true);
    QString file;
    try {
        file = WriteLogReport(kind);
        TheFrame().SetBusy(false);
    } catch (const office::Error& error) {
        TheFrame().SetBusy(false);
        ShowOfficeError(error, "LogReport");
        return;
    }
    if (file.isEmpty()) return;
    TheFrame().ShowWorkbook(file);
    ClearTempFolder();
}

// The system's own program where the registry names one; otherwise the facts themselves.
void frmAbout::StartSysInfo() {
    const QString root = QString::fromLatin1(LocalMachine);
    QString program = GetRegistryValue(AppPath, root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                                       QStringLiteral("PATH"));
    if (program.isEmpty()) {
        const QString folder = GetRegistryValue(
            AppPath, root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"), QStringLiteral("MSINFO"));
        if (!folder.isEmpty()) program = folder + QStringLiteral("\\MSINFO32.EXE");
    }
    if (!program.isEmpty() && FileExists(program)) {
        ShellOpen(program);
        return;
    }
    const QStringList lines{
        Setting(QStringLiteral("PRODUCT NAME")) + QLatin1Char(' ') + Setting(QStringLiteral("PRODUCT VERSION")),
        QSysInfo::prettyProductName() + QStringLiteral(", ") + QSysInfo::kernelType() + QLatin1Char(' ') +
            QSysInfo::kernelVersion(),
        QSysInfo::currentCpuArchitecture(),
        QStringLiteral("Qt ") + QLatin1String(qVersion()),
        QStringLiteral("LibreOffice: ") +
            (office::SpreadsheetApplication::IsInstalled() ? PlainText(QStringLiteral("Yes")) : QStringLiteral("-")),
        LogFile()};
    ShowText(this, QStringLiteral("frmSysInfo"), PlainText(QStringLiteral("SYSTEM INFO")),
             lines.join(QLatin1Char('\n')));
}

} // namespace tessaro
