#include "map/classes/ClassesPage.h"

#include "controls/Captions.h"
#include "controls/ColorDialogs.h"
#include "controls/FileDialogs.h"
#include "controls/Theme.h"
#include "map/classes/BreakChoices.h"
#include "map/classes/BreakHistogram.h"
#include "map/classes/ClassColors.h"
#include "map/classes/ClassDialogs.h"
#include "map/classes/ClassLabels.h"
#include "map/classes/ColorSchemes.h"
#include "map/classes/Decimals.h"
#include "map/classes/MapDataValues.h"
#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "ui_ClassesPage.h"

#include <QDir>
#include <QLocale>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace tessaro {

namespace {

constexpr QSize kSchemePicture(72, 14);
constexpr const char* kDefaultPalette = "Default.plf";

/// A strip of colours, the lowest class at the left.
QPixmap Strip(const std::vector<QColor>& colors, QSize size) {
    QPixmap picture = EmptyPicture(size);
    QPainter painter(&picture);
    const double width = static_cast<double>(size.width()) / static_cast<double>(colors.size());
    for (std::size_t i = 0; i < colors.size(); ++i)
        painter.fillRect(QRectF(static_cast<double>(i) * width, 0, width + 1, size.height()), colors[i]);
    return picture;
}

std::vector<QColor> ColorsOf(const ClassTable& table) {
    std::vector<QColor> colors;
    for (const ClassLook& look : table.looks)
        colors.push_back(look.color);
    return colors;
}

void SetColors(ClassTable& table, const std::vector<QColor>& colors) {
    for (std::size_t i = 0; i < colors.size() && i < table.looks.size(); ++i)
        table.looks[i].color = ClassColor(colors[i]);
}

QString CountedText(const char* key, int count) {
    return FilledText(QLatin1String(key), {QLocale().toString(count)});
}

} // namespace

ClassesPage::ClassesPage(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::ClassesPage>()) {
    ui_->setupUi(this);
    histogram_ = new BreakHistogram(this);
    ui_->histogramPlace->addWidget(histogram_);
    SetFormCaptions();
    ConnectControls();
}

ClassesPage::~ClassesPage() = default;

void ClassesPage::ConnectControls() {
    connect(ui_->cboBBreak, &QComboBox::currentIndexChanged, this, &ClassesPage::ChoiceChanged);
    connect(ui_->txtBreakCount, &QSpinBox::valueChanged, this, &ClassesPage::EnableApply);
    connect(ui_->txtDec, &QSpinBox::valueChanged, this, &ClassesPage::EnableApply);
    connect(ui_->txtMinValue, &QLineEdit::textChanged, this, &ClassesPage::EnableApply);
    connect(ui_->txtMaxValue, &QLineEdit::textChanged, this, &ClassesPage::EnableApply);
    for (QLineEdit* field : {ui_->txtMinValue, ui_->txtMaxValue}) {
        field->setLayoutDirection(Qt::LeftToRight); // a minus stands before its number in every language
        connect(field, &QLineEdit::returnPressed, ui_->cmdApply, &QPushButton::click);
    }
    connect(ui_->cmdApply, &QPushButton::clicked, this, &ClassesPage::cmdApply_Click);
    connect(ui_->cmdSmoothColors, &QPushButton::clicked, this, &ClassesPage::cmdSmoothColors_Click);
    connect(ui_->SSCmdSavePalette, &QPushButton::clicked, this, &ClassesPage::SSCmdSavePalette_Click);
    connect(ui_->SSCmdLoadPalette, &QPushButton::clicked, this, &ClassesPage::SSCmdLoadPalette_Click);
    connect(ui_->cboColorScheme, &QComboBox::activated, this, &ClassesPage::UseScheme);
    connect(ui_->grdClassBreaks, &QTableWidget::cellActivated, this, &ClassesPage::CellChosen);
    // Where the desktop activates with one click, the signal above has come already.
    if (!style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, ui_->grdClassBreaks))
        connect(ui_->grdClassBreaks, &QTableWidget::cellClicked, this, &ClassesPage::CellChosen);
    connect(ui_->grdClassBreaks, &QTableWidget::cellEntered, this, &ClassesPage::Hover);
    connect(ui_->grdClassBreaks, &QTableWidget::viewportEntered, this, [this] { Hover(-1); });
    ui_->grdClassBreaks->setMouseTracking(true);
    ui_->grdClassBreaks->viewport()->installEventFilter(this);
    connect(histogram_, &BreakHistogram::BoundMoved, this, &ClassesPage::MoveBound);
}

