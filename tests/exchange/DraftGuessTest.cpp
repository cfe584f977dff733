#include "exchange/DraftGuess.h"

#include "formats/CsvReader.h"

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

/// What is guessed of a text: rows above the heads, head rows, the roles of columns and head rows, the form of numbers.
std::string Guessed(const std::string& text, char delimiter = ',') {
    static constexpr std::string_view letters = "-TanIUsSVF"; // in the order of the roles
    CsvReader reader(std::make_unique<TextInMemory>(text), delimiter);
    ImportDraft draft;
    GuessColumns(SampleOf(reader), draft);
    std::string guess = std::to_string(draft.skippedRows) + "+" + std::to_string(draft.headRows) + " ";
    for (const ColumnRole& column : draft.columns)
        guess += letters[At(column.role)];
    guess += ' ';
    for (const Role role : draft.headTells)
        guess += letters[At(role)];
    if (draft.dates != DateTells::Day) guess += draft.dates == DateTells::Month ? " months" : " years";
    if (draft.repeatsAbove) guess += " repeats";
    return guess + ' ' + draft.numbers.decimal;
}

TEST(DraftGuessTest, SeesWhatColumnsMean) {
    EXPECT_EQ(Guessed("Country,Year,Life expectancy\nKenya,2001,51.2\nChad,2001,48.9\n"), "0+1 nTV I .");
    // The file of the World Bank: rows above the heads, codes, periods across, a blank last column.
    EXPECT_EQ(Guessed("Data Source,World Development Indicators,\nLast Updated Date,2020-01-01,\nCountry Name,Country "
                      "Code,Indicator Name,Indicator Code,2000,2001,\nAruba,ABW,Population,SP.POP,,90853.5,\n"
                      "Angola,AGO,Population,SP.POP,16395473.5,16945753,\nKenya,KEN,Population,SP.POP,1.5,2.5,\n"),
              "2+1 naI-VV- T .");
    EXPECT_EQ(Guessed("DATAFLOW,REF_AREA,INDICATOR,TIME_PERIOD,OBS_VALUE,UNIT_MEASURE\nX:Y(1),KE,POP,2001,1.5,PS\n"),
              "0+1 -aITVU - .");
    EXPECT_EQ(Guessed("Pays;Année;Valeur;Unité\nKenya;2001;1,5;%\nTchad;2001;1.234,5;%\n", ';'), "0+1 nTVU - ,");
    EXPECT_EQ(Guessed("Страна;Год;Значение\nКения;2001;1,5\nЧад;2002;2,5\n", ';'), "0+1 nTV - ,");
    EXPECT_EQ(Guessed("Place,Wheat,Maize\nNorth,1.5,2.5\nSouth,3.5,4.5\n"), "0+1 nVV I .");
    EXPECT_EQ(Guessed(",Wheat,,Maize,\nPlace,2001,2002,2001,2002\nNorth,1.5,2.5,3.5,4.5\n"), "0+2 nVVVV IT .");
    EXPECT_EQ(Guessed("Kenya,2001,1.5\nChad,2001,2.5\n"), "0+0 nTV  .");
    // Concepts with their names, sex and age together, a number beside its text.
    EXPECT_EQ(
        Guessed("REF_AREA: Area,MEASURE: Measure,TIME_PERIOD: Time,OBS_VALUE: Value\nKE: Kenya,P: Pop,2001,1.5\n"),
        "0+1 aITV - .");
    EXPECT_EQ(
        Guessed("Country,Year,Indicator,Sex,Age,FactValueNumeric,Value\nKenya,2001,Height,Men,0-4,1.5,1.5 [1-2]\n"),
        "0+1 nTIssV- - .");
    // A table of a presentation: indicators over units over periods; groups of people over periods.
    EXPECT_EQ(Guessed(",Births,,Literacy,\n,Number,,Percent,\nArea,2000,2005,2000,2005\nIndia,1,2,61.5,..\n"),
              "0+3 nVVVV IUT .");
    EXPECT_EQ(Guessed(",Boys,,Girls,\n,2001,2002,2001,2002\nKenya,1,2,3.5,4\n"), "0+2 nVVVV sT .");
    EXPECT_EQ(Guessed("Country,1990 [YR1990],1991 [YR1991],Estimates after\nKenya,1.5,2,2021\n"), "0+1 nVV- T .");
    for (const char* text : {"", "one\n", "\n\n", ",,,\n", "a,b\n"})
        Guessed(text); // nothing to see, and nothing happens
}

TEST(DraftGuessTest, SeesAreasAcrossMergedRowsAndDates) {
    EXPECT_EQ(Guessed("Year,Iran,\"Korea, Rep.\"\n2001,1.5,2.5\n2002,3.5,4.5\n"), "0+1 TVV n .");
    EXPECT_EQ(Guessed("Indicator,Year,North,South\nWheat,2001,1.5,2.5\nMaize,2001,3.5,4.5\n"), "0+1 ITVV n .");
    EXPECT_EQ(Guessed("Year,Wheat,Maize\n2001,1.5,2.5\n2002,3.5,4.5\n"), "0+1 TVV I .") << "of one area";
    EXPECT_EQ(Guessed(",Kenya,,Chad,\nIndicator,2001,2002,2001,2002\nWheat,1,2,3,4.5\n"), "0+2 IVVVV nT .");
    EXPECT_EQ(Guessed("Country,Sex,2001,2002\nKenya,Male,1,2\n,Female,3,4.5\nChad,Male,5,6\n,Female,7,8\n"),
              "0+1 nsVV T repeats .");
    EXPECT_EQ(Guessed("Country,Sex,Wheat,\n,,2001,2002\nKenya,Male,1.5,2\nKenya,Female,3,4.5\n"), "0+2 nsVV IT .");
    EXPECT_EQ(Guessed("Country,Year,Value\nKenya,2001,1.5\nChad,2001,2.5\n,,3\n,,4\n"), "0+1 nTV - .");
    EXPECT_EQ(Guessed("Country,Month,Value\nKenya,2001-01-01,1.5\nKenya,2001-02-01,2.5\n"), "0+1 nTV - months .");
    EXPECT_EQ(Guessed("Country,2001-12-31,2002-12-31\nKenya,1.5,2.5\n"), "0+1 nVV T years .");
}

} // namespace
} // namespace tessaro::test
