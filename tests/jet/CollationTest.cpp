#include "jet/Collation.h"

#include "jet/Catalogue.h"

#include <gtest/gtest.h>
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
