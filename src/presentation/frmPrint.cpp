#include "presentation/frmPrint.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "platform/Paths.h"
#include "session/Frame.h"
#include "session/Strings.h"
#include "ui_frmPrint.h"

#include <QFileInfo>
#include <QTimer>

namespace tessaro {

frmPrint::frmPrint(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmPrint>()) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    SetFormFonts(this);
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->cmdPrint, QStringLiteral("PRINT BUTTON"));
    SetCaption(ui_->cmdPdf, QStringLiteral("TS_SavePdf"));
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmPrint::accept);
    connect(ui_->cmdPrint, &QPushButton::clicked, ui_->fraExcel, &OfficeHost::Print);
    connect(ui_->cmdPdf, &QPushButton::clicked, this, &frmPrint::cmdPdf_Click);
    SetCaption(ui_->cmdPreview, QStringLiteral("TS_PrintPreview"));
    connect(ui_->cmdPreview, &QPushButton::clicked, this, [this] { PrintPreview(!ui_->fraExcel->IsPrintPreview()); });
    Offer(false);
    connect(ui_->fraExcel, &OfficeHost::Lost, this, [this] { Offer(false); });
}

frmPrint::~frmPrint() = default;

void frmPrint::SetFileName(const QString& fileName) {
    fileName_ = fileName;
    setWindowTitle(PlainText(QStringLiteral("TS_PrintCaption"))
                       .replace(QStringLiteral("%1"), QFileInfo(fileName).completeBaseName()));
}

// Our window must exist before another program's window can be embedded in it.
void frmPrint::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QTimer::singleShot(0, this, &frmPrint::OpenWorkbook);
}

void frmPrint::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) ui_->fraExcel->SetToolBars(isMaximized());
}

void frmPrint::OpenWorkbook() {
    if (ui_->fraExcel->IsOpen()) return;
    const WaitPointer wait;
    Offer(ui_->fraExcel->ShowWorkbook(fileName_));
}

void frmPrint::Offer(bool open) {
    if (!open) ui_->cmdPreview->setChecked(false);
    for (QPushButton* button : {ui_->cmdPrint, ui_->cmdPreview, ui_->cmdPdf})
        button->setEnabled(open);
}

void frmPrint::PrintPreview(bool shown) {
    ui_->cmdPreview->setChecked(ui_->fraExcel->SetPrintPreview(shown) && shown);
}

void frmPrint::done(int result) {
    {
        const WaitPointer wait;
        ui_->fraExcel->CloseHostedExcel();
    }
    QDialog::done(result);
}

void frmPrint::cmdPdf_Click() {
    const QString file = AskForNewFile(this, {PlainText(QStringLiteral("TS_SavePdf")),
                                              {},
                                              PlainText(QStringLiteral("TS_FilterPdf")) + QStringLiteral(" (*.pdf)"),
                                              QFileInfo(fileName_).completeBaseName() + QStringLiteral(".pdf")});
    if (file.isEmpty()) return;
    try {
        ui_->fraExcel->xlBook().ExportPdf(file);
    } catch (const office::Error& error) {
        ShowOfficeError(error, "cmdPdf_Click");
    }
}

} // namespace tessaro
