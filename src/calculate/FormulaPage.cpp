#include "calculate/FormulaPage.h"

#include "controls/Captions.h"
#include "controls/EmptyHint.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "ui_FormulaPage.h"

#include <QHeaderView>
#include <QLocale>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {

constexpr int kPauseMilliseconds = 300;
constexpr int kPreviewedAreas = 10;
constexpr int kShownAreas = 1000;
constexpr const char* kOperators[] = {" + ", " - ", " / ", " * ", " ^ ", " { ", " } "};
constexpr int kClear = 7; ///< the operator that empties the formula
enum Columns { AreaColumn, ResultColumn };

} // namespace

FormulaPage::FormulaPage(QWidget* parent) : CalculationPage(parent), ui_(std::make_unique<Ui::FormulaPage>()) {
    ui_->setupUi(this);
    ui_->lblProblem->setVisible(true);
    pause_.setSingleShot(true);
    pause_.setInterval(kPauseMilliseconds);
    MakeOperators();
    SetFormCaptions();
    ConnectControls();
}

FormulaPage::~FormulaPage() = default;

void FormulaPage::MakeOperators() {
    static constexpr const char* kNames[] = {"TS_OpPlus",  "TS_OpMinus",     "TS_OpDivide",    "TS_OpTimes",
                                             "TS_OpPower", "TS_OpOpenBrace", "TS_OpCloseBrace"};
    QWidget* before = ui_->txtFormula; // in the order of Tab
    for (int index = 0; index < kClear; ++index) {
        auto* button = new QToolButton;
        button->setObjectName(QStringLiteral("cmdOperators_%1").arg(index));
        button->setText(QString::fromLatin1(kOperators[index]).trimmed());
        button->setToolTip(PlainText(QLatin1String(kNames[index])));
        button->setAccessibleName(button->toolTip());
        button->setFocusPolicy(Qt::TabFocus);
        button->setMinimumSize(36, 28);
        ui_->operators->insertWidget(index, button);
        setTabOrder(std::exchange(before, button), button);
        connect(button, &QToolButton::clicked, this, [this, index] { cmdOperators_Click(index); });
    }
    connect(ui_->cmdOperators_7, &QPushButton::clicked, this, [this] { cmdOperators_Click(kClear); });
}

void FormulaPage::SetFormCaptions() {
    ui_->lblHint->setText(GetText(QStringLiteral("TS_HintFormula")));
    ui_->lblHint->setAlignment(ReadingSide() | Qt::AlignVCenter);
    SetCaption(ui_->cmdOperators_7, QStringLiteral("TS_ClearFormula"));
    SetCaption(ui_->cmdValidate, QStringLiteral("TS_Validate"));
    const QString filter = PlainText(QStringLiteral("TS_FilterPlaceholder"));
    ui_->txtFilter->setPlaceholderText(filter);
    ui_->txtFilter->setAccessibleName(filter);
    ui_->txtFormula->setAccessibleName(PlainText(QStringLiteral("FORMULA")));
    ui_->txtFormula->setPlaceholderText(GetText(QStringLiteral("TS_FormulaPlaceholder")));
    ui_->lstAvailable_Step1->SetEmptyHint(GetText(QStringLiteral("TS_NothingToCalculate")),
                                          GetText(QStringLiteral("TS_FilterNoMatch")));
    ui_->lstAvailable_Step1->SetColumns(
        {PlainText(QStringLiteral("Comm_Indicator")), PlainText(QStringLiteral("Subpop"))});
    ui_->lstAvailable_Step1->setAccessibleName(PlainText(QStringLiteral("AVAILABLE")));
    ui_->grdDummy->setColumnCount(2);
    ui_->grdDummy->setHorizontalHeaderLabels(
        {PlainText(QStringLiteral("Comm_Area Name")), PlainText(QStringLiteral("LOG_TARGET"))});
    ui_->grdDummy->horizontalHeader()->setSectionResizeMode(AreaColumn, QHeaderView::Stretch);
    ui_->grdDummy->horizontalHeader()->setSectionResizeMode(ResultColumn, QHeaderView::Stretch);
    ui_->grdDummy->horizontalHeaderItem(AreaColumn)->setTextAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    ui_->grdDummy->horizontalHeaderItem(ResultColumn)
        ->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    ui_->grdDummy->verticalHeader()->hide();
    ui_->grdDummy->setAccessibleName(PlainText(QStringLiteral("LOG_TARGET")));
    ShowWhenEmpty(ui_->grdDummy, GetText(QStringLiteral("TS_FormulaResultsHint")));
    ShowResults(QStringLiteral("TS_FirstResults"), {});
}

