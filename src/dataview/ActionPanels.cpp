#include "dataview/ActionPanels.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "session/Frame.h"
#include "session/Strings.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace tessaro {

namespace {

struct Entry {
    const char* key;
    const char* captionKey;
    const char* picture;
};

constexpr Entry kCalculations[] = {{"C0", "PERCENT", "calc.gif"},         {"C1", "HMINUS", "calc.gif"},
                                   {"C3", "COMPOSITE INDEX", "calc.gif"}, {"C5", "SUBTOTAL", "calc.gif"},
                                   {"C4", "TRANSFORM", "calc.gif"},       {"C2", "FORMULA", "calc.gif"}};
constexpr Entry kPresentations[] = {{"T", "PRES_Table", "PRESENT_TABLE.gif"},
                                    {"G", "PRES_Graph", "PRESENT_GRAPH.gif"},
                                    {"M", "GALLERY Map", "PRESENT_MAP.gif"}};
constexpr int kIconSize = 32;

/// The row if it is enabled, otherwise the first enabled one; -1 when there is none.
int OfferedFrom(const QListWidget& list, int row) {
    const auto offered = [&list](int n) { return n < list.count() && list.item(n)->flags() & Qt::ItemIsEnabled; };
    if (offered(row)) return row;
    for (int n = 0; n < list.count(); ++n)
        if (offered(n)) return n;
    return -1;
}

} // namespace

ActionPanel::ActionPanel(Kind kind, QWidget* parent)
    : QWidget(parent), kind_(kind), lblHint_(new QLabel(this)), list_(new QListWidget(this)) {
    list_->setObjectName(kind == Kind::Calculate ? QStringLiteral("lstCalculate")
                                                 : QStringLiteral("picPresentationOptions"));
    list_->setFrameShape(QFrame::NoFrame);
    list_->setIconSize({kIconSize, kIconSize});
    list_->setSpacing(theme::kGrid / 2);
    lblHint_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kGrid * 2, 0, theme::kGrid * 2, theme::kGrid);
    column->setSpacing(theme::kGrid);
    column->addWidget(lblHint_);
    column->addWidget(list_);
    setFocusProxy(list_);
    connect(list_, &QListWidget::itemActivated, this, &ActionPanel::Choose);
}

void ActionPanel::Fill() {
    const bool calculate = kind_ == Kind::Calculate;
    lblHint_->setText(
        GetText(calculate ? QStringLiteral("TS_ChooseCalculation") : QStringLiteral("TS_ChoosePresentation")));
    list_->setAccessibleName(lblHint_->text());
    const int current = std::max(list_->currentRow(), 0);
    list_->clear();
    const auto add = [&](const Entry& entry, bool offered) {
        auto* item = new QListWidgetItem(theme::Icon(QLatin1String(entry.picture)),
                                         PlainText(QLatin1String(entry.captionKey)), list_);
        item->setData(Qt::UserRole, QLatin1String(entry.key));
        if (offered) return;
        item->setFlags(item->flags() & ~Qt::ItemIsEnabled);
        item->setToolTip(PlainText(QStringLiteral("TS_NotYetAvailable")));
    };
    if (calculate)
        for (const Entry& entry : kCalculations)
            add(entry, TheFrame().OffersCalculation(entry.key[1] - '0'));
    else
        for (const Entry& entry : kPresentations)
            add(entry, TheFrame().OffersPresentation(QLatin1Char(entry.key[0])));
    list_->setCurrentRow(OfferedFrom(*list_, current));
}

void ActionPanel::Choose() {
    const QListWidgetItem* item = list_->currentItem();
    if (item && item->flags().testFlag(Qt::ItemIsEnabled)) Q_EMIT Chosen(item->data(Qt::UserRole).toString());
}

} // namespace tessaro
