#include "map/custom/frmMAPCustomize.h"

#include "controls/Captions.h"
#include "controls/ColorDialogs.h"
#include "controls/EmptyHint.h"
#include "controls/FileDialogs.h"
#include "controls/Theme.h"
#include "map/classes/GridColumns.h"
#include "map/custom/LabelFields.h"
#include "map/custom/LayerListFile.h"
#include "map/custom/LayerLooks.h"
#include "map/custom/LayerPictures.h"
#include "map/custom/RenderLabels.h"
#include "map/custom/frmMAPBuffer.h"
#include "map/custom/frmMapLabels.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "ui_frmMAPCustomize.h"

#include <QHeaderView>
#include <QLocale>
#include <QToolButton>

#include <cmath>

namespace tessaro {

namespace {

enum Column { ColName, ColType, ColLabel, ColStyle, ColColor, ColWidth, ColumnCount };
constexpr const char* kHeads[ColumnCount] = {"Layer Name", "Type", "Label", "Style", "COMM_Color", "Width"};
constexpr QSize kPicture(32, 20);
constexpr int kNothingShown = -2;

int IndexOf(LayerKind kind) {
    return static_cast<int>(kind) - static_cast<int>(LayerKind::Point);
}

QString LabelText(const LayerLabels& labels) {
    const bool shown = labels.on && !labels.field.isEmpty();
    if (!shown) return PlainText(QStringLiteral("No"));
    return PlainText(QStringLiteral("Yes")) + QStringLiteral(" (") + PlainText(labels.field) + QLatin1Char(')');
}

QIcon StyleIcon(LayerKind kind, int style, const QPalette& palette) {
    QIcon icon(PictureOfStyle(kind, style, palette.text().color(), kPicture));
    icon.addPixmap(PictureOfStyle(kind, style, palette.highlightedText().color(), kPicture), QIcon::Selected);
    return icon;
}

QString WidthText(double width) {
    return QLocale().toString(width, 'f', width == std::floor(width) ? 0 : 1);
}

/// A colour as it is, in rows that are selected too.
QIcon ColorIcon(const QColor& color) {
    const QPixmap square = ColorSquare(color, theme::kIconSize);
    QIcon icon(square);
    icon.addPixmap(square, QIcon::Selected);
    return icon;
}

/// Works under the wait pointer.
template <class Work> bool Waiting(Work work) {
    const WaitPointer wait;
    return work();
}

/// A control that says why it can't be used.
void Enable(QWidget* control, bool enabled, const char* whyNot) {
    control->setEnabled(enabled);
    control->setToolTip(enabled ? QString() : GetText(QLatin1String(whyNot)));
}

} // namespace

frmMAPCustomize::frmMAPCustomize(LayerStack& map, QString& labelFormula, std::function<void()> refresh, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMAPCustomize>()), rows_(map), labelFormula_(labelFormula),
      refresh_(std::move(refresh)) {
    ui_->setupUi(this);
    MakeStyleButtons();
    SetFormCaptions();
    SetFormFonts(this);
    ConnectControls();
    const int before = rows_.Count();
    rows_.Restore();
    FillRows(0);
    if (rows_.Count() != before) refresh_();
}

frmMAPCustomize::~frmMAPCustomize() = default;

void frmMAPCustomize::SetFormCaptions() {
    setWindowTitle(PlainText(QStringLiteral("Customize Layers")));
    SetCaption(ui_->lblLayers, QStringLiteral("TS_LayersTopFirst"));
    SetCaption(ui_->lblAttributes, QStringLiteral("Custom Attributes"));
    SetCaption(ui_->cmdAddLayers, QStringLiteral("Add layer"));
    SetCaption(ui_->cmdRemoveLayer, QStringLiteral("Remove layer"));
    SetCaption(ui_->cmdBuffer, QStringLiteral("Buffer"));
    SetCaption(ui_->chkRemember, QStringLiteral("TS_RememberLayer"));
    SetCaption(ui_->cmdColor, QStringLiteral("COMM_Color"));
    SetCaption(ui_->cmdOutlineColor, QStringLiteral("COMM_Color"));
    SetCaption(ui_->cmdLabels, QStringLiteral("TS_LayerLabels"));
    SetCaption(ui_->cmdApply, QStringLiteral("APPLY BUTTON"));
    SetCaption(ui_->cmdDone, QStringLiteral("TS_Close"));
    ui_->frameAttributes->setTitle(PlainText(QStringLiteral("Labels")));
    const std::pair<QToolButton*, const char*> moves[] = {{ui_->SSCmdPromoteLayer, "TS_MoveUp"},
                                                          {ui_->SSCmdDemoteLayer, "TS_MoveDown"}};
    for (const auto& [button, key] : moves) {
        button->setArrowType(button == ui_->SSCmdPromoteLayer ? Qt::UpArrow : Qt::DownArrow);
        button->setToolTip(PlainText(QLatin1String(key)));
        button->setAccessibleName(button->toolTip());
    }
    QStringList heads;
    for (const char* key : kHeads)
        heads << PlainText(QLatin1String(key));
    ui_->grdCollection->setColumnCount(ColumnCount);
    ui_->grdCollection->setHorizontalHeaderLabels(heads);
    ui_->grdCollection->setAccessibleName(ui_->lblAttributes->accessibleName());
    ui_->LVLayers->setAccessibleName(ui_->lblLayers->accessibleName());
    ShowWhenEmpty(ui_->LVLayers, GetText(QStringLiteral("TS_NoLayers")));
}

void frmMAPCustomize::ConnectControls() {
    QTableWidget& grid = *ui_->grdCollection;
    grid.setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid.setTabKeyNavigation(false); // Tab leaves the grid
    grid.setSelectionMode(QAbstractItemView::SingleSelection);
    grid.setSelectionBehavior(QAbstractItemView::SelectRows);
    grid.verticalHeader()->hide();
    connect(ui_->LVLayers, &QListWidget::currentRowChanged, this, &frmMAPCustomize::Activate);
    connect(ui_->LVLayers, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        LVLayers_MouseDown(ui_->LVLayers->row(item), item->checkState() == Qt::Checked);
    });
    connect(&grid, &QTableWidget::currentCellChanged, this, &frmMAPCustomize::Activate);
    connect(&grid, &QTableWidget::cellActivated, this, &frmMAPCustomize::CellChosen);
    connect(ui_->cmdAddLayers, &QPushButton::clicked, this, &frmMAPCustomize::cmdAddLayers_Click);
    connect(ui_->cmdRemoveLayer, &QPushButton::clicked, this, &frmMAPCustomize::cmdRemoveLayer_Click);
    connect(ui_->cmdBuffer, &QPushButton::clicked, this, &frmMAPCustomize::cmdBuffer_Click);
    connect(ui_->SSCmdPromoteLayer, &QToolButton::clicked, this, [this] { Move(true); });
    connect(ui_->SSCmdDemoteLayer, &QToolButton::clicked, this, [this] { Move(false); });
    connect(ui_->cmdColor, &QPushButton::clicked, this, [this] { ChooseColor(false); });
    connect(ui_->cmdOutlineColor, &QPushButton::clicked, this, [this] { ChooseColor(true); });
    connect(ui_->txtBorderWidth, &QDoubleSpinBox::valueChanged, this, &frmMAPCustomize::cmdOKWidth_Click);
    connect(ui_->cmdLabels, &QPushButton::clicked, this, &frmMAPCustomize::cmdLabels_Click);
    connect(ui_->chkRemember, &QCheckBox::clicked, this,
            [this](bool checked) { rows_.SetRemembered(Active(), checked); });
    connect(ui_->cmdApply, &QPushButton::clicked, this, &frmMAPCustomize::cmdApply_Click);
    connect(ui_->cmdDone, &QPushButton::clicked, this, &QDialog::accept);
}

