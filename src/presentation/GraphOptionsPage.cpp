#include "presentation/GraphOptionsPage.h"

#include "controls/Captions.h"
#include "presentation/ChartPictures.h"
#include "session/Strings.h"
#include "ui_GraphOptionsPage.h"

namespace tessaro {

namespace {

using office::ChartKind;

constexpr struct {
    ChartKind kind;
    const char* key;
} kKinds[] = {{ChartKind::Column, "TS_ChartColumn"}, {ChartKind::Bar, "TS_ChartBar"},
              {ChartKind::Line, "TS_ChartLine"},     {ChartKind::Pie, "TS_ChartPie"},
              {ChartKind::Area, "TS_ChartArea"},     {ChartKind::Scatter, "TS_ChartScatter"}};
constexpr QSize kPicture(96, 68);
constexpr QSize kCell(128, 104);

} // namespace

GraphOptionsPage::GraphOptionsPage(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::GraphOptionsPage>()) {
    ui_->setupUi(this);
    ui_->lstKinds->setIconSize(kPicture);
    ui_->lstKinds->setGridSize(kCell);
    ui_->chkFormatTable->setChecked(true);
    ui_->SSCmdSort->setEnabled(false);
    ui_->lblSort->setEnabled(false);
    FillKinds();
    SetFormCaptions();
    // A click or a key chooses; what the wizard sets itself is only a suggestion.
    connect(ui_->lstKinds, &QListWidget::itemPressed, this, [this] { kindChosen_ = true; });
    connect(ui_->lstKinds, &QListWidget::currentRowChanged, this, [this] { kindChosen_ |= ui_->lstKinds->hasFocus(); });
    // A click beside the pictures clears the highlight; the chosen kind stays.
    connect(ui_->lstKinds, &QListWidget::itemSelectionChanged, this, [this] {
        if (ui_->lstKinds->selectedItems().isEmpty() && ui_->lstKinds->currentItem())
            ui_->lstKinds->currentItem()->setSelected(true);
    });
    connect(ui_->chkSort, &QCheckBox::toggled, ui_->SSCmdSort, &QWidget::setEnabled);
    connect(ui_->chkSort, &QCheckBox::toggled, ui_->lblSort, &QWidget::setEnabled);
    connect(ui_->SSCmdSort, &QPushButton::clicked, this, &GraphOptionsPage::SortRequested);
}

GraphOptionsPage::~GraphOptionsPage() = default;

void GraphOptionsPage::FillKinds() {
    for (const auto& kind : kKinds) {
        auto* item = new QListWidgetItem(ChartPicture(kind.kind, palette(), kPicture, devicePixelRatioF()), QString(),
                                         ui_->lstKinds);
        item->setTextAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    }
    ui_->lstKinds->setCurrentRow(0);
}

void GraphOptionsPage::SetFormCaptions() {
    QFont heading = ui_->lblKind->font();
    heading.setBold(true);
    ui_->lblKind->setFont(heading);
    ui_->lblLook->setFont(heading);
    SetCaption(ui_->lblKind, QStringLiteral("TS_ChartKind"));
    SetCaption(ui_->lblLook, QStringLiteral("Format"));
    SetCaption(ui_->chkFormatTable, QStringLiteral("Format Table"));
    SetCaption(ui_->chkSort, QStringLiteral("Graph_Sort"));
    SetCaption(ui_->SSCmdSort, QStringLiteral("Sort"));
    ui_->lstKinds->setAccessibleName(PlainText(QStringLiteral("TS_ChartKind")));
    for (int i = 0; i < ui_->lstKinds->count(); ++i)
        ui_->lstKinds->item(i)->setText(PlainText(QLatin1String(kKinds[i].key)));
}

GraphOptions GraphOptionsPage::Options() const {
    GraphOptions options;
    options.kind = kKinds[std::max(ui_->lstKinds->currentRow(), 0)].kind;
    options.formatTable = ui_->chkFormatTable->isChecked();
    options.sort = ui_->chkSort->isChecked();
    options.sortColumn = sort_.column;
    options.sortAscending = sort_.ascending;
    return options;
}

void GraphOptionsPage::ShowKind(ChartKind kind) {
    for (int i = 0; i < ui_->lstKinds->count(); ++i)
        if (kKinds[i].kind == kind) ui_->lstKinds->setCurrentRow(i);
}

void GraphOptionsPage::SetOptions(const GraphOptions& options, bool kindChosen) {
    ShowKind(options.kind);
    kindChosen_ = kindChosen;
    ui_->chkFormatTable->setChecked(options.formatTable);
    ui_->chkSort->setChecked(options.sort);
    sort_ = {options.sortColumn, options.sortAscending};
}

void GraphOptionsPage::SuggestKind(ChartKind kind) {
    if (kindChosen_) return;
    ShowKind(kind);
    kindChosen_ = false;
}

void GraphOptionsPage::SetSorting(const ColumnSort& sort, const QString& head) {
    sort_ = sort;
    ui_->lblSort->setText(head.isEmpty() ? PlainText(QStringLiteral("TS_SortFirst"))
                                         : QString(head).replace(QLatin1Char('\n'), QStringLiteral(" - ")));
}

} // namespace tessaro
