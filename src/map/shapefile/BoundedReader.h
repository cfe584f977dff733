#pragma once

#include <QByteArray>

class QFileDevice;

namespace tessaro {

/// Numbers in either byte order from one place of a file onwards. It never reads what the file does not hold: lengths
/// that a damaged file tells are compared with what is left before anything is read or reserved for them.
class BoundedReader final {
  public:
    /// `source` names the reading procedure in errors.
    BoundedReader(QFileDevice& file, qint64 position, const char* source);

    /// Bytes of the file behind what was loaded.
    [[nodiscard]] qint64 Left() const;
    [[nodiscard]] bool Holds(qint64 bytes) const { return bytes >= 0 && bytes <= Left(); }
    /// Reads the next bytes of the file, from which the numbers below are then taken. Throws error 62 (input past end
    /// of file) when there are fewer left, and so do the numbers when they are asked for more than was loaded.
    void Load(qint64 bytes);

    [[nodiscard]] qint32 BigLong();
    [[nodiscard]] qint32 LittleLong();
    [[nodiscard]] double Double(); ///< little-endian
    void Skip(qsizetype bytes);

  private:
    const char* Take(qsizetype bytes);

    QFileDevice& file_;
    qint64 position_;
    const char* source_;
    QByteArray loaded_;
    qsizetype taken_ = 0;
};

/// The same numbers as bytes, one behind the other.
class ByteWriter final {
  public:
    ByteWriter& BigLong(qint32 value);
    ByteWriter& LittleLong(qint32 value);
    ByteWriter& Double(double value);
    ByteWriter& Zeros(qsizetype count);
    [[nodiscard]] const QByteArray& Bytes() const { return bytes_; }

  private:
    QByteArray bytes_;
};

} // namespace tessaro
