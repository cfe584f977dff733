#include "presentation/ColorRangesPanel.h"

#include "controls/Captions.h"
#include "controls/ColorDialogs.h"
#include "controls/FillDelegate.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "sheets/PaletteSlots.h"
#include "ui_ColorRangesPanel.h"

#include <QHeaderView>
#include <QLocale>

namespace tessaro {

namespace {

enum Column { ColRange, ColFrom, ColTo, ColCount, ColColor };

/// Numbers keep to the right in every language.
Qt::Alignment AlignmentOf(int column) {
    return (column == ColRange ? Qt::AlignLeading : Qt::AlignRight | Qt::AlignAbsolute) | Qt::AlignVCenter;
}

/// A number that the user typed, in the data's form; empty when it is none.
QString NumberText(const QString& typed) {
    const auto number = NumberTyped(typed);
    return number ? QLocale::c().toString(*number, 'g', QLocale::FloatingPointShortest) : QString();
}

/// Why what was typed can't be kept, in the user's language; empty when every text is a number and the range's limits
/// stand the right way round. A limit that is still empty is not compared.
QString ProblemOf(const ValueRange& range, const QStringList& typed) {
    for (const QString& text : typed)
        if (!NumberTyped(text)) return GetText(QStringLiteral("TS_NotANumber")).replace(QStringLiteral("%1"), text);
    const bool both = !range.From.isEmpty() && !range.To.isEmpty();
    return both && range.From.toDouble() > range.To.toDouble() ? GetText(QStringLiteral("TS_FilterOrder")) : QString();
}

} // namespace

ColorRangesPanel::ColorRangesPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::ColorRangesPanel>()) {
    ui_->setupUi(this);
    ui_->grdAddColor->setRowCount(kRangeCount);
    ui_->grdAddColor->setColumnCount(ColColor + 1);
    ui_->grdAddColor->verticalHeader()->hide();
    ui_->grdAddColor->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    ui_->grdAddColor->setItemDelegate(new FillDelegate(ui_->grdAddColor));
    ui_->grdAddColor->setSelectionMode(QAbstractItemView::SingleSelection);
    SetFormCaptions();
    ConnectControls();
}

ColorRangesPanel::~ColorRangesPanel() = default;

void ColorRangesPanel::ConnectControls() {
    connect(ui_->cmbIndicator, &QComboBox::currentIndexChanged, this, &ColorRangesPanel::ShowRecord);
    connect(ui_->cmdApply, &QPushButton::clicked, this, &ColorRangesPanel::cmdApply_Click);
    connect(ui_->cmdAddOK, &QPushButton::clicked, this, &ColorRangesPanel::Kept);
    connect(ui_->cmdCancelOK, &QPushButton::clicked, this, &ColorRangesPanel::Dropped);
    connect(ui_->grdAddColor, &QTableWidget::cellChanged, this, &ColorRangesPanel::GridEdited);
    connect(ui_->grdAddColor, &QTableWidget::cellActivated, this, &ColorRangesPanel::ChooseColor);
}

void ColorRangesPanel::SetFormCaptions() {
    SetCaption(ui_->lblIndicator, QStringLiteral("Comm_Indicator"));
    SetCaption(ui_->lblBreak, QStringLiteral("TS_BreakMethod"));
    SetCaption(ui_->lblHighIsGood, QStringLiteral("TS_HighIsGood"));
    SetCaption(ui_->lblMinValue, QStringLiteral("Comm_Min"));
    SetCaption(ui_->lblMaxValue, QStringLiteral("Comm_Max"));
    SetCaption(ui_->lblDec, QStringLiteral("Comm_DECIMAL"));
    SetCaption(ui_->cmdApply, QStringLiteral("APPLY BUTTON"));
    SetCaption(ui_->cmdAddOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->cmdCancelOK, QStringLiteral("CANCEL BUTTON"));
    const std::pair<QLabel*, QWidget*> named[] = {
        {ui_->lblIndicator, ui_->cmbIndicator},   {ui_->lblBreak, ui_->cmbBreak},
        {ui_->lblHighIsGood, ui_->cmbHighIsGood}, {ui_->lblMinValue, ui_->txtMinValue},
        {ui_->lblMaxValue, ui_->txtMaxValue},     {ui_->lblDec, ui_->txtDec}};
    for (const auto& [label, field] : named) {
        label->setBuddy(field);
        field->setAccessibleName(label->accessibleName());
    }
    ui_->cmbBreak->clear();
    ui_->cmbBreak->addItems({PlainText(QStringLiteral("Equal Count")), PlainText(QStringLiteral("Equal Size"))});
    ui_->cmbHighIsGood->clear();
    ui_->cmbHighIsGood->addItems({PlainText(QStringLiteral("Yes")), PlainText(QStringLiteral("No"))});
    ui_->grdAddColor->setAccessibleName(PlainText(QStringLiteral("Range")));
    ui_->grdAddColor->setHorizontalHeaderLabels({PlainText(QStringLiteral("Range")), PlainText(QStringLiteral("From")),
                                                 PlainText(QStringLiteral("To")), PlainText(QStringLiteral("Count")),
                                                 PlainText(QStringLiteral("COMM_Color"))});
    for (int column = ColRange; column < ColColor; ++column)
        ui_->grdAddColor->horizontalHeaderItem(column)->setTextAlignment(AlignmentOf(column));
}

