#include "map/wizard/MapCustomizePage.h"

#include "controls/Captions.h"
#include "controls/FontDialogs.h"
#include "controls/Theme.h"
#include "map/custom/LabelFields.h"
#include "session/Messages.h"
#include "ui_MapCustomizePage.h"

#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>
#include <array>

namespace tessaro {

namespace {

constexpr QSize kLayoutPicture(56, 56);
constexpr int kLargestShown = 16; ///< points; a larger font is used, but not shown in the field
constexpr std::array<const char*, 7> kLabelFields{"Comm_Area Id", "Comm_Area Name", "Comm_Datavalue", "Subpop",
                                                  "Comm_Unit",    "Comm_Time",      "Advanced Labels"};

/// The buttons of SSRibLayout: where each layout's page has its long side, and its legend.
struct LayoutForm {
    MapLayout layout;
    const char* caption;
    QRectF page; ///< in parts of the picture, as are the others
    QRectF map;
    QRectF legend;
};
const std::array<LayoutForm, 3> kLayouts{
    {{MapLayout::Square, "Square", {0.14, 0.08, 0.72, 0.84}, {0.22, 0.2, 0.56, 0.46}, {0.22, 0.72, 0.3, 0.14}},
     {MapLayout::Vertical, "Tall", {0.14, 0.04, 0.72, 0.92}, {0.2, 0.16, 0.38, 0.72}, {0.64, 0.16, 0.16, 0.34}},
     {MapLayout::Horizontal, "Wide", {0.04, 0.16, 0.92, 0.68}, {0.1, 0.28, 0.8, 0.3}, {0.1, 0.64, 0.4, 0.12}}}};

QFont FontOf(const SheetFont& font) {
    QFont made = font.name.isEmpty() ? LanguageFont() : QFont(font.name);
    if (font.size > 0) made.setPointSizeF(font.size);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    return made;
}

QFont FontInField(QFont font) {
    font.setPointSizeF(std::clamp(font.pointSizeF(), 6.0, static_cast<double>(kLargestShown)));
    return font;
}

SheetFont SheetFontOf(const QFont& font) {
    return {font.family(), font.pointSizeF() > 0 ? font.pointSizeF() : 10, font.bold(), font.italic()};
}

} // namespace

QPixmap LayoutPicture(MapLayout layout, const QPalette& colors, qreal ratio) {
    const auto form = std::find_if(kLayouts.begin(), kLayouts.end(),
                                   [layout](const LayoutForm& each) { return each.layout == layout; });
    QPixmap picture(kLayoutPicture * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const auto place = [](const QRectF& part) {
        const QSizeF size(kLayoutPicture);
        return QRectF(part.x() * size.width(), part.y() * size.height(), part.width() * size.width(),
                      part.height() * size.height());
    };
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors.color(QPalette::Mid));
    painter.setBrush(Qt::white);
    painter.drawRect(place(form->page));
    painter.fillRect(place(form->map), theme::Accent());
    const QRectF legend = place(form->legend);
    for (int row = 0; row < 3; ++row)
        painter.fillRect(
            QRectF(legend.left(), legend.top() + row * legend.height() / 3, legend.width(), legend.height() / 3 - 1),
            QColor(150, 150, 150));
    return picture;
}

MapCustomizePage::MapCustomizePage(MapDraft& draft, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::MapCustomizePage>()), draft_(draft) {
    ui_->setupUi(this);
    const std::array<QToolButton*, 3> buttons{ui_->SSRibLayout_0, ui_->SSRibLayout_1, ui_->SSRibLayout_2};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->setCheckable(true);
        buttons[i]->setAutoExclusive(true);
        buttons[i]->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        buttons[i]->setIconSize(kLayoutPicture);
        buttons[i]->setFocusPolicy(Qt::StrongFocus);
        connect(buttons[i], &QToolButton::clicked, this, [this, i] { ChooseLayout(kLayouts[i].layout); });
    }
    SetFormCaptions();
    ConnectTexts();
    connect(ui_->cmbLabelField, &QComboBox::activated, this, &MapCustomizePage::LabelFieldChosen);
    connect(ui_->chkSmallMaps, &QCheckBox::toggled, this, [this](bool wanted) { draft_.smallMaps = wanted; });
    connect(ui_->cmdLabelFont, &QPushButton::clicked, this, &MapCustomizePage::ChooseLabelFont);
    connect(ui_->cmdAdvField, &QPushButton::clicked, this, &MapCustomizePage::CombinedLabelsRequested);
    connect(ui_->SSCmdCustomize, &QPushButton::clicked, this, &MapCustomizePage::CustomizeRequested);
}

