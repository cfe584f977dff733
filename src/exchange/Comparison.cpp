#include "exchange/Comparison.h"

namespace tessaro {

namespace {

enum Field : std::size_t { Key, Row, OldValue, OldNote };

bool IsSameNumber(const std::string& a, const std::string& b) {
    if (a == b) return true;
    const auto number = jet::ReadNumber(a);
    return number.has_value() && number == jet::ReadNumber(b);
}

} // namespace

Comparison::Comparison(const ImportStage& stage) : values_(stage.Values()) {
    if (stage.Compares()) existing_.emplace(stage.Existing());
}

/// A database may have several values of one key: the first counts.
void Comparison::FindExisting(ComparedValue& next) {
    next.existingRow = 0;
    next.existingFootnote = 0;
    if (!existing_ || !next.value.IsOfKnownItems()) return;
    ++key_;
    while (!existing_->atEnd() && existing_->Get(Key).toInteger() < key_)
        existing_->MoveNext();
    if (existing_->atEnd() || existing_->Get(Key).toInteger() != key_) return;
    next.existingRow = existing_->Get(Row).toInteger();
    next.existingValue = existing_->Get(OldValue).toText();
    next.existingFootnote = static_cast<int>(existing_->Get(OldNote).toInteger());
}

bool Comparison::Next(ComparedValue& next) {
    if (!values_.Next(next.value)) return false;
    if (first_.row > 0 && first_.HasKeyOf(next.value)) {
        next.state = ValueState::Double;
        next.firstRow = first_.row;
        next.firstValue = first_.value;
        return true;
    }
    first_ = next.value;
    FindExisting(next);
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
