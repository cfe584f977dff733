#include "office/CompoundFile.h"

#include <QFile>
#include <QFileInfo>

namespace tessaro::office {

bool IsCompoundFile(const QString& path) {
    static const QByteArray mark = QByteArray::fromHex("d0cf11e0a1b11ae1");
    QFile file(path);
    // Whoever opens a pipe waits for its other end.
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && file.read(mark.size()) == mark;
}

} // namespace tessaro::office