MapCustomizePage::~MapCustomizePage() = default;

void MapCustomizePage::ConnectTexts() {
    const auto line = [this](QLineEdit* field, MapText& text) {
        connect(field, &QLineEdit::textEdited, this, [this, &text](const QString& typed) {
            text.text = typed;
            draft_.titlesTyped = true;
        });
    };
    line(ui_->txtMapTitle, draft_.title);
    line(ui_->txtMapSubTitle, draft_.subTitle);
    line(ui_->txtLegendTitle, draft_.legendTitle);
    connect(ui_->txtDisclaimer, &QPlainTextEdit::textChanged, this,
            [this] { draft_.disclaimer.text = ui_->txtDisclaimer->toPlainText().remove(QLatin1Char('\n')); });
    const auto font = [this](QPushButton* button, MapText& text, const char* key) {
        connect(button, &QPushButton::clicked, this, [this, &text, key] { ChooseFont(text, QLatin1String(key)); });
    };
    font(ui_->cmdMapTitleFont, draft_.title, "TS_TitleFont");
    font(ui_->cmdMapSubTitleFont, draft_.subTitle, "TS_SubTitleFont");
    font(ui_->cmdLegendTitleFont, draft_.legendTitle, "TS_LegendFont");
    font(ui_->cmdDisclaimerFont, draft_.disclaimer, "TS_DisclaimerFont");
}

void MapCustomizePage::SetFormCaptions() {
    const struct {
        QLabel* label;
        const char* key;
        QWidget* field;
    } fields[] = {{ui_->lblMapTitle, "Table Title", ui_->txtMapTitle},
                  {ui_->lblMapSubTitle, "COMM_SubTitle", ui_->txtMapSubTitle},
                  {ui_->lblLegendTitle, "TS_LegendTitle", ui_->txtLegendTitle},
                  {ui_->lblDisclaimer, "TS_MapNote", ui_->txtDisclaimer},
                  {ui_->lblLabelField, "Labels", ui_->cmbLabelField},
                  {ui_->lblMapLabelPreview, "TS_PagePreview", ui_->txtLabelPrev}};
    for (const auto& [label, key, field] : fields) {
        SetCaption(label, QLatin1String(key));
        label->setBuddy(field);
        field->setAccessibleName(label->accessibleName());
    }
    const std::pair<QPushButton*, const char*> fonts[] = {{ui_->cmdMapTitleFont, "TS_TitleFont"},
                                                          {ui_->cmdMapSubTitleFont, "TS_SubTitleFont"},
                                                          {ui_->cmdLegendTitleFont, "TS_LegendFont"},
                                                          {ui_->cmdDisclaimerFont, "TS_DisclaimerFont"},
                                                          {ui_->cmdLabelFont, "TS_LabelFont"}};
    for (const auto& [button, key] : fonts) {
        button->setText(PlainText(QStringLiteral("TS_ChooseFont")));
        button->setToolTip(PlainText(QLatin1String(key)));
        button->setAccessibleName(button->toolTip());
    }
    SetCaption(ui_->cmdAdvField, QStringLiteral("TS_CombineLabels"));
    SetCaption(ui_->SSCmdCustomize, QStringLiteral("TS_CustomizeLayers"));
    SetCaption(ui_->chkSmallMaps, QStringLiteral("TS_SmallMaps"));
    SetCaption(ui_->lblLayout, QStringLiteral("TS_MapLayout"));
    const std::array<QToolButton*, 3> buttons{ui_->SSRibLayout_0, ui_->SSRibLayout_1, ui_->SSRibLayout_2};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->setText(PlainText(QLatin1String(kLayouts[i].caption)));
        buttons[i]->setToolTip(buttons[i]->text());
        buttons[i]->setIcon(LayoutPicture(kLayouts[i].layout, palette(), devicePixelRatioF()));
    }
    FillLabelFields();
}

void MapCustomizePage::FillLabelFields() {
    const QSignalBlocker quiet(ui_->cmbLabelField);
    ui_->cmbLabelField->clear();
    ui_->cmbLabelField->addItem(PlainText(QStringLiteral("TS_NoLabels")));
    for (const LabelField& field : LabelFields())
        ui_->cmbLabelField->addItem(PlainText(QLatin1String(field.key)), QLatin1String(field.key));
}

