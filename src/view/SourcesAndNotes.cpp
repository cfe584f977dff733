#include "view/SourcesAndNotes.h"

#include "session/Query.h"
#include "session/Session.h"

namespace tessaro {

QStringList SourcesOfSelection() {
    QStringList sources;
    for (Records rows = Select(
             QStringLiteral("SELECT DISTINCT IUS.[Source]  FROM _SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN "
                            "(Data AS D INNER JOIN _SelTimePeriod AS T  ON D.TimePeriodNId = T.TimePeriodNId) ON "
                            "A.AreaNId = D.AreaNId) ON (IUS.IUSNId = D.IUSNId) AND  (IUS.SourceNId = D.SourceNId) "
                            "WHERE IUS.Deleted=False ") +
             RowFilter);
         !rows.atEnd(); rows.MoveNext())
        sources << rows.Text(std::size_t{0});
    return sources;
}

QString FootnoteText(qint64 id) {
    const Records rows =
        Select(QStringLiteral("SELECT FootNote FROM FootNote WHERE FootNoteNId = ") + QString::number(id));
    return rows.atEnd() || rows.IsNull(0) ? QString() : rows.Text(std::size_t{0});
}

} // namespace tessaro
