#pragma once

#include "formats/PxHead.h"
#include "formats/TableReader.h"

namespace tessaro {

/// A PX file as a table: its first row has the names of the variables, of their codes where they have them, and of
/// "CONTENTS", "UNITS", "SOURCE", "NOTE" (if cells have notes) and "VALUE"; each other row one number of the data. What
/// the file has no number for
/// ("..") is a row with that text.
class PxReader final : public TableReader {
  public:
    /// Reads the head. Throws ReadError.
    explicit PxReader(const QString& path);
    bool Next(TableRow& row) override;
    [[nodiscard]] int Percent() const override { return signs_.Percent(); }
    [[nodiscard]] std::vector<ColumnKind> Kinds() const override;

  private:
    void WriteHeads(TableRow& row) const;
    bool ReadKeys();
    bool ReadNumber(std::string& number);
    void WriteRow(TableRow& row) const;
    [[nodiscard]] std::string NoteHere() const;
    void Advance();

    QString path_;
    SignReader signs_;
    PxHead head_;
    std::vector<std::size_t> at_; ///< the value of each variable that the next number is of
    std::size_t fixed_ = 0;       ///< variables before this one are given by keys
    bool headsWritten_ = false;
    bool atRowStart_ = true;
    bool ended_ = false;
};

} // namespace tessaro
