#include "jet/TestDatabase.h"
#include "support/Locales.h"

#include <csignal>
#include <fstream>
#include <iterator>
#include <sys/resource.h>

namespace jet {
namespace {

/// The records of a dBase file as text between bars, read from its bytes.
std::string Records(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (bytes.size() < 32) return "no table";
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
    const std::size_t rows = byte(4) + byte(5) * 256U;
    const std::size_t header = byte(8) + byte(9) * 256U;
    const std::size_t record = byte(10) + byte(11) * 256U;
    std::string text;
    for (std::size_t row = 0; row < rows; ++row) {
        std::size_t at = header + row * record + 1;
        for (std::size_t field = 32; field + 32 < header; field += 32) {
            std::string cell = bytes.substr(at, byte(field + 16));
            at += cell.size();
            cell.erase(0, cell.find_first_not_of(' '));
            cell.erase(cell.find_last_not_of(' ') + 1);
            text += cell + "|";
        }
        text += ";";
    }
    return text;
}

class DbaseTableTest : public ::testing::Test {
  protected:
    DbaseTableTest() : connection(folder.Make("a.mdb")) {
        connection->Execute("CREATE TABLE T (Id LONG, D DOUBLE, Name TEXT(255))");
        connection->Execute("INSERT INTO T VALUES (1, 1, 'x')");
    }
    std::int64_t Export(const std::string& fields) const {
        return connection->Execute("SELECT " + fields + " INTO [dBase IV;database=" + folder.path("") +
                                   "].out.dbf FROM T");
    }
    [[nodiscard]] std::string Exported(const std::string& fields) const {
        std::filesystem::remove(folder.path("out.dbf"));
        Export(fields);
        return Records(folder.path("out.dbf"));
    }

    TestFolder folder;
    std::shared_ptr<Connection> connection;
};

TEST_F(DbaseTableTest, NumbersComeOutAsTheyAre) {
    struct Case {
        const char* value;
        const char* text;
    };
    constexpr Case cases[] = {{"81.47", "81.47000"},
                              {"0.000001", "0.000001"},
                              {"1E15 + 0.5", "1000000000000000.500"},
                              {"-123456789012345680", "-123456789012345680"},
                              {"99999999999999999999.0", ""},
                              {"12345678901234", "12345678901234"},
                              {"1E18 / 1", "1000000000000000000"},
                              {"1 / 3.0", "0.333333333333333"},
                              {"4000000000 * 1", "4000000000"},
                              {"0 - 40000000000", "-40000000000"},
                              {"1E-9", "0.000000001"},
                              {"1E-300", ""},
                              {"1E200", ""}};
    const tessaro::test::CommaLocale comma;
    ASSERT_TRUE(comma.works());
    for (const Case& each : cases) {
        if (*each.text == '\0') {
            std::filesystem::remove(folder.path("out.dbf"));
            try {
                Export(std::string(each.value) + " AS Much");
                ADD_FAILURE() << each.value << " " << Records(folder.path("out.dbf"));
            } catch (const Error& error) {
                EXPECT_EQ(error.number(), ErrorNumber::TypeMismatch);
                EXPECT_NE(std::string(error.what()).find("'Much'"), std::string::npos) << error.what();
            }
            EXPECT_FALSE(std::filesystem::exists(folder.path("out.dbf"))) << each.value;
            EXPECT_FALSE(std::filesystem::exists(folder.path("out.cpg"))) << each.value;
            continue;
        }
        const std::string text = Exported(std::string(each.value) + " AS a");
        EXPECT_EQ(text, std::string(each.text) + "|;") << each.value;
    }
}

TEST_F(DbaseTableTest, NamesThatAreEqualWhenCutAreToldApart) {
    EXPECT_EQ(Exported("1 AS Subpopulation_of_men, 2 AS Subpopulation_of_women, 3 AS [Größe], Null AS n, Name"),
              "1|2|3||x|;");
    std::ifstream stream(folder.path("out.dbf"), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    for (const char* name : {"SUBPOPULAT", "SUBPOPULA1", "GR__"})
        EXPECT_NE(bytes.find(name), std::string::npos) << name;
}

TEST_F(DbaseTableTest, AFullDiskLeavesNoFile) {
    for (int doubled = 0; doubled < 9; ++doubled)
        connection->Execute("INSERT INTO T SELECT Id, D, Name FROM T");
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{20'000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const auto failure = FailureOf([&] { Export("Name, D"); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(failure, ErrorNumber::EngineError);
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.dbf")));
    EXPECT_EQ(Export("Name, D"), 512);
}

} // namespace
} // namespace jet
