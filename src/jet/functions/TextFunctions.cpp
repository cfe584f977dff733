#include "jet/functions/FunctionSupport.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unicode/utf8.h>
#include <vector>

// Positions and lengths count characters. A negative length, as in Mid(x, 1, Len(x) - 3) on short texts, gives Null and
// no error: the row then meets no condition, whatever the order in which SQLite tries the conditions.

namespace jet {

namespace {

constexpr std::int64_t kLongestText = 1'000'000;

bool StartsCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

std::int64_t Length(std::string_view text) {
    return std::ranges::count_if(text, StartsCharacter);
}

// Byte position of the character with this number (from 0); the end of the text when there is none.
std::size_t BytePosition(std::string_view text, std::int64_t character, std::size_t from = 0) {
    std::size_t at = from;
    while (character > 0 && at < text.size()) {
        ++at;
        while (at < text.size() && !StartsCharacter(text[at]))
            ++at;
        --character;
    }
    return at;
}

std::string_view Stripped(std::string_view text, bool left, bool right) {
    while (left && !text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (right && !text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

void Mid(Call& call) {
    std::string room;
    const std::string_view text = call.text(0, room);
    const std::int64_t start = call.whole(1);
    const std::int64_t length = call.count() > 2 ? call.whole(2) : kLongestText * kLongestText;
    if (start < 1 || length < 0) return call.giveNull();
    const std::size_t first = BytePosition(text, start - 1);
    call.give(text.substr(first, BytePosition(text, length, first) - first));
}

void Left(Call& call) {
    std::string room;
    const std::string_view text = call.text(0, room);
    const std::int64_t length = call.whole(1);
    if (length < 0) return call.giveNull();
    call.give(text.substr(0, BytePosition(text, length)));
}

void Right(Call& call) {
    std::string room;
    const std::string_view text = call.text(0, room);
    const std::int64_t length = call.whole(1);
    if (length < 0) return call.giveNull();
    call.give(text.substr(BytePosition(text, Length(text) - length)));
}

void Len(Call& call) {
    std::string room;
    call.give(Length(call.text(0, room)));
}

template <bool left, bool right> void Trim(Call& call) {
    std::string room;
    call.give(Stripped(call.text(0, room), left, right));
}

// Where `sought` stands in `text`, as byte position from `from` on; npos when nowhere.
std::size_t FindText(std::string_view text, std::string_view sought, std::size_t from, bool exact) {
    if (exact || sought.empty()) return text.find(sought, from);
    const auto same = [](char a, char b) { return LowerAscii(a) == LowerAscii(b); };
    const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size())), text.end(),
                                   sought.begin(), sought.end(), same);
    return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

struct Search {
    std::string textRoom;
    std::string soughtRoom;
    std::string_view text;
    std::string_view sought;
    bool exact = false;

    // Folding keeps the number of characters, so that positions stay what they are.
    void prepare() {
        constexpr std::size_t kMostComparisons = 1'000'000'000; // about a second
        if (!sought.empty() && text.size() > kMostComparisons / sought.size())
            throw Error(ErrorNumber::TooLarge, "The text is too long to be searched for so long a part.");
        if (exact || (IsAscii(text) && IsAscii(sought))) return;
        textRoom = Folded(text);
        soughtRoom = Folded(sought);
        text = textRoom;
        sought = soughtRoom;
    }
};

// InStr([start,] text, sought [, compare]): with three arguments the first may be a start or the last a compare.
void InStr(Call& call) {
    const bool hasStart = call.count() == 4 || (call.count() == 3 && (!call.isText(0) || call.isText(2)));
    const std::size_t at = hasStart ? 1 : 0;
    const std::int64_t start = hasStart ? call.whole(0) : 1;
    if (start < 1) return call.giveNull();
    Search search;
    search.text = call.text(at, search.textRoom);
    search.sought = call.text(at + 1, search.soughtRoom);
    search.exact = call.count() > at + 2 && call.whole(at + 2) == 0;
    search.prepare();
    const std::int64_t length = start > 1 ? Length(search.text) : 1;
    if (search.text.empty() || start > length) return call.give(0);
    const std::size_t found = FindText(search.text, search.sought, BytePosition(search.text, start - 1), search.exact);
    call.give(found == std::string_view::npos ? 0 : Length(search.text.substr(0, found)) + 1);
}

void InStrRev(Call& call) {
    Search search;
    search.text = call.text(0, search.textRoom);
    search.sought = call.text(1, search.soughtRoom);
    search.exact = call.count() > 3 && call.whole(3) == 0;
    search.prepare();
    const std::int64_t start = call.count() > 2 ? call.whole(2) : -1;
    if (start > 0) search.text = search.text.substr(0, BytePosition(search.text, start));
    std::size_t last = std::string_view::npos;
    for (std::size_t at = 0; !search.text.empty();) {
        const std::size_t found = FindText(search.text, search.sought, at, search.exact);
        if (found == std::string_view::npos || found >= search.text.size()) break;
        last = found;
        at = found + 1;
    }
    call.give(last == std::string_view::npos ? 0 : Length(search.text.substr(0, last)) + 1);
}

// Replace(text, sought, by [, start [, count [, compare]]])
void Replace(Call& call) {
    Search search;
    std::string byRoom;
    const std::string_view text = call.text(0, search.textRoom);
    search.text = text;
    search.sought = call.text(1, search.soughtRoom);
    const std::string_view by = call.text(2, byRoom);
    const std::int64_t start = call.count() > 3 ? call.whole(3) : 1;
    std::int64_t most = call.count() > 4 ? call.whole(4) : -1;
    search.exact = call.count() > 5 && call.whole(5) == 0;
    if (start < 1) return call.giveNull();
    const std::string original(text);
    search.text = original;
    search.prepare();

    std::size_t from = BytePosition(search.text, start - 1);
    std::string result;
    std::size_t copied = BytePosition(original, start - 1); // runs along the original, whose bytes may differ
    while (most != 0 && !search.sought.empty()) {
        const std::size_t found = FindText(search.text, search.sought, from, search.exact);
        if (found == std::string_view::npos) break;
        const std::size_t stop = BytePosition(original, Length(search.text.substr(from, found - from)), copied);
        result.append(original, copied, stop - copied).append(by);
        if (result.size() > kLongestValue) FailTooLong();
        copied = BytePosition(original, Length(search.sought), stop);
        from = found + search.sought.size();
        --most;
    }
    call.give(std::string_view(result.append(original, std::min(copied, original.size()))));
}

template <std::string (*change)(std::string_view)> void Case(Call& call) {
    std::string room;
    call.give(std::string_view(change(call.text(0, room))));
}

std::string Repeated(std::string_view character, std::int64_t count) {
    if (count < 0 || count > kLongestText)
        throw Error(ErrorNumber::TypeMismatch, "The length of the text is out of range.");
    std::string text;
    text.reserve(character.size() * static_cast<std::size_t>(count));
    for (std::int64_t i = 0; i < count; ++i)
        text += character;
    return text;
}

std::string Character(std::int64_t code) {
    if (code < 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        throw Error(ErrorNumber::TypeMismatch, "There is no character with this number.");
    std::array<std::uint8_t, 4> bytes{};
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, static_cast<UChar32>(code));
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length)};
}

void Space(Call& call) {
    call.give(std::string_view(Repeated(" ", call.whole(0))));
}

void String(Call& call) {
    std::string room;
    if (!call.isText(1)) return call.give(std::string_view(Repeated(Character(call.whole(1)), call.whole(0))));
    const std::string_view text = call.text(1, room);
    call.give(std::string_view(Repeated(text.substr(0, BytePosition(text, 1)), call.whole(0))));
}

void StrReverse(Call& call) {
    std::string room;
    const std::string_view text = call.text(0, room);
    std::string result;
    result.reserve(text.size());
    for (std::size_t end = text.size(); end > 0;) {
        std::size_t start = end - 1;
        while (start > 0 && !StartsCharacter(text[start]))
            --start;
        result += text.substr(start, end - start);
        end = start;
    }
    call.give(std::string_view(result));
}

void StrComp(Call& call) {
    std::string roomA;
    std::string roomB;
    const std::string_view a = call.text(0, roomA);
    const std::string_view b = call.text(1, roomB);
    const int order = call.count() > 2 && call.whole(2) == 0 ? a.compare(b) : CompareText(a, b);
    call.give(static_cast<int>(order > 0) - static_cast<int>(order < 0));
}

void Asc(Call& call) {
    std::string room;
    const std::string_view text = call.text(0, room);
    if (text.empty()) throw Error(ErrorNumber::TypeMismatch, "An empty text has no first character.");
    std::int32_t at = 0;
    UChar32 code = 0;
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(text.data()), at, static_cast<std::int32_t>(text.size()), code);
    call.give(static_cast<int>(code < 0 ? static_cast<unsigned char>(text[0]) : code));
}

