#include "map/wizard/PeriodSlider.h"

#include "controls/Captions.h"
#include "controls/Theme.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>

namespace tessaro {

PeriodSlider::PeriodSlider(QWidget* parent)
    : QWidget(parent), lblPeriod_(new QLabel(this)), sldPeriod_(new QSlider(Qt::Horizontal, this)),
      lblPeriodShown_(new QLabel(this)), chkSameClasses_(new QCheckBox(this)) {
    lblPeriod_->setObjectName(QStringLiteral("lblPeriod"));
    sldPeriod_->setObjectName(QStringLiteral("sldPeriod"));
    lblPeriodShown_->setObjectName(QStringLiteral("lblPeriodShown"));
    chkSameClasses_->setObjectName(QStringLiteral("chkSameClasses"));
    sldPeriod_->setPageStep(1);
    lblPeriod_->setBuddy(sldPeriod_);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(theme::kGrid, theme::kGrid, theme::kGrid, theme::kGrid);
    grid->setSpacing(theme::kGrid);
    grid->setColumnStretch(1, 1);
    grid->addWidget(lblPeriod_, 0, 0);
    grid->addWidget(sldPeriod_, 0, 1);
    grid->addWidget(lblPeriodShown_, 0, 2);
    grid->addWidget(chkSameClasses_, 1, 0, 1, 3);
    connect(sldPeriod_, &QSlider::valueChanged, this, [this](int place) {
        ShowPeriod();
        Q_EMIT PeriodChosen(periods_.value(place));
    });
    connect(chkSameClasses_, &QCheckBox::toggled, this, &PeriodSlider::SameClassesChosen);
    hide();
}

void PeriodSlider::SetPeriods(const QStringList& periods, const QString& shown, bool sameClasses) {
    const QSignalBlocker quietSlider(sldPeriod_);
    const QSignalBlocker quietCheck(chkSameClasses_);
    periods_ = periods;
    const auto place = static_cast<int>(periods.indexOf(shown));
    const int last = std::max(0, static_cast<int>(periods.size()) - 1);
    sldPeriod_->setRange(0, last);
    sldPeriod_->setValue(place < 0 ? last : place);
    chkSameClasses_->setChecked(sameClasses);
    int widest = 0;
    for (const QString& each : periods)
        widest = std::max(widest, lblPeriodShown_->fontMetrics().horizontalAdvance(each));
    lblPeriodShown_->setMinimumWidth(widest);
    ShowPeriod();
    setVisible(periods.size() > 1);
}

void PeriodSlider::ShowPeriod() {
    const QString period = periods_.value(sldPeriod_->value());
    lblPeriodShown_->setText(period);
    sldPeriod_->setAccessibleDescription(period);
}

void PeriodSlider::SetFormCaptions() {
    SetCaption(lblPeriod_, QStringLiteral("TS_ValuesUpTo"));
    SetCaption(chkSameClasses_, QStringLiteral("TS_SameClasses"));
    SetToolTip(chkSameClasses_, QStringLiteral("TS_SameClassesHint"));
    sldPeriod_->setAccessibleName(lblPeriod_->accessibleName());
}

} // namespace tessaro