void frmMAPCustomize::MakeStyleButtons() {
    MakeStyleButtons(LayerKind::Point, "cmdPointStyle", 6);
    MakeStyleButtons(LayerKind::Line, "cmdLineStyle", 6);
    MakeStyleButtons(LayerKind::Polygon, "cmdPolygonStyle", 6);
}

void frmMAPCustomize::MakeStyleButtons(LayerKind kind, const char* name, int columns) {
    auto* const layout = static_cast<QGridLayout*>(ui_->styles->widget(IndexOf(kind))->layout());
    for (int style = 0; style < StylesOf(kind); ++style) {
        auto* button = new QToolButton(this);
        button->setObjectName(QLatin1String(name) + QString::number(style));
        button->setIconSize(kPicture);
        button->setIcon(PictureOfStyle(kind, style, palette().text().color(), kPicture));
        button->setToolTip(NameOfStyle(kind, style));
        button->setAccessibleName(button->toolTip());
        button->setCheckable(true);
        button->setAutoRaise(true);
        layout->addWidget(button, style / columns, style % columns);
        styleButtons_[IndexOf(kind)] << button;
        connect(button, &QToolButton::clicked, this, [=, this] { ChooseStyle(kind, style); });
    }
}

void frmMAPCustomize::FillRows(int active) {
    filling_ = true;
    ui_->LVLayers->clear();
    ui_->grdCollection->setRowCount(rows_.Count());
    for (int row = 0; row < rows_.Count(); ++row) {
        auto* item = new QListWidgetItem(rows_.At(row).data.name, ui_->LVLayers);
        item->setSizeHint({0, ui_->grdCollection->verticalHeader()->defaultSectionSize()});
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(rows_.At(row).visible ? Qt::Checked : Qt::Unchecked);
        ShowRow(row);
    }
    FitColumns(*ui_->grdCollection, ColName);
    filling_ = false;
    active_ = kNothingShown;
    Activate(std::min(active, rows_.Count() - 1));
}

