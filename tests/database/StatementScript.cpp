#include "StatementScript.h"

#include <fstream>
#include <gtest/gtest.h>

namespace tessaro::test {

std::vector<ScriptedStatement> ReadStatementScript(const std::string& path) {
    std::vector<ScriptedStatement> blocks;
    std::ifstream file(path);
    EXPECT_TRUE(file.is_open()) << path;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.starts_with("--- ")) {
            blocks.push_back({line.substr(4), "working", {}, {}, number});
        } else if (line.empty() || line.front() == '#') {
            continue;
        } else if (blocks.empty()) {
            ADD_FAILURE() << path << ":" << number << ": text before the first block";
        } else if (line.starts_with("on: ")) {
            blocks.back().on = line.substr(4);
        } else if (line.starts_with("=> ")) {
            blocks.back().expectations.push_back(line.substr(3));
        } else {
            EXPECT_TRUE(blocks.back().sql.empty()) << path << ":" << number << ": second statement in a block";
            blocks.back().sql = line;
        }
    }
    for (const ScriptedStatement& block : blocks) {
        EXPECT_FALSE(block.sql.empty()) << path << ": " << block.name << " has no statement";
        EXPECT_FALSE(block.expectations.empty()) << path << ": " << block.name << " expects nothing";
    }
    return blocks;
}

std::string WithSamples(std::string text, const Samples& samples) {
    for (const auto& [word, value] : samples) {
        const std::string bracketed = "<" + word + ">";
        for (std::size_t at = text.find(bracketed); at != std::string::npos;
             at = text.find(bracketed, at + value.size()))
            text.replace(at, bracketed.size(), value);
    }
    return text;
}

} // namespace tessaro::test
