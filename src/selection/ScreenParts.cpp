#include "selection/ScreenParts.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QFrame>
#include <QLabel>
#include <QLocale>
#include <QPushButton>

namespace tessaro {

void StyleFilterButton(QPushButton* button, FilterButton kind) {
    button->setIcon(theme::Icon(kind == FilterButton::All ? QStringLiteral("auto_select.png")
                                                          : QStringLiteral("auto_available.png")));
    button->setIconSize({theme::kIconSize, theme::kIconSize});
    button->setFocusPolicy(Qt::StrongFocus);
}

void StyleStrip(QWidget* strip, QFrame* line) {
    strip->setAutoFillBackground(true);
    QPalette raised = strip->palette();
    raised.setColor(QPalette::Window, theme::SurfaceRaised());
    strip->setPalette(raised);
    QPalette hair = line->palette();
    hair.setColor(QPalette::WindowText, theme::HairLine());
    line->setPalette(hair);
}

void ShowHeading(QLabel* label, const QString& key) {
    label->setText(PlainText(key));
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.2);
    font.setBold(true);
    label->setFont(font);
}

void ShowSearch(SelectionLists& lists, const QString& text) {
    constexpr qsizetype kShown = 60;
    const QString sought = text.size() > kShown ? text.left(kShown) + QChar(0x2026) : text;
    const QString count = QLocale().toString(lists.Available().Items().Count());
    lists.ShowInstead(GetText(QStringLiteral("TS_SearchShown"))
                          .replace(QLatin1String("%2"), count)
                          .replace(QLatin1String("%1"), sought),
                      GetText(QStringLiteral("TS_SearchNothing")).replace(QLatin1String("%1"), sought));
}

void TellNothingFound(SelectionLists& lists) {
    constexpr int kMilliseconds = 1500;
    lists.ShowNothingFound(QStringLiteral("TS_AutoSelectNothing"));
    TheFrame().ShowStatusTextFor(GetText(QStringLiteral("031")), kMilliseconds);
}

void TellNotKept() {
    ShowMessage(GetText(QStringLiteral("TS_SelectionNotKept")), MessageType::Ok, MessageIcon::Note, {}, false);
}

QString SummaryOf(const QString& key, int count) {
    if (count == 0) return {};
    QString text = GetText(key);
    return text.replace(QLatin1String("%1"), QLocale().toString(count));
}

} // namespace tessaro
