#include "dataview/RowsText.h"

#include "dataview/ViewRows.h"
#include "session/Strings.h"

#include <QLocale>

#include <initializer_list>

namespace tessaro {

namespace {

/// A text of the string table with its places %1, %2 … filled with numbers. Empty stays empty.
QString WithNumbers(const char* key, std::initializer_list<qint64> numbers) {
    QString text = GetText(QLatin1String(key));
    int place = 0;
    for (const qint64 number : numbers)
        text.replace(QStringLiteral("%") + QString::number(++place), QLocale::system().toString(number));
    return text;
}

bool IsCounted(const ViewRows& rows) {
    return rows.Paging().PagingComplete() || rows.Paging().TotalKnown();
}

/// The text, and the load when it isn't told by it already.
QString WithLoad(QString text, const ViewRows& rows) {
    if (text.isEmpty()) return LoadText(rows);
    if (!rows.Paging().PagingComplete() && rows.Paging().TotalKnown())
        text += QStringLiteral("   ·   ") + LoadText(rows);
    return text;
}

} // namespace

QString LoadText(const ViewRows& rows) {
    const qint64 loaded = rows.Paging().RowsLoaded() - rows.Grid().RemovedRows();
    const bool stopped = rows.Paging().isStopped();
    if (rows.Paging().TotalKnown())
        return WithNumbers(stopped ? "TS_RowsStoppedOf" : "TS_RowsLoadingOf", {loaded, rows.Count()});
    return WithNumbers(stopped ? "TS_RowsStopped" : "TS_RowsLoading", {loaded});
}

QString CountText(const ViewRows& rows) {
    if (rows.Grid().ValueRows() == 0) return {};
    return WithNumbers(IsCounted(rows) ? "TS_RowsTotal" : "TS_RowsLoaded", {rows.Count()});
}

QString SeenText(const ViewRows& rows, int first, int last) {
    if (rows.Grid().ValueRows() == 0) return {};
    const bool known = rows.Paging().PagingComplete() || rows.Paging().BottomStarted();
    return WithLoad(known ? WithNumbers("TS_RowsOf", {first, last, rows.Count()}) : QString(), rows);
}

QString UnseenText(const ViewRows& rows) {
    if (rows.Grid().ValueRows() == 0) return {};
    return WithLoad(CountText(rows), rows);
}

QString CountingText(qint64 rows) {
    return WithNumbers("TS_RowsLoading", {rows});
}

} // namespace tessaro
