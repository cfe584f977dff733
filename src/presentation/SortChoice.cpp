#include "presentation/SortChoice.h"

#include "controls/Captions.h"
#include "session/Strings.h"
#include "ui_SortChoice.h"

namespace tessaro {

SortChoice::SortChoice(const QStringList& heads, const ColumnSort& order, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::SortChoice>()) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("TS_SortCaption")));
    SetCaption(ui_->lblColumn, QStringLiteral("TS_SortBy"));
    SetCaption(ui_->optAscending, QStringLiteral("TS_SmallestFirst"));
    SetCaption(ui_->optDescending, QStringLiteral("TS_LargestFirst"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->lstColumns->setAccessibleName(PlainText(QStringLiteral("TS_SortBy")));
    for (const QString& head : heads)
        ui_->lstColumns->addItem(QString(head).replace(QLatin1Char('\n'), QStringLiteral(" - ")));
    ui_->lstColumns->setCurrentRow(qBound(0, order.column, static_cast<int>(heads.size()) - 1));
    (order.ascending ? ui_->optAscending : ui_->optDescending)->setChecked(true);
    ui_->cmdOK->setEnabled(!heads.isEmpty());
    connect(ui_->lstColumns, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

SortChoice::~SortChoice() = default;

ColumnSort SortChoice::Order() const {
    return {std::max(ui_->lstColumns->currentRow(), 0), ui_->optAscending->isChecked()};
}

} // namespace tessaro
