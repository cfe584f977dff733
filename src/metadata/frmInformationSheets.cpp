#include "metadata/frmInformationSheets.h"

#include "controls/Captions.h"
#include "controls/KeyedItem.h"
#include "controls/Printing.h"
#include "metadata/SheetText.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Strings.h"
#include "ui_frmInformationSheets.h"

#include <QLocale>

namespace tessaro {

namespace {

QString Heading(const QString& name) {
    return (LanguageIsRightToLeft() ? QStringLiteral("<h3 align=\"right\">") : QStringLiteral("<h3>")) +
           TipOf(name).toHtmlEscaped() + QStringLiteral("</h3>");
}

} // namespace

frmInformationSheets::frmInformationSheets(const QString& code, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmInformationSheets>()), code_(code) {
    ui_->setupUi(this);
    setWindowTitle(PlainText(QStringLiteral("TS_InformationSheets")));
    SetCaption(ui_->cmdPrintAll, QStringLiteral("TS_PrintAll"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetFormFonts(this);
    ui_->spliter->setSizes({320, 600});
    ui_->lstSource->setModel(&names_);
    ui_->lstSource->setAccessibleName(windowTitle());
    ui_->PB_Child->hide();
    connect(ui_->lstSource->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) { ShowInfo(index.row()); });
    connect(ui_->cmdPrintAll, &QPushButton::clicked, this, &frmInformationSheets::cmdPrintAll_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    FillList();
}

frmInformationSheets::~frmInformationSheets() = default;

void frmInformationSheets::FillList() {
    const ErrorTrap trap("frmInformationSheets");
    items_ = metadata::InformationList(code_);
    QStringList names;
    for (const metadata::InformationItem& item : items_)
        names << item.name;
    names_.setStringList(names);
    ui_->cmdPrintAll->setEnabled(!items_.empty());
    if (items_.empty())
        ui_->txtAllInfo->ShowSheet(GetText(QStringLiteral("035")));
    else
        ui_->lstSource->setCurrentIndex(names_.index(0));
}

void frmInformationSheets::ShowInfo(int row) {
    if (row < 0 || row >= static_cast<int>(items_.size())) return;
    const ErrorTrap trap("lstSource_Click");
    const metadata::InformationItem& item = items_[static_cast<std::size_t>(row)];
    metadata::SheetBounds left;
    ui_->txtAllInfo->ShowHtml(Heading(item.name) +
                              metadata::SheetAsHtml(metadata::InformationText(code_, item.gid), left));
}

void frmInformationSheets::cmdPrintAll_Click() {
    ErrorTrap trap("cmdPrintAll_Click");
    TheFrame().SetBusy(true);
    ui_->PB_Child->setRange(0, static_cast<int>(items_.size()));
    ui_->PB_Child->show();
    QString pages;
    metadata::SheetBounds left = metadata::kAllSheetsBounds;
    int done = 0;
    for (const metadata::InformationItem& item : items_) {
        pages += Heading(item.name) + metadata::SheetAsHtml(metadata::InformationText(code_, item.gid), left) +
                 QStringLiteral("<hr>");
        ui_->PB_Child->setValue(++done);
        if (done % 20 == 0) ui_->PB_Child->repaint();
    }
    {
        const QSignalBlocker quiet(ui_->lstSource->selectionModel());
        ui_->lstSource->setCurrentIndex({}); // all of them are on show; a click shows one again
    }
    ui_->txtAllInfo->ShowHtml(pages);
    ui_->StatusBar1->setText(QLocale().toString(items_.size()));
    ui_->PB_Child->hide();
    TheFrame().SetBusy(false);
    PrintDocument(this, *ui_->txtAllInfo->document());
}

} // namespace tessaro
