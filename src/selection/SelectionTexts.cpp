#include "selection/SelectionTexts.h"

#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::selection {

QString Criterion(const QString& head) {
    return DataExistsCriterion.isEmpty() ? QString() : head + DataExistsCriterion;
}

QString GlobalLocal(const QString& head, const QStringList& columns) {
    if (GlobalLocalFilter != 0 && GlobalLocalFilter != 1) return {};
    const QString test = GlobalLocalFilter == 0 ? QStringLiteral(",1,1) = '-'") : QStringLiteral(",1,1) <> '-'");
    QStringList terms;
    for (const QString& column : columns)
        terms << QStringLiteral("MID(") + column + test;
    return head + terms.join(QStringLiteral(" AND ")) + QLatin1Char(' ');
}

QString NameOf(const QString& text) {
    constexpr qsizetype kLongest = 1000;
    return text.left(kLongest);
}

QString NumberList(const std::vector<KeyedItem>& items) {
    QStringList ids;
    for (const KeyedItem& item : items)
        ids << IdOfKey(item.key);
    return ids.join(QLatin1Char(','));
}

QString QuotedList(const std::vector<KeyedItem>& items) {
    QStringList ids;
    for (const KeyedItem& item : items)
        ids << IdOfKey(item.key);
    return QuotedList(ids);
}

} // namespace tessaro::selection
