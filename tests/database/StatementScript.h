#pragma once

#include <map>
#include <string>
#include <vector>

namespace tessaro::test {

/// One block of a statement script: a statement and what must come of it.
struct ScriptedStatement {
    std::string name;
    std::string on = "working"; ///< "working", "data" or "language"
    std::string sql;
    std::vector<std::string> expectations; ///< the text behind each "=> "
    int line = 0;
};

/// Values that stand for the words in angle brackets.
using Samples = std::map<std::string, std::string>;

/// Reads a script file; an unreadable file or a block without a statement is a test failure.
[[nodiscard]] std::vector<ScriptedStatement> ReadStatementScript(const std::string& path);

/// Puts the samples in; a word in angle brackets without a sample stays as it is.
[[nodiscard]] std::string WithSamples(std::string text, const Samples& samples);

} // namespace tessaro::test