void frmMAPCustomize::ShowRow(int row) {
    const StackedLayer& layer = rows_.At(row);
    const LayerKind kind = layer.data.kind;
    const auto item = [&](Column column, const QString& text) {
        auto* made = new QTableWidgetItem(text);
        made->setToolTip(text);
        ui_->grdCollection->setItem(row, column, made);
        return made;
    };
    item(ColName, layer.data.name);
    auto* type = item(ColType, {});
    type->setIcon(IconOfKind(kind));
    type->setToolTip(NameOfKind(kind));
    type->setData(Qt::AccessibleTextRole, NameOfKind(kind));
    item(ColLabel, LabelText(layer.labels));
    const QString byClasses = GetText(QStringLiteral("TS_ByClasses"));
    auto* style = item(ColStyle, MayStyle(layer) ? NameOfStyle(kind, StyleOf(layer)) : byClasses);
    if (MayStyle(layer)) style->setIcon(StyleIcon(kind, StyleOf(layer), palette()));
    auto* color = item(ColColor, MayColor(layer) ? QString() : byClasses);
    if (MayColor(layer)) color->setIcon(ColorIcon(ColorOf(layer)));
    item(ColWidth, MayWiden(layer) ? WidthText(WidthOf(layer)) : byClasses)
        ->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
}

int frmMAPCustomize::DetermineRow(const QPoint& place) const {
    return ui_->grdCollection->rowAt(place.y());
}

void frmMAPCustomize::Activate(int row) {
    if (filling_ || row == active_) return;
    filling_ = true;
    active_ = row;
    ui_->LVLayers->setCurrentRow(row);
    ui_->grdCollection->setCurrentCell(row, std::max(0, ui_->grdCollection->currentColumn()));
    filling_ = false;
    ShowActive();
}

void frmMAPCustomize::ShowActive() {
    const bool some = Active() >= 0;
    ShowButtons(Active());
    for (QWidget* part : {static_cast<QWidget*>(ui_->frameFill), static_cast<QWidget*>(ui_->frameOutline),
                          static_cast<QWidget*>(ui_->frameAttributes)})
        part->setEnabled(some);
    if (!some) return;
    const StackedLayer& layer = rows_.At(Active());
    const bool point = layer.data.kind == LayerKind::Point;
    const bool line = layer.data.kind == LayerKind::Line;
    ShowStyles(layer);
    ui_->frameOutline->setTitle(PlainText(line ? QStringLiteral("Line") : QStringLiteral("Custom OutLine")));
    SetCaption(ui_->lblWidth, point ? QStringLiteral("Size") : QStringLiteral("Width"));
    ui_->cmdOutlineColor->setVisible(!line);
    ui_->cmdOutlineColor->setIcon(ColorSquare(OutlineOf(layer), theme::kIconSize));
    const QSignalBlocker quiet(ui_->txtBorderWidth);
    ui_->txtBorderWidth->setRange(LeastWidth(layer.data.kind), MostWidth(layer.data.kind));
    ui_->txtBorderWidth->setSingleStep(point ? 1 : 0.5);
    ui_->txtBorderWidth->setValue(WidthOf(layer));
    Enable(ui_->txtBorderWidth, MayWiden(layer), "TS_WhyByClasses");
    ui_->txtBorderWidth->setAccessibleName(ui_->lblWidth->accessibleName());
}

void frmMAPCustomize::ShowStyles(const StackedLayer& layer) {
    const bool polygon = layer.data.kind == LayerKind::Polygon;
    ui_->frameFill->setTitle(PlainText(polygon ? QStringLiteral("Custom Fill") : QStringLiteral("Style")));
    ui_->styles->setCurrentIndex(IndexOf(layer.data.kind));
    const QList<QToolButton*>& buttons = styleButtons_[IndexOf(layer.data.kind)];
    for (int style = 0; style < buttons.size(); ++style) {
        buttons[style]->setChecked(MayStyle(layer) && style == StyleOf(layer));
        buttons[style]->setEnabled(MayStyle(layer));
    }
    ui_->frameFill->setToolTip(MayStyle(layer) ? QString() : GetText(QStringLiteral("TS_WhyByClasses")));
    ui_->cmdColor->setIcon(ColorSquare(ColorOf(layer), theme::kIconSize));
    Enable(ui_->cmdColor, MayColor(layer), "TS_WhyByClasses");
}

