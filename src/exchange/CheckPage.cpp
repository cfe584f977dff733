#include "exchange/CheckPage.h"

#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "exchange/TextTableModel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>

namespace tessaro {

CheckPage::CheckPage(QWidget* parent) : QWidget(parent) {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(24, 16, 24, 16);
    outer->setSpacing(12);
    auto* row = new QHBoxLayout;
    cmbTable_ = new QComboBox(this);
    cmbTable_->setObjectName(QStringLiteral("cmbTable"));
    cmbTable_->setAccessibleName(PlainText(QStringLiteral("TS_PageCheck")));
    cmbTable_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto* save = new QPushButton(this);
    save->setObjectName(QStringLiteral("cmdSaveReport"));
    save->setAutoDefault(false);
    SetCaption(save, QStringLiteral("TS_ReportSave"));
    row->addWidget(cmbTable_);
    row->addStretch();
    row->addWidget(save);
    outer->addLayout(row);
    auto* table = new DataTable(this);
    table->setObjectName(QStringLiteral("grdReport"));
    table->setAccessibleName(PlainText(QStringLiteral("TS_PageCheck")));
    table->SetHint(GetText(QStringLiteral("TS_ReportNothing")));
    rows_ = new TextTableModel(this);
    table->setModel(rows_);
    outer->addWidget(table, 1);
    table->SetColumnWishes({{.text = 420, .weight = 3}, {.text = 160}, {.text = 300, .weight = 2}, {.text = 200}});
    connect(cmbTable_, &QComboBox::currentIndexChanged, this, &CheckPage::ShowTable);
    connect(save, &QPushButton::clicked, this, &CheckPage::SaveReport);
}

void CheckPage::ShowCheck(const CheckedImport& checked) {
    tables_ = ReportOf(checked);
    const QSignalBlocker quiet(cmbTable_);
    cmbTable_->clear();
    for (const ImportTable& table : tables_)
        cmbTable_->addItem(table.name + QStringLiteral(" (") +
                           QLocale::system().toString(static_cast<qulonglong>(table.rows)) + QLatin1Char(')'));
    cmbTable_->setItemText(0, tables_.front().name);
    ShowTable(0);
}

void CheckPage::Clear() {
    tables_.clear();
    rows_->Show({});
}

void CheckPage::ShowTable(int number) {
    if (number >= 0 && number < static_cast<int>(tables_.size()))
        rows_->Show(tables_[static_cast<std::size_t>(number)]);
}

} // namespace tessaro
