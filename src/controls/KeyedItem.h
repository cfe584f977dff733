#pragma once

#include <QString>
#include <QStringBuilder>
#include <QStringList>

namespace tessaro {

/// A row of a keyed list: "I12", "T3", "A77" with the texts of its columns.
struct KeyedItem {
    QString key;
    QStringList cells;
    quint8 globalCells = 0; ///< bit n: cell n belongs to an item that all databases share
    bool marked = false;    ///< shows the list's other icon: a recommended source, a descending order

    bool operator==(const KeyedItem&) const = default;
};

/// A node of a keyed tree. `mayHaveChildren` puts an arrow beside it until it is known better.
struct KeyedNode {
    QString key;
    QString text;
    bool global = false;
    bool mayHaveChildren = false;
};

/// A text as a cell shows it: on one line, and cut where nobody would read on.
[[nodiscard]] inline QString CellTextOf(const QString& text) {
    constexpr qsizetype kMostCharacters = 1000;
    QString shown = text.left(kMostCharacters);
    for (qsizetype i = 0; i < shown.size(); ++i)
        if (const QChar c = shown.at(i);
            c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            shown[i] = u' ';
    return shown;
}

/// A text for a tool tip: cut where a name of a strange database would fill the screen.
[[nodiscard]] inline QString TipOf(const QString& text) {
    constexpr qsizetype kMostCharacters = 1000;
    return text.size() <= kMostCharacters ? text : text.left(kMostCharacters) % QChar(0x2026);
}

/// The key of an item: a letter that tells the kind, then its number or name.
[[nodiscard]] inline QString KeyOf(char kind, const QString& id) {
    return QLatin1Char(kind) % id;
}

/// The key without its first character, which tells the kind.
[[nodiscard]] inline QString IdOfKey(const QString& key) {
    return key.mid(1);
}

} // namespace tessaro
