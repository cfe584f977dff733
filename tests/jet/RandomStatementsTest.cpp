#include "jet/RandomStatements.h"

#include "jet/TestDatabase.h"

#include <random>

namespace jet {
namespace {

TEST(RandomStatementsTest, AFailedStatementLeavesTheFileAsItWas) {
    const std::uint64_t seed = std::random_device{}();
    const TestFolder folder;
    const RandomRun run = RunRandomStatements(folder.path("random.mdb"), seed, std::chrono::seconds(3));
    EXPECT_EQ(run.fault, "") << "seed " << seed << ", statement " << run.statements;
    EXPECT_GT(run.statements, 20) << "seed " << seed;
    EXPECT_GT(run.statements, run.failed) << "seed " << seed;
    RecordProperty("statements", std::to_string(run.statements));
    RecordProperty("failed", std::to_string(run.failed));
}

} // namespace
} // namespace jet
