#include "presentation/RowsColumnsPage.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "presentation/frmLoadRC.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "ui_RowsColumnsPage.h"

#include <QLocale>
#include <QShortcut>

namespace tessaro {

namespace {

constexpr int kShownValues = 500;

QString WithCount(const QString& caption, qsizetype count) {
    const QString pattern = GetText(QStringLiteral("TS_ListCaption"));
    return (pattern.isEmpty() ? QStringLiteral("%1 (%2)") : pattern).arg(caption, QLocale().toString(count));
}

void MakeHeading(QLabel* label) {
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
}

} // namespace

RowsColumnsPage::RowsColumnsPage(WizardKind kind, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::RowsColumnsPage>()), kind_(kind) {
    ui_->setupUi(this);
    NameLists();
    ConnectList(ui_->LVAvailable, Placement::Unused);
    ConnectList(ui_->LVRows, Placement::Row);
    ConnectList(ui_->LVColumns, Placement::Column);
    ui_->LVDetails->setHeaderHidden(true);
    ConnectButtons();
    SetFormCaptions();
    ShowLists();
}

RowsColumnsPage::~RowsColumnsPage() = default;

void RowsColumnsPage::NameLists() {
    if (kind_ == WizardKind::Table) return;
    ui_->LVRows->setObjectName(QStringLiteral("LVYAxis"));
    ui_->LVColumns->setObjectName(QStringLiteral("LVXAxis"));
}

KeyedList* RowsColumnsPage::ListOf(Placement placement) const {
    switch (placement) {
    case Placement::Row:
        return ui_->LVRows;
    case Placement::Column:
        return ui_->LVColumns;
    case Placement::Unused:
        break;
    }
    return ui_->LVAvailable;
}

void RowsColumnsPage::ConnectList(KeyedList* list, Placement placement) {
    list->setHeaderHidden(true);
    list->SetDropSources({ui_->LVAvailable, ui_->LVRows, ui_->LVColumns});
    // A double click takes a field aside, or puts an unused one on the rows.
    const Placement next = placement == Placement::Unused ? Placement::Row : Placement::Unused;
    connect(list, &KeyedList::ItemActivated, this, [this, list, next] { Move(list, next); });
    connect(list, &KeyedList::EnterPressed, this, [this, list, next] { Move(list, next); });
    if (placement != Placement::Unused)
        connect(list, &KeyedList::DeletePressed, this, [this, list] { Move(list, Placement::Unused); });
    connect(list, &KeyedList::ItemsDroppedFrom, this,
            [this, placement](KeyedList* from, int row) { Move(from, placement, row < 0 ? kPivotFieldCount : row); });
    connect(list, &KeyedList::HighlightChanged, this, &RowsColumnsPage::ShowButtons);
    connect(list, &KeyedList::CurrentTextChanged, this, [this, list] { ShowDetails(list->CurrentKey()); });
    if (placement == Placement::Unused) return;
    for (const int by : {-1, 1}) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | (by < 0 ? Qt::Key_Up : Qt::Key_Down)), list);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, placement, by] { Shift(placement, by); });
    }
}

void RowsColumnsPage::ConnectButtons() {
    connect(ui_->cmdToRows, &QPushButton::clicked, this, [this] { Move(ui_->LVAvailable, Placement::Row); });
    connect(ui_->cmdToColumns, &QPushButton::clicked, this, [this] { Move(ui_->LVAvailable, Placement::Column); });
    connect(ui_->cmdFromRows, &QPushButton::clicked, this, [this] { Move(ui_->LVRows, Placement::Unused); });
    connect(ui_->cmdFromColumns, &QPushButton::clicked, this, [this] { Move(ui_->LVColumns, Placement::Unused); });
    connect(ui_->CmdReset, &QPushButton::clicked, this, &RowsColumnsPage::CmdReset_Click);
    connect(ui_->CmdSave, &QPushButton::clicked, this, &RowsColumnsPage::CmdSave_Click);
    connect(ui_->CmdLoad, &QPushButton::clicked, this, &RowsColumnsPage::CmdLoad_Click);
}

