#pragma once

#include "formats/TableReader.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace tessaro {

/// The first data set of a JSON-stat file (version 2, and the data sets of version 1) as a table: its first row has the
/// names of the dimensions, each with "(code)" behind it, of "UNIT", "SOURCE", "STATUS", "NOTE" (if cells have notes)
/// and "VALUE"; each other row is one cell that has a value. The file is held in memory.
class JsonStatReader final : public TableReader {
  public:
    static constexpr qint64 kLargestFile = 128 << 20;

    /// Throws ReadError for what is no such file, or too large.
    explicit JsonStatReader(const QString& path);
    bool Next(TableRow& row) override;
    [[nodiscard]] int Percent() const override;
    [[nodiscard]] std::vector<ColumnKind> Kinds() const override;

  private:
    struct Dimension {
        std::string label;
        ColumnKind kind = ColumnKind::Dimension;
        std::vector<std::string> codes;
        std::vector<std::string> labels;
        std::vector<std::string> units; ///< of a metric's values; empty for others
    };

    void ReadRoles(const QJsonObject& roles, const QJsonArray& ids);
    void ReadDimension(const QString& id, const QJsonObject& dimension, qint64 size);
    [[nodiscard]] qint64 NextCell();
    [[nodiscard]] QJsonValue At(const QJsonValue& cells, qint64 cell) const;
    void WriteHeads(TableRow& row) const;
    void WriteCell(TableRow& row, qint64 cell) const;

    QString path_;
    std::vector<Dimension> dimensions_;
    std::string source_;
    QJsonValue values_;
    QJsonValue states_;
    QJsonArray notes_;
    QJsonObject cellNotes_;     ///< numbers of notes by the cells that they belong to
    std::vector<qint64> cells_; ///< those of a file that names them
    qint64 size_ = 1;
    qint64 next_ = -1; ///< -1: the heads
};

} // namespace tessaro
