#pragma once

#include "map/shapefile/Shapes.h"
#include "map/shapefile/cFileName.h"

#include <QFile>

#include <optional>

namespace tessaro {

/// A shapefile's pair of main file (.shp) and index file (.shx): reads points and polygons, appends polygons. The
/// layout is that of the "ESRI Shapefile Technical Description" (1998). The table of attributes is no part of it.
/// Errors are ShapefileErrors whose source is the called procedure and whose origin the one that found the fault.
/// Nothing is kept in memory; one thread at a time.
class CShapeFile final {
  public:
    CShapeFile() = default;
    CShapeFile(const CShapeFile&) = delete;
    CShapeFile& operator=(const CShapeFile&) = delete;
    ~CShapeFile() { Close(); }

    /// Opens the .shp and .shx of this name, for reading, or empty for appending. To create needs a shape type,
    /// but a created file is always one of polygons. Throws 0x8004020D without a type, 0x80040207 for a file that is no
    /// shapefile, 53 for a missing one, 62 for one shorter than its header, 75 for one that can't be opened.
    void SetFileSpec(const cFileName& spec, bool create, std::optional<qint32> shapeType = std::nullopt);

    /// The extent that the headers tell.
    [[nodiscard]] double Left() const { return extent_.Left(); }
    [[nodiscard]] double Right() const { return extent_.Right(); }
    [[nodiscard]] double Top() const { return extent_.Top(); }
    [[nodiscard]] double Bottom() const { return extent_.Bottom(); }
    /// Records by the index file's header, at most those that the file has room for. May be below 0 for a file into
    /// which no polygon was put, as its header tells no length.
    [[nodiscard]] qint32 Count() const { return count_; }
    [[nodiscard]] qint32 FileType() const { return shapeType_; } ///< 1 points, 5 polygons; others are not read

    /// The CPoint or CPolygon of a record, from 1. Nothing for files of other types, and for points behind the index.
    /// Throws 0x80040205, 0x80040206 or 0x8004020E as told at the reading procedures; 62 or 9 for a record whose counts
    /// or part starts do not fit the file.
    [[nodiscard]] std::shared_ptr<IShape> Item(qint32 index);
    /// Appends a polygon, or a null record for a null shape of any kind. After a failed write both files have their
    /// former length.
    void Add(const ShapeObjectPointer& shape);

  private:
    struct Record {
        qint32 first = 0;  ///< index: offset in words; main file: record number
        qint32 length = 0; ///< of the content, in words
    };

    void Open(bool create);
    void OpenOne(QFile& file, const QString& extension, bool create);
    void Close();
    void ReadHeaders();
    void WriteEmptyHeaders();
    [[nodiscard]] std::shared_ptr<CPoint> ReadPoint(qint32 index);
    [[nodiscard]] std::shared_ptr<CPolygon> ReadPolygon(qint32 index);
    [[nodiscard]] bool FindOffset(qint32 index);
    [[nodiscard]] qint64 ContentStart(qint32 index, const char* source);
    void PutNull();
    void PutPolygon(const CPolygon& polygon);
    void PutExtent(const IShape& shape);
    void WriteExtent();
    void Append(qint32 contentBytes, const QByteArray& content);

    cFileName fileName_;
    qint32 shapeType_ = 0;
    qint64 indexWords_ = 0; ///< length of the index file by its header
    Record indexRecord_;
    QFile index_;
    QFile main_;
    qint32 count_ = 0;
    CRect extent_;
};

} // namespace tessaro
