#pragma once

#include "dataview/PageQuery.h"

#include <QHash>
#include <QString>

#include <vector>

/// Turns the values of a page into rows of texts for the grid.
namespace tessaro {

/// One row of the grid with its twelve page fields, and which of its cells name a global item.
struct GridRow {
    QString timePeriod;
    QString areaId;
    QString areaName;
    QString indicator;
    QString datavalue;
    QString unit;
    QString subpop;
    QString source;
    QString indicatorGId;
    qint32 sourceNId = 0;
    qint64 rowNId = 0;
    qint64 footNId = 0; ///< 0: no footnote
    bool hasRowNId = false;
    /// The marks travel with the row, because a sort in the grid moves it. Bit c stands for column c.
    quint16 globalCells = 0;

    /// Text of a page field by its column (1 to 12); empty for any other.
    [[nodiscard]] QString Text(int column) const;
    [[nodiscard]] bool IsGlobal(int column) const { return (globalCells >> column & 1) != 0; }
};

/// Turns rows of identifiers into rows of texts. An identifier that equals the one of the row before is not looked up;
/// others are, unless their texts are in the cache: sorted by area, the rows repeat the same few hundred IUS for each
/// area, and a statement for each would take most of the time of a page.
class PageBuilder final {
  public:
    /// The rows with their texts; an identifier without a row in its table gives empty texts.
    [[nodiscard]] std::vector<GridRow> CreateDataPage(const std::vector<IdentifierRow>& identifiers);
    /// Forgets all texts: at the start of each query.
    void Reset();
    /// Statements run since the last Reset.
    [[nodiscard]] int lookups() const { return lookups_; }

  private:
    struct TimeTexts {
        QString timePeriod;
    };
    struct AreaTexts {
        QString areaId, areaName;
        bool isGlobal = false;
    };
    struct IusTexts {
        QString indicatorGId, indicator, unit, subpop;
        quint16 globalCells = 0;
    };
    struct SourceTexts {
        QString source;
    };

    /// Texts by identifier, with those of the row before at hand.
    template <class Texts> class Run {
      public:
        template <class Read> const Texts& Of(qint32 identifier, Read&& read);

      private:
        static constexpr qsizetype kMost = 20000; ///< bounds the memory on databases with very many areas
        QHash<qint32, Texts> seen_;
        Texts before_;
        qint32 identifier_ = 0;
        bool any_ = false;
    };

    [[nodiscard]] TimeTexts ReadTime(qint32 timePeriodNId);
    [[nodiscard]] AreaTexts ReadArea(qint32 areaNId);
    [[nodiscard]] IusTexts ReadIus(qint32 iusNId);
    [[nodiscard]] SourceTexts ReadSource(qint32 sourceNId);

    Run<TimeTexts> times_;
    Run<AreaTexts> areas_;
    Run<IusTexts> ius_;
    Run<SourceTexts> sources_;
    int lookups_ = 0;
};

} // namespace tessaro
