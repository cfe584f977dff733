#include "exchange/SourcePage.h"

#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "exchange/TextTableModel.h"
#include "formats/Encodings.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace tessaro {

namespace {

constexpr char kDelimiters[] = {',', ';', '\t', '|'};
constexpr char kDecimals[] = {'.', ','};
constexpr char kThousands[] = {'\0', ',', '.', ' ', '\''};

template <std::size_t count> int PlaceOf(const char (&signs)[count], char sign) {
    for (std::size_t i = 0; i < count; ++i)
        if (signs[i] == sign) return static_cast<int>(i);
    return 0;
}

/// Signs as the lists show them; those that can't be seen have names.
template <std::size_t count> QStringList Shown(const char (&signs)[count]) {
    QStringList texts;
    for (const char sign : signs)
        texts << (sign == '\t'   ? PlainText(QStringLiteral("TS_SignTab"))
                  : sign == ' '  ? PlainText(QStringLiteral("TS_SignBlank"))
                  : sign == '\0' ? PlainText(QStringLiteral("TS_SignNone"))
                                 : QString(QLatin1Char(sign)));
    return texts;
}

QStringList EncodingNames() {
    QStringList names;
    for (const QByteArray& name : OfferedEncodings())
        names << QString::fromLatin1(name);
    return names;
}

} // namespace

SourcePage::SourcePage(QWidget* parent) : QWidget(parent), form_(new QFormLayout) {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(24, 16, 24, 16);
    outer->setSpacing(16);
    outer->addLayout(form_);
    auto* fileRow = new QHBoxLayout;
    txtFile_ = new QLineEdit(this);
    txtFile_->setObjectName(QStringLiteral("txtFile"));
    txtFile_->setReadOnly(true);
    txtFile_->setAccessibleName(PlainText(QStringLiteral("TS_ImportFile")));
    QPushButton* const browse = MakeButton("cmdBrowse", "TS_ImportBrowse");
    browse->setAutoDefault(true); // Enter chooses a file while there is none
    setFocusProxy(browse);
    fileRow->addWidget(txtFile_);
    fileRow->addWidget(browse);
    form_->addRow(PlainText(QStringLiteral("TS_ImportFile")), fileRow);
    cmbSheet_ = AddBox(*form_, "cmbSheet", "TS_ImportSheet", {});
    cmbEncoding_ = AddBox(*form_, "cmbEncoding", "TS_ImportEncoding", EncodingNames());
    cmbDelimiter_ = AddBox(*form_, "cmbDelimiter", "TS_ImportDelimiter", Shown(kDelimiters));
    cmbDecimal_ = AddBox(*form_, "cmbDecimal", "TS_ImportDecimal", Shown(kDecimals));
    cmbThousands_ = AddBox(*form_, "cmbThousands", "TS_ImportThousands", Shown(kThousands));
    MakeTargets(*form_);
    MakeTree(*form_);
    table_ = new DataTable(this);
    table_->setObjectName(QStringLiteral("grdRows"));
    table_->setAccessibleName(PlainText(QStringLiteral("TS_ImportRows")));
    table_->SetHint(GetText(QStringLiteral("TS_ImportNoFile")));
    rows_ = new TextTableModel(this);
    table_->setModel(rows_);
    outer->addWidget(table_, 1);
    connect(browse, &QPushButton::clicked, this, &SourcePage::Browse);
}

QPushButton* SourcePage::MakeButton(const char* name, const char* key) {
    auto* button = new QPushButton(this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    SetCaption(button, QLatin1String(key));
    return button;
}

QComboBox* SourcePage::AddBox(QFormLayout& form, const char* name, const char* key, const QStringList& texts) {
    auto* box = new QComboBox(this);
    box->setObjectName(QLatin1String(name));
    box->addItems(texts);
    box->setAccessibleName(PlainText(QLatin1String(key)));
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    form.addRow(PlainText(QLatin1String(key)), box);
    form.setRowVisible(box, false);
    connect(box, &QComboBox::activated, this, &SourcePage::Changed);
    return box;
}

void SourcePage::MakeTargets(QFormLayout& form) {
    static constexpr std::array<const char*, 4> keys{"TS_IntoTemplate", "TS_IntoLists", "TS_IntoCopy", "TS_IntoItself"};
    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < targets_.size(); ++i) {
        targets_[i] = new QRadioButton(this);
        targets_[i]->setObjectName(QStringLiteral("optInto_%1").arg(i));
        SetCaption(targets_[i], QLatin1String(keys[i]));
        grid->addWidget(targets_[i], static_cast<int>(i) / 2, static_cast<int>(i) % 2);
    }
    form.addRow(PlainText(QStringLiteral("TS_ImportInto")), grid);
    SetInto(ImportInto::Copy);
}