void ClassesPage::SetFormCaptions() {
    SetCaption(ui_->lblBreak, QStringLiteral("TS_BreakMethod"));
    SetCaption(ui_->lblBreakCount, QStringLiteral("TS_BreakCount"));
    SetCaption(ui_->lblMinValue, QStringLiteral("Comm_Min"));
    SetCaption(ui_->lblMaxValue, QStringLiteral("Comm_Max"));
    SetCaption(ui_->lblDec, QStringLiteral("Comm_DECIMAL"));
    SetCaption(ui_->lblScheme, QStringLiteral("Colors"));
    SetCaption(ui_->cmdApply, QStringLiteral("APPLY BUTTON"));
    SetCaption(ui_->cmdSmoothColors, QStringLiteral("TS_SmoothColors"));
    SetCaption(ui_->SSCmdSavePalette, QStringLiteral("TS_SavePalette"));
    SetCaption(ui_->SSCmdLoadPalette, QStringLiteral("TS_LoadPalette"));
    const std::pair<QLabel*, QWidget*> named[] = {
        {ui_->lblBreak, ui_->cboBBreak},      {ui_->lblBreakCount, ui_->txtBreakCount},
        {ui_->lblMinValue, ui_->txtMinValue}, {ui_->lblMaxValue, ui_->txtMaxValue},
        {ui_->lblDec, ui_->txtDec},           {ui_->lblScheme, ui_->cboColorScheme}};
    for (const auto& [label, field] : named) {
        label->setBuddy(field);
        field->setAccessibleName(label->accessibleName());
    }
    for (QLineEdit* field : {ui_->txtMinValue, ui_->txtMaxValue})
        field->setAlignment(ReadingSide());
    histogram_->setAccessibleName(PlainText(QStringLiteral("TS_Histogram")));
    ui_->grdClassBreaks->setAccessibleName(PlainText(QStringLiteral("Legend")));
    FillChoices();
    FillSchemes();
}

void ClassesPage::FillChoices() {
    const QSignalBlocker quiet(ui_->cboBBreak);
    const int index = std::max(0, ui_->cboBBreak->currentIndex());
    ui_->cboBBreak->clear();
    for (const BreakChoiceTexts& each : BreakChoices()) {
        ui_->cboBBreak->addItem(PlainText(QLatin1String(each.caption)));
        const QString reference = QString::fromUtf8(each.reference);
        const QString hint = GetText(QLatin1String(each.explanation));
        ui_->cboBBreak->setItemData(ui_->cboBBreak->count() - 1,
                                    reference.isEmpty() ? hint : hint + QLatin1Char('\n') + reference, Qt::ToolTipRole);
    }
    ui_->cboBBreak->setCurrentIndex(index);
    ui_->lblMethodHint->setText(GetText(QLatin1String(BreakChoices()[static_cast<std::size_t>(index)].explanation)));
}

void ClassesPage::FillSchemes() {
    ui_->cboColorScheme->clear();
    ui_->cboColorScheme->setIconSize(kSchemePicture);
    for (const ColorScheme& scheme : ColorSchemes())
        ui_->cboColorScheme->addItem(Strip(SchemeColors(scheme, 7), kSchemePicture),
                                     PlainText(QLatin1String(scheme.caption)));
}

BreakChoice ClassesPage::Choice() const {
    return BreakChoices()[static_cast<std::size_t>(std::max(0, ui_->cboBBreak->currentIndex()))].choice;
}

QString ClassesPage::PaletteFolder() {
    return ReadablePlace(JoinPath({AppPath, QStringLiteral("Palettes")}), AppPath, CacheFolder);
}

void ClassesPage::TakeValues(int featuresOfTheme, int unreadable) {
    features_ = featuresOfTheme;
    unreadable_ = unreadable;
    values_ = ValuesOfMapData();
    limits_ = LimitsOfMapData();
    histogram_->SetValues(values_);
}