void ColorRangesPanel::SetRanges(const ValueRanges& ranges) {
    draft_ = ranges;
    {
        const QSignalBlocker quiet(ui_->cmbIndicator);
        ui_->cmbIndicator->clear();
        for (const ColorRanges& record : draft_.records)
            ui_->cmbIndicator->addItem(record.Indicator);
        ui_->cmbIndicator->setCurrentIndex(draft_.records.empty() ? -1 : 0);
    }
    ShowRecord();
}

ColorRanges* ColorRangesPanel::Record() {
    const int index = ui_->cmbIndicator->currentIndex();
    if (index < 0 || index >= static_cast<int>(draft_.records.size())) return nullptr;
    return &draft_.records[static_cast<std::size_t>(index)];
}

void ColorRangesPanel::ShowRecord() {
    const ColorRanges* record = Record();
    ui_->cmdApply->setEnabled(record != nullptr);
    if (!record) return;
    ui_->cmbBreak->setCurrentIndex(record->Method == RangeMethod::EqualCount ? 0 : 1);
    ui_->cmbHighIsGood->setCurrentIndex(record->HighIsGood ? 0 : 1);
    ui_->txtMinValue->setText(DisplayedValue(record->MinValue));
    ui_->txtMaxValue->setText(DisplayedValue(record->MaxValue));
    ui_->txtDec->setValue(record->Decimals);
    ShowGrid();
}

void ColorRangesPanel::ShowGrid() {
    const ColorRanges* record = Record();
    if (!record) return;
    filling_ = true;
    for (int row = 0; row < kRangeCount; ++row) {
        const ValueRange& range = record->Ranges[static_cast<std::size_t>(row)];
        const QString texts[] = {
            range.Text(), DisplayedValue(range.From), DisplayedValue(range.To), QLocale().toString(range.Count), {}};
        for (int column = ColRange; column <= ColColor; ++column) {
            auto* item = new QTableWidgetItem(texts[column]);
            const bool editable = column == ColFrom || column == ColTo;
            item->setFlags(editable ? item->flags() | Qt::ItemIsEditable : item->flags() & ~Qt::ItemIsEditable);
            item->setTextAlignment(AlignmentOf(column));
            if (column == ColColor) {
                item->setBackground(
                    draft_.colors[static_cast<std::size_t>(record->SlotOfRange(row) - kFirstRangeSlot)]);
                item->setData(Qt::AccessibleTextRole, GetText(QStringLiteral("TS_RangeColor"))
                                                          .replace(QStringLiteral("%1"), QLocale().toString(row + 1)));
                item->setToolTip(item->data(Qt::AccessibleTextRole).toString());
            }
            ui_->grdAddColor->setItem(row, column, item);
        }
    }
    filling_ = false;
}

void ColorRangesPanel::cmdApply_Click() {
    const ErrorTrap trap("cmdApply_Click");
    ColorRanges* record = Record();
    if (!record) return;
    const ValueRange limits{NumberText(ui_->txtMinValue->text()), NumberText(ui_->txtMaxValue->text())};
    const QString wrong = ProblemOf(limits, {ui_->txtMinValue->text(), ui_->txtMaxValue->text()});
    if (!wrong.isEmpty()) {
        ShowMessage(wrong, MessageType::Ok, MessageIcon::Warning, {}, false);
        return;
    }
    record->MinValue = limits.From;
    record->MaxValue = limits.To;
    record->Decimals = ui_->txtDec->value();
    record->HighIsGood = ui_->cmbHighIsGood->currentIndex() == 0;
    record->Method = ui_->cmbBreak->currentIndex() == 0 ? RangeMethod::EqualCount : RangeMethod::EqualSize;
    CutRanges(*record);
    ShowGrid();
}

void ColorRangesPanel::GridEdited(int row, int column) {
    ColorRanges* record = Record();
    if (filling_ || !record || (column != ColFrom && column != ColTo)) return;
    const ErrorTrap trap("txtFill");
    const QString typed = ui_->grdAddColor->item(row, column)->text();
    ValueRange changed = record->Ranges[static_cast<std::size_t>(row)];
    (column == ColFrom ? changed.From : changed.To) = NumberText(typed);
    const QString wrong = ProblemOf(changed, {typed});
    if (wrong.isEmpty()) {
        changed.Count = GetRangeCount(*record, changed.From, changed.To);
        record->Ranges[static_cast<std::size_t>(row)] = changed;
    }
    ShowGrid();
    if (!wrong.isEmpty()) ShowMessage(wrong, MessageType::Ok, MessageIcon::Warning, {}, false);
}

void ColorRangesPanel::ChooseColor(int row, int column) {
    const ColorRanges* record = Record();
    if (!record || column != ColColor) return;
    QColor& color = draft_.colors[static_cast<std::size_t>(record->SlotOfRange(row) - kFirstRangeSlot)];
    const QColor chosen = AskForColor(this, PlainText(QStringLiteral("COMM_Color")), color);
    if (chosen.isValid()) color = chosen;
    ShowGrid();
}

} // namespace tessaro
