#pragma once

#include "jet/engine/Recordset.h"

#include <QString>
#include <QtGlobal>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// Reads one page of rows by their identifiers.
namespace tessaro {

/// One row of an identifier statement. A row of the cross product that has no value has no rowNId either.
struct IdentifierRow {
    qint32 timePeriodNId = 0;
    qint32 areaNId = 0;
    qint32 iusNId = 0;
    qint32 sourceNId = 0;
    qint64 footnoteNId = 0; ///< 0 for none
    qint64 rowNId = 0;
    bool hasRowNId = false;
    std::string datavalue; ///< as stored; Null is empty
};

/// The open recordset of identifiers behind the grid, made for millions of rows. The statement is stepped only as far
/// as rows are asked for. Of each row read, just its RowNId is kept (4 bytes); a page that is wanted again is read by
/// those numbers.
class PageQuery final {
  public:
    /// Called now and then with the number of rows read so far; stops the reading by returning False.
    using Walked = std::function<bool(qint64)>;

    /// Opens the statement on Connection; an open one is closed first. False when it failed (reported) or has no rows.
    [[nodiscard]] bool Open(const QString& sql);
    void Close();
    [[nodiscard]] bool isOpen() const { return open_; }

    /// True when every row has been read (EOF).
    [[nodiscard]] bool AtEnd();
    /// The rows from `first` (counted from 0) on, at most `count`; fewer at the end. Reads on to them if necessary.
    [[nodiscard]] std::vector<IdentifierRow> GetRows(qint64 first, int count);
    /// Reads to the end and gives the number of rows; nothing when `walked` has stopped it.
    std::optional<qint64> RecordCount(const Walked& walked = {});
    /// Reads the numbers of up to `count` further rows, to count them. True at the end.
    bool WalkOn(qint64 count);
    /// Rows read so far, which GetRows gives without stepping the statement.
    [[nodiscard]] qint64 RowsPassed() const { return static_cast<qint64>(passed_.size()); }

    /// The RowNId of a row; nothing for a row without one and for rows not read yet.
    [[nodiscard]] std::optional<qint64> RowNIdOf(qint64 row) const;
    /// CellKey of a row that has no RowNId; nothing for others and for rows not read yet.
    [[nodiscard]] std::optional<QString> CellWithoutValue(qint64 row) const;
    /// Appends rows of Data, given by RowNId. Only when every row has been read.
    void Append(const std::vector<qint64>& rowNIds);

    /// Closes the statement, so that files are unlocked and tables can be dropped. The next call that needs further
    /// rows runs it again and skips the rows it has given before, even if they come in another order.
    void Suspend();

  private:
    bool OpenRows();
    qint64 Pass(qint64 count);
    bool Step(IdentifierRow* wanted);
    void PassOver();
    bool PassSame();
    void GiveUp();
    void Keep(const IdentifierRow& row);
    [[nodiscard]] std::vector<IdentifierRow> Reread(qint64 first, int count) const;
    /// The row if it is kept with all its fields; nullptr for those that are read again by RowNId.
    [[nodiscard]] const IdentifierRow* WholeRow(qint64 row) const;
    [[nodiscard]] static qint64 KeyOf(const IdentifierRow& row);
    [[nodiscard]] qint64 KeyOfPassed(std::size_t row) const;

    QString sql_;
    bool open_ = false;
    bool finished_ = false;
    jet::Recordset rows_;
    std::deque<qint32> passed_;        ///< RowNId of each row read; a negative number n is the row at ~n in whole_
    std::vector<IdentifierRow> whole_; ///< rows that can't be read again by number: no RowNId, or one beyond 31 bits
    std::size_t same_ = 0;             ///< after Suspend: rows skipped so far, which came in the same order as before
    std::size_t known_ = 0;            ///< and how many there are to be skipped so
    std::unordered_map<qint64, int> again_; ///< once the order differs: key of each row to be skipped, how many times
};

} // namespace tessaro
