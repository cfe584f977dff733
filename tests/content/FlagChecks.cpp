#include "content/FlagChecks.h"

namespace tessaro::test {

namespace {

struct FlagRule {
    std::string table;
    std::string truth; ///< when a row T of the table has data
};

std::vector<FlagRule> RulesOf(const std::vector<std::string>& codes) {
    const std::string iusWithData = "(SELECT IUSNId FROM Data)";
    const auto byLink = [&](const std::string& link, const std::string& key) {
        return "EXISTS (SELECT 1 FROM " + link + " L WHERE L." + key + " = T." + key + " AND L.IUSNId IN " +
               iusWithData + ")";
    };
    std::vector<FlagRule> rules = {
        {"Indicator_Unit_Subpop", "T.IUSNId IN " + iusWithData},
        {"TimePeriod", "T.TimePeriodNId IN (SELECT TimePeriodNId FROM Data)"},
        {"Sector", "EXISTS (SELECT 1 FROM Indicator_Sector L JOIN Indicator_Unit_Subpop I USING (IndicatorGId) WHERE "
                   "L.SectorLabel2GId = T.SectorLabel2GId AND I.IUSNId IN " +
                       iusWithData + ")"},
        {"Goal", byLink("Indicator_Goal", "GoalLabel3GId")},
        {"Institution", byLink("Indicator_Institution", "InstitutionLabel2GId")},
        {"Convention", byLink("Indicator_Convention", "ConventionLabel3GId")},
    };
    for (const std::string& code : codes) {
        rules.push_back({"CF_" + code, byLink("Indicator_CF", "CFGId")});
        rules.push_back({"Theme_" + code, byLink("Indicator_Theme", "ThemeGId")});
        rules.push_back({"Source_" + code, "T.SourceNId IN (SELECT SourceNId FROM Data)"});
        rules.push_back({"Area_" + code,
                         "EXISTS (SELECT 1 FROM WithData W WHERE W.AreaID >= T.AreaID AND "
                         "W.AreaID < T.AreaID || 'a' AND substr(W.AreaID, 1, length(T.AreaID)) = T.AreaID)"});
    }
    return rules;
}

} // namespace

std::vector<std::string> WrongFlags(const PlainReader& reader, const std::vector<std::string>& codes) {
    const std::string areas = "WITH WithData AS MATERIALIZED (SELECT AreaID FROM Area_" + codes.front() +
                              " WHERE AreaNId IN (SELECT AreaNId FROM Data) ORDER BY AreaID) ";
    std::vector<std::string> wrong;
    for (const FlagRule& rule : RulesOf(codes)) {
        const long long count = reader.Number(areas + "SELECT count(*) FROM " + rule.table +
                                              " T WHERE (T.DataExists <> 0) <> (" + rule.truth + ")");
        if (count != 0) wrong.push_back(rule.table + ": " + std::to_string(count));
    }
    return wrong;
}

} // namespace tessaro::test
