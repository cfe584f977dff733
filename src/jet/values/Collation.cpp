#include "jet/values/Collation.h"

#include "jet/values/Value.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <sqlite3.h>
#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/utf8.h>

namespace jet {

namespace {

// Code points after folding; a byte that is no UTF-8 counts as a character above all others, so that damaged text has
// an order too.
UChar32 NextFolded(std::string_view text, std::size_t& at) {
    const auto start = at;
    UChar32 c = 0;
    auto position = static_cast<std::int32_t>(at);
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(text.data()), position, static_cast<std::int32_t>(text.size()), c);
    at = static_cast<std::size_t>(position);
    if (c < 0) return 0x110000 + static_cast<unsigned char>(text[start]);
    return u_foldCase(c, U_FOLD_CASE_DEFAULT);
}

int CompareFolded(std::string_view a, std::string_view b) {
    std::size_t atA = 0;
    std::size_t atB = 0;
    while (atA < a.size() && atB < b.size()) {
        const UChar32 left = NextFolded(a, atA);
        const UChar32 right = NextFolded(b, atB);
        if (left != right) return left < right ? -1 : 1;
    }
    return static_cast<int>(atA < a.size()) - static_cast<int>(atB < b.size());
}

// The root order of the Unicode collation algorithm, comparing letters and accents but not case. The ranks of the ASCII
// characters are taken from it once, so that the fast comparison of ASCII texts below gives the same order.
class RootOrder {
  public:
    RootOrder() {
        UErrorCode status = U_ZERO_ERROR;
        collator_ = ucol_open("root", &status);
        if (U_FAILURE(status)) collator_ = nullptr;
        if (collator_ != nullptr) ucol_setStrength(collator_, UCOL_SECONDARY);
        RankAscii();
    }
    ~RootOrder() {
        if (collator_ != nullptr) ucol_close(collator_);
    }
    RootOrder(const RootOrder&) = delete;
    RootOrder& operator=(const RootOrder&) = delete;

    // 0: the character has no weight of its own or isn't ASCII; the full comparison decides
    [[nodiscard]] unsigned char rank(char c) const { return ranks_[static_cast<unsigned char>(c)]; }

    [[nodiscard]] int compare(std::string_view a, std::string_view b) const {
        if (collator_ == nullptr) return 0;
        UErrorCode status = U_ZERO_ERROR;
        return ucol_strcollUTF8(collator_, a.data(), static_cast<std::int32_t>(a.size()), b.data(),
                                static_cast<std::int32_t>(b.size()), &status);
    }

  private:
    void RankAscii() {
        std::array<char, 128> characters{};
        std::iota(characters.begin(), characters.end(), static_cast<char>(0));
        const auto order = [this](char a, char b) {
            const int byCollator = compare({&a, 1}, {&b, 1});
            return byCollator != 0 ? byCollator < 0 : collator_ == nullptr && LowerAscii(a) < LowerAscii(b);
        };
        std::stable_sort(characters.begin(), characters.end(), order);
        unsigned char rank = 0;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            const char c = characters[i];
            if (collator_ != nullptr && compare({&c, 1}, {}) == 0) continue;
            if (rank == 0 || order(characters[i - 1], c)) ++rank;
            ranks_[static_cast<unsigned char>(c)] = rank;
        }
    }

    UCollator* collator_ = nullptr;
    std::array<unsigned char, 256> ranks_{};
};

const RootOrder& Order() {
    static const RootOrder order;
    return order;
}

std::string_view View(int size, const void* text) {
    return {static_cast<const char*>(text), static_cast<std::size_t>(size)};
}

using CaseFunction = std::int32_t (*)(const UCaseMap*, char*, std::int32_t, const char*, std::int32_t, UErrorCode*);

