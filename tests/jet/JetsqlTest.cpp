#include "TestPlaces.h"
#include "jet/TestDatabase.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sys/wait.h>

namespace jet {
namespace {

class JetsqlTest : public ::testing::Test {
  protected:
    struct Outcome {
        int status = -1;
        std::string output; ///< both streams
    };

    [[nodiscard]] static Outcome Run(const std::string& arguments) {
        Outcome outcome;
        FILE* const pipe = ::popen((std::string("'" TESSARO_PROGRAMS "/jetsql' ") + arguments + " 2>&1").c_str(), "r");
        if (pipe == nullptr) return outcome;
        std::array<char, 4096> bytes{};
        for (std::size_t read = 0; (read = std::fread(bytes.data(), 1, bytes.size(), pipe)) > 0;)
            outcome.output.append(bytes.data(), read);
        outcome.status = WEXITSTATUS(::pclose(pipe));
        return outcome;
    }
    [[nodiscard]] std::string File() const { return "--password p '" + folder.path("a.mdb") + "' "; }

    TestFolder folder;
};

TEST_F(JetsqlTest, WrongUseIsExitStatusTwo) {
    for (const char* arguments : {"", "--nonsense x", "--password", "file-without-statement"})
        EXPECT_EQ(Run(arguments).status, 2) << arguments;
    EXPECT_EQ(Run("--help").status, 0);
}

TEST_F(JetsqlTest, ErrorsShowNumberAndText) {
    EXPECT_EQ(Run(File() + "'SELECT 1'").status, 1);
    EXPECT_EQ(Run("--create " + File()).status, 0);
    const Outcome missing = Run(File() + "'SELECT a FROM Nothing'");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output.substr(0, 10), "0x80040E37");
    EXPECT_EQ(Run("--password wrong '" + folder.path("a.mdb") + "' 'SELECT 1'").output.substr(0, 10), "0x80040E4D");
}

TEST_F(JetsqlTest, ThePasswordComesFromAFileOrTheEnvironment) {
    EXPECT_EQ(Run("--create " + File()).status, 0);
    std::ofstream(folder.path("good")) << "p\nmore";
    std::ofstream(folder.path("bad")) << "q";
    const std::string file = "'" + folder.path("a.mdb") + "' 'SELECT 1'";
    const auto fileOption = [&](const char* name) { return "--password-file '" + folder.path(name) + "' " + file; };
    EXPECT_EQ(Run(fileOption("good")).status, 0);
    EXPECT_EQ(Run(fileOption("bad")).status, 1);
    EXPECT_EQ(Run(fileOption("none")).status, 2);
    ::setenv("JETSQL_PASSWORD", "p", 1);
    EXPECT_EQ(Run(file).status, 0);
    EXPECT_EQ(Run(fileOption("bad")).status, 1); // what is said here and now counts
    ::unsetenv("JETSQL_PASSWORD");
    EXPECT_EQ(Run(file).status, 1);
}

TEST_F(JetsqlTest, RunsStatementsInOrderOnOneConnection) {
    const Outcome outcome = Run("--create " + File() +
                                "'CREATE TABLE T (Id LONG, Size DOUBLE, Name TEXT(20), Sure YESNO)' "
                                "\"INSERT INTO T (Id, Size, Name, Sure) VALUES (64, 0.250, 'a', True)\" "
                                "'INSERT INTO T (Id, Sure) VALUES (1, False)' "
                                "'SELECT Id, Size, Name, Sure FROM T ORDER BY Id DESC' "
                                "'SELECT Id INTO U FROM T' 'SELECT Count(*) AS n FROM U'");
    EXPECT_EQ(outcome.output, "Id\tSize\tName\tSure\n64\t0.25\ta\t-1\n1\t\t\t0\nn\n2\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(JetsqlTest, ExplainsWithoutRunning) {
    const std::string distinct = "'SELECT DISTINCT T.Id FROM T INNER JOIN U ON T.Id = U.Id' ";
    EXPECT_EQ(Run("--create " + File() + "'CREATE TABLE T (Id LONG)' 'CREATE TABLE U (Id LONG)'").status, 0);
    const Outcome with = Run("--explain " + File() + distinct + "'DELETE * FROM T'");
    EXPECT_EQ(with.status, 0);
    EXPECT_EQ(with.output.substr(0, with.output.find('\n')), "steps: distinct-joins-to-tests");
    EXPECT_NE(with.output.find(" IN (SELECT "), std::string::npos) << with.output;
    EXPECT_NE(with.output.find("steps: none\nDELETE FROM"), std::string::npos) << with.output;
    const Outcome without = Run("--explain --no=distinct-joins-to-tests " + File() + distinct);
    EXPECT_EQ(without.output.substr(0, without.output.find('\n')), "steps: none");
    EXPECT_EQ(without.output.find(" IN (SELECT "), std::string::npos) << without.output;
    EXPECT_EQ(Run("--no=nothing " + File() + distinct).status, 1);
}

TEST_F(JetsqlTest, StopsAtTheFirstFailure) {
    const Outcome outcome = Run("--create " + File() + "'DROP TABLE None' 'CREATE TABLE T (a LONG)'");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(Connection::Open(folder.path("a.mdb"), "p")->Tables().empty());
}

} // namespace
} // namespace jet
