#pragma once

#include <QString>
#include <QStringList>

namespace tessaro {

/// A kind of files that can be saved.
struct SaveKind {
    QString caption;         ///< "Web page"
    QStringList endings;     ///< of their names, the usual one first: ".htm", ".html"
    QStringList beside = {}; ///< endings of files that may be made with it: ".notes.csv"
};

} // namespace tessaro
