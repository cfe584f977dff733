#include "exchange/SpellingKey.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tessaro {

namespace {

const QSet<QString>& SmallWords() {
    static const QSet<QString> words{
        QStringLiteral("the"), QStringLiteral("of"), QStringLiteral("and"), QStringLiteral("de"),  QStringLiteral("du"),
        QStringLiteral("des"), QStringLiteral("la"), QStringLiteral("le"),  QStringLiteral("les"), QStringLiteral("et"),
        QStringLiteral("del"), QStringLiteral("el"), QStringLiteral("los"), QStringLiteral("las"), QStringLiteral("y"),
        QStringLiteral("s"),   QStringLiteral("d"),  QStringLiteral("l"),   QString::fromUtf8("и")};
    return words;
}

const QHash<QString, QString>& WrittenOut() {
    static const QHash<QString, QString> words{
        {QStringLiteral("rep"), QStringLiteral("republic")},   {QStringLiteral("dem"), QStringLiteral("democratic")},
        {QStringLiteral("fed"), QStringLiteral("federated")},  {QStringLiteral("st"), QStringLiteral("saint")},
        {QStringLiteral("sts"), QStringLiteral("saint")},      {QStringLiteral("is"), QStringLiteral("islands")},
        {QStringLiteral("isl"), QStringLiteral("islands")},    {QStringLiteral("island"), QStringLiteral("islands")},
        {QStringLiteral("terr"), QStringLiteral("territory")}, {QStringLiteral("sta"), QStringLiteral("santa")},
        {QStringLiteral("mt"), QStringLiteral("mount")},       {QStringLiteral("ft"), QStringLiteral("fort")},
        {QStringLiteral("sth"), QStringLiteral("south")},      {QStringLiteral("nth"), QStringLiteral("north")}};
    return words;
}

/// Letters and digits in one case, without marks; all else as blanks.
QString Letters(const QString& name) {
    QString letters;
    const QString apart = name.normalized(QString::NormalizationForm_KD).toCaseFolded();
    for (const QChar c : apart) {
        if (c.isMark() || c.category() == QChar::Other_Format || c.unicode() == 0x0640) continue;
        letters += c.isLetterOrNumber() ? c : QLatin1Char(' ');
    }
    return letters;
}

} // namespace

QString SpellingKey(const QString& name) {
    QStringList words = Letters(name).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString& word : words)
        word = WrittenOut().value(word, word);
    QStringList kept;
    for (const QString& word : std::as_const(words))
        if (!SmallWords().contains(word)) kept << word;
    if (kept.isEmpty()) kept = words;
    kept.sort();
    return kept.join(QLatin1Char(' '));
}

int LettersApart(const QString& a, const QString& b, int most) {
    const auto width = static_cast<std::size_t>(b.size()) + 1;
    if (std::abs(a.size() - b.size()) > most) return most + 1;
    std::vector<int> before(width);
    std::vector<int> row(width);
    std::vector<int> next(width);
    for (std::size_t j = 0; j < width; ++j)
        row[j] = static_cast<int>(j);
    for (qsizetype i = 1; i <= a.size(); ++i) {
        next[0] = static_cast<int>(i);
        for (std::size_t j = 1; j < width; ++j) {
            const auto at = static_cast<qsizetype>(j);
            const int changed = row[j - 1] + (a[i - 1] == b[at - 1] ? 0 : 1);
            next[j] = std::min({changed, row[j] + 1, next[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[at - 2] && a[i - 2] == b[at - 1])
                next[j] = std::min(next[j], before[j - 2] + 1);
        }
        if (*std::ranges::min_element(next) > most) return most + 1;
        before.swap(row);
        row.swap(next);
    }
    return std::min(row.back(), most + 1);
}

} // namespace tessaro
