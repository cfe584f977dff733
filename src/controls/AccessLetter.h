#pragma once

#include <QString>

class QPainter;
class QRect;

namespace tessaro {

/// A caption with its letter of access taken apart.
struct AccessLetter {
    QString plain;           ///< the caption without "&"
    qsizetype position = -1; ///< of the letter in it; -1 for none

    explicit AccessLetter(const QString& caption);
    /// True for a letter that changes its shape with its neighbours. The toolkit draws what it underlines apart from
    /// the rest, which would break the word there.
    [[nodiscard]] bool JoinsItsNeighbours() const;
    /// Underlines the letter of a plain text of one line that stands at `place`, with the painter's font and pen.
    void Underline(QPainter& painter, const QRect& place) const;
};

} // namespace tessaro
