#include "presentation/TableOptionsPage.h"

#include "controls/Captions.h"
#include "controls/FontDialogs.h"
#include "session/Strings.h"
#include "ui_TableOptionsPage.h"

namespace tessaro {

namespace {

constexpr int kTitleSize = 14;
constexpr int kSubTitleSize = 11;
constexpr int kBodySize = 10;
constexpr int kLargestShown = 16; ///< points; a larger font is used, but not shown in the field

/// A title field keeps the chosen font as a property, since it is drawn in a size within bounds.
void GiveFont(QWidget* field, QFont font) {
    field->setProperty("presentationFont", font);
    font.setPointSize(qBound(6, font.pointSize(), kLargestShown));
    field->setFont(font);
}

QFont FontOf(const QWidget* field) {
    return field->property("presentationFont").value<QFont>();
}

SheetFont SheetFontOf(const QWidget* field) {
    const QFont font = FontOf(field);
    return {font.family(), font.pointSizeF() > 0 ? font.pointSizeF() : kBodySize, font.bold(), font.italic()};
}

} // namespace

TableOptionsPage::TableOptionsPage(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::TableOptionsPage>()) {
    ui_->setupUi(this);
    const auto font = [](int size, bool bold) {
        QFont made = LanguageFont();
        made.setPointSize(size);
        made.setBold(bold);
        return made;
    };
    GiveFont(ui_->txtTitle, font(kTitleSize, true));
    GiveFont(ui_->txtSubTitle, font(kSubTitleSize, false));
    GiveFont(ui_->txtBody, font(kBodySize, false));
    ui_->chkFormatTable->setChecked(true);
    ui_->CmdSort->setEnabled(false);
    ui_->lblSort->setEnabled(false);
    ui_->cmdAddColor->setEnabled(false);
    SetFormCaptions();
    ConnectControls();
}

TableOptionsPage::~TableOptionsPage() = default;

void TableOptionsPage::ConnectControls() {
    for (QLineEdit* field : {ui_->txtTitle, ui_->txtSubTitle})
        connect(field, &QLineEdit::textEdited, this, [this] { bTitleChanged_ = true; });
    connect(ui_->cmdTitleFont, &QPushButton::clicked, this,
            [this] { ChooseFont(ui_->txtTitle, QStringLiteral("TS_TitleFont")); });
    connect(ui_->cmdSubTitleFont, &QPushButton::clicked, this,
            [this] { ChooseFont(ui_->txtSubTitle, QStringLiteral("TS_SubTitleFont")); });
    connect(ui_->cmdBodyFont, &QPushButton::clicked, this,
            [this] { ChooseFont(ui_->txtBody, QStringLiteral("TS_BodyFont")); });
    connect(ui_->chkSort, &QCheckBox::toggled, ui_->CmdSort, &QWidget::setEnabled);
    connect(ui_->chkSort, &QCheckBox::toggled, ui_->lblSort, &QWidget::setEnabled);
    connect(ui_->chkAddColor, &QCheckBox::toggled, ui_->cmdAddColor, &QWidget::setEnabled);
    connect(ui_->chkAddColor, &QCheckBox::toggled, this, &TableOptionsPage::AddColorChanged);
    connect(ui_->CmdSort, &QPushButton::clicked, this, &TableOptionsPage::SortRequested);
    connect(ui_->cmdAddColor, &QPushButton::clicked, this, &TableOptionsPage::ColorRequested);
}

void TableOptionsPage::SetFormCaptions() {
    SetCaption(ui_->lblTitle, QStringLiteral("Table Title"));
    SetCaption(ui_->lblSubTitle, QStringLiteral("COMM_SubTitle"));
    SetCaption(ui_->lblBody, QStringLiteral("Table Body Text"));
    ui_->lblTitle->setBuddy(ui_->txtTitle);
    ui_->lblSubTitle->setBuddy(ui_->txtSubTitle);
    ui_->lblBody->setBuddy(ui_->txtBody);
    for (QLineEdit* field : {ui_->txtTitle, ui_->txtSubTitle, ui_->txtBody}) {
        GiveFont(field, FontOf(field)); // the form's own font doesn't go for them
        field->setAlignment((isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter);
    }
    ui_->txtTitle->setAccessibleName(PlainText(QStringLiteral("Table Title")));
    ui_->txtSubTitle->setAccessibleName(PlainText(QStringLiteral("COMM_SubTitle")));
    ui_->txtBody->setAccessibleName(PlainText(QStringLiteral("Table Body Text")));
    ui_->txtBody->setText(PlainText(QStringLiteral("TS_BodySample")));
    const std::pair<QPushButton*, const char*> fonts[] = {{ui_->cmdTitleFont, "TS_TitleFont"},
                                                          {ui_->cmdSubTitleFont, "TS_SubTitleFont"},
                                                          {ui_->cmdBodyFont, "TS_BodyFont"}};
    for (const auto& [button, tip] : fonts) {
        SetCaption(button, QStringLiteral("TS_ChooseFont"));
        button->setAccessibleName(PlainText(QLatin1String(tip)));
    }
    QFont heading = ui_->lblLook->font();
    heading.setBold(true);
    ui_->lblLook->setFont(heading);
    SetCaption(ui_->lblLook, QStringLiteral("TS_SheetOptions"));
    SetCaption(ui_->chkFormatTable, QStringLiteral("Format Table"));
    SetCaption(ui_->chkSort, QStringLiteral("Graph_Sort"));
    SetCaption(ui_->CmdSort, QStringLiteral("Sort"));
    SetCaption(ui_->chkAddColor, QStringLiteral("AddColor"));
    SetCaption(ui_->cmdAddColor, QStringLiteral("Apply Color"));
    SetCaption(ui_->chkSameDecimals, QStringLiteral("TS_SameDecimals"));
}

void TableOptionsPage::ChooseFont(QWidget* field, const QString& key) {
    if (const auto font = AskForFont(this, PlainText(key), FontOf(field))) GiveFont(field, *font);
}

TableOptions TableOptionsPage::Options() const {
    TableOptions options;
    options.title = ui_->txtTitle->text().trimmed();
    options.subTitle = ui_->txtSubTitle->text().trimmed();
    options.titleFont = SheetFontOf(ui_->txtTitle);
    options.subTitleFont = SheetFontOf(ui_->txtSubTitle);
    options.bodyFont = SheetFontOf(ui_->txtBody);
    options.formatTable = ui_->chkFormatTable->isChecked();
    options.sort = ui_->chkSort->isChecked();
    options.sortColumn = sort_.column;
    options.sortAscending = sort_.ascending;
    options.addColor = ui_->chkAddColor->isChecked();
    options.sameDecimals = ui_->chkSameDecimals->isChecked();
    return options;
}

void TableOptionsPage::SetOptions(const TableOptions& options, bool titleTyped) {
    const auto give = [](QWidget* field, const SheetFont& font) {
        QFont made(font.name);
        made.setPointSizeF(font.size);
        made.setBold(font.bold);
        made.setItalic(font.italic);
        GiveFont(field, made);
    };
    ui_->txtTitle->setText(options.title);
    ui_->txtSubTitle->setText(options.subTitle);
    give(ui_->txtTitle, options.titleFont);
    give(ui_->txtSubTitle, options.subTitleFont);
    give(ui_->txtBody, options.bodyFont);
    ui_->chkFormatTable->setChecked(options.formatTable);
    ui_->chkSort->setChecked(options.sort);
    ui_->chkAddColor->setChecked(options.addColor);
    ui_->chkSameDecimals->setChecked(options.sameDecimals);
    sort_ = {options.sortColumn, options.sortAscending};
    bTitleChanged_ = titleTyped;
}

void TableOptionsPage::SuggestTitles(const QString& title, const QString& subTitle) {
    if (bTitleChanged_) return;
    ui_->txtTitle->setText(title);
    ui_->txtSubTitle->setText(subTitle);
}

bool TableOptionsPage::AddsColor() const {
    return ui_->chkAddColor->isChecked();
}

void TableOptionsPage::SetSorting(const ColumnSort& sort, const QString& head) {
    sort_ = sort;
    ui_->lblSort->setText(head.isEmpty() ? PlainText(QStringLiteral("TS_SortFirst"))
                                         : QString(head).replace(QLatin1Char('\n'), QStringLiteral(" - ")));
}

} // namespace tessaro
