#include "office/ColumnLetters.h"

namespace tessaro::office {

QString ColumnLetters(int column) {
    QString letters;
    for (int rest = column; rest > 0; rest = (rest - 1) / 26)
        letters.prepend(QChar(u'A' + (rest - 1) % 26));
    return letters;
}

} // namespace tessaro::office
