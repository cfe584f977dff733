#include "selection/frmShowDetails.h"

#include "controls/Captions.h"
#include "controls/Theme.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tessaro {

frmShowDetails::frmShowDetails(QWidget* parent) : QDialog(parent), details_(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("frmShowDetails"));
    setWindowTitle(PlainText(QStringLiteral("TS_Details")));
    resize(640, 360);
    details_->setRootIsDecorated(false);
    details_->setUniformRowHeights(true);
    details_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* cmdOK = new QPushButton(this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    SetCaption(cmdOK, QStringLiteral("OK BUTTON"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::Grid * 2, theme::Grid * 2, theme::Grid * 2, theme::Grid * 2);
    column->setSpacing(theme::Grid * 2);
    column->addWidget(details_);
    column->addWidget(cmdOK, 0, Qt::AlignTrailing);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    SetFormFonts(this);
}

void frmShowDetails::DisplayINDDetails(const std::vector<selection::IndicatorDetails>& details) {
    details_->setObjectName(QStringLiteral("frmIndicators"));
    details_->setHeaderLabels({PlainText(QStringLiteral("Comm_Indicator")), PlainText(QStringLiteral("Comm_Sector")),
                               PlainText(QStringLiteral("Comm_Class"))});
    details_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    details_->clear();
    for (const selection::IndicatorDetails& indicator : details)
        for (qsizetype place = 0; place < indicator.sectors.size(); ++place)
            new QTreeWidgetItem(details_, {place == 0 ? indicator.indicator : QString(), indicator.sectors.at(place),
                                           indicator.classes.at(place)});
    details_->resizeColumnToContents(1);
    details_->resizeColumnToContents(2);
}

void frmShowDetails::ShowAreaDetails(const QStringList& chain) {
    details_->setObjectName(QStringLiteral("frmArea"));
    details_->setHeaderLabels({PlainText(QStringLiteral("Comm_Area Name"))});
    details_->clear();
    details_->setRootIsDecorated(true);
    QTreeWidgetItem* above = nullptr;
    for (const QString& area : chain) {
        auto* item = above ? new QTreeWidgetItem(above, {area}) : new QTreeWidgetItem(details_, {area});
        above = item;
    }
    details_->expandAll();
}

} // namespace tessaro