void RowsColumnsPage::SetFormCaptions() {
    const bool table = kind_ == WizardKind::Table;
    for (QLabel* label : {ui_->lblAvailable, ui_->lblRows, ui_->lblColumns, ui_->lblDetails})
        MakeHeading(label);
    SetCaption(ui_->lblDetails, QStringLiteral("Details"));
    SetCaption(ui_->CmdReset, QStringLiteral("Reset"));
    SetCaption(ui_->CmdSave, QStringLiteral("Comm_Save"));
    SetCaption(ui_->CmdLoad, QStringLiteral("Comm_Load"));
    const QString hint = GetText(QStringLiteral("TS_FieldsHint"));
    ui_->LVRows->SetEmptyHint(hint, hint);
    ui_->LVColumns->SetEmptyHint(hint, hint);
    ui_->LVAvailable->SetEmptyHint(GetText(QStringLiteral("TS_AllFieldsPlaced")), {});
    ui_->LVDetails->SetEmptyHint(GetText(QStringLiteral("TS_DetailsHint")), {});
    ui_->LVDetails->setAccessibleName(PlainText(QStringLiteral("Details")));
    const QString add =
        layoutDirection() == Qt::RightToLeft ? QStringLiteral("remove_one.png") : QStringLiteral("add_one.png");
    const QString back =
        layoutDirection() == Qt::RightToLeft ? QStringLiteral("add_one.png") : QStringLiteral("remove_one.png");
    const auto dress = [](QPushButton* button, const QString& icon, const QString& key) {
        button->setIcon(theme::Icon(icon));
        SetToolTip(button, key);
        button->setAccessibleName(PlainText(key));
    };
    dress(ui_->cmdToRows, add, table ? QStringLiteral("TS_MoveToRows") : QStringLiteral("TS_MoveToYAxis"));
    dress(ui_->cmdToColumns, add, table ? QStringLiteral("TS_MoveToColumns") : QStringLiteral("TS_MoveToXAxis"));
    dress(ui_->cmdFromRows, back, QStringLiteral("TS_TakeAside"));
    dress(ui_->cmdFromColumns, back, QStringLiteral("TS_TakeAside"));
}

void RowsColumnsPage::SetArrangement(const RowsColumns& arrangement) {
    arrangement_ = arrangement;
    ShowLists();
    Q_EMIT ArrangementChanged();
}

void RowsColumnsPage::Move(KeyedList* from, Placement placement, int row) {
    RowsColumns changed = arrangement_;
    QString last;
    for (const KeyedItem& item : from->HighlightedItems()) {
        const auto field = FieldOfKey(item.key);
        if (!field) continue;
        changed.PlaceAt(*field, placement, row);
        if (row < kPivotFieldCount) ++row;
        last = item.key;
    }
    if (last.isEmpty()) return;
    SetArrangement(changed);
    ListOf(placement)->HighlightKey(last);
}

void RowsColumnsPage::Shift(Placement placement, int by) {
    KeyedList* list = ListOf(placement);
    const auto field = FieldOfKey(list->CurrentKey());
    if (!field) return;
    const RowsColumns::FieldList& fields = placement == Placement::Row ? arrangement_.Rows() : arrangement_.Columns();
    const auto at = std::find(fields.begin(), fields.end(), *field) - fields.begin() + by;
    if (at < 0 || at >= static_cast<std::ptrdiff_t>(fields.size())) return;
    RowsColumns changed = arrangement_;
    changed.PlaceAt(*field, placement, static_cast<int>(at));
    SetArrangement(changed);
    list->HighlightKey(KeyOf(*field));
}

void RowsColumnsPage::ShowLists() {
    const auto fill = [](KeyedList* list, const RowsColumns::FieldList& fields) {
        std::vector<KeyedItem> items;
        for (const PivotField field : fields)
            items.push_back({KeyOf(field), {CaptionOf(field)}, 0});
        list->SetColumns({QString()});
        list->Items().SetItemsInOrder(std::move(items));
    };
    fill(ui_->LVAvailable, arrangement_.Available());
    fill(ui_->LVRows, arrangement_.Rows());
    fill(ui_->LVColumns, arrangement_.Columns());
    const bool table = kind_ == WizardKind::Table;
    const auto head = [](QLabel* label, KeyedList* list, const char* key) {
        label->setText(WithCount(PlainText(QLatin1String(key)), list->Items().Count()));
        list->setAccessibleName(PlainText(QLatin1String(key)));
    };
    head(ui_->lblAvailable, ui_->LVAvailable, "AVAILABLE");
    head(ui_->lblRows, ui_->LVRows, table ? "Table Rows" : "Y Axis");
    head(ui_->lblColumns, ui_->LVColumns, table ? "Table Columns" : "X Axis");
    ShowButtons();
}

