// Runs random statements against the engine, and looks after each that fails whether the file is as it was.
#include "jet/RandomStatements.h"

#include <charconv>
#include <filesystem>
#include <iostream>
#include <string_view>

namespace {

template <typename Number> bool Read(std::string_view text, Number& number) {
    return std::from_chars(text.data(), text.data() + text.size(), number).ptr == text.data() + text.size();
}

} // namespace

int main(int argc, char** argv) {
    std::uint64_t seed = 0;
    int seconds = 0;
    if (argc != 4 || !Read(argv[2], seed) || !Read(argv[3], seconds)) {
        std::cerr << "usage: random-statements FOLDER SEED SECONDS\n";
        return 2;
    }
    const auto file = std::filesystem::path(argv[1]) / "random.mdb";
    const jet::RandomRun run = jet::RunRandomStatements(file.string(), seed, std::chrono::seconds(seconds));
    std::cout << "statements " << run.statements << "\nfailed " << run.failed << '\n';
    if (!run.fault.empty()) std::cout << "fault " << run.fault << '\n';
    return run.fault.empty() ? 0 : 1;
}