void frmMAPCustomize::ShowButtons(int row) {
    const bool some = row >= 0;
    Enable(ui_->cmdRemoveLayer, rows_.MayRemove(row), some ? "TS_WhyThemeLayer" : "TS_NoLayers");
    Enable(ui_->cmdBuffer, rows_.MayBuffer(row), some ? "TS_WhyNoPoints" : "TS_NoLayers");
    Enable(ui_->chkRemember, rows_.MayRemove(row), some ? "TS_WhyNotRemembered" : "TS_NoLayers");
    ui_->chkRemember->setChecked(some && rows_.IsRemembered(row));
    ui_->SSCmdPromoteLayer->setEnabled(row > 0);
    ui_->SSCmdDemoteLayer->setEnabled(some && row + 1 < rows_.Count());
}

void frmMAPCustomize::Changed() {
    filling_ = true;
    ShowRow(Active());
    filling_ = false;
    ShowActive();
    refresh_();
}

void frmMAPCustomize::LVLayers_MouseDown(int row, bool checked) {
    if (filling_ || row < 0 || rows_.At(row).visible == checked) return;
    rows_.At(row).visible = checked;
    refresh_();
}

void frmMAPCustomize::CellChosen(int row, int column) {
    Activate(row);
    if (column == ColLabel) cmdLabels_Click();
    if (column == ColColor && MayColor(rows_.At(row))) ChooseColor(false);
}

void frmMAPCustomize::cmdAddLayers_Click() {
    const ErrorTrap trap("cmdAddLayers_Click");
    const QString filter = GetText(QStringLiteral("TS_FilterShape")) + QStringLiteral(" (*.shp)");
    const QString file =
        AskForFile(this, {PlainText(QStringLiteral("Select file for new layer")), LastLayerFolder(), filter});
    if (file.isEmpty()) return;
    SetLastLayerFolder(FolderOf(file));
    QString reason;
    if (!Waiting([&] { return rows_.Add(file, reason); }))
        return ShowMessageWithReason(QStringLiteral("TS_LayerNotAdded"), reason);
    FillRows(0);
    refresh_();
}

void frmMAPCustomize::cmdRemoveLayer_Click() {
    const ErrorTrap trap("cmdRemoveLayer_Click");
    const int row = Active();
    rows_.Remove(row);
    FillRows(row);
    refresh_();
}

void frmMAPCustomize::cmdBuffer_Click() {
    const ErrorTrap trap("cmdBuffer_Click");
    const int row = Active();
    if (!rows_.MayBuffer(row)) return;
    if (rows_.HasBuffer(row)) return void(ShowMessage(QStringLiteral("225")));
    frmMAPBuffer window(rows_.At(row).data.name, this);
    if (window.exec() != QDialog::Accepted || window.Radius() == 0) return;
    QString reason;
    if (!Waiting([&] { return rows_.AddBuffer(row, window.Radius(), reason); }))
        return ShowMessageWithReason(QStringLiteral("TS_BufferNotMade"), reason);
    FillRows(1);
    refresh_();
    if (rows_.At(0).data.features.empty()) ShowMessage(QStringLiteral("TS_BufferEmpty"));
}

void frmMAPCustomize::Move(bool up) {
    const int row = Active();
    if (!(up ? rows_.Promote(row) : rows_.Demote(row))) return;
    FillRows(up ? row - 1 : row + 1);
    refresh_();
}

void frmMAPCustomize::ChooseStyle(LayerKind kind, int style) {
    if (Active() < 0 || rows_.At(Active()).data.kind != kind) return;
    SetStyle(rows_.At(Active()), style);
    Changed();
}

void frmMAPCustomize::ChooseColor(bool outline) {
    if (Active() < 0) return;
    StackedLayer& layer = rows_.At(Active());
    const QString title = PlainText(QStringLiteral("COMM_Color"));
    const QColor color = AskForColor(this, title, outline ? OutlineOf(layer) : ColorOf(layer));
    if (!color.isValid()) return;
    outline ? SetOutline(layer, color) : SetColor(layer, color);
    Changed();
}

void frmMAPCustomize::cmdOKWidth_Click(double width) {
    if (Active() < 0) return;
    SetWidth(rows_.At(Active()), width);
    Changed();
}

void frmMAPCustomize::cmdLabels_Click() {
    if (Active() < 0) return;
    frmMapLabels window(rows_.Map(), rows_.LayerOf(Active()), labelFormula_, this);
    if (window.exec() == QDialog::Accepted) Changed();
}

void frmMAPCustomize::cmdApply_Click() {
    const ErrorTrap trap("cmdApply_Click");
    RenderLabels(rows_.Map(), labelFormula_);
    refresh_();
}

void frmMAPCustomize::done(int result) {
    const ErrorTrap trap("cmdDone_Click");
    cmdApply_Click();
    if (!rows_.Save()) ShowMessage(QStringLiteral("TS_LayerListNotSaved"));
    QDialog::done(result);
}

} // namespace tessaro