std::string MapCase(std::string_view text, CaseFunction map, char firstLetter, int change) {
    std::string result(text);
    if (IsAscii(text)) {
        for (char& c : result)
            if (c >= firstLetter && c < firstLetter + 26) c = static_cast<char>(c + change);
        return result;
    }
    UErrorCode status = U_ZERO_ERROR;
    static const UCaseMap* const neutral = [] {
        UErrorCode opening = U_ZERO_ERROR;
        return ucasemap_open("", 0, &opening);
    }();
    result.resize(text.size() * 3 + 8);
    const std::int32_t length = map(neutral, result.data(), static_cast<std::int32_t>(result.size()), text.data(),
                                    static_cast<std::int32_t>(text.size()), &status);
    if (U_FAILURE(status)) return std::string(text);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

} // namespace

bool IsAscii(std::string_view text) {
    std::size_t at = 0;
    for (; at + 8 <= text.size(); at += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text.data() + at, 8);
        if ((eight & 0x8080808080808080U) != 0) return false;
    }
    for (; at < text.size(); ++at)
        if ((static_cast<unsigned char>(text[at]) & 0x80U) != 0) return false;
    return true;
}

bool EqualFolded(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shorter; ++i) {
        if ((static_cast<unsigned char>(a[i]) | static_cast<unsigned char>(b[i])) >= 0x80)
            return CompareFolded(a, b) == 0;
        if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
    }
    return a.size() == b.size();
}

std::string Folded(std::string_view text) {
    const auto fold = [](const UCaseMap*, char* target, std::int32_t room, const char* source, std::int32_t length,
                         UErrorCode* status) {
        std::int32_t written = 0;
        UBool overflow = false;
        for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
            const std::size_t start = at;
            const UChar32 c = NextFolded({source, static_cast<std::size_t>(length)}, at);
            if (c < 0x110000) {
                U8_APPEND(reinterpret_cast<std::uint8_t*>(target), written, room, c, overflow);
            } else {
                target[written++] = source[start];
            }
        }
        if (overflow) *status = U_BUFFER_OVERFLOW_ERROR;
        return written;
    };
    return MapCase(text, fold, 'A', 32);
}

std::string UpperCased(std::string_view text) {
    return MapCase(text, ucasemap_utf8ToUpper, 'a', -32);
}

std::string LowerCased(std::string_view text) {
    return MapCase(text, ucasemap_utf8ToLower, 'A', 32);
}

int CompareText(std::string_view a, std::string_view b) {
    if (a == b) return 0;
    const RootOrder& order = Order();
    const auto ranked = [&](std::string_view text, std::size_t at) {
        return at >= text.size() || order.rank(text[at]) != 0;
    };
    const auto full = [&] {
        const int verdict = order.compare(a, b);
        return verdict != 0 ? verdict : CompareFolded(a, b);
    };
    const std::size_t shorter = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shorter; ++i) {
        const unsigned char left = order.rank(a[i]);
        const unsigned char right = order.rank(b[i]);
        if (left == 0 || right == 0) return full();
        // a mark that follows could still join with this character
        if (left != right) return ranked(a, i + 1) && ranked(b, i + 1) ? left - right : full();
    }
    if (a.size() == b.size()) return 0;
    if (!ranked(a, shorter) || !ranked(b, shorter)) return full();
    return a.size() < b.size() ? -1 : 1;
}

int CompareValueText(std::string_view a, std::string_view b) {
    const auto left = ReadNumber(a);
    const auto right = ReadNumber(b);
    if (left && right) return static_cast<int>(*left > *right) - static_cast<int>(*left < *right);
    if (left || right) return left ? -1 : 1;
    return CompareText(a, b);
}

void RegisterCollations(sqlite3* database) {
    sqlite3_create_collation_v2(
        database, "JETTEXT", SQLITE_UTF8, nullptr,
        [](void*, int sizeA, const void* a, int sizeB, const void* b) {
            return CompareText(View(sizeA, a), View(sizeB, b));
        },
        nullptr);
    sqlite3_create_collation_v2(
        database, "JETVALUE", SQLITE_UTF8, nullptr,
        [](void*, int sizeA, const void* a, int sizeB, const void* b) {
            return CompareValueText(View(sizeA, a), View(sizeB, b));
        },
        nullptr);
}

} // namespace jet
