// Any bytes as the criterion of Find, held against values of every kind.

#include "jet/engine/Criterion.h"
#include "jet/values/Error.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const jet::Criterion criterion = jet::ParseCriterion(text);
        for (const jet::Value& value :
             {jet::Value(), jet::Value(7), jet::Value(0.5), jet::Value("nan"), jet::Value(text)})
            for (const auto kind : {jet::CompareKind::Number, jet::CompareKind::Text, jet::CompareKind::ValueText})
                static_cast<void>(jet::Meets(value, kind, criterion));
    } catch (const jet::Error&) {
        // refused, which is as good as taken
    }
    return 0;
}
