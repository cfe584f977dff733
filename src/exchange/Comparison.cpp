#include "exchange/Comparison.h"

namespace tessaro {

namespace {

enum Field : std::size_t { Stage, FileRow, Combination, Source, Area, Period, Footnote, Value, Row, OldValue, OldNote };

constexpr std::string_view kAlone = "SELECT I.StageNId, I.FileRow, I.IUSNId, I.SourceNId, I.AreaNId, I.TimePeriodNId, "
                                    "I.FootnoteNId, I.Datavalue FROM [_Import] AS I ORDER BY I.IUSNId, I.SourceNId, "
                                    "I.AreaNId, I.TimePeriodNId, I.StageNId";
constexpr std::string_view kWithExisting =
    "SELECT I.StageNId, I.FileRow, I.IUSNId, I.SourceNId, I.AreaNId, I.TimePeriodNId, I.FootnoteNId, I.Datavalue, "
    "D.RowNId, D.Datavalue AS OldValue, D.FootnoteNId AS OldNote FROM [_Import] AS I LEFT JOIN Data AS D ON "
    "((I.IUSNId = D.IUSNId) AND (I.SourceNId = D.SourceNId) AND (I.AreaNId = D.AreaNId) AND (I.TimePeriodNId = "
    "D.TimePeriodNId)) ORDER BY I.IUSNId, I.SourceNId, I.AreaNId, I.TimePeriodNId, I.StageNId";

bool IsSameNumber(const std::string& a, const std::string& b) {
    if (a == b) return true;
    const auto number = jet::ReadNumber(a);
    return number.has_value() && number == jet::ReadNumber(b);
}

} // namespace

Comparison::Comparison(ImportStage& stage, bool withExisting)
    : withExisting_(withExisting),
      rows_(stage.Connection().OpenRecordset(withExisting ? kWithExisting : kAlone, jet::CursorType::ForwardOnly)) {}

bool Comparison::IsSameKey(const StagedValue& a, const StagedValue& b) {
    return a.combination == b.combination && a.source == b.source && a.area == b.area && a.period == b.period;
}

void Comparison::Read(ComparedValue& next) const {
    const auto number = [&](Field field) { return static_cast<int>(rows_.Get(field).toInteger()); };
    next.value = {rows_.Get(FileRow).toInteger(),
                  number(Combination),
                  number(Source),
                  number(Area),
                  number(Period),
                  number(Footnote),
                  rows_.Get(Value).toText()};
    next.existingRow = withExisting_ ? rows_.Get(Row).toInteger() : 0;
    if (next.existingRow == 0) return;
    next.existingValue = rows_.Get(OldValue).toText();
    next.existingFootnote = number(OldNote);
}

bool Comparison::Next(ComparedValue& next) {
    // A database may have several values of one key: the first counts.
    while (!rows_.atEnd() && rows_.Get(Stage).toInteger() == lastStage_)
        rows_.MoveNext();
    if (rows_.atEnd()) return false;
    lastStage_ = rows_.Get(Stage).toInteger();
    Read(next);
    rows_.MoveNext();
    if (first_.row > 0 && IsSameKey(first_, next.value)) {
        next.state = ValueState::Double;
        next.firstRow = first_.row;
        next.firstValue = first_.value;
        return true;
    }
    first_ = next.value;
    const int note = next.value.footnote;
    if (next.existingRow == 0)
        next.state = ValueState::Fresh;
    else if (IsSameNumber(next.value.value, next.existingValue) && (note == 0 || note == next.existingFootnote))
        next.state = ValueState::Same;
    else
        next.state = ValueState::Changed;
    return true;
}

} // namespace tessaro