void FormulaPage::ConnectControls() {
    KeyedList* list = ui_->lstAvailable_Step1;
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(list, &KeyedList::ItemActivated, this, &FormulaPage::InsertReferences);
    connect(list, &KeyedList::EnterPressed, this, &FormulaPage::InsertReferences);
    connect(ui_->txtFilter, &QLineEdit::textChanged, list,
            [list](const QString& text) { list->Items().SetFilter(text); });
    connect(ui_->txtFormula, &QPlainTextEdit::textChanged, this, &FormulaPage::FormulaChanged);
    connect(ui_->cmdValidate, &QPushButton::clicked, this, [this] { cmdValidate_Click(true); });
    connect(&pause_, &QTimer::timeout, this, &FormulaPage::ShowPreview);
}

void FormulaPage::ShowDraft(const CalculationDraft& draft) {
    const ErrorTrap trap("FillStep1ForCalcs");
    if (!isRead_) {
        isRead_ = true;
        subject_ = ReadFormulaSubject();
        std::vector<KeyedItem> rows;
        QStringList references;
        for (const CalculationItem& item : subject_.items) {
            const QString reference = FormulaReference(item.indicator, item.subpop);
            rows.push_back({reference, {item.indicator, item.subpop}});
            references << reference;
        }
        ui_->lstAvailable_Step1->Items().SetItemsInOrder(std::move(rows));
        ui_->txtFormula->SetReferences(references);
    }
    if (Formula() != draft.formula) ui_->txtFormula->setPlainText(draft.formula);
    ui_->txtFormula->setFocus();
}

QString FormulaPage::Formula() const {
    return ui_->txtFormula->Formula();
}

// The indicators of the formula, in the order in which they stand there.
void FormulaPage::TakeInto(CalculationDraft& draft) const {
    draft.formula = Formula();
    std::vector<std::pair<qsizetype, CalculationItem>> found;
    for (const CalculationItem& item : subject_.items)
        if (const qsizetype at = draft.formula.indexOf(FormulaReference(item.indicator, item.subpop)); at >= 0)
            found.emplace_back(at, item);
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    draft.items.clear();
    for (auto& [at, item] : found)
        draft.items.push_back(std::move(item));
    draft.showSubpop = true;
}

bool FormulaPage::IsComplete() const {
    return !Formula().trimmed().isEmpty();
}

void FormulaPage::cmdOperators_Click(int index) {
    if (index == kClear) {
        ui_->txtFormula->clear();
        ui_->txtFormula->setFocus();
    } else {
        ui_->txtFormula->InsertAtCaret(QLatin1String(kOperators[index]));
    }
}

void FormulaPage::InsertReferences() {
    for (const KeyedItem& item : ui_->lstAvailable_Step1->HighlightedItems())
        ui_->txtFormula->InsertAtCaret(item.key);
}

void FormulaPage::FormulaChanged() {
    ui_->txtFormula->MarkFault(-1, 0);
    ui_->lblProblem->clear();
    pause_.start();
    Q_EMIT Changed();
}

void FormulaPage::ShowPreview() {
    const ErrorTrap trap("txtFormula_Change");
    if (!IsComplete()) return ShowResults(QStringLiteral("TS_FirstResults"), {});
    const FormulaCheck check = PreviewFormula(Formula(), subject_, kPreviewedAreas);
    ShowFault(check);
    ShowResults(QStringLiteral("TS_FirstResults"), check.areas);
}

bool FormulaPage::cmdValidate_Click(bool tell) {
    const ErrorTrap trap("cmdValidate_Click");
    pause_.stop();
    const FormulaCheck check = tessaro::Validate(Formula(), subject_);
    const bool good = check.key == QLatin1String("108");
    ShowFault(check);
    ShowResults(QStringLiteral("TS_CheckedResults"), check.areas);
    if (!good)
        ShowMessageWithReason(check.key, check.reason);
    else if (tell)
        ShowMessage(check.key, MessageType::Ok, MessageIcon::Note);
    if (!good) ui_->txtFormula->setFocus();
    return good;
}

void FormulaPage::ShowFault(const FormulaCheck& check) {
    const bool good = check.key == QLatin1String("108");
    ui_->txtFormula->MarkFault(good ? -1 : check.position, check.length);
    ui_->lblProblem->setText(good ? QString() : check.reason);
}

void FormulaPage::ShowResults(const QString& captionKey, const std::vector<FormulaArea>& areas) {
    ui_->lblResults->setText(GetText(captionKey));
    ui_->lblResults->setAlignment(ReadingSide() | Qt::AlignVCenter);
    const int rows = static_cast<int>(std::min<std::size_t>(areas.size(), kShownAreas));
    ui_->grdDummy->setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        const FormulaArea& area = areas[static_cast<std::size_t>(row)];
        auto* name = new QTableWidgetItem(area.name);
        name->setToolTip(area.id);
        auto* result = new QTableWidgetItem(area.result.isEmpty() ? area.reason : DisplayedValue(area.result));
        result->setToolTip(result->text());
        result->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        ui_->grdDummy->setItem(row, AreaColumn, name);
        ui_->grdDummy->setItem(row, ResultColumn, result);
    }
    ui_->grdDummy->viewport()->update();
}

} // namespace tessaro
