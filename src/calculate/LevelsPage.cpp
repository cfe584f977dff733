#include "calculate/LevelsPage.h"

#include "calculate/Choices.h"
#include "controls/Captions.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace tessaro {

namespace {

constexpr int kMargin = 24;
constexpr int kGap = 16;
constexpr int kRowGap = 8;

} // namespace

LevelsPage::LevelsPage(QWidget* parent) : CalculationPage(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kGap, kMargin, kGap);
    layout->setSpacing(kGap);
    layout->addWidget(MakeHint(QStringLiteral("TS_HintLevels")));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * kMargin);
    grid->setVerticalSpacing(kRowGap);
    grid->setColumnStretch(1, 1);
    for (int level = 0; level < kAreaLevels; ++level) {
        Row& row = rows_[static_cast<std::size_t>(level)];
        row = {new QCheckBox, new QLabel};
        row.chkLevel->setObjectName(QStringLiteral("chkLevel_%1").arg(level));
        row.txtDLevel->setObjectName(QStringLiteral("txtDLevel_%1").arg(level));
        SetCaption(row.chkLevel, QStringLiteral("SUBTOTAL LEVEL %1").arg(level + 1));
        grid->addWidget(row.chkLevel, level, 0);
        grid->addWidget(row.txtDLevel, level, 1);
        connect(row.chkLevel, &QCheckBox::clicked, this, &LevelsPage::Changed);
    }
    layout->addLayout(grid);
    layout->addStretch();
}

void LevelsPage::ShowDraft(const CalculationDraft& draft) {
    const ErrorTrap trap("FillStep2ForSubTotal");
    const QString indicator = draft.items.empty() ? QString() : draft.items.front().indicator;
    const int levels = LevelCountOf(indicator);
    for (int level = 0; level < kAreaLevels; ++level) {
        const Row& row = rows_[static_cast<std::size_t>(level)];
        row.chkLevel->setEnabled(level < levels);
        row.chkLevel->setChecked(level < levels && draft.levels[static_cast<std::size_t>(level)]);
        ShowLevel(level, indicator, levels);
    }
    rows_.front().chkLevel->setFocus();
}

// The deepest level is that of the data: nothing lies below it that could be added up.
void LevelsPage::ShowLevel(int level, const QString& indicator, int levels) {
    QLabel* text = rows_[static_cast<std::size_t>(level)].txtDLevel;
    text->setEnabled(level < levels);
    text->clear();
    if (level >= levels) return;
    const QString count = QLocale().toString(AreasOfLevel(indicator, level + 1));
    text->setText(FilledText(level + 1 == levels ? QStringLiteral("TS_LevelOfData") : QStringLiteral("TS_LevelAreas"),
                             {QLocale().toString(level + 1), count}));
    text->setAlignment(ReadingSide() | Qt::AlignVCenter);
}

void LevelsPage::TakeInto(CalculationDraft& draft) const {
    for (std::size_t level = 0; level < rows_.size(); ++level)
        draft.levels[level] = rows_[level].chkLevel->isEnabled() && rows_[level].chkLevel->isChecked();
}

} // namespace tessaro