/// Where the areas of a new database come from.
void SourcePage::MakeTree(QFormLayout& form) {
    treeRow_ = new QWidget(this);
    auto* row = new QHBoxLayout(treeRow_);
    row->setContentsMargins(0, 0, 0, 0);
    txtAreaTree_ = new QLineEdit(treeRow_);
    txtAreaTree_->setObjectName(QStringLiteral("txtAreaTree"));
    txtAreaTree_->setClearButtonEnabled(true);
    txtAreaTree_->setPlaceholderText(PlainText(QStringLiteral("TS_TreeNone")));
    txtAreaTree_->setAccessibleName(PlainText(QStringLiteral("TS_TreeFile")));
    QPushButton* const browse = MakeButton("cmdAreaTree", "TS_TreeBrowse");
    row->addWidget(txtAreaTree_);
    row->addWidget(browse);
    form.addRow(PlainText(QStringLiteral("TS_TreeFile")), treeRow_);
    form.setRowVisible(treeRow_, Into() == ImportInto::Template);
    connect(browse, &QPushButton::clicked, this, &SourcePage::BrowseTree);
    connect(targets_[static_cast<std::size_t>(ImportInto::Template)], &QRadioButton::toggled, this,
            [this](bool isNew) { form_->setRowVisible(treeRow_, isNew); });
}

QString SourcePage::AreaTree() const {
    return Into() == ImportInto::Template ? txtAreaTree_->text().trimmed() : QString();
}

void SourcePage::SetAreaTree(const QString& file) {
    txtAreaTree_->setText(file);
}

QString SourcePage::File() const {
    return txtFile_->text();
}

void SourcePage::SetFile(const QString& file) {
    txtFile_->setText(file);
}

ImportInto SourcePage::Into() const {
    for (std::size_t i = 0; i < targets_.size(); ++i)
        if (targets_[i]->isChecked()) return static_cast<ImportInto>(i);
    return ImportInto::Template;
}

void SourcePage::SetInto(ImportInto into) {
    targets_[static_cast<std::size_t>(into)]->setChecked(true);
}

void SourcePage::SetDatabase(bool isOpen, bool mayChange) {
    for (const ImportInto into : {ImportInto::Lists, ImportInto::Copy, ImportInto::Itself})
        targets_[static_cast<std::size_t>(into)]->setEnabled(isOpen && (into != ImportInto::Itself || mayChange));
    if (!isOpen) SetInto(ImportInto::Template);
}

void SourcePage::ShowDraft(const ImportDraft& draft, const QStringList& sheets, const ImportTable& rows) {
    const bool isCsv = draft.kind == FileKind::Csv;
    form_->setRowVisible(cmbSheet_, draft.kind == FileKind::Workbook);
    form_->setRowVisible(cmbEncoding_, isCsv);
    form_->setRowVisible(cmbDelimiter_, isCsv);
    form_->setRowVisible(cmbDecimal_, true);
    form_->setRowVisible(cmbThousands_, true);
    cmbSheet_->clear();
    cmbSheet_->addItems(sheets);
    if (!draft.sheet.isEmpty()) cmbSheet_->setCurrentText(draft.sheet);
    cmbEncoding_->setCurrentText(QString::fromLatin1(draft.csv.encoding));
    cmbDelimiter_->setCurrentIndex(PlaceOf(kDelimiters, draft.csv.delimiter));
    cmbDecimal_->setCurrentIndex(PlaceOf(kDecimals, draft.numbers.decimal));
    cmbThousands_->setCurrentIndex(PlaceOf(kThousands, draft.numbers.thousands));
    rows_->Show(rows);
}

void SourcePage::TakeInto(ImportDraft& draft) const {
    draft.sheet = cmbSheet_->currentIndex() > 0 ? cmbSheet_->currentText() : QString();
    if (draft.kind == FileKind::Csv) {
        draft.csv.encoding = cmbEncoding_->currentText().toLatin1();
        draft.csv.delimiter = kDelimiters[cmbDelimiter_->currentIndex()];
    }
    draft.numbers.decimal = kDecimals[cmbDecimal_->currentIndex()];
    draft.numbers.thousands = kThousands[cmbThousands_->currentIndex()];
}

} // namespace tessaro
