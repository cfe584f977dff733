#include "map/wizard/MapPane.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "map/wizard/PeriodSlider.h"

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace tessaro {

MapPane::MapPane(QWidget* parent)
    : QFrame(parent), map_(new MapCanvas(this)), tools_(new QFrame(this)), lblPointed_(new QLabel(this)),
      periods_(new PeriodSlider(this)), picAdvice_(new QFrame(this)), lblAdvice_(new QLabel(picAdvice_)),
      cmdAdvice_(new QPushButton(picAdvice_)) {
    setObjectName(QStringLiteral("picMapOptions"));
    map_->setObjectName(QStringLiteral("Map1"));
    tools_->setObjectName(QStringLiteral("CmdToolBar"));
    lblPointed_->setObjectName(QStringLiteral("lblPointed"));
    lblPointed_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblPointed_->setAlignment(ReadingSide() | Qt::AlignVCenter);
    // The map is a sheet of paper, whatever the shades of the windows.
    QPalette paper = map_->palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, QColor(20, 20, 20));
    map_->setPalette(paper);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tools_);
    column->addWidget(map_, 1);
    column->addWidget(picAdvice_);
    column->addWidget(periods_);
    MakeTools();
    MakeAdvice();
    connect(map_, &MapCanvas::ToolChanged, this, &MapPane::ShowTool);
    connect(map_, &MapCanvas::Clicked, this, [this](const QPointF& at) {
        if (map_->Tool() == MapTool::Identify) Q_EMIT IdentifyRequested(at);
    });
    SetToolTipParam();
}

QToolButton* MapPane::AddButton(const char* picture, const char* textKey) {
    auto* button = new QToolButton(tools_);
    button->setObjectName(QStringLiteral("CmdToolBar_%1").arg(buttons_.size()));
    button->setAutoRaise(true);
    button->setIcon(theme::Icon(QLatin1String(picture)));
    button->setIconSize({theme::kIconSize, theme::kIconSize});
    button->setFocusPolicy(Qt::TabFocus);
    tools_->layout()->addWidget(button);
    buttons_.push_back({button, QLatin1String(textKey), std::nullopt});
    return button;
}

/// A tool stays in force until another is taken, or it is pressed again.
void MapPane::AddTool(MapTool tool, const char* picture, const char* textKey) {
    QToolButton* button = AddButton(picture, textKey);
    button->setCheckable(true);
    buttons_.back().tool = tool;
    connect(button, &QToolButton::clicked, map_,
            [this, tool](bool checked) { map_->SetTool(checked ? tool : MapTool::Select); });
}

void MapPane::MakeTools() {
    auto* row = new QHBoxLayout(tools_);
    row->setContentsMargins(theme::kGrid, theme::kGrid / 2, theme::kGrid, theme::kGrid / 2);
    row->setSpacing(theme::kGrid / 2);
    connect(AddButton("full_extent.png", "Full Extent"), &QToolButton::clicked, map_, [this] {
        map_->SetTool(MapTool::Select);
        ShowFirst({}, {});
    });
    AddTool(MapTool::ZoomIn, "zoom_in.png", "Zoom In");
    AddTool(MapTool::ZoomOut, "zoom_out.png", "Zoom Out");
    AddTool(MapTool::Pan, "pan.png", "Pan");
    connect(AddButton("refresh.png", "TLB_REFRESH"), &QToolButton::clicked, map_, [this] {
        map_->SetTool(MapTool::Select);
        map_->Refresh();
    });
    AddTool(MapTool::Identify, "details.png", "Identity Feature");
    connect(AddButton("label.png", "Label"), &QToolButton::clicked, this, &MapPane::LabelsRequested);
    row->addSpacing(theme::kGrid);
    row->addWidget(lblPointed_, 1);
}

void MapPane::MakeAdvice() {
    picAdvice_->setObjectName(QStringLiteral("picAdvice"));
    lblAdvice_->setObjectName(QStringLiteral("lblAdvice"));
    cmdAdvice_->setObjectName(QStringLiteral("cmdAdvice"));
    lblAdvice_->setWordWrap(true);
    cmdAdvice_->setAutoDefault(false);
    auto* row = new QHBoxLayout(picAdvice_);
    row->setContentsMargins(theme::kGrid, theme::kGrid, theme::kGrid, 0);
    row->setSpacing(theme::kGrid);
    row->addWidget(lblAdvice_, 1);
    row->addWidget(cmdAdvice_);
    connect(cmdAdvice_, &QPushButton::clicked, this, &MapPane::AdviceTaken);
    picAdvice_->hide();
}

void MapPane::ShowTool(MapTool tool) {
    for (const Button& each : buttons_)
        if (each.tool) each.button->setChecked(*each.tool == tool);
}

void MapPane::SetToolTipParam() {
    for (const Button& each : buttons_) {
        SetToolTip(each.button, each.key);
        each.button->setAccessibleName(PlainText(each.key));
    }
    map_->setAccessibleName(PlainText(QStringLiteral("Map")));
    map_->setAccessibleDescription(PlainText(QStringLiteral("TS_MapKeys")));
    map_->SetEmptyHint(PlainText(QStringLiteral("TS_NoMapToShow")));
    periods_->SetFormCaptions();
}

void MapPane::ShowPointed(const QString& text) {
    pointed_ = text;
    map_->setToolTip(text);
    FitPointed();
}

/// A text that is too long for its place ends in dots, and is whole in its tip.
void MapPane::FitPointed() {
    const QString text = pointed_.isEmpty() ? note_ : pointed_;
    lblPointed_->setText(lblPointed_->fontMetrics().elidedText(text, Qt::ElideRight, lblPointed_->width()));
    lblPointed_->setToolTip(text);
    lblPointed_->setAccessibleName(text);
}

void MapPane::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    tools_->layout()->activate();
    FitPointed();
}

void MapPane::ShowFirst(const MapBox& extent, const QString& note) {
    note_ = note;
    if (extent.IsEmpty())
        map_->ShowFullExtent();
    else
        map_->SetExtent(extent);
    ShowPointed({});
}

void MapPane::ShowAdvice(const QString& text, const QString& buttonCaption) {
    lblAdvice_->setText(text);
    cmdAdvice_->setText(buttonCaption);
    picAdvice_->setVisible(!text.isEmpty());
}

} // namespace tessaro
