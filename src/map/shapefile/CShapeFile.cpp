#include "map/shapefile/CShapeFile.h"

#include "map/shapefile/BoundedReader.h"
#include "map/shapefile/ShapefileError.h"
#include "platform/Paths.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessaro {

namespace {

constexpr qint32 kFileCode = 9994;
constexpr qint32 kVersion = 1000;
constexpr qint32 kPoint = 1;
constexpr qint32 kPolygon = 5;
constexpr qint64 kHeaderSize = 100;
constexpr qint64 kRecordSize = 8; ///< of a record in the index, and of a record's head in the main file
constexpr qint32 kHeaderWords = 50;
constexpr qint32 kBytesOfNull = 4; ///< what the record of a null shape says of its length

/// A header as far as it is read.
struct Header {
    qint32 fileCode = 0;
    qint32 words = 0;
    qint32 shapeType = 0;
    double xMin = 0;
    double yMin = 0;
    double xMax = 0;
    double yMax = 0;
};

Header ReadHeader(QFile& file, const char* source) {
    BoundedReader reader(file, 0, source);
    Header header;
    if (!reader.Holds(4)) return header; // too short for a file code
    reader.Load(std::min(reader.Left(), kHeaderSize));
    header.fileCode = reader.BigLong();
    if (header.fileCode != kFileCode) return header;
    reader.Skip(20);
    header.words = reader.BigLong();
    reader.Skip(4); // the version
    header.shapeType = reader.LittleLong();
    header.xMin = reader.Double();
    header.yMin = reader.Double();
    header.xMax = reader.Double();
    header.yMax = reader.Double();
    reader.Skip(32);
    return header;
}

void CheckFileCode(const Header& header, const char* extension, const char* source) {
    if (header.fileCode == kFileCode) return;
    throw ShapefileError(
        ShapefileErrors::InvalidFileCode,
        QStringLiteral("The %1 file has an invalid shape code in the main header.").arg(QLatin1String(extension)),
        QLatin1String(source));
}

/// Records by the length that the header tells. A half is rounded to the even number.
qint32 CountOf(qint32 words, qint64 fileSize) {
    const double told = std::nearbyint((static_cast<double>(words) - kHeaderWords) / 4);
    const double held = std::floor(static_cast<double>(fileSize - kHeaderSize) / static_cast<double>(kRecordSize));
    return static_cast<qint32>(std::min({told, held, 2147483647.0}));
}

[[noreturn]] void ThrowFileError(unsigned number, const char* what, const QFile& file, const char* source) {
    throw ShapefileError(number, QLatin1String(what) + QStringLiteral(": ") + file.fileName(), QLatin1String(source));
}

void WriteAt(QFile& file, qint64 position, const QByteArray& bytes) {
    if (!file.seek(position) || file.write(bytes) != bytes.size())
        ThrowFileError(ShapefileErrors::DiskFull, "Disk full", file, "CShapeFile::Write");
}

qint32 WordsOf(qint64 bytes) {
    return static_cast<qint32>(bytes / 2);
}

/// Where the points of each part begin and, behind them, where the last part ends.
std::vector<qint32> PartStarts(BoundedReader& reader, qint32 parts, qint32 points, const char* source) {
    std::vector<qint32> starts;
    starts.reserve(static_cast<std::size_t>(parts) + 1);
    for (qint32 part = 0; part < parts; ++part)
        starts.push_back(reader.LittleLong());
    starts.push_back(points);
    if (starts.front() < 0 || !std::is_sorted(starts.begin(), starts.end()))
        throw ShapefileError(ShapefileErrors::SubscriptOutOfRange,
                             QStringLiteral("Subscript out of range: the parts of a record do not follow one another"),
                             QLatin1String(source));
    return starts;
}

std::shared_ptr<CPart> ReadPart(BoundedReader& reader, qint32 points) {
    auto part = std::make_shared<CPart>();
    for (qint32 i = 0; i < points; ++i) {
        const double x = reader.Double();
        part->Add(std::make_shared<CPoint>(x, reader.Double()));
    }
    return part;
}

qint64 PointsOf(const CPolygon& polygon) {
    qint64 points = 0;
    for (const auto& part : polygon)
        points += part->Count();
    return points;
}

QByteArray ContentOf(const CPolygon& polygon, qint32 shapeType) {
    ByteWriter content;
    content.LittleLong(shapeType);
    content.Double(polygon.Left()).Double(polygon.Bottom()).Double(polygon.Right()).Double(polygon.Top());
    content.LittleLong(polygon.Count()).LittleLong(static_cast<qint32>(PointsOf(polygon)));
    qint32 start = 0;
    for (const auto& part : polygon) {
        content.LittleLong(start);
        start += part->Count();
    }
    for (const auto& part : polygon)
        for (const auto& point : *part)
            content.Double(point->X()).Double(point->Y());
    return content.Bytes();
}

} // namespace

