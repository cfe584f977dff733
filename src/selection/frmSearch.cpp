#include "selection/frmSearch.h"

#include "controls/Captions.h"
#include "session/Frame.h"
#include "ui_frmSearch.h"

namespace tessaro {

frmSearch::frmSearch(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmSearch>()) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("TLB_SEARCH")));
    SetCaption(ui_->lblSearchCaption, QStringLiteral("SEARCH CAPTION"));
    SetCaption(ui_->cmdSearch, QStringLiteral("TLB_SEARCH"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->lblSearchCaption->setBuddy(ui_->txtSearchCriteria);
    connect(ui_->cmdSearch, &QPushButton::clicked, this, &frmSearch::cmdSearch_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmSearch::~frmSearch() = default;

QString frmSearch::Text() const {
    return result() == QDialog::Accepted ? ui_->txtSearchCriteria->text().trimmed() : QString();
}

void frmSearch::cmdSearch_Click() {
    if (ui_->txtSearchCriteria->text().trimmed().isEmpty()) return;
    TheFrame().SetStatusText({});
    accept();
}

} // namespace tessaro
