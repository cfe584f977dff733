#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

/// The parts of a web page that holds one table and needs no other file: light or dark as its reader likes it, right to
/// left where the language is, with its heads on every page when it is printed.
namespace tessaro {

/// What stands above the table. Without `documentTitle` the page is called as its heading.
struct PageTitles {
    QString title;
    QString subTitle = {};
    QString documentTitle = {};
};
/// The heads of the table's columns; those of values stand at the right as the values do.
struct PageHeads {
    QStringList heads;
    int firstValue; ///< from 0
    int valueCount;
};
/// Up to the table's heads, with these.
[[nodiscard]] QByteArray PageBegin(const PageTitles& titles, const PageHeads& heads);

/// How a cell looks.
enum class PageCellKind { Text, Number, Global, Head };
/// A cell of a row; `mark` is the number of a note, small behind the text; `ground` the colour of its range.
[[nodiscard]] QByteArray PageCell(const QString& text, PageCellKind kind, const QString& mark = {},
                                  const QColor& ground = {});

/// What stands below the table: what colours mean, notes with their numbers, sources with what is known of them.
struct PageEnd {
    std::vector<std::pair<int, QString>> notes = {};
    QStringList sources = {};
    std::function<QString(const QString&)> aboutSource = {};
    std::vector<std::pair<QColor, QString>> legend = {};
};
[[nodiscard]] QByteArray PageEndText(const PageEnd& end);

} // namespace tessaro