void ClassesPage::KeepClasses(int featuresOfTheme, int unreadable, const ValueLimits& ends) {
    const ErrorTrap trap("ClassesPage.KeepClasses");
    TakeValues(featuresOfTheme, unreadable);
    WidenEnds(table_, ends);
    CountClasses(table_, values_);
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::SetTable(const ClassTable& table) {
    table_ = table;
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::Start(ThemeKind kind, int featuresOfTheme, int unreadable) {
    const ErrorTrap trap("ClassesPage.Start");
    table_.kind = kind;
    table_.missing.legend = PlainText(QStringLiteral("Missing Data"));
    TakeValues(featuresOfTheme, unreadable);
    const int decimals = std::min(SetDecimal(), ui_->txtDec->maximum());
    ui_->txtDec->setValue(decimals);
    ShowLimits(decimals);
    if (!ComputesClasses(Choice())) ui_->cboBBreak->setCurrentIndex(0);
    cmdApply_Click();
}

void ClassesPage::ShowLimits(int decimals) {
    limitTexts_ = {FormatThousands(FormatDecimals(limits_.minimum, decimals)),
                   FormatThousands(FormatDecimals(limits_.maximum, decimals))};
    ui_->txtMinValue->setText(limitTexts_[0]);
    ui_->txtMaxValue->setText(limitTexts_[1]);
}

/// Limits of the user, written as the program writes numbers; with other decimals than before, cut to these.
void ClassesPage::ShowTyped(double minimum, double maximum, int decimals) {
    const bool cut = decimals != table_.decimals;
    const auto text = [&](double limit) {
        return cut ? FormatThousands(FormatDecimals(limit, decimals)) : BoundText(limit, decimals);
    };
    ui_->txtMinValue->setText(text(minimum));
    ui_->txtMaxValue->setText(text(maximum));
}

/// Limits that the user typed, or the data's own where the fields still show those or read 0.
bool ClassesPage::ReadRange(ClassRequest& request) {
    const QStringList typed{ui_->txtMinValue->text(), ui_->txtMaxValue->text()};
    const auto minimum = NumberTyped(typed[0]);
    const auto maximum = NumberTyped(typed[1]);
    for (int i = 0; i < 2; ++i)
        if (!(i == 0 ? minimum : maximum)) {
            ui_->lblNotes->setText(FilledText(QStringLiteral("TS_NotANumber"), {typed[i]}));
            ui_->lblNotes->show();
            return false;
        }
    const bool unset = typed == limitTexts_ || (*minimum == 0 && *maximum == 0);
    if (unset)
        ShowLimits(request.decimals);
    else
        ShowTyped(*minimum, *maximum, request.decimals);
    SetRange(request, unset ? limits_.minimum : *minimum, unset ? limits_.maximum : *maximum);
    if (request.minimum <= request.maximum) return true;
    ShowMessage(QStringLiteral("231"));
    return false;
}

void ClassesPage::cmdApply_Click() {
    const ErrorTrap trap("cmdApply_Click");
    ClassRequest request{MethodOf(Choice()), ui_->txtBreakCount->value(), ui_->txtDec->value()};
    if (!ReadRange(request)) return;
    if (ComputesClasses(Choice()))
        ComputeTable(request);
    else
        table_.decimals = request.decimals;
    RememberFields();
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::ComputeTable(const ClassRequest& request) {
    const bool byStatements = request.method == BreakMethod::EqualCount || request.method == BreakMethod::EqualSize;
    MapDataValues inTable;
    SetClasses(table_, byStatements ? ComputeClasses(inTable, request) : ComputeClasses(values_, request),
               request.decimals);
    if (!firstPass_) return;
    firstPass_ = false;
    SetColors(table_, SchemeColors(ColorSchemes().front(), static_cast<int>(table_.looks.size())));
    const QString file = FindPath(JoinPath({PaletteFolder(), QLatin1String(kDefaultPalette)}));
    if (!FileExists(file)) return;
    if (const auto palette = LoadPalette(file)) TakePalette(table_, *palette, PaletteMode::Colors, values_);
}

void ClassesPage::RememberFields() {
    applied_ = {ui_->txtMinValue->text(), ui_->txtMaxValue->text(), ui_->txtDec->text(), ui_->txtBreakCount->text(),
                QString::number(ui_->cboBBreak->currentIndex())};
    EnableApply();
}

void ClassesPage::EnableApply() {
    const QStringList now{ui_->txtMinValue->text(), ui_->txtMaxValue->text(), ui_->txtDec->text(),
                          ui_->txtBreakCount->text(), QString::number(ui_->cboBBreak->currentIndex())};
    ui_->cmdApply->setEnabled(now != applied_);
}

void ClassesPage::ChoiceChanged() {
    const auto index = static_cast<std::size_t>(std::max(0, ui_->cboBBreak->currentIndex()));
    ui_->lblMethodHint->setText(GetText(QLatin1String(BreakChoices()[index].explanation)));
    EnableApply();
    ShowGrid();
    ShowHistogram();
}

void ClassesPage::MoveBound(int row, double value) {
    const double rounded = RoundHalfEven(value, table_.decimals);
    if (!EditClass(table_, row, Bound::To, rounded, Choice(), values_)) return;
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::UseScheme(int index) {
    if (index < 0) return;
    SetColors(table_,
              SchemeColors(ColorSchemes()[static_cast<std::size_t>(index)], static_cast<int>(table_.looks.size())));
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::cmdSmoothColors_Click() {
    if (static_cast<int>(table_.looks.size()) != ui_->txtBreakCount->value()) return;
    SmoothColors(table_);
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::SSCmdSavePalette_Click() {
    const ErrorTrap trap("SSCmdSavePalette_Click");
    const QString folder = WritablePlace(JoinPath({AppPath, QStringLiteral("Palettes")}), AppPath, CacheFolder);
    QDir().mkpath(folder);
    const QString filter = GetText(QStringLiteral("TS_FilterPalette")) + QStringLiteral(" (*.plf)");
    const QString file = AskForNewFile(
        this, {PlainText(QStringLiteral("TS_SavePalette")), folder, filter, QLatin1String(kDefaultPalette)});
    if (!file.isEmpty() && !SavePalette(file, PaletteOf(table_)))
        ShowMessage(FilledText(QStringLiteral("TS_PaletteNotSaved"), {FileNameOf(file)}), MessageType::Ok,
                    MessageIcon::Warning, {}, false);
}

void ClassesPage::SSCmdLoadPalette_Click() {
    const ErrorTrap trap("SSCmdLoadPalette_Click");
    const auto choice = AskForPalette(this, PaletteFolder());
    if (!choice) return;
    const auto palette = LoadPalette(choice->fileName);
    if (!palette || palette->rows.empty()) {
        ShowMessage(FilledText(QStringLiteral("TS_PaletteNotRead"), {FileNameOf(choice->fileName)}), MessageType::Ok,
                    MessageIcon::Warning, {}, false);
        return;
    }
    const std::pair<bool, PaletteMode> modes[] = {{choice->labels, PaletteMode::Labels},
                                                  {choice->colors, PaletteMode::Colors},
                                                  {choice->range, PaletteMode::Range}};
    for (const auto& [wanted, mode] : modes)
        if (wanted) TakePalette(table_, *palette, mode, values_);
    ShowAll();
    Q_EMIT Changed();
}

void ClassesPage::ShowAll() {
    ShowGrid();
    ShowHistogram();
    ShowNotes();
    ui_->cmdSmoothColors->setEnabled(table_.looks.size() > 2);
}

void ClassesPage::ShowHistogram() {
    histogram_->SetClasses(table_.classes, ColorsOf(table_), MayEdit(Choice(), Bound::To),
                           StepOfDecimals(table_.decimals));
    histogram_->setToolTip(MayEdit(Choice(), Bound::To) ? GetText(QStringLiteral("TS_HistogramHint")) : QString());
}

void ClassesPage::ShowNotes() {
    QStringList notes;
    const int outside = CountOutsideClasses(values_, table_.classes);
    if (values_.empty()) notes << GetText(QStringLiteral("TS_NoMapValues"));
    if (outside > 0) notes << CountedText("TS_ValuesOutsideClasses", outside);
    if (unreadable_ > 0) notes << CountedText("TS_UnreadableValues", unreadable_);
    ui_->lblNotes->setText(notes.join(QLatin1Char('\n')));
    ui_->lblNotes->setVisible(!notes.isEmpty());
}

} // namespace tessaro
