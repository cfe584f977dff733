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

/// The open identifier recordset of the data view, made for millions of rows: the statement is stepped as rows are
/// asked for, and of the rows passed only their RowNId is kept, in 4 bytes. A page from anywhere is read again by those
/// numbers.
class PageQuery final {
  public:
    /// Told now and then how many rows a long walk has passed; False stops the walk there.
    using Walked = std::function<bool(qint64)>;

    /// Opens the statement on Connection; an open one is closed first. False when it failed (reported) or has no rows.
    [[nodiscard]] bool Open(const QString& sql);
    void Close();
    [[nodiscard]] bool isOpen() const { return open_; }

    /// EOF: every row has been passed.
    [[nodiscard]] bool AtEnd();
    /// The rows from `first` (counted from 0) on, at most `count`; fewer at the end. Rows not reached yet are walked
    /// to.
    [[nodiscard]] std::vector<IdentifierRow> GetRows(qint64 first, int count);
    /// Walks to the end and gives the number of rows; nothing when `walked` has stopped it.
    std::optional<qint64> RecordCount(const Walked& walked = {});
    /// Passes over up to `count` further rows, so that their number is known sooner. True at the end.
    bool WalkOn(qint64 count);
    /// Rows passed so far, which GetRows can give without walking on.
    [[nodiscard]] qint64 RowsPassed() const { return static_cast<qint64>(passed_.size()); }

    /// The RowNId of a row passed; nothing for a row without one or one not reached yet.
    [[nodiscard]] std::optional<qint64> RowNIdOf(qint64 row) const;
    /// CellKey of a row passed that has no RowNId; nothing for others.
    [[nodiscard]] std::optional<QString> CellWithoutValue(qint64 row) const;
    /// Puts rows of Data behind the last one, by their numbers. Only after the end has been reached.
    void Append(const std::vector<qint64>& rowNIds);

    /// Lets go of the statement, so that other work finds the files unlocked and tables can be dropped. The next
    /// call that needs further rows runs it again and passes over the rows already given, in whatever order they come.
    void Suspend();

  private:
    bool OpenRows();
    qint64 Pass(qint64 count);
    bool Step(IdentifierRow* wanted);
    void PassOver();
    void GiveUp();
    void Keep(const IdentifierRow& row);
    [[nodiscard]] std::vector<IdentifierRow> Reread(qint64 first, int count) const;
    /// The row when it is kept whole; nullptr for those that are read again by their number.
    [[nodiscard]] const IdentifierRow* WholeRow(qint64 row) const;
    [[nodiscard]] static qint64 KeyOf(const IdentifierRow& row);

    QString sql_;
    bool open_ = false;
    bool finished_ = false;
    jet::Recordset rows_;
    std::deque<qint32> passed_;        ///< RowNId of each row passed; negative: ~place in whole_
    std::vector<IdentifierRow> whole_; ///< rows that can't be read again by a number: without RowNId, or beyond 31 bits
    std::unordered_map<qint64, int> again_; ///< after Suspend: rows still to be passed over, with how often
};

} // namespace tessaro