void CShapeFile::SetFileSpec(const cFileName& spec, bool create, std::optional<qint32> shapeType) {
    WithSource("C_ShapeFile::SetFileSpec", [&] {
        if (create && !shapeType)
            throw ShapefileError(
                ShapefileErrors::ShapeTypeMissing,
                QStringLiteral("The ShapeType argument is not optional when argument status is CREATEIT"),
                QStringLiteral("C_ShapeFile::SetFileSpec"));
        Close();
        fileName_ = spec;
        try {
            Open(create);
        } catch (const ShapefileError&) {
            Close();
            throw;
        }
    });
}

void CShapeFile::Open(bool create) {
    OpenOne(index_, QStringLiteral("shx"), create);
    OpenOne(main_, QStringLiteral("shp"), create);
    if (create)
        WriteEmptyHeaders();
    else
        ReadHeaders();
}

// Without a buffer of its own, so that the files are valid after every record.
void CShapeFile::OpenOne(QFile& file, const QString& extension, bool create) {
    fileName_.SetExtension(extension);
    file.setFileName(FindPath(fileName_.GetFileSpec()));
    const auto mode = create ? QIODevice::ReadWrite : QIODevice::ReadOnly;
    if (!QFileInfo(file).isDir() && file.open(mode | QIODevice::Unbuffered)) return;
    const bool missing = !create && !file.exists();
    ThrowFileError(missing ? ShapefileErrors::FileNotFound : ShapefileErrors::PathFileAccess,
                   missing ? "File not found" : "Path/File access error", file, "C_ShapeFile::SetFileSpec");
}

void CShapeFile::Close() {
    main_.close();
    index_.close();
    count_ = 0;
    shapeType_ = 0;
    indexWords_ = 0;
}

void CShapeFile::ReadHeaders() {
    const char* const source = "C_ShapeFile::SetFileSpec";
    const Header index = ReadHeader(index_, source);
    CheckFileCode(index, "shx", source);
    const Header header = ReadHeader(main_, source);
    extent_.MakeXY(header.xMin, header.yMax, header.xMax, header.yMin);
    CheckFileCode(header, "shp", source);
    indexWords_ = index.words;
    count_ = CountOf(index.words, index_.size());
    shapeType_ = header.shapeType;
}

void CShapeFile::WriteEmptyHeaders() {
    shapeType_ = kPolygon;
    extent_.MakeEmpty();
    count_ = 0;
    ByteWriter header;
    header.BigLong(kFileCode).Zeros(24).LittleLong(kVersion).LittleLong(shapeType_).Zeros(64);
    for (QFile* file : {&index_, &main_}) {
        file->resize(0);
        WriteAt(*file, 0, header.Bytes());
    }
}

std::shared_ptr<IShape> CShapeFile::Item(qint32 index) {
    return WithSource("CShapeFile::Item", [&]() -> std::shared_ptr<IShape> {
        if (shapeType_ == kPoint) return ReadPoint(index);
        if (shapeType_ == kPolygon) return ReadPolygon(index);
        return nullptr;
    });
}

bool CShapeFile::FindOffset(qint32 index) {
    return WithSource("C_ShapeFile::FindOffset", [&] {
        const qint64 position = (static_cast<qint64>(index) - 1) * kRecordSize + kHeaderSize;
        BoundedReader reader(index_, position, "C_ShapeFile::FindOffset");
        if (index < 1 || position + kRecordSize > indexWords_ * 2 || !reader.Holds(kRecordSize)) return false;
        reader.Load(kRecordSize);
        indexRecord_.first = reader.BigLong();
        indexRecord_.length = reader.BigLong();
        return true;
    });
}

/// Checks number and type of the record that FindOffset found, and gives the place in the main file behind the type.
qint64 CShapeFile::ContentStart(qint32 index, const char* source) {
    BoundedReader reader(main_, static_cast<qint64>(indexRecord_.first) * 2, source);
    Record head;
    if (reader.Holds(kRecordSize)) {
        reader.Load(kRecordSize);
        head.first = reader.BigLong();
        head.length = reader.BigLong();
    }
    if (head.first != index)
        throw ShapefileError(ShapefileErrors::RecordMismatch,
                             QStringLiteral("Index Record does not match main file Record"), QLatin1String(source));
    reader.Load(4);
    const qint32 type = reader.LittleLong();
    if (type != shapeType_ || type == 0)
        throw ShapefileError(ShapefileErrors::ShapeTypeMismatch,
                             QStringLiteral("A shape type does not match main header type."), QLatin1String(source));
    return static_cast<qint64>(indexRecord_.first) * 2 + kRecordSize + 4;
}

std::shared_ptr<CPoint> CShapeFile::ReadPoint(qint32 index) {
    const char* const source = "CShapeFile::ReadPoint";
    if (!FindOffset(index)) return nullptr;
    BoundedReader reader(main_, ContentStart(index, source), source);
    reader.Load(16);
    const double x = reader.Double();
    return std::make_shared<CPoint>(x, reader.Double());
}

