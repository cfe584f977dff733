#include "sheets/TimeLimit.h"

#include "office/SpreadsheetApplication.h"

#include <chrono>

namespace tessaro {

void GiveTimeFor(int values) {
    constexpr int kFewValues = 10000;
    if (values > 0 && values <= kFewValues) return;
    const std::chrono::seconds limit(30 + values / 1000);
    office::SpreadsheetApplication::Instance().SetTimeLimit(limit);
    office::SpreadsheetApplication::Hosted().SetTimeLimit(limit);
}

} // namespace tessaro
