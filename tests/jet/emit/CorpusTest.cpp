#include "TestPlaces.h"
#include "jet/FixedCatalogue.h"
#include "jet/functions/Functions.h"
#include "jet/values/Error.h"

#include <fstream>

namespace jet::test {

std::vector<std::string> CorpusLines(const std::string& file) {
    std::vector<std::string> lines;
    std::ifstream in(TESSARO_TESTS "/jet/data/" + file);
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line.front() != '#') lines.push_back(line);
    EXPECT_FALSE(lines.empty()) << file;
    return lines;
}

namespace {

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

class CorpusTest : public ::testing::Test {
  protected:
    CorpusTest() {
        for (const std::string& line : CorpusLines("schema.txt"))
            catalogue_.define(line);
    }
    FixedCatalogue catalogue_;
};

TEST_F(CorpusTest, SqliteTakesEveryTranslation) {
    for (const std::string& line : CorpusLines("statements.txt")) {
        SCOPED_TRACE(line);
        Translation translation;
        ASSERT_NO_THROW({
            try {
                translation = Translate(line, catalogue_);
            } catch (const Error& error) {
                ADD_FAILURE() << error.what();
            }
        });
        for (const PivotPlan& plan : translation.pivot) {
            EXPECT_EQ(catalogue_.complaint(plan.valuesSql), "") << plan.valuesSql;
            const std::string column = Replaced(Replaced(plan.column, "%VALUE%", "'1'"), "%NAME%", "\"1\"");
            EXPECT_EQ(catalogue_.complaint(plan.head + column + plan.tail), "") << plan.head << column << plan.tail;
        }
        if (!translation.statements.empty()) {
            sqlite3_exec(catalogue_.database(), "SAVEPOINT trial", nullptr, nullptr, nullptr);
            for (const std::string& sql : translation.statements) {
                EXPECT_EQ(catalogue_.complaint(sql), "") << sql;
                if (translation.statements.size() > 1) catalogue_.run(sql);
            }
            sqlite3_exec(catalogue_.database(), "ROLLBACK TO trial; RELEASE trial", nullptr, nullptr, nullptr);
        }
    }
}

// Whatever is cut off or damaged, the answer is a translation or an Error, never a crash.
TEST_F(CorpusTest, DamagedStatementsFailInOrder) {
    std::size_t refused = 0;
    for (const std::string& line : CorpusLines("statements.txt")) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            std::string changed = line;
            changed[i] = "'\"[](),.*= 0a"[i % 13];
            for (const std::string& damaged : {line.substr(0, i), changed, line.substr(i)}) {
                try {
                    (void)Translate(damaged, catalogue_);
                } catch (const Error& error) {
                    ++refused;
                    ASSERT_STRNE(error.what(), "");
                }
            }
        }
    }
    EXPECT_GT(refused, 1000U);
}

} // namespace

} // namespace jet::test
