#include "exchange/Observations.h"

#include "formats/CsvReader.h"

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

/// Values as "row time;area;indicator;unit=value", or the row with its fault.
std::vector<std::string> ValuesOf(const std::string& text, const ImportDraft& draft) {
    CsvReader reader(std::make_unique<TextInMemory>(text), ',');
    Observations observations(reader, draft);
    std::vector<std::string> values;
    Observation one;
    while (observations.Next(one)) {
        std::string line = std::to_string(one.row);
        if (one.isRagged) line += " ragged";
        if (one.fault != RowFault::None) line += " fault";
        if (!one.isRagged && one.fault == RowFault::None) {
            line += ' ';
            for (const Role role : {Role::Time, Role::AreaName, Role::Indicator})
                line.append(one.texts[At(role)]).append(";");
            line.append(one.texts[At(Role::Unit)]).append("=").append(one.texts[At(Role::Value)]);
        }
        values.push_back(line);
    }
    return values;
}

ImportDraft Draft(std::initializer_list<ColumnRole> columns, std::vector<Role> headTells = {Role::LeftOut}) {
    ImportDraft draft;
    draft.columns = columns;
    draft.headRows = static_cast<int>(headTells.size());
    draft.headTells = std::move(headTells);
    draft.constants[At(Role::Unit)] = QStringLiteral("Number");
    return draft;
}

TEST(ObservationsTest, TakesLongAndWideTablesApart) {
    const ImportDraft longDraft = Draft({{QStringLiteral("Year"), Role::Time},
                                         {QStringLiteral("Country"), Role::AreaName},
                                         {QStringLiteral("x"), Role::LeftOut},
                                         {QStringLiteral("GDP"), Role::Value}});
    EXPECT_THAT(ValuesOf("Country,Year,x,GDP\nKenya,2001,-,5\n,,,\nChad,2002,,..\n", longDraft),
                ElementsAre("2 2001;Kenya;;Number=5", "4 2002;Chad;;Number=.."));

    const ImportDraft joined = Draft({{QStringLiteral("Year"), Role::Time},
                                      {QStringLiteral("Quarter"), Role::Time},
                                      {QStringLiteral("Item"), Role::Indicator},
                                      {QStringLiteral("Part"), Role::Indicator},
                                      {QStringLiteral("V"), Role::Value}});
    EXPECT_THAT(ValuesOf("Year,Quarter,Item,Part,V\n2001,Q1,Wheat,bread,5\n2002,,'-Rice,,6\n", joined),
                ElementsAre("2 2001 Q1;;Wheat, bread;Number=5", "3 2002;;-Rice;Number=6"));

    ImportDraft wide = Draft({{QStringLiteral("Country"), Role::AreaName},
                              {QStringLiteral("2001"), Role::Value},
                              {QStringLiteral("2002"), Role::Value}},
                             {Role::Time});
    EXPECT_THAT(ValuesOf("Country,2001,2002,2003,Note\nKenya,1,2,3,n\n", wide),
                ElementsAre("2 2001;Kenya;;Number=1", "2 2002;Kenya;;Number=2", "2 2003;Kenya;;Number=3"));
    wide.skippedRows = 1;
    wide.lastRow = 3;
    EXPECT_THAT(ValuesOf("A title\nCountry,2001,2002\nKenya,1,2\nChad,3,4\n", wide),
                ElementsAre("3 2001;Kenya;;Number=1", "3 2002;Kenya;;Number=2"));
}

TEST(ObservationsTest, RepeatsWhatIsAboveBlankCells) {
    ImportDraft draft = Draft({{QStringLiteral("Country"), Role::AreaName},
                               {QStringLiteral("Item"), Role::Indicator},
                               {QStringLiteral("Year"), Role::Time},
                               {QStringLiteral("V"), Role::Value}});
    draft.repeatsAbove = true;
    EXPECT_THAT(
        ValuesOf("Country,Item,Year,V\n,,2000,0\nKenya,Wheat,2001,1\n,,2002,2\n,Maize,,3\nChad,,2001,4\n", draft),
        ElementsAre("2 2000;;;Number=0", "3 2001;Kenya;Wheat;Number=1", "4 2002;Kenya;Wheat;Number=2",
                    "5 2002;Kenya;Maize;Number=3", "6 2001;Chad;Maize;Number=4"));
}

// Indicators over periods, the upper cells merged.
TEST(ObservationsTest, ReadsHeadsOfSeveralRows) {
    const ImportDraft draft = Draft({{QStringLiteral("Country"), Role::AreaName},
                                     {QStringLiteral("GDP / 2001"), Role::Value},
                                     {QStringLiteral("GDP / 2002"), Role::Value},
                                     {QStringLiteral("Debt / 2001"), Role::Value}},
                                    {Role::Indicator, Role::Time});
    EXPECT_THAT(ValuesOf(",GDP,,Debt\nCountry,2001,2002,2001\nKenya,1,2,3\n", draft),
                ElementsAre("3 2001;Kenya;GDP;Number=1", "3 2002;Kenya;GDP;Number=2", "3 2001;Kenya;Debt;Number=3"));
}

TEST(ObservationsTest, TellsRowsThatDoNotFitTheHeads) {
    const ImportDraft draft = Draft({{QStringLiteral("Year"), Role::Time}, {QStringLiteral("Value"), Role::Value}});
    EXPECT_THAT(ValuesOf("Year,Value,More\n2001,1\n2002\n2003,3,x,,\n2004,4,x,y\n2005,\"5\n", draft),
                ElementsAre("2 2001;;;Number=1", "3 ragged", "4 2003;;;Number=3", "5 ragged", "6 fault"));
}

TEST(ObservationsTest, KeepsADraftAsLines) {
    ImportDraft draft = Draft({{QStringLiteral("Ann\u00E9e = ; %\n"), Role::Time}, {QString(), Role::Value}},
                              {Role::Indicator, Role::Time});
    draft.kind = FileKind::Workbook;
    draft.csv = {"windows-1252", '\t'};
    draft.numbers = {',', ' '};
    draft.sheet = QStringLiteral("Blatt 1=2");
    draft.skippedRows = 3;
    draft.lastRow = 99;
    draft.sector = QStringLiteral("Economy");
    draft.makesAreas = true;
    draft.parentArea = QStringLiteral("AFR");
    draft.areas = {{QStringLiteral("Congo; Rep."), QStringLiteral("AFRCOG")}, {QStringLiteral("World"), QString()}};
    ImportDraft read;
    ASSERT_TRUE(ReadDraft(WrittenDraft(draft), read));
    EXPECT_EQ(read, draft);
    for (const char* text : {"", "nothing", "kind=no-such\n", "kind=csv\ncolumn=wrong;x\n", "kind=csv\ndelimiter=ab\n",
                             "kind=csv\nhead-rows=-1\n"})
        EXPECT_FALSE(ReadDraft(QString::fromLatin1(text), read)) << text;
    EXPECT_EQ(read, draft);
}

} // namespace
} // namespace tessaro::test
