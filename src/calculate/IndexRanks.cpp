#include "calculate/IndexRanks.h"

#include "calculate/LogParts.h"
#include "office/Limits.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::size_t kMostAreas = 100;
constexpr double kChange = 10; ///< points
constexpr double kAllWeights = 100;
constexpr int kTitleRow = 1;
constexpr int kRankHeadRow = 4;
constexpr int kFirstRow = kRankHeadRow + 1;
constexpr int kRankColumn = 3;
constexpr int kBestColumn = 4;
constexpr int kWorstColumn = 5;

/// A weight that goes up or down.
struct Change {
    std::size_t item = 0;
    bool up = true;
};

class RankSheet final {
  public:
    RankSheet(std::vector<RankedArea> areas, const QStringList& indicators, const std::vector<double>& weights,
              const IndexSheet& sheet)
        : areas_(std::move(areas)), indicators_(indicators), weights_(weights), sheet_(sheet) {
        std::ranges::stable_sort(
            areas_, [](const RankedArea& a, const RankedArea& b) { return a.scores.index > b.scores.index; });
        areas_.resize(std::min(areas_.size(), kMostAreas));
        for (std::size_t item = 0; item < weights.size(); ++item)
            for (const bool up : {true, false})
                changes_.push_back({item, up});
    }

    [[nodiscard]] int Changes() const { return static_cast<int>(changes_.size()); }
    [[nodiscard]] int LastColumn() const { return MeanColumn(Changes()); }
    [[nodiscard]] bool IsWorthwhile() const { return areas_.size() > 1 && LastColumn() <= office::kMaxColumns; }

    [[nodiscard]] LogSheet Made() const {
        LogSheet sheet;
        sheet.headRow = kRankHeadRow;
        sheet.firstRow = kFirstRow;
        sheet.lastRow = LastRow();
        sheet.lastColumn = LastColumn();
        sheet.printedColumns = RankColumn(Changes());
        sheet.textColumns = {1, 2};
        sheet.blocks = {{kTitleRow, 1, Title()}, {kRankHeadRow, 1, {HeadingRow()}}, {kFirstRow, 1, Rows()}};
        const QString rank = QStringLiteral("0");
        sheet.formulas.push_back({kRankColumn, RankFormulas(0), rank, false});
        sheet.formulas.push_back({kBestColumn, RangeFormulas(QStringLiteral("MIN")), rank, false});
        sheet.formulas.push_back({kWorstColumn, RangeFormulas(QStringLiteral("MAX")), rank, false});
        for (int change = 1; change <= Changes(); ++change)
            sheet.formulas.push_back({RankColumn(change), RankFormulas(change), rank, false});
        for (int change = 0; change <= Changes(); ++change)
            sheet.formulas.push_back({MeanColumn(change), MeanFormulas(change), QStringLiteral("0.000"), false});
        return sheet;
    }

  private:
    [[nodiscard]] int LastRow() const { return kFirstRow + static_cast<int>(areas_.size()) - 1; }
    /// Of the ranks as they are (0), and of those after a change (1 …).
    [[nodiscard]] static int RankColumn(int change) { return change == 0 ? kRankColumn : kWorstColumn + change; }
    /// The same of the means that the ranks are of.
    [[nodiscard]] int MeanColumn(int change) const { return RankColumn(Changes()) + 2 + change; }

    [[nodiscard]] office::Block Title() const {
        const QString count = QString::number(areas_.size());
        return {{TextCell(PlainText(QStringLiteral("TS_RanksTitle")))},
                {TextCell(FilledText(QStringLiteral("TS_RanksNote"), {count}))}};
    }

    [[nodiscard]] std::vector<office::Cell> HeadingRow() const {
        std::vector<office::Cell> row =
            Headings({"Comm_Area Id", "Comm_Area Name", "TS_RankNow", "TS_RankBest", "TS_RankWorst"});
        AddChanges(row);
        row.emplace_back();
        row.push_back(TextCell(PlainText(QStringLiteral("LOG_INDEX"))));
        AddChanges(row);
        return row;
    }

    void AddChanges(std::vector<office::Cell>& row) const {
        for (const Change& change : changes_)
            row.push_back(TextCell(FilledText(change.up ? QStringLiteral("TS_RankUp") : QStringLiteral("TS_RankDown"),
                                              {indicators_[static_cast<qsizetype>(change.item)]})));
    }

