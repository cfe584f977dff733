#pragma once

#include <string>

namespace tessaro::test {

/// A journal that asks for nothing to be taken back and names a further file, as the engine reads it.
inline std::string JournalNaming(const std::string& file) {
    const auto number = [](unsigned value) {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>((value >> shift) & 0xFFU);
        return bytes;
    };
    const std::string mark = "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
    unsigned sum = 0;
    for (const char c : file)
        sum += static_cast<unsigned>(static_cast<int>(c));
    std::string journal = mark + number(0) + number(0) + number(1) + number(512) + number(4096);
    journal.resize(512, '\0');
    return journal + number(0x40000000U / 4096 + 1) + file + number(static_cast<unsigned>(file.size())) + number(sum) +
           mark;
}

} // namespace tessaro::test
