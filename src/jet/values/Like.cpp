#include "jet/values/Like.h"

#include "jet/values/Collation.h"
#include "jet/values/Error.h"

#include <string>

namespace jet {

namespace {

// One step of a pattern: its length in bytes, and whether it takes the character.
struct Step {
    std::size_t length = 0;
    bool takes = false;
};

std::size_t CharacterLength(std::string_view text, std::size_t at) {
    std::size_t end = at + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        ++end;
    return end - at;
}

// UTF-8 keeps the order of the code points, so characters are compared as the bytes that they are.
Step InList(std::string_view pattern, std::size_t at, std::string_view character) {
    std::size_t i = at + 1;
    const bool negated = i < pattern.size() && pattern[i] == '!';
    if (negated) ++i;
    const std::size_t end = pattern.find(']', i);
    if (end == std::string_view::npos) return {1, character == "["};
    bool found = false;
    while (i < end) {
        const std::string_view low = pattern.substr(i, CharacterLength(pattern, i));
        i += low.size();
        std::string_view high = low;
        if (i + 1 < end && pattern[i] == '-') {
            high = pattern.substr(i + 1, CharacterLength(pattern, i + 1));
            i += 1 + high.size();
        }
        found = found || (low <= character && character <= high);
    }
    return {end + 1 - at, found != negated};
}

Step Next(std::string_view pattern, std::size_t at, std::string_view character) {
    switch (pattern[at]) {
    case '?':
        return {1, true};
    case '#':
        return {1, character.size() == 1 && character[0] >= '0' && character[0] <= '9'};
    case '[':
        // an empty list stands for no character at all
        if (pattern.substr(at, 2) == "[]") return {2, false};
        return InList(pattern, at, character);
    default:
        break;
    }
    const std::string_view literal = pattern.substr(at, CharacterLength(pattern, at));
    return {literal.size(), literal == character};
}

bool Matches(std::string_view text, std::string_view pattern) {
    std::size_t inText = 0;
    std::size_t inPattern = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (inText < text.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            resume = inText;
            continue;
        }
        const std::size_t length = CharacterLength(text, inText);
        if (inPattern < pattern.size()) {
            const Step step = Next(pattern, inPattern, text.substr(inText, length));
            if (step.takes) {
                inText += length;
                inPattern += step.length;
                continue;
            }
        }
        if (star == std::string_view::npos) return false;
        resume += CharacterLength(text, resume);
        inText = resume;
        inPattern = star + 1;
    }
    while (inPattern < pattern.size() && pattern[inPattern] == '*')
        ++inPattern;
    return inPattern == pattern.size();
}

} // namespace

bool IsLike(std::string_view text, std::string_view pattern) {
    constexpr std::size_t kMostSteps = 200'000'000; // a second or two
    if (!pattern.empty() && text.size() > kMostSteps / pattern.size())
        throw Error(ErrorNumber::TooLarge, "The text is too long to be compared with so long a pattern.");
    return Matches(Folded(text), Folded(pattern));
}

} // namespace jet
