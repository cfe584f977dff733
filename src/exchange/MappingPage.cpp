#include "exchange/MappingPage.h"

#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "exchange/ChoiceTableModel.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>

namespace tessaro {

namespace {

constexpr Role kConstants[] = {Role::Time, Role::AreaName, Role::Indicator, Role::Unit, Role::Subgroup, Role::Source};

QStringList RoleCaptions() {
    QStringList captions;
    for (int role = 0; role < kRoles; ++role)
        captions << CaptionOf(static_cast<Role>(role));
    return captions;
}

QPushButton* MakeButton(QWidget* parent, const char* name, const char* key) {
    auto* button = new QPushButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    SetCaption(button, QLatin1String(key));
    return button;
}

} // namespace

MappingPage::MappingPage(QWidget* parent) : QWidget(parent) {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(24, 16, 24, 16);
    outer->setSpacing(12);
    MakeTable(*outer);
    auto* below = new QHBoxLayout;
    below->setSpacing(24);
    below->addWidget(MakeRows());
    below->addWidget(MakeConstants(), 1);
    outer->addLayout(below);
    auto* buttons = new QHBoxLayout;
    QPushButton* const keep = MakeButton(this, "cmdKeepMapping", "TS_MappingKeep");
    QPushButton* const use = MakeButton(this, "cmdUseMapping", "TS_MappingUse");
    buttons->addWidget(use);
    buttons->addWidget(keep);
    buttons->addStretch();
    outer->addLayout(buttons);
    connect(keep, &QPushButton::clicked, this, &MappingPage::KeepMapping);
    connect(use, &QPushButton::clicked, this, &MappingPage::UseMapping);
}

void MappingPage::MakeTable(QVBoxLayout& outer) {
    auto* table = new DataTable(this);
    table->setObjectName(QStringLiteral("grdColumns"));
    table->setAccessibleName(PlainText(QStringLiteral("TS_MappingColumns")));
    columns_ = new ChoiceTableModel(this);
    table->setModel(columns_);
    table->setItemDelegate(new ChoiceDelegate(table));
    table->setEditTriggers(QAbstractItemView::AllEditTriggers);
    table->SetColumnWishes({{.text = 200, .weight = 2}, {.text = 400, .weight = 3, .takesRest = true}, {.text = 180}});
    outer.addWidget(table, 1);
}

QSpinBox* MappingPage::AddSpin(QFormLayout& form, const char* name, const char* key, int most) {
    auto* spin = new QSpinBox(this);
    spin->setObjectName(QLatin1String(name));
    spin->setRange(0, most);
    spin->setAccessibleName(PlainText(QLatin1String(key)));
    form.addRow(PlainText(QLatin1String(key)), spin);
    return spin;
}

QWidget* MappingPage::MakeRows() {
    auto* rows = new QWidget(this);
    rowsForm_ = new QFormLayout(rows);
    rowsForm_->setContentsMargins(0, 0, 0, 0);
    spnSkipped_ = AddSpin(*rowsForm_, "spnSkipped", "TS_MappingSkipped", 1000);
    spnHeads_ = AddSpin(*rowsForm_, "spnHeads", "TS_MappingHeads", static_cast<int>(kMostHeadRows));
    for (QSpinBox* spin : {spnSkipped_, spnHeads_})
        connect(spin, &QSpinBox::valueChanged, this, &MappingPage::RowsChanged);
    for (std::size_t row = 0; row < kMostHeadRows; ++row) {
        auto* box = new QComboBox(rows);
        box->setObjectName(QStringLiteral("cmbHeadTells_%1").arg(row));
        box->addItems(RoleCaptions());
        const QString caption = PlainText(QStringLiteral("TS_MappingHeadTells"))
                                    .replace(QLatin1String("%1"), QLocale().toString(int(row) + 1));
        box->setAccessibleName(caption);
        rowsForm_->addRow(caption, box);
        headTells_[row] = box;
    }
    spnLast_ = AddSpin(*rowsForm_, "spnLast", "TS_MappingLast", kMostRows);
    spnLast_->setSpecialValueText(PlainText(QStringLiteral("TS_MappingToEnd")));
    return rows;
}

QWidget* MappingPage::MakeConstants() {
    auto* constants = new QWidget(this);
    auto* form = new QFormLayout(constants);
    form->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& caption, const QString& name) {
        auto* field = new QLineEdit(constants);
        field->setObjectName(name);
        field->setMaxLength(255);
        field->setAccessibleName(caption);
        form->addRow(caption, field);
        return field;
    };
    for (const Role role : kConstants) {
        const QString caption =
            PlainText(QStringLiteral("TS_MappingForAll")).replace(QLatin1String("%1"), CaptionOf(role));
        constants_[At(role)] = add(caption, QStringLiteral("txtForAll_%1").arg(At(role)));
    }
    txtSector_ = add(PlainText(QStringLiteral("Comm_Sector")), QStringLiteral("txtSector"));
    txtClass_ = add(PlainText(QStringLiteral("Comm_Class")), QStringLiteral("txtClass"));
    return constants;
}

void MappingPage::ShowDraft(const ImportDraft& draft, const QStringList& samples) {
    std::vector<ChoiceRow> rows;
    for (std::size_t column = 0; column < draft.columns.size(); ++column)
        rows.push_back({{draft.columns[column].head, samples.value(static_cast<qsizetype>(column))},
                        RoleCaptions(),
                        static_cast<int>(draft.columns[column].role)});
    columns_->Show({PlainText(QStringLiteral("TS_MappingColumn")), PlainText(QStringLiteral("TS_MappingTexts")),
                    PlainText(QStringLiteral("TS_MappingMeans"))},
                   std::move(rows));
    for (QSpinBox* spin : {spnSkipped_, spnHeads_}) {
        const QSignalBlocker quiet(spin);
        spin->setValue(spin == spnSkipped_ ? draft.skippedRows : draft.headRows);
    }
    spnLast_->setValue(draft.lastRow);
    for (std::size_t row = 0; row < kMostHeadRows; ++row) {
        rowsForm_->setRowVisible(headTells_[row], static_cast<int>(row) < draft.headRows);
        headTells_[row]->setCurrentIndex(row < draft.headTells.size() ? static_cast<int>(draft.headTells[row]) : 0);
    }
    for (const Role role : kConstants)
        constants_[At(role)]->setText(draft.constants[At(role)]);
    txtSector_->setText(draft.sector);
    txtClass_->setText(draft.indicatorClass);
}

void MappingPage::TakeInto(ImportDraft& draft) const {
    const std::vector<ChoiceRow>& rows = columns_->Rows();
    for (std::size_t column = 0; column < std::min(draft.columns.size(), rows.size()); ++column)
        draft.columns[column].role = static_cast<Role>(rows[column].chosen);
    draft.skippedRows = spnSkipped_->value();
    draft.headRows = spnHeads_->value();
    draft.lastRow = spnLast_->value();
    draft.headTells.clear();
    for (std::size_t row = 0; row < kMostHeadRows && static_cast<int>(row) < draft.headRows; ++row)
        draft.headTells.push_back(static_cast<Role>(headTells_[row]->currentIndex()));
    for (const Role role : kConstants)
        draft.constants[At(role)] = constants_[At(role)]->text().trimmed();
    draft.sector = txtSector_->text().trimmed();
    draft.indicatorClass = txtClass_->text().trimmed();
}

} // namespace tessaro
