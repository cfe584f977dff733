#include "calculate/CalculationPage.h"

#include "controls/Captions.h"

#include <QLabel>

namespace tessaro {

void CalculationPage::FocusOn(const char* control, int /*row*/) {
    if (auto* found = findChild<QWidget*>(QLatin1String(control))) found->setFocus(Qt::OtherFocusReason);
}

QLabel* MakeHint(const QString& key) {
    auto* hint = new QLabel(GetText(key));
    hint->setObjectName(QStringLiteral("lblHint"));
    hint->setWordWrap(true);
    hint->setAlignment(ReadingSide() | Qt::AlignVCenter);
    return hint;
}

} // namespace tessaro
