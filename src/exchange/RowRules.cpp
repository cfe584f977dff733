#include "exchange/RowRules.h"

#include "database/Schema.h"
#include "exchange/Periods.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <algorithm>
#include <array>

namespace tessaro {

namespace {

QString TextOf(RowFault fault) {
    static constexpr std::array<const char*, 5> keys{"", "TS_FaultBytes", "TS_FaultQuote", "TS_FaultFields",
                                                     "TS_FaultCut"};
    return PlainText(QLatin1String(keys[static_cast<std::size_t>(fault)]));
}

} // namespace

QString TextOf(Refusal why) {
    static constexpr std::array<const char*, kRefusals> keys{
        "TS_RefusedRow",    "TS_RefusedRagged",  "TS_RefusedNumber",  "TS_RefusedLacks",
        "TS_RefusedPeriod", "TS_RefusedDay",     "TS_RefusedArea",    "TS_RefusedShared",
        "TS_RefusedByUser", "TS_RefusedTooLong", "TS_RefusedTooMany", "TS_RefusedDouble"};
    return PlainText(QLatin1String(keys[static_cast<std::size_t>(why)]));
}

QString ShownText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(std::min<std::size_t>(text.size(), 300)));
}

bool IsLongerThan(std::string_view text, int characters) {
    if (text.size() <= static_cast<std::size_t>(characters)) return false;
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).size() > characters;
}

bool RowRules::Refuse(Refusal why, std::string_view what) {
    why_ = why;
    what_ = what;
    return false;
}

RowRules::Outcome RowRules::Read(const Observation& one) {
    if (one.fault != RowFault::None || one.isRagged) {
        const bool isRagged = one.fault == RowFault::None;
        Refuse(isRagged ? Refusal::RaggedRow : Refusal::BadRow,
               isRagged ? std::string() : TextOf(one.fault).toStdString());
        return Outcome::Refused;
    }
    const std::string_view text = one.texts[At(Role::Value)];
    if (MeansNoValue(text)) return Outcome::Empty;
    const bool taken = ReadNumber(text) && HoldsNames(one) && ReadPeriod(one.texts[At(Role::Time)]);
    return taken ? Outcome::Taken : Outcome::Refused;
}

bool RowRules::ReadNumber(std::string_view text) {
    std::optional<std::string> number = ReadNumberIn(text, numbers_);
    if (!number) return Refuse(Refusal::BadNumber, text);
    if (number->size() > schema::kLongestValue) return Refuse(Refusal::TooLong, text);
    number_ = std::move(*number);
    return true;
}

/// False when a text is missing or too long.
bool RowRules::Holds(const Observation& one, Role role, int longest) {
    const std::string_view text = one.texts[At(role)];
    if (text.empty()) return Refuse(Refusal::LacksName, CaptionOf(role).toStdString());
    return !IsLongerThan(text, longest) || Refuse(Refusal::TooLong, text);
}

bool RowRules::HoldsNames(const Observation& one) {
    if (!Holds(one, Role::Time, schema::kLongestTime)) return false;
    for (const Role role : {Role::Indicator, Role::Unit, Role::Subgroup, Role::Source})
        if (!Holds(one, role, schema::kLongestName)) return false;
    if (one.texts[At(Role::AreaId)].empty() && !Holds(one, Role::AreaName, schema::kLongestName)) return false;
    return one.texts[At(Role::Footnote)].empty() || Holds(one, Role::Footnote, schema::kLongestName);
}

bool RowRules::ReadPeriod(std::string_view text) {
    if (!lastPeriod_.empty() && text == lastPeriod_) return true;
    lastPeriod_.clear();
    period_ = text;
    if (periods_.Find(text) == 0) {
        std::optional<std::string> period = tessaro::ReadPeriod(text);
        if (!period) return Refuse(LooksLikeDay(text) ? Refusal::DayForPeriod : Refusal::BadPeriod, text);
        period_ = WithoutDay(std::move(*period), dates_);
    }
    lastPeriod_ = text;
    return true;
}

} // namespace tessaro