    [[nodiscard]] double MeanOf(const RankedArea& area, int change) const {
        if (change == 0) return area.scores.index;
        const auto [item, up] = changes_[static_cast<std::size_t>(change - 1)];
        const double points = up ? kChange : -std::min(kChange, weights_[item]);
        return (area.scores.index * kAllWeights + area.scores.scores[item] * points) / (kAllWeights + points);
    }

    [[nodiscard]] office::Block Rows() const {
        office::Block rows;
        for (const RankedArea& area : areas_) {
            std::vector<office::Cell> row(static_cast<std::size_t>(LastColumn()));
            row[0] = TextCell(area.id);
            row[1] = TextCell(area.name);
            double best = static_cast<double>(areas_.size());
            double worst = 1;
            for (int change = 0; change <= Changes(); ++change) {
                const double mean = MeanOf(area, change);
                const auto higher = std::ranges::count_if(
                    areas_, [&](const RankedArea& other) { return MeanOf(other, change) > mean; });
                const auto rank = static_cast<double>(higher + 1);
                best = std::min(best, rank);
                worst = std::max(worst, rank);
                row[static_cast<std::size_t>(RankColumn(change) - 1)] = rank;
                row[static_cast<std::size_t>(MeanColumn(change) - 1)] = NumberCell(mean);
            }
            row[kBestColumn - 1] = best;
            row[kWorstColumn - 1] = worst;
            rows.push_back(std::move(row));
        }
        return rows;
    }

    [[nodiscard]] QString InWorking(const QString& address) const {
        return QLatin1Char('\'') + QString(sheet_.name).replace(QLatin1Char('\''), QLatin1String("''")) +
               QStringLiteral("'!") + address;
    }

    [[nodiscard]] std::vector<QString> RankFormulas(int change) const {
        const int column = MeanColumn(change);
        const QString all = FixedRange(column, kFirstRow, LastRow());
        std::vector<QString> formulas;
        for (int row = kFirstRow; row <= LastRow(); ++row)
            formulas.push_back(QStringLiteral("= RANK(%1,%2)").arg(CellAt(row, column), all));
        return formulas;
    }

    /// The best or the worst of an area's ranks.
    [[nodiscard]] std::vector<QString> RangeFormulas(const QString& function) const {
        std::vector<QString> formulas;
        for (int row = kFirstRow; row <= LastRow(); ++row)
            formulas.push_back(QStringLiteral("= %1(%2,%3:%4)")
                                   .arg(function, CellAt(row, kRankColumn), CellAt(row, RankColumn(1)),
                                        CellAt(row, RankColumn(Changes()))));
        return formulas;
    }

    /// The areas stand in another order here, so each row has its own.
    [[nodiscard]] std::vector<QString> MeanFormulas(int change) const {
        std::vector<QString> formulas;
        for (const RankedArea& area : areas_) {
            const int row = kFirstRow + static_cast<int>(formulas.size());
            formulas.push_back(change == 0
                                   ? QStringLiteral("= ") + InWorking(CellAt(area.row, sheet_.indexColumn))
                                   : MeanFormula(changes_[static_cast<std::size_t>(change - 1)], area.row, row));
        }
        return formulas;
    }

    [[nodiscard]] QString MeanFormula(const Change& change, int workingRow, int row) const {
        const int item = static_cast<int>(change.item);
        const QString mean = CellAt(row, MeanColumn(0));
        const QString score = InWorking(CellAt(workingRow, sheet_.firstScoreColumn + 2 * item));
        const QString all = QStringLiteral("SUM(%1)").arg(
            InWorking(FixedRange(sheet_.weightColumn, sheet_.firstWeightRow,
                                 sheet_.firstWeightRow + static_cast<int>(weights_.size()) - 1)));
        if (change.up) return QStringLiteral("= (%1 * %2 + %3 * 10) / (%2 + 10)").arg(mean, all, score);
        const QString weight = InWorking(FixedCellAt(sheet_.firstWeightRow + item, sheet_.weightColumn));
        return QStringLiteral("= (%1 * %2 - %3 * MIN(10,%4)) / (%2 - MIN(10,%4))").arg(mean, all, score, weight);
    }

    std::vector<RankedArea> areas_;
    const QStringList& indicators_;
    const std::vector<double>& weights_;
    const IndexSheet& sheet_;
    std::vector<Change> changes_;
};

} // namespace

void AddRankSheet(CalculationLog& log, std::vector<RankedArea> areas, const QStringList& indicators,
                  const std::vector<double>& weights, const IndexSheet& sheet) {
    const RankSheet ranks(std::move(areas), indicators, weights, sheet);
    if (!ranks.IsWorthwhile()) return;
    log.ranks = ranks.Made();
}

} // namespace tessaro