void MapCustomizePage::ShowDraft() {
    const std::pair<QLineEdit*, const MapText*> lines[] = {{ui_->txtMapTitle, &draft_.title},
                                                           {ui_->txtMapSubTitle, &draft_.subTitle},
                                                           {ui_->txtLegendTitle, &draft_.legendTitle}};
    for (const auto& [field, text] : lines) {
        if (field->text() != text->text) field->setText(text->text);
        field->setFont(FontInField(FontOf(text->font)));
        field->setCursorPosition(0);
    }
    const QSignalBlocker quiet(ui_->txtDisclaimer);
    if (ui_->txtDisclaimer->toPlainText() != draft_.disclaimer.text)
        ui_->txtDisclaimer->setPlainText(draft_.disclaimer.text);
    ui_->txtDisclaimer->setFont(FontInField(FontOf(draft_.disclaimer.font)));
    const LayerDraft* layer = ThemeLayer();
    const int field = layer && layer->labelOn ? ui_->cmbLabelField->findData(layer->labelField) : 0;
    ui_->cmbLabelField->setCurrentIndex(std::max(0, field));
    ui_->chkSmallMaps->setChecked(draft_.smallMaps);
    ShowLabelPreview();
    ShowLayout();
}

void MapCustomizePage::OfferSmallMaps(bool offered) {
    ui_->chkSmallMaps->setVisible(offered);
}

LayerDraft* MapCustomizePage::ThemeLayer() const {
    const auto layer =
        std::find_if(draft_.layers.rbegin(), draft_.layers.rend(), [](const LayerDraft& each) { return each.ofTheme; });
    return layer == draft_.layers.rend() ? nullptr : &*layer;
}

void MapCustomizePage::ChooseFont(MapText& text, const QString& captionKey) {
    const auto chosen = AskForFont(this, PlainText(captionKey), FontOf(text.font));
    if (!chosen) return;
    text.font = SheetFontOf(*chosen);
    ShowDraft();
}

void MapCustomizePage::ChooseLabelFont() {
    LayerDraft* layer = ThemeLayer();
    if (!layer) return;
    const auto chosen = AskForFont(this, PlainText(QStringLiteral("TS_LabelFont")), layer->labelFont);
    if (!chosen) return;
    for (LayerDraft& each : draft_.layers)
        if (each.ofTheme) each.labelFont = *chosen;
    ShowLabelPreview();
    Q_EMIT LabelsChanged();
}

void MapCustomizePage::LabelFieldChosen() {
    const QString field = ui_->cmbLabelField->currentData().toString();
    for (LayerDraft& each : draft_.layers) {
        if (!each.ofTheme) continue;
        each.labelOn = !field.isEmpty();
        if (!field.isEmpty()) each.labelField = field;
    }
    ShowLabelPreview();
    Q_EMIT LabelsChanged();
    if (field == QLatin1String(kCombinedField) && draft_.labelFormula.isEmpty()) Q_EMIT CombinedLabelsRequested();
}

/// The field's caption in the letters of the labels.
void MapCustomizePage::ShowLabelPreview() {
    const LayerDraft* layer = ThemeLayer();
    const bool shown = ui_->cmbLabelField->currentIndex() > 0;
    const bool combined = ui_->cmbLabelField->currentData().toString() == QLatin1String(kCombinedField);
    const QString sample = combined ? CaptionsOfFormula(draft_.labelFormula) : ui_->cmbLabelField->currentText();
    ui_->txtLabelPrev->setText(shown ? sample : QString());
    ui_->cmdAdvField->setEnabled(combined);
    if (layer) ui_->txtLabelPrev->setFont(FontInField(layer->labelFont));
    ui_->cmdLabelFont->setEnabled(layer && shown);
    ui_->txtLabelPrev->setEnabled(shown);
}

void MapCustomizePage::ChooseLayout(MapLayout layout) {
    draft_.layout = layout;
}

void MapCustomizePage::ShowLayout() {
    const std::array<QToolButton*, 3> buttons{ui_->SSRibLayout_0, ui_->SSRibLayout_1, ui_->SSRibLayout_2};
    for (std::size_t i = 0; i < buttons.size(); ++i)
        buttons[i]->setChecked(kLayouts[i].layout == draft_.layout);
}

} // namespace tessaro