std::shared_ptr<CPolygon> CShapeFile::ReadPolygon(qint32 index) {
    const char* const source = "CShapeFile::ReadPolygon";
    if (!FindOffset(index))
        throw ShapefileError(ShapefileErrors::OffsetTooLarge,
                             QStringLiteral("The offset read from index file is larger then the mainfile size"),
                             QLatin1String(source));
    BoundedReader reader(main_, ContentStart(index, source), source);
    reader.Load(40);
    auto polygon = std::make_shared<CPolygon>();
    polygon->Left(reader.Double());
    polygon->Bottom(reader.Double());
    polygon->Right(reader.Double());
    polygon->Top(reader.Double());
    const qint32 parts = reader.LittleLong();
    const qint32 points = reader.LittleLong();
    // A count below 0 asks for more than any file holds.
    reader.Load(parts < 0 || points < 0 ? std::numeric_limits<qint64>::max() : qint64(4) * parts + qint64(16) * points);
    const std::vector<qint32> starts = PartStarts(reader, parts, points, source);
    if (parts > 0) reader.Skip(qsizetype(16) * starts.front());
    for (std::size_t part = 1; part < starts.size(); ++part)
        polygon->Add(ReadPart(reader, starts[part] - starts[part - 1]));
    return polygon;
}

void CShapeFile::Add(const ShapeObjectPointer& shape) {
    WithSource("CShapeFile::Add", [&] {
        const char* const source = "CShapeFile::Add";
        if (!main_.isOpen()) ThrowFileError(ShapefileErrors::BadFileName, "Bad file name or number", main_, source);
        if (!main_.isWritable())
            ThrowFileError(ShapefileErrors::PathFileAccess, "Path/File access error", main_, source);
        const auto known = std::dynamic_pointer_cast<IShape>(shape);
        const auto polygon = std::dynamic_pointer_cast<CPolygon>(shape);
        if (known && known->IsNull())
            PutNull();
        else if (polygon)
            PutPolygon(*polygon);
        else
            throw ShapefileError(ShapefileErrors::TypeMismatch, QStringLiteral("Type mismatch"), QLatin1String(source));
    });
}

/// Both records at the ends of their files, or neither of them.
void CShapeFile::Append(qint32 contentBytes, const QByteArray& content) {
    const qint64 indexSize = index_.size();
    const qint64 mainSize = main_.size();
    const qint32 words = contentBytes / 2;
    try {
        WriteAt(index_, indexSize, ByteWriter().BigLong(WordsOf(mainSize)).BigLong(words).Bytes());
        WriteAt(main_, mainSize, ByteWriter().BigLong(count_ + 1).BigLong(words).Bytes() + content);
    } catch (const ShapefileError&) {
        index_.resize(indexSize);
        main_.resize(mainSize);
        throw;
    }
    ++count_;
}

// Kept for files that are in use: the record's header says 4 bytes, the content has 2, and the file lengths are not
// updated.
void CShapeFile::PutNull() {
    WithSource("CShapeFile::PutNull", [&] { Append(kBytesOfNull, ByteWriter().Zeros(2).Bytes()); });
}

void CShapeFile::PutPolygon(const CPolygon& polygon) {
    WithSource("CShapeFile::PutPolygon", [&] {
        const qint64 bytes = 44 + qint64(4) * polygon.Count() + 16 * PointsOf(polygon);
        if (main_.size() + bytes > std::numeric_limits<qint32>::max())
            ThrowFileError(ShapefileErrors::DiskFull, "The file would be too large", main_, "CShapeFile::PutPolygon");
        Append(static_cast<qint32>(bytes), ContentOf(polygon, shapeType_));
        indexWords_ = WordsOf(index_.size());
        WriteAt(index_, 24, ByteWriter().BigLong(WordsOf(index_.size())).Bytes());
        WriteAt(main_, 24, ByteWriter().BigLong(WordsOf(main_.size())).Bytes());
        PutExtent(polygon);
    });
}

void CShapeFile::PutExtent(const IShape& shape) {
    WithSource("CShapeFile::PutExtent", [&] {
        const CRect before = extent_;
        if (count_ == 1) {
            extent_.MakeXY(shape.Left(), shape.Top(), shape.Right(), shape.Bottom());
        } else {
            if (shape.Left() < Left()) extent_.Left(shape.Left());
            if (shape.Right() > Right()) extent_.Right(shape.Right());
            if (shape.Top() > Top()) extent_.Top(shape.Top());
            if (shape.Bottom() < Bottom()) extent_.Bottom(shape.Bottom());
        }
        const bool changed = before.Left() != Left() || before.Right() != Right() || before.Top() != Top() ||
                             before.Bottom() != Bottom();
        if (changed || count_ == 1) WriteExtent();
    });
}

void CShapeFile::WriteExtent() {
    const QByteArray sides = ByteWriter().Double(Left()).Double(Bottom()).Double(Right()).Double(Top()).Bytes();
    WriteAt(index_, 36, sides);
    WriteAt(main_, 36, sides);
}

} // namespace tessaro
