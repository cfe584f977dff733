#include "presentation/Preview.h"

#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QStackedWidget>
#include <QWidget>

namespace tessaro::preview {

void StartSpreadsheet() {
    office::SpreadsheetApplication::Instance().StartInAdvance();
    if (OfficeHost::CanHost()) office::SpreadsheetApplication::Hosted().StartInAdvance();
}

bool Tell(const ShowOutcome& outcome) {
    const bool built = outcome.result == ShowResult::Built;
    const QString key = outcome.MessageKey();
    const QString text = key.isEmpty() ? outcome.Message() : key;
    if (!text.isEmpty()) ShowMessage(text, MessageType::Ok, 103, {}, !key.isEmpty());
    return built;
}

void Show(OfficeHost& place, QWidget& form, const QString& file) {
    // The place has to be in sight before another program's window can lie in it.
    if (auto* pages = qobject_cast<QStackedWidget*>(place.parentWidget())) pages->setCurrentWidget(&place);
    place.SetHint(GetText(QStringLiteral("TS_OfficeOpening")));
    form.repaint();
    place.SetToolBars(form.isMaximized());
    place.ShowWorkbook(file);
}

QStringList Heads(const PivotTable& table) {
    QStringList heads;
    for (const PivotColumn& column : table.columns)
        heads << column.head;
    return heads;
}

} // namespace tessaro::preview
