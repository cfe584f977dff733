#pragma once

#include "exchange/ItemNames.h"
#include "exchange/Observations.h"

#include <QString>

#include <string>
#include <string_view>

namespace tessaro {

/// Why a value is not taken over.
enum class Refusal {
    BadRow,    ///< bytes of another encoding, an open quotation mark, too many fields, a file that is cut
    RaggedRow, ///< more or fewer fields than the heads
    BadNumber,
    LacksName, ///< a period, area, indicator, unit, subgroup or source is missing
    BadPeriod,
    DayForPeriod, ///< a date that a spreadsheet may have made
    UnknownArea,
    SharedArea, ///< several areas have the name
    AreaLeftOut,
    TooLong,
    TooManyNames,
    Double
};
constexpr int kRefusals = 12;
/// A reason in the language of the program.
[[nodiscard]] QString TextOf(Refusal why);

/// A text of a file as it is shown: of at most 300 bytes.
[[nodiscard]] QString ShownText(std::string_view text);
/// True for a text of more characters than a column takes.
[[nodiscard]] bool IsLongerThan(std::string_view text, int characters);

/// Reads one value of a file after the other, as far as that goes without knowing areas: its number, its period, and
/// whether all that it needs is there.
class RowRules final {
  public:
    enum class Outcome { Taken, Empty, Refused };

    /// `periods`: those that the database has, of whatever form. Both are borrowed.
    RowRules(const ImportDraft& draft, const ItemNames& periods)
        : numbers_(draft.numbers), dates_(draft.dates), periods_(periods) {}

    [[nodiscard]] Outcome Read(const Observation& one);
    /// Of a value that is taken: the number as databases have it, and the period as the database has it, or will.
    [[nodiscard]] const std::string& Number() const { return number_; }
    [[nodiscard]] const std::string& Period() const { return period_; }
    /// Of one that is refused: the reason, and the text that is concerned.
    [[nodiscard]] Refusal Why() const { return why_; }
    [[nodiscard]] const std::string& What() const { return what_; }

  private:
    bool Refuse(Refusal why, std::string_view what);
    bool ReadNumber(std::string_view text);
    bool HoldsNames(const Observation& one);
    bool Holds(const Observation& one, Role role, int longest);
    bool ReadPeriod(std::string_view text);

    const NumberForm& numbers_;
    DateTells dates_;
    const ItemNames& periods_;
    std::string number_;
    std::string period_;
    std::string lastPeriod_; ///< in the file
    Refusal why_ = Refusal::BadRow;
    std::string what_;
};

} // namespace tessaro