void RowsColumnsPage::ShowDetails(const QString& key) {
    const ErrorTrap trap("LVDetails");
    const auto field = FieldOfKey(key);
    std::vector<KeyedItem> values;
    QString caption = PlainText(QStringLiteral("Details"));
    if (field) {
        const QStringList texts = DistinctValues(*field, kShownValues + 1);
        for (const QString& text : texts.mid(0, kShownValues))
            values.push_back({QString::number(values.size()), {text}, 0});
        caption = texts.size() > kShownValues ? CaptionOf(*field) + QStringLiteral(" - ") +
                                                    GetText(QStringLiteral("TS_ShownValues"))
                                                        .replace(QStringLiteral("%1"), QLocale().toString(kShownValues))
                                              : WithCount(CaptionOf(*field), texts.size());
    }
    ui_->lblDetails->setText(caption);
    ui_->LVDetails->SetColumns({QString()});
    ui_->LVDetails->Items().SetItemsInOrder(std::move(values));
}

void RowsColumnsPage::ShowButtons() {
    ui_->cmdToRows->setEnabled(ui_->LVAvailable->HasHighlighted());
    ui_->cmdToColumns->setEnabled(ui_->LVAvailable->HasHighlighted());
    ui_->cmdFromRows->setEnabled(ui_->LVRows->HasHighlighted());
    ui_->cmdFromColumns->setEnabled(ui_->LVColumns->HasHighlighted());
}

void RowsColumnsPage::CmdReset_Click() {
    SetArrangement({});
}

void RowsColumnsPage::CmdSave_Click() {
    const ErrorTrap trap("CmdSave_Click");
    const bool noRows = arrangement_.Rows().empty();
    const bool noColumns = arrangement_.Columns().empty();
    if (kind_ == WizardKind::Table && noRows && noColumns) {
        ShowMessage(QStringLiteral("255"));
        return;
    }
    if (kind_ == WizardKind::Graph && (noRows || noColumns)) {
        ShowMessage(noRows ? QStringLiteral("205") : QStringLiteral("206"));
        return;
    }
    const QString extension = LayoutExtension(kind_);
    const QString kindOfFile = PlainText(kind_ == WizardKind::Table ? QStringLiteral("TS_FilterTableLayout")
                                                                    : QStringLiteral("TS_FilterGraphLayout"));
    QString file = AskForNewFile(this, {PlainText(QStringLiteral("Comm_Save")), LayoutFolderForWriting(),
                                        kindOfFile + QStringLiteral(" (*") + extension + QLatin1Char(')'),
                                        QStringLiteral("Default") + extension});
    if (file.isEmpty()) return;
    if (!file.endsWith(extension, Qt::CaseInsensitive)) file += extension;
    if (!SaveRowsColumns(file, arrangement_, kind_))
        ShowMessage(GetText(QStringLiteral("TS_OfficeFile")).replace(QStringLiteral("%1"), file), MessageType::Ok,
                    MessageIcon::Warning, {}, false);
}

void RowsColumnsPage::CmdLoad_Click() {
    const ErrorTrap trap("CmdLoad_Click");
    frmLoadRC form(kind_, this);
    form.exec();
    if (form.ChosenPath().isEmpty()) return;
    RowsColumns loaded;
    if (LoadRowsColumns(form.ChosenPath(), loaded))
        SetArrangement(loaded);
    else
        ShowMessage(GetText(QStringLiteral("TS_NoLayout")).replace(QStringLiteral("%1"), form.ChosenPath()),
                    MessageType::Ok, MessageIcon::Warning, {}, false);
}

} // namespace tessaro
