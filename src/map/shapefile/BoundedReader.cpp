#include "map/shapefile/BoundedReader.h"

#include "map/shapefile/ShapefileError.h"

#include <QFileDevice>
#include <QtEndian>

namespace tessaro {

namespace {

constexpr qsizetype kLong = 4;
constexpr qsizetype kDouble = 8;

} // namespace

BoundedReader::BoundedReader(QFileDevice& file, qint64 position, const char* source)
    : file_(file), position_(position), source_(source) {}

qint64 BoundedReader::Left() const {
    return position_ < 0 ? 0 : qMax(qint64(0), file_.size() - position_);
}

void BoundedReader::Load(qint64 bytes) {
    if (Holds(bytes) && file_.seek(position_)) loaded_ = file_.read(bytes);
    if (!Holds(bytes) || loaded_.size() != bytes)
        throw ShapefileError(ShapefileErrors::InputPastEnd,
                             QStringLiteral("Input past end of file: ") + file_.fileName(), QLatin1String(source_));
    position_ += bytes;
    taken_ = 0;
}

const char* BoundedReader::Take(qsizetype bytes) {
    if (loaded_.size() - taken_ < bytes)
        throw ShapefileError(ShapefileErrors::InputPastEnd, QStringLiteral("Input past end of file"),
                             QLatin1String(source_));
    const char* place = loaded_.constData() + taken_;
    taken_ += bytes;
    return place;
}

qint32 BoundedReader::BigLong() {
    return qFromBigEndian<qint32>(Take(kLong));
}

qint32 BoundedReader::LittleLong() {
    return qFromLittleEndian<qint32>(Take(kLong));
}

double BoundedReader::Double() {
    return qFromLittleEndian<double>(Take(kDouble));
}

void BoundedReader::Skip(qsizetype bytes) {
    Take(bytes);
}

ByteWriter& ByteWriter::BigLong(qint32 value) {
    char bytes[kLong];
    qToBigEndian(value, bytes);
    bytes_.append(bytes, kLong);
    return *this;
}

ByteWriter& ByteWriter::LittleLong(qint32 value) {
    char bytes[kLong];
    qToLittleEndian(value, bytes);
    bytes_.append(bytes, kLong);
    return *this;
}

ByteWriter& ByteWriter::Double(double value) {
    char bytes[kDouble];
    qToLittleEndian(value, bytes);
    bytes_.append(bytes, kDouble);
    return *this;
}

ByteWriter& ByteWriter::Zeros(qsizetype count) {
    bytes_.append(count, '\0');
    return *this;
}

} // namespace tessaro
