#include "shell/StandardToolBar.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QToolButton>

namespace tessaro {

namespace {

struct ItemRow {
    const char* toolTipKey;
    const char* picture;
    const char* disabledPicture;
    const char* shortcut;
    bool hasCommand;
    bool endsGroup;
    const char* whyNotKey = ""; ///< of the text that says why it can't be pressed
};

const ItemRow Items[StandardToolBar::ItemCount] = {
    {"Comm_Back", "tlb_xp_back_h.gif", "tlb_xp_back_d.gif", "Alt+Left", true, false},
    {"TLB_FORWARD", "tlb_xp_forward_h.gif", "tlb_xp_forward_d.gif", "Alt+Right", true, false},
    {"TLB_STOP", "tlb_xp_stop.gif", "", "", true, false, "TS_WhyNotRunning"},
    {"TLB_REFRESH", "tlb_xp_refresh.gif", "", "F5", true, false, "TS_WhyOnlyData"},
    {"TLB_HOME", "tlb_xp_home.gif", "", "Alt+Home", true, true},
    {"TLB_SEARCH", "tlb_xp_search.gif", "", "", true, false, "TS_WhyNoSearch"},
    {"TLB_FAVORITES", "tlb_xp_favourites.gif", "", "Ctrl+D", true, false, "TS_WhyOnlyData"},
    {"TLB_HISTORY", "tlb_xp_history.gif", "", "", false, false, "TS_NotYetAvailable"},
    {"TLB_MAIL", "tlb_xp_mail.gif", "", "", false, false, "TS_NotYetAvailable"},
    {"PRINT BUTTON", "tlb_xp_print.gif", "", "", true, false, "TS_WhyOnlyStages"},
};

} // namespace

StandardToolBar::StandardToolBar(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::kGrid / 4);
    for (int item = 0; item < ItemCount; ++item) {
        auto* button = new QToolButton(this);
        button->setObjectName(QStringLiteral("Toolbar1_%1").arg(item));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setIconSize({theme::kIconSize, theme::kIconSize});
        button->setShortcut(QKeySequence(QLatin1String(Items[item].shortcut)));
        button->setEnabled(Items[item].hasCommand && item != Back && item != Forward && item != Stop);
        connect(button, &QToolButton::clicked, this, [this, item] { Q_EMIT Chosen(item); });
        row->addWidget(button);
        buttons_ << button;
        if (!Items[item].endsGroup) continue;
        auto* line = new QFrame(this);
        line->setFixedSize(1, theme::kIconSize);
        line->setFrameShape(QFrame::NoFrame);
        line->setAutoFillBackground(true);
        line->setObjectName(QStringLiteral("lineToolBar"));
        row->addSpacing(theme::kGrid / 2);
        row->addWidget(line);
        row->addSpacing(theme::kGrid / 2);
    }
}

void StandardToolBar::SetEnabled(int item, bool enabled) {
    if (buttons_.at(item)->isEnabled() == (enabled && Items[item].hasCommand)) return;
    buttons_.at(item)->setEnabled(enabled && Items[item].hasCommand);
    ChangeToolBar();
    SetToolTips();
}

void StandardToolBar::ChangeToolBar() {
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    for (int item = 0; item < ItemCount; ++item) {
        const bool pale = !buttons_.at(item)->isEnabled() && *Items[item].disabledPicture;
        // In right-to-left languages Back points to the right.
        const int shown = mirrored && item == Back ? Forward : mirrored && item == Forward ? Back : item;
        buttons_.at(item)->setIcon(
            theme::Icon(QLatin1String(pale ? Items[shown].disabledPicture : Items[shown].picture)));
    }
    if (auto* line = findChild<QFrame*>(QStringLiteral("lineToolBar"))) {
        QPalette palette = line->palette();
        palette.setColor(QPalette::Window, theme::HairLine());
        line->setPalette(palette);
    }
}

void StandardToolBar::SetToolTips() {
    for (int item = 0; item < ItemCount; ++item) {
        QToolButton* button = buttons_.at(item);
        QString text = PlainText(QLatin1String(Items[item].toolTipKey)).remove(QLatin1String("..."));
        button->setAccessibleName(text);
        const QString keys = button->shortcut().toString(QKeySequence::NativeText);
        if (!keys.isEmpty()) text += QLatin1String(" (") + keys + QLatin1Char(')');
        if (!button->isEnabled() && *Items[item].whyNotKey)
            text += QLatin1String(": ") + PlainText(QLatin1String(Items[item].whyNotKey));
        button->setToolTip(text);
    }
}

} // namespace tessaro
