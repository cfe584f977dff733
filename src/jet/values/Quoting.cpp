#include "jet/values/Quoting.h"

namespace jet {

namespace {

std::string Quoted(std::string_view text, char mark) {
    std::string quoted(1, mark);
    for (const char c : text) {
        quoted += c;
        if (c == mark) quoted += c;
    }
    return quoted += mark;
}

} // namespace

std::string QuotedName(std::string_view name) {
    return Quoted(name, '"');
}

std::string QuotedText(std::string_view text) {
    return Quoted(text, '\'');
}

} // namespace jet
