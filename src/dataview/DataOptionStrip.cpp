#include "dataview/DataOptionStrip.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "session/Settings.h"

#include <QToolButton>
#include <QVBoxLayout>

#include <array>

namespace tessaro {

namespace {

/// An option: its key in the settings, which say whether it is offered, its caption and its picture.
struct OptionLook {
    const char* setting;
    const char* captionKey;
    const char* picture;
};

constexpr std::array<OptionLook, 8> kOptions = {{
    {"DATA_VIEW", "TS_OptionView", "table.png"},
    {"DATA_STATS", "TS_OptionStatistics", "statistics.png"},
    {"DATA_SOURCES", "TS_OptionSources", "source.png"},
    {"DATA_UNITS", "TS_OptionUnits", "unit.png"},
    {"DATA_SUBPOPS", "TS_OptionSubpops", "subpop.png"},
    {"DATA_SORT", "TS_OptionSort", "sort_asc.png"},
    {"DATA_CALC", "TS_OptionCalculate", "calc.gif"},
    {"DATA_PRESENT", "TS_OptionPresent", "present.png"},
}};

} // namespace

DataOptionStrip::DataOptionStrip(QWidget* parent) : QFrame(parent) {
    QPalette raised = palette();
    raised.setColor(QPalette::Window, theme::SurfaceRaised());
    setPalette(raised);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kGrid, 2 * theme::kGrid, theme::kGrid, theme::kGrid);
    column->setSpacing(theme::kGrid / 4);
    for (std::size_t place = 0; place < kOptions.size(); ++place) {
        const OptionLook& option = kOptions.at(place);
        auto* button = new QToolButton(this);
        button->setObjectName(QLatin1String(option.setting));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setIcon(theme::Icon(QLatin1String(option.picture)));
        button->setIconSize({theme::kIconSize, theme::kIconSize});
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setVisible(place == 0 || SettingOption(QLatin1String(option.setting)).offered);
        buttons_.addButton(button, static_cast<int>(place));
        column->addWidget(button);
    }
    column->addStretch();
    connect(&buttons_, &QButtonGroup::idClicked, this, &DataOptionStrip::Chosen);
}

void DataOptionStrip::SetCurrent(int option) {
    buttons_.button(option)->setChecked(true);
}

void DataOptionStrip::SetFormCaptions() {
    for (std::size_t place = 0; place < kOptions.size(); ++place) {
        QAbstractButton* button = buttons_.button(static_cast<int>(place));
        SetCaption(button, QLatin1String(kOptions.at(place).captionKey));
        if (!button->isEnabled()) SetToolTip(button, QStringLiteral("TS_NotYetAvailable"));
    }
    setAccessibleName(PlainText(QStringLiteral("TS_DataOptions")));
}

QString DataOptionStrip::CaptionKey(int option) {
    return QLatin1String(kOptions.at(static_cast<std::size_t>(option)).captionKey);
}

} // namespace tessaro
