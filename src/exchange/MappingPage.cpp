#include "exchange/MappingPage.h"

#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "exchange/ChoiceTableModel.h"
#include "exchange/TextTableModel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
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
    auto* above = new QHBoxLayout;
    above->setSpacing(24);
    above->addWidget(MakeTable(), 3);
    above->addWidget(MakeSettings(), 2);
    outer->addLayout(above, 3);
    outer->addWidget(MakePreview(), 2);
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

QWidget* MappingPage::MakeTable() {
    auto* table = new DataTable(this);
    table->setObjectName(QStringLiteral("grdColumns"));
    table->setAccessibleName(PlainText(QStringLiteral("TS_MappingColumns")));
    columns_ = new ChoiceTableModel(this);
    table->setModel(columns_);
    table->setItemDelegate(new ChoiceDelegate(table));
    table->setEditTriggers(QAbstractItemView::AllEditTriggers);
    int longest = 0;
    for (const QString& caption : RoleCaptions())
        longest = std::max(longest, table->fontMetrics().horizontalAdvance(caption));
    longest += 16; // the arrow of the list
    table->SetColumnWishes({{.text = 200, .weight = 2},
                            {.text = 300, .weight = 3, .takesRest = true},
                            {.text = longest, .least = longest}});
    connect(columns_, &ChoiceTableModel::Chosen, this, &MappingPage::Changed);
    return table;
}

/// Where the rows are, and the texts for all of them. On a small screen they scroll.
QWidget* MappingPage::MakeSettings() {
    auto* area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    auto* inner = new QWidget(area);
    auto* column = new QVBoxLayout(inner);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(MakeRows());
    column->addWidget(MakeConstants());
    column->addStretch();
    area->setWidget(inner);
    return area;
}

QWidget* MappingPage::MakePreview() {
    grdPreview_ = new DataTable(this);
    grdPreview_->setObjectName(QStringLiteral("grdPreview"));
    grdPreview_->setAccessibleName(PlainText(QStringLiteral("TS_PreviewTitle")));
    grdPreview_->SetHint(GetText(QStringLiteral("TS_PreviewNothing")));
    preview_ = new TextTableModel(this);
    grdPreview_->setModel(preview_);
    grdPreview_->verticalHeader()->hide(); // the first column has the rows of the file
    return grdPreview_;
}

void MappingPage::ShowPreview(const std::vector<PreviewedValue>& values) {
    const bool hasRemarks = std::ranges::any_of(values, [](const auto& value) { return !value.remark.isEmpty(); });
    QStringList heads{PlainText(QStringLiteral("TS_ReportRow"))};
    std::vector<DataTable::Wish> wishes{{.text = 50}};
    if (hasRemarks) {
        heads << PlainText(QStringLiteral("TS_PreviewRemark"));
        wishes.push_back({.text = 240, .weight = 3});
    }
    std::vector<std::size_t> roles;
    for (std::size_t role = At(Role::Time); role < kRoles; ++role) {
        const bool isUsed =
            std::ranges::any_of(values, [role](const auto& value) { return !value.texts[role].isEmpty(); });
        const bool isExtra = static_cast<Role>(role) == Role::AreaId || static_cast<Role>(role) == Role::Footnote;
        if (isExtra && !isUsed) continue;
        roles.push_back(role);
        heads << CaptionOf(static_cast<Role>(role));
        const bool isName = static_cast<Role>(role) == Role::AreaName || static_cast<Role>(role) == Role::Indicator;
        wishes.push_back({.text = isName ? 140 : 90, .weight = isName ? 1.5 : 1});
    }
    preview_->Show({{},
                    heads,
                    values.size(),
                    [values, roles, hasRemarks](std::size_t at) {
                        QStringList texts{QString::number(values[at].row)};
                        if (hasRemarks) texts << values[at].remark;
                        for (const std::size_t role : roles)
                            texts << values[at].texts[role];
                        return texts;
                    },
                    [values](std::size_t at) { return values[at].isRefused; },
                    {0}});
    grdPreview_->SetColumnWishes(std::move(wishes));
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
        connect(box, &QComboBox::activated, this, &MappingPage::Changed);
        headTells_[row] = box;
    }
    spnLast_ = AddSpin(*rowsForm_, "spnLast", "TS_MappingLast", kMostRows);
    spnLast_->setSpecialValueText(PlainText(QStringLiteral("TS_MappingToEnd")));
    connect(spnLast_, &QSpinBox::valueChanged, this, &MappingPage::Changed);
    cmbDates_ = new QComboBox(rows);
    cmbDates_->setObjectName(QStringLiteral("cmbDates"));
    for (const char* const key : {"TS_DatesDay", "TS_DatesMonth", "TS_DatesYear"})
        cmbDates_->addItem(PlainText(QLatin1String(key)));
    cmbDates_->setAccessibleName(PlainText(QStringLiteral("TS_MappingDates")));
    rowsForm_->addRow(PlainText(QStringLiteral("TS_MappingDates")), cmbDates_);
    connect(cmbDates_, &QComboBox::activated, this, &MappingPage::Changed);
    chkRepeats_ = new QCheckBox(rows);
    chkRepeats_->setObjectName(QStringLiteral("chkRepeats"));
    SetCaption(chkRepeats_, QStringLiteral("TS_MappingRepeats"));
    rowsForm_->addRow(chkRepeats_);
    connect(chkRepeats_, &QCheckBox::clicked, this, &MappingPage::Changed);
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
        connect(field, &QLineEdit::textEdited, this, &MappingPage::Changed);
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
    const std::pair<QSpinBox*, int> counts[] = {
        {spnSkipped_, draft.skippedRows}, {spnHeads_, draft.headRows}, {spnLast_, draft.lastRow}};
    for (const auto& [spin, count] : counts) {
        const QSignalBlocker quiet(spin);
        spin->setValue(count);
    }
    for (std::size_t row = 0; row < kMostHeadRows; ++row) {
        rowsForm_->setRowVisible(headTells_[row], static_cast<int>(row) < draft.headRows);
        headTells_[row]->setCurrentIndex(row < draft.headTells.size() ? static_cast<int>(draft.headTells[row]) : 0);
    }
    cmbDates_->setCurrentIndex(static_cast<int>(draft.dates));
    chkRepeats_->setChecked(draft.repeatsAbove);
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
    draft.dates = static_cast<DateTells>(cmbDates_->currentIndex());
    draft.repeatsAbove = chkRepeats_->isChecked();
    draft.headTells.clear();
    for (std::size_t row = 0; row < kMostHeadRows && static_cast<int>(row) < draft.headRows; ++row)
        draft.headTells.push_back(static_cast<Role>(headTells_[row]->currentIndex()));
    for (const Role role : kConstants)
        draft.constants[At(role)] = constants_[At(role)]->text().trimmed();
    draft.sector = txtSector_->text().trimmed();
    draft.indicatorClass = txtClass_->text().trimmed();
}

} // namespace tessaro
