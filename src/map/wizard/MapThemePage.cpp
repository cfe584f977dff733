#include "map/wizard/MapThemePage.h"

#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "controls/Theme.h"
#include "map/wizard/MapDataModel.h"
#include "map/wizard/MapTexts.h"
#include "session/Messages.h"

#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tessaro {

MapThemePage::MapThemePage(QWidget* parent)
    : QWidget(parent), lblTheme_(new QLabel(this)), lblThemeDetails_(new QLabel(this)), lv1_(new DataTable(this)),
      model_(new MapDataModel(this)), lblCount_(new QLabel(this)), cmdAdvanced_(new QPushButton(this)) {
    lblTheme_->setObjectName(QStringLiteral("lblThemeName"));
    lblThemeDetails_->setObjectName(QStringLiteral("lblThemeDetails"));
    lv1_->setObjectName(QStringLiteral("lv1"));
    lblCount_->setObjectName(QStringLiteral("lblAreaCount"));
    cmdAdvanced_->setObjectName(QStringLiteral("cmdAdvanced"));
    for (QLabel* label : {lblTheme_, lblThemeDetails_})
        label->setWordWrap(true);
    cmdAdvanced_->setAutoDefault(false);
    lv1_->setModel(model_);
    lv1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    lv1_->setSortingEnabled(true);
    lv1_->verticalHeader()->hide(); // areas are told by their names
    lv1_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblCount_, 1);
    bottom->addWidget(cmdAdvanced_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2 * theme::kGrid, 2 * theme::kGrid, 2 * theme::kGrid, 2 * theme::kGrid);
    column->setSpacing(theme::kGrid);
    column->addWidget(lblTheme_);
    column->addWidget(lblThemeDetails_);
    column->addWidget(lv1_, 1);
    column->addLayout(bottom);
    connect(cmdAdvanced_, &QPushButton::clicked, this, &MapThemePage::AdvancedRequested);
    connect(lv1_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& index) {
        if (!showing_ && index.isValid()) Q_EMIT AreaChosen(model_->AreaAt(index.row()).id);
    });
    SetFormCaptions();
}

void MapThemePage::ShowTheme(const MapTheme& theme, const MapAreas& areas) {
    const QScopedValueRollback<bool> quiet(showing_, true);
    QFont bold = LanguageFont();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() + 2);
    lblTheme_->setFont(bold);
    lblTheme_->setText(InReadingOrder(theme.indicator));
    MapTheme details = theme;
    details.indicator.clear();
    lblThemeDetails_->setText(InReadingOrder(NameOf(details)));
    model_->SetAreas(areas);
    lblCount_->setText(FilledText(QStringLiteral("TS_AreasWithValues"), {QLocale().toString(areas.Rows().size())}));
    lv1_->FitToFont();
    const QAbstractItemView& cells = *lv1_;
    std::vector<DataTable::Wish> wishes;
    for (int column = 0; column < model_->columnCount(); ++column) {
        // Of thousands of rows, the first ones tell the widths.
        wishes.push_back({cells.sizeHintForColumn(column), column == 1 ? 2.0 : 1.0, 0, column == 1});
    }
    lv1_->SetColumnWishes(std::move(wishes));
}

int MapThemePage::LeastWidth() const {
    const QMargins margins = layout()->contentsMargins();
    int width = margins.left() + margins.right() + lv1_->verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < model_->columnCount(); ++column)
        width += lv1_->horizontalHeader()->sectionSizeHint(column);
    return width;
}

void MapThemePage::SetFormCaptions() {
    SetCaption(cmdAdvanced_, QStringLiteral("TS_OtherTheme"));
    lv1_->setAccessibleName(PlainText(QStringLiteral("TS_PageMapTheme")));
    lv1_->SetHint(PlainText(QStringLiteral("TS_NoMapValues")));
}

} // namespace tessaro
