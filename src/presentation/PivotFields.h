#pragma once

#include <QString>

#include <array>
#include <optional>

namespace tessaro {

/// The seven fields that a table or graph can show on its rows or columns.
enum class PivotField { TimePeriod, AreaID, AreaName, Indicator, Subpop, Unit, Source };
constexpr int kPivotFieldCount = 7;

/// What is known of a field.
struct PivotFieldInfo {
    const char* key;        ///< its SQL expression, which is also its key in the lists
    const char* captionKey; ///< of its name in the user's language
    const char* name;       ///< its name among the fields of a result, in upper case
    const char* pivotCode;  ///< what stands for its values in the names of pivot columns
    const char* lookup;     ///< the statement that gives the text of a code, once the code is appended
};

/// All fields in their order.
[[nodiscard]] const std::array<PivotFieldInfo, kPivotFieldCount>& PivotFields();
[[nodiscard]] const PivotFieldInfo& InfoOf(PivotField field);
/// The field of a key ("T.TimePeriod"), whatever its case; nothing for any other text.
[[nodiscard]] std::optional<PivotField> FieldOfKey(const QString& key);
/// The field of a result's field ("TimePeriod"), whatever its case; nothing for a pivot column.
[[nodiscard]] std::optional<PivotField> FieldOfName(const QString& name);
[[nodiscard]] QString KeyOf(PivotField field);
[[nodiscard]] QString CaptionOf(PivotField field);

} // namespace tessaro
