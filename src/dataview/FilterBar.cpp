#include "dataview/FilterBar.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "view/DataFilters.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>

namespace tessaro {

namespace {

QString RangeText(const DataFilters& filters) {
    return PlainText(QStringLiteral("TS_ValuesFromTo"))
        .replace(QLatin1String("%1"), InOnePiece(ShownValue(filters.DataValueFrom)))
        .replace(QLatin1String("%2"), InOnePiece(ShownValue(filters.DataValueTo)));
}

} // namespace

FilterBar::FilterBar(QWidget* parent)
    : QWidget(parent), chkFilters_(new QCheckBox(this)), cmdFilters_(new QPushButton(this)) {
    chkFilters_->setObjectName(QStringLiteral("chkFilters"));
    cmdFilters_->setObjectName(QStringLiteral("cmdFilters"));
    cmdFilters_->setAutoDefault(false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * theme::kGrid);
    row->addWidget(chkFilters_);
    row->addWidget(cmdFilters_);
    connect(chkFilters_, &QCheckBox::clicked, this, &FilterBar::Ticked);
    connect(cmdFilters_, &QPushButton::clicked, this, &FilterBar::FiltersWanted);
}

void FilterBar::ShowFilters(const DataFilters& filters) {
    QStringList on;
    if (filters.MostRecentOn) on << PlainText(QStringLiteral("TS_OptionRecent"));
    if (filters.ValueRangeOn) on << RangeText(filters);
    if (filters.MissingDataOn) on << PlainText(QStringLiteral("TS_WithMissing"));
    const QString text = on.isEmpty() ? PlainText(QStringLiteral("TS_OptionRecent")) : on.join(QStringLiteral(" · "));
    chkFilters_->setText(text);
    chkFilters_->setAccessibleName(text);
    chkFilters_->setChecked(!on.isEmpty());
    chkFilters_->setVisible(!on.isEmpty() || SettingOption(QStringLiteral("DATA_RECENTDATA")).offered);
}

void FilterBar::SetFormCaptions() {
    SetToolTip(chkFilters_, QStringLiteral("TS_FiltersTip"));
    SetCaption(cmdFilters_, QStringLiteral("TS_FiltersButton"));
}

} // namespace tessaro
