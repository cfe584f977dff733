#include "office/CompoundFile.h"

#include <QFile>
#include <QFileInfo>

namespace tessaro::office {

namespace {

bool BeginsWith(const QString& path, const QByteArray& mark) {
    QFile file(path);
    // Whoever opens a pipe waits for its other end.
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && file.read(mark.size()) == mark;
}

} // namespace

bool IsCompoundFile(const QString& path) {
    return BeginsWith(path, QByteArray::fromHex("d0cf11e0a1b11ae1"));
}

bool IsZipFile(const QString& path) {
    return BeginsWith(path, QByteArrayLiteral("PK\x03\x04"));
}

} // namespace tessaro::office
