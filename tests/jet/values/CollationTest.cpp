#include "jet/values/Collation.h"

#include "jet/TestDatabase.h"
#include "jet/values/Catalogue.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

namespace jet {
namespace {

using Texts = std::vector<std::string>;

// Each text is followed by one that sorts behind it; every pair is tried both ways, so the order is a total one on the
// list.
void ExpectRising(const Texts& texts, int (*compare)(std::string_view, std::string_view)) {
    for (std::size_t i = 0; i < texts.size(); ++i)
        for (std::size_t j = 0; j < texts.size(); ++j) {
            const int order = compare(texts[i], texts[j]);
            EXPECT_EQ(i < j, order < 0) << texts[i] << " / " << texts[j];
            EXPECT_EQ(i == j, order == 0) << texts[i] << " / " << texts[j];
        }
}

TEST(CompareText, PutsTextsInAlphabeticalOrder) {
    ExpectRising({"",   " ", "_x", "-x", "(a)", "1",  "10", "2",  "a", "ä", "a b", "ab",
                  "äb", "b", "E",  "é",  "ea",  "Éa", "z",  "zz", "Ω", "Б", "в",   "ع"},
                 CompareText);
}

TEST(CompareText, IgnoresCaseAndNothingElse) {
    const std::pair<const char*, const char*> equal[] = {
        {"Area", "AREA"}, {"École", "ÉCOLE"}, {"привет", "ПРИВЕТ"}, {"", ""}};
    for (const auto& [a, b] : equal)
        EXPECT_EQ(CompareText(a, b), 0) << a << b;
    const std::pair<const char*, const char*> different[] = {{"resume", "résumé"}, {"km2", "km²"},   {"a", "a\x01"},
                                                             {"a", "a "},          {"\xFF", "\xFE"}, {"e", "e\u0301"},
                                                             {"a\u0301", "ab"}};
    for (const auto& [a, b] : different) {
        EXPECT_NE(CompareText(a, b), 0) << a << b;
        EXPECT_EQ(CompareText(a, b) < 0, CompareText(b, a) > 0) << a << b;
    }
}

TEST(CompareValueText, PutsNumbersByTheirSizeBeforeTexts) {
    ExpectRising({"-5", "-.5", "0", "2", "10", "1e3", "", "..", "abc", "x1"}, CompareValueText);
    EXPECT_EQ(CompareValueText("64", " 64.0"), 0);
    EXPECT_EQ(CompareValueText("N/A", "n/a"), 0);
}

// Sorting reads each value once, comparing reads it again and again; both must see one order, ties included.
TEST(SortByValue, HasTheOrderOfTheComparison) {
    const Texts values = {"10",
                          "9",
                          "-5",
                          " 64 ",
                          "64.0",
                          "64",
                          "+64",
                          "6.4e1",
                          "N/A",
                          "n/a",
                          "",
                          "..",
                          "1e999",
                          "-0",
                          "0",
                          "0.000",
                          "abc",
                          "1,5",
                          "12abc",
                          "é",
                          "E",
                          "-.5",
                          "1e-9",
                          "inf",
                          "nan",
                          "9007199254740993",
                          "9007199254740992",
                          "1e15",
                          "\xFF",
                          " ",
                          "-"};
    const TestFolder folder;
    const auto connection = folder.Make("sorted.mdb");
    connection->Execute("CREATE TABLE Data (Id LONG, DataValue TEXT(50))");
    for (std::size_t i = 0; i < values.size(); ++i)
        connection->Execute("INSERT INTO Data (Id, DataValue) VALUES (" + std::to_string(i) + ", '" + values[i] + "')");
    connection->Execute("INSERT INTO Data (Id, DataValue) VALUES (100, Null)");
    const auto idsBy = [&](const std::string& order) {
        std::vector<std::size_t> ids;
        for (Recordset rows = connection->OpenRecordset("SELECT D.Id FROM Data AS D ORDER BY " + order); !rows.atEnd();
             rows.MoveNext())
            ids.push_back(static_cast<std::size_t>(rows.Get(std::size_t{0}).toInteger()));
        return ids;
    };
    std::vector<std::size_t> expected(values.size());
    std::iota(expected.begin(), expected.end(), std::size_t{0});
    const auto compare = [&](std::size_t a, std::size_t b) { return CompareValueText(values[a], values[b]); };
    std::stable_sort(expected.begin(), expected.end(), [&](auto a, auto b) { return compare(a, b) < 0; });
    expected.insert(expected.begin(), 100);
    EXPECT_EQ(idsBy("D.DataValue, D.Id"), expected);
    expected.resize(values.size());
    std::iota(expected.begin(), expected.end(), std::size_t{0});
    std::stable_sort(expected.begin(), expected.end(), [&](auto a, auto b) { return compare(a, b) > 0; });
    expected.push_back(100);
    EXPECT_EQ(idsBy("D.DataValue DESC, D.Id"), expected);
}

TEST(CompareValueText, OrdersEveryThreeValuesAlike) {
    const std::vector<std::string> values = {
        "nan",  "NaN", "-nan", "inf", "-inf", "INF",      "0x1F", "0x",  "1e5", "1e999", "-1",       "-0",
        "0",    "10",  "9",    "9 ",  "",     " ",        "n/a",  "N/A", "1,5", "1.5.2", "é",        "e",
        "\xFF", "-",   "+",    "1e",  "..",   "infinity", "1_0",  "١",   "-.5", "#",     "a\xCC\x81"};
    const auto sign = [](int order) { return static_cast<int>(order > 0) - static_cast<int>(order < 0); };
    for (const std::string& a : values) {
        EXPECT_EQ(CompareValueText(a, a), 0) << a;
        for (const std::string& b : values) {
            const int ab = sign(CompareValueText(a, b));
            EXPECT_EQ(ab, -sign(CompareValueText(b, a))) << a << " " << b;
            for (const std::string& c : values) {
                const int bc = sign(CompareValueText(b, c));
                const int ac = sign(CompareValueText(a, c));
                if (ab <= 0 && bc <= 0) {
                    EXPECT_LE(ac, 0) << a << " " << b << " " << c;
                }
                if (ab == 0 && bc == 0) {
                    EXPECT_EQ(ac, 0) << a << " " << b << " " << c;
                }
            }
        }
    }
}

TEST(SortByValue, TopTakesEqualNumbersWrittenDifferently) {
    const TestFolder folder;
    const auto connection = folder.Make("top.mdb");
    connection->Execute("CREATE TABLE Data (Id LONG, DataValue TEXT(50))");
    int id = 0;
    for (const char* value : {"10", "2", "x", "2.0", "30"})
        connection->Execute("INSERT INTO Data (Id, DataValue) VALUES (" + std::to_string(++id) + ", '" + value + "')");
    EXPECT_EQ(RowsOf(*connection, "SELECT Count(*) FROM (SELECT TOP 1 Id FROM Data ORDER BY DataValue) AS T"), "2;");
    EXPECT_EQ(RowsOf(*connection, "SELECT DISTINCT DataValue FROM Data ORDER BY DataValue DESC"), "x;30;10;2;");
}

TEST(Case, ChangesOverAllScripts) {
    EXPECT_EQ(UpperCased("straße é я"), "STRASSE É Я");
    EXPECT_EQ(LowerCased("ÉCOLE ID"), "école id");
    EXPECT_EQ(UpperCased("\xFF"), UpperCased("\xFF"));
    EXPECT_EQ(Folded("ÄREA"), Folded("ärea"));
    EXPECT_NE(Folded("area"), Folded("ärea"));
}

TEST(Catalogue, NamesIgnoreCase) {
    EXPECT_TRUE(SameName("FootNote", "footNOTE"));
    EXPECT_TRUE(SameName("Größe", "GRÖSSE") == false);
    EXPECT_TRUE(SameName("Größe", "GRÖßE"));
    EXPECT_FALSE(SameName("Area", "Area_en"));
}

TEST(Catalogue, DeclarationsKeepTheKindOfAColumn) {
    using enum ColumnType;
    for (const ColumnType type : {Long, Integer, Double, Text, Memo, YesNo, Counter, Guid, DateTime, Binary})
        EXPECT_EQ(TypeOfDeclaration(DeclaredType(type)), type) << DeclaredType(type);
    EXPECT_EQ(TypeOfDeclaration(DeclaredType(Text, 50)), Text);
    EXPECT_EQ(TypeOfDeclaration(""), Unknown);
    EXPECT_EQ(TypeOfDeclaration("varchar(20)"), Text);
}

TEST(Catalogue, KindGoesWithNameAndType) {
    EXPECT_EQ(KindOfColumn("DataValue", ColumnType::Text), CompareKind::ValueText);
    EXPECT_EQ(KindOfColumn("Datavalue", ColumnType::Double), CompareKind::Number);
    EXPECT_EQ(KindOfColumn("AreaId", ColumnType::Text), CompareKind::Identifier);
    EXPECT_EQ(KindOfColumn("SubpopGID", ColumnType::Text), CompareKind::Identifier);
    EXPECT_EQ(KindOfColumn("AreaName", ColumnType::Memo), CompareKind::Text);
}

} // namespace
} // namespace jet
