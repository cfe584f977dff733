// A number, or a text when the first byte is odd, and any bytes as the mask that formats it.

#include "jet/values/Error.h"
#include "jet/values/Format.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    double number = 0;
    if (size < 1 + sizeof number) return 0;
    std::memcpy(&number, data + 1, sizeof number);
    const std::string_view mask(reinterpret_cast<const char*>(data) + 1 + sizeof number, size - 1 - sizeof number);
    const jet::Value value = data[0] % 2 == 0 ? jet::Value(number) : jet::Value(mask.substr(0, mask.size() / 2));
    try {
        static_cast<void>(jet::Format(value, mask));
        static_cast<void>(jet::FormattedNumber(value, mask));
    } catch (const jet::Error&) {
        // refused, which is as good as formatted
    }
    return 0;
}
