// Makes a database of a given size, with made-up contents, for tests and measurements.
#include "RandomDatabase.h"

#include <charconv>
#include <exception>
#include <iostream>
#include <map>
#include <optional>
#include <string_view>

namespace {

constexpr const char* kUsage =
    "usage: make-database FILE [--areas N] [--ius N] [--periods N] [--sources N] [--rows N] [--seed S]\n"
    "                     [--languages en,fr]\n";

template <typename Number> bool ReadNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

std::vector<std::string> SplitAtCommas(std::string_view text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == ',')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

bool ReadOption(std::string_view name, std::string_view value, tessaro::content::RandomDatabaseSize& size) {
    const std::map<std::string_view, int*> counts = {
        {"--areas", &size.areas}, {"--ius", &size.ius}, {"--periods", &size.periods}, {"--sources", &size.sources}};
    if (const auto count = counts.find(name); count != counts.end()) return ReadNumber(value, *count->second);
    if (name == "--rows") return ReadNumber(value, size.rows) && size.rows >= 0;
    if (name == "--seed") return ReadNumber(value, size.seed);
    if (name != "--languages") return false;
    size.languages = SplitAtCommas(value);
    return true;
}

int Usage(const std::string& problem) {
    std::cerr << (problem.empty() ? "" : "make-database: " + problem + "\n") << kUsage;
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    std::optional<std::string> file;
    tessaro::content::RandomDatabaseSize size;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument.starts_with("--")) {
            if (i + 1 >= argc || !ReadOption(argument, argv[i + 1], size))
                return Usage("can't use " + std::string(argument));
            ++i;
        } else if (file) {
            return Usage("one file at a time");
        } else {
            file = argument;
        }
    }
    if (!file) return Usage({});
    if (const std::string problem = ProblemOf(size); !problem.empty()) return Usage(problem);
    try {
        tessaro::content::MakeRandomDatabase(*file, size);
    } catch (const std::exception& error) {
        std::cerr << "make-database: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
