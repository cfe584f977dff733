#include "view/SourcesAndNotes.h"

#include "session/Query.h"
#include "view/InView.h"

namespace tessaro {

QStringList SourcesOfSelection() {
    QStringList sources;
    for (Records rows = Select(QStringLiteral("SELECT DISTINCT IUS.[Source]") + InView(joins::kSources)); !rows.atEnd();
         rows.MoveNext())
        sources << rows.Text(std::size_t{0});
    return sources;
}

QHash<QString, QString> TextsOfSources() {
    QHash<QString, QString> texts;
    for (Records rows = Select(QStringLiteral("SELECT [Source], Info FROM Source")); !rows.atEnd(); rows.MoveNext())
        texts.insert(rows.Text(std::size_t{0}), rows.Text(1));
    return texts;
}

QString FootnoteText(qint64 id) {
    const Records rows =
        Select(QStringLiteral("SELECT FootNote FROM FootNote WHERE FootNoteNId = ") + QString::number(id));
    return rows.atEnd() || rows.IsNull(0) ? QString() : rows.Text(std::size_t{0});
}

} // namespace tessaro
