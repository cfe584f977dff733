#include "metadata/frmInformationSheet.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "metadata/Information.h"
#include "metadata/SheetBrowser.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"

#include <QFile>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaro {

frmInformationSheet::frmInformationSheet(QWidget* parent) : QDialog(parent), txtInformation_(new SheetBrowser(this)) {
    setObjectName(QStringLiteral("frmInformationSheet"));
    setWindowTitle(PlainText(QStringLiteral("Information")));
    resize(640, 440);
    txtInformation_->setObjectName(QStringLiteral("txtInformation"));
    auto* cmdOK = new QPushButton(this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    SetCaption(cmdOK, QStringLiteral("OK BUTTON"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kGrid * 2, theme::kGrid * 2, theme::kGrid * 2, theme::kGrid * 2);
    column->setSpacing(theme::kGrid * 2);
    column->addWidget(txtInformation_);
    column->addWidget(cmdOK, 0, Qt::AlignTrailing);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    SetFormFonts(this);
}

void frmInformationSheet::SetText(const QString& text) {
    txtInformation_->ShowSheet(text);
}

void ShowInformationInBROW(const QString& idValue, const QString& code, const QString& formName, bool idIsGId,
                           QWidget* parent) {
    ErrorTrap trap("ShowInformationInBROW");
    const QString file = JoinPath({TempFolder, QStringLiteral("Information.htm")});
    QFile::remove(file);
    const auto text = metadata::InformationOf(idValue, code, formName, idIsGId);
    if (!text) {
        ShowMessage(QStringLiteral("035"));
        return;
    }
    if (!ReplaceFile(file, text->toUtf8())) LogNote(QStringLiteral("ShowInformationInBROW: can't write ") + file);
    frmInformationSheet sheet(parent);
    sheet.SetText(*text);
    sheet.exec();
}

} // namespace tessaro
