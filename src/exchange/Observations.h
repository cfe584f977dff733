#pragma once

#include "exchange/ImportDraft.h"
#include "formats/TableReader.h"

#include <QStringList>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

/// The heads of a table as the draft says where they are.
struct TableHeads {
    std::vector<std::vector<std::string>> rows; ///< texts by head row and column, merged ones repeated
    QStringList texts;                          ///< those of each column, joined by " / "
};
/// Reads over the rows above the heads, and the heads. Throws ReadError.
[[nodiscard]] TableHeads ReadHeads(TableReader& reader, const ImportDraft& draft);
/// The role of each column, by its head in the draft. A column that the draft doesn't know has a value where the draft
/// has several columns of values with periods above them and this one has a period there; else it is left out.
[[nodiscard]] std::vector<Role> RolesOf(const TableHeads& heads, const ImportDraft& draft);

/// One value of a file with what its row, its column and the constants tell of it.
struct Observation {
    std::int64_t row = 0; ///< of the file
    std::size_t column = 0;
    std::array<std::string_view, kRoles> texts; ///< valid until the next one is read
    RowFault fault = RowFault::None;            ///< then there are no texts
    bool isRagged = false;                      ///< the row has more or fewer fields than the heads
};

/// Takes the rows of a table apart into values.
class Observations final {
  public:
    /// Reads the heads. Both are borrowed. Throws ReadError.
    Observations(TableReader& reader, const ImportDraft& draft);
    /// False at the end. Throws ReadError.
    bool Next(Observation& next);
    [[nodiscard]] std::int64_t RowsRead() const { return rows_; }

  private:
    struct ValueColumn {
        std::size_t column = 0;
        std::array<std::string, kRoles> heads;
    };

    bool ReadRow(Observation& next);
    void TellRow();
    [[nodiscard]] bool IsRagged() const;

    TableReader& reader_;
    int lastRow_;
    std::size_t columns_ = 0;
    std::size_t lastUsed_ = 0; ///< one behind the last column that tells something
    struct Teller {
        std::size_t column = 0;
        Role role = Role::LeftOut;
        std::string above; ///< the last text that stood there, where it is repeated
    };
    [[nodiscard]] std::string_view Told(Teller& teller) const;

    bool repeatsAbove_;
    std::vector<Teller> tellers_;
    std::vector<ValueColumn> values_;
    std::array<std::string, kRoles> constants_;
    std::array<std::string_view, kRoles> rowTexts_;
    std::array<std::string, kRoles> joined_; ///< texts of several columns of one role
    TableRow row_;
    std::size_t nextValue_ = 0;
    std::int64_t rows_ = 0;
};

} // namespace tessaro
