#include "selection/frmAutoSelect.h"

#include "controls/Captions.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "ui_frmAutoSelect.h"

namespace tessaro {

frmAutoSelect::frmAutoSelect(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmAutoSelect>()) {
    ui_->setupUi(this);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmAutoSelect::cmdOK_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &frmAutoSelect::reject);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("Filters")));
    ui_->lblQuestion->setText(GetText(QStringLiteral("TS_AutoSelectQuestion")));
    SetCaption(ui_->chkShow, QStringLiteral("DoNotAsk"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
}

frmAutoSelect::~frmAutoSelect() = default;

void frmAutoSelect::PrepareFor(selection::Stage stage) {
    const auto show = [](QCheckBox* box, const selection::AutoSelectOption& option) {
        SetCaption(box, option.captionKey);
        box->setChecked(option.available);
        box->setEnabled(option.available);
        box->setToolTip(option.available ? QString() : PlainText(QStringLiteral("TS_NothingSelectedShort")));
    };
    const selection::AutoSelectOptions options = selection::PrepareFor(stage);
    show(ui_->chkOptOne, options.first);
    show(ui_->chkOptTwo, options.second);
    ui_->chkShow->setChecked(false);
    cancelled_ = true;
}

bool frmAutoSelect::UseFirst() const {
    return ui_->chkOptOne->isChecked();
}

bool frmAutoSelect::UseSecond() const {
    return ui_->chkOptTwo->isChecked();
}

void frmAutoSelect::cmdOK_Click() {
    if (ui_->chkShow->isChecked()) ShowAutoSelectForm = false;
    cancelled_ = false;
    accept();
}

void frmAutoSelect::reject() {
    cancelled_ = true;
    QDialog::reject();
}

selection::AutoSelectQuestion AskAutoSelect(QWidget* parent) {
    return [parent](selection::Stage stage) -> std::optional<selection::OtherStages> {
        frmAutoSelect question(parent);
        question.PrepareFor(stage);
        question.exec();
        if (question.Cancelled()) return std::nullopt;
        return selection::OtherStages{question.UseFirst(), question.UseSecond()};
    };
}

} // namespace tessaro
