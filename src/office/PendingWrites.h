#pragma once

#include "office/CellStyle.h"
#include "office/DocumentModel.h"

#include <functional>
#include <vector>

namespace tessaro::office {

/// The writes of a document that wait: blocks of values, joined where one follows the other, and one list of places for
/// each distinct look.
struct PendingWrites {
    struct Place {
        int sheet;
        int row;
        int column;
        int lastRow;
        int lastColumn;
        [[nodiscard]] bool Meets(const Place& other) const {
            return sheet == other.sheet && row <= other.lastRow && other.row <= lastRow && column <= other.lastColumn &&
                   other.column <= lastColumn;
        }
    };
    struct Values {
        Place place;
        Block cells;
    };
    struct Look {
        CellStyle style;
        std::vector<Place> places;
    };

    void Write(int sheet, int row, int column, const Block& block);
    void Style(const Place& place, const CellStyle& style);
    [[nodiscard]] bool IsEmpty() const { return values.empty() && looks.empty(); }
    [[nodiscard]] std::size_t Cells() const { return cells_; }
    /// So many that they should go over now.
    [[nodiscard]] bool IsLarge() const { return cells_ > kManyCells || values.size() + places_ > kManyPlaces; }
    /// Takes all over into the model; on the worker thread. `colour` gives the number of a palette slot. What can't be
    /// taken over is left out, and the first reason thrown at the end.
    void Flush(const DocumentModel& model, const std::function<int(int)>& colour);

    std::vector<Values> values;
    std::vector<Look> looks;

  private:
    static constexpr std::size_t kManyCells = 500'000;
    static constexpr std::size_t kManyPlaces = 4'000;
    std::size_t cells_ = 0;
    std::size_t places_ = 0;
};

} // namespace tessaro::office