void Chr(Call& call) {
    call.give(std::string_view(Character(call.whole(0))));
}

} // namespace

void RegisterTextFunctions(sqlite3* database) {
    static constexpr std::array functions = {
        Registration{"jet_mid", Entry<Mid, Nulls::Spread>},
        Registration{"jet_left", Entry<Left, Nulls::Spread>},
        Registration{"jet_right", Entry<Right, Nulls::Spread>},
        Registration{"jet_len", Entry<Len, Nulls::Spread>},
        Registration{"jet_trim", Entry<Trim<true, true>, Nulls::Spread>},
        Registration{"jet_ltrim", Entry<Trim<true, false>, Nulls::Spread>},
        Registration{"jet_rtrim", Entry<Trim<false, true>, Nulls::Spread>},
        Registration{"jet_instr", Entry<InStr, Nulls::Spread>},
        Registration{"jet_instrrev", Entry<InStrRev, Nulls::Spread>},
        Registration{"jet_replace", Entry<Replace, Nulls::Spread>},
        Registration{"jet_ucase", Entry<Case<UpperCased>, Nulls::Spread>},
        Registration{"jet_lcase", Entry<Case<LowerCased>, Nulls::Spread>},
        Registration{"jet_space", Entry<Space, Nulls::Spread>},
        Registration{"jet_string", Entry<String, Nulls::Spread>},
        Registration{"jet_strreverse", Entry<StrReverse, Nulls::Spread>},
        Registration{"jet_strcomp", Entry<StrComp, Nulls::Spread>},
        Registration{"jet_asc", Entry<Asc, Nulls::Spread>},
        Registration{"jet_ascw", Entry<Asc, Nulls::Spread>},
        Registration{"jet_chr", Entry<Chr, Nulls::Spread>},
        Registration{"jet_chrw", Entry<Chr, Nulls::Spread>},
    };
    Register(database, functions);
}

} // namespace jet
