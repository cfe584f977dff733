#include "formats/CountryCodes.h"
#include "formats/CsvLook.h"
#include "formats/JsonStatReader.h"
#include "formats/PxReader.h"
#include "formats/ReadError.h"
#include "formats/ReadRows.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

using TableFilesTest = FilesTest;

constexpr auto kPx = "CHARSET=\"ANSI\";\nAXIS-VERSION=\"2000\";\nLANGUAGE=\"sv\";\nMATRIX=\"BE01\";\n"
                     "CONTENTS=\"Popu\"\n\"lation\";\nUNITS=\"persons\";\nSTUB=\"Region\";\nSTUB[en]=\"Area\";\n"
                     "HEADING=\"Sex\",\"Year\";\nVALUES(\"Region\")=\"Malm\xF6\",\"Lund\";\n"
                     "VALUES[en](\"Area\")=\"x\",\"y\";\nVALUES(\"Sex\")=\"men\",\"women\";\n"
                     "VALUES(\"Year\")=\"2001\",\"2002\";\nTIMEVAL(\"Year\")=TLIST(A1,\"2001\"-\"2002\");\n"
                     "CODES(\"Region\")=\"1280\",\"1281\";\nSOURCE=\"Census; 2001\";\n"
                     "DATA=\n1 2.5 \"..\" 4\n5 6 7 8;\n";

TEST_F(TableFilesTest, ReadsPx) {
    PxReader reader(Write(kPx));
    EXPECT_THAT(RowsOf(reader), ElementsAre("Region|Region (code)|Sex|Year|CONTENTS|UNITS|SOURCE|VALUE",
                                            "Malmö|1280|men|2001|Population|persons|Census; 2001|1",
                                            "Malmö|1280|men|2002|Population|persons|Census; 2001|2.5",
                                            "Malmö|1280|women|2001|Population|persons|Census; 2001|..",
                                            "Malmö|1280|women|2002|Population|persons|Census; 2001|4",
                                            "Lund|1281|men|2001|Population|persons|Census; 2001|5",
                                            "Lund|1281|men|2002|Population|persons|Census; 2001|6",
                                            "Lund|1281|women|2001|Population|persons|Census; 2001|7",
                                            "Lund|1281|women|2002|Population|persons|Census; 2001|8"));
}

TEST_F(TableFilesTest, KnowsWhatPxSaysOfItsVariables) {
    PxReader reader(
        Write("CONTVARIABLE=\"What\";STUB=\"Land\",\"What\",\"Sex\";HEADING=\"Year\";VALUES(\"Land\")=\"A\";"
              "CODES(\"Land\")=\"1\";MAP(\"Land\")=\"m\";VALUES(\"What\")=\"Births\",\"Rate\";VALUES(\"Sex\")="
              "\"x\";VALUES(\"Year\")=\"2001\";TIMEVAL(\"Year\")=TLIST(A1);UNITS(\"Births\")=\"number\";"
              "UNITS(\"Rate\")=\"per cent\";DATA=1 2;"));
    EXPECT_THAT(RowsOf(reader), ElementsAre("Land|Land (code)|What|Sex|Year|CONTENTS|UNITS|SOURCE|VALUE",
                                            "A|1|Births|x|2001||number||1", "A|1|Rate|x|2001||per cent||2"));
    EXPECT_THAT(reader.Kinds(), ElementsAre(ColumnKind::Area, ColumnKind::AreaCode, ColumnKind::Indicator,
                                            ColumnKind::Dimension, ColumnKind::Time));
}

TEST_F(TableFilesTest, TakesKeyedTablesApart) {
    const QString file = Write("freq,unit,geo\\TIME_PERIOD\t2001 \t2002 \nA,PC,DE\t7.9 b\t: \nA,PC\t: c\t8.7 bp\n");
    const CsvForm form = FindCsvForm(file);
    EXPECT_EQ(form.delimiter, '\t');
    const auto reader = OpenCsv(file, form);
    EXPECT_THAT(RowsOf(*reader), ElementsAre("freq|unit|geo|2001|2002", "A|PC|DE|7.9|:", "A|PC||:|8.7"));
    EXPECT_THAT(reader->Kinds(), SizeIs(3));
    EXPECT_THAT(RowsOf(*OpenCsv(Write("a,b\tc\n1 b\t2 b\n"), {"UTF-8", '\t'})), ElementsAre("a,b|c", "1 b|2 b"));
}

TEST_F(TableFilesTest, ReadsPxWithKeys) {
    PxReader reader(Write("STUB=\"Area\";HEADING=\"Year\";VALUES(\"Area\")=\"A\",\"B\",\"C\";CODES(\"Area\")=\"1\","
                          "\"2\",\"3\";VALUES(\"Year\")=\"2001\",\"2002\";KEYS(\"Area\")=CODES;DATA=\n\"3\",1,2\n"
                          "\"1\",5 6;"));
    EXPECT_THAT(RowsOf(reader), ElementsAre("Area|Area (code)|Year|CONTENTS|UNITS|SOURCE|VALUE", "C|3|2001||||1",
                                            "C|3|2002||||2", "A|1|2001||||5", "A|1|2002||||6"));
}

TEST_F(TableFilesTest, EndsWherePxIsCut) {
    const QByteArray whole(kPx);
    std::vector<std::string> last;
    for (qsizetype bytes = 0; bytes <= whole.size(); ++bytes) {
        try {
            PxReader reader(Write(whole.left(bytes)));
            last = RowsOf(reader);
        } catch (const ReadError&) {
            EXPECT_LT(bytes, whole.indexOf("DATA=") + 5 + 20);
        }
    }
    EXPECT_THAT(last, SizeIs(9));
    PxReader cut(Write(whole.left(whole.indexOf("5 6 7 8"))));
    const std::vector<std::string> rows = RowsOf(cut);
    ASSERT_THAT(rows, SizeIs(6));
    EXPECT_THAT(rows.back(), testing::EndsWith("[cut]"));
}

constexpr auto kJsonStat = R"({"version":"2.0","class":"dataset","source":"Office","id":["geo","time","metric"],
"size":[2,2,1],"dimension":{"geo":{"label":"Area","category":{"index":{"FR":1,"DE":0},"label":{"DE":"Germany",
"FR":"France"}}},"time":{"category":{"index":["2001","2002"]}},"metric":{"label":"Measure","category":{"label":
{"unr":"Unemployment"},"unit":{"unr":{"label":"per cent"}}}}},"value":%1,"status":{"1":"e"}})";

TEST_F(TableFilesTest, ReadsJsonStat) {
    const auto head = "Area|Area (code)|time|time (code)|Measure|Measure (code)|UNIT|SOURCE|STATUS|VALUE";
    JsonStatReader list(Write(QByteArray(kJsonStat).replace("%1", "[1.5,2,null,4]")));
    EXPECT_THAT(RowsOf(list), ElementsAre(head, "Germany|DE|2001|2001|Unemployment|unr|per cent|Office||1.5",
                                          "Germany|DE|2002|2002|Unemployment|unr|per cent|Office|e|2",
                                          "France|FR|2002|2002|Unemployment|unr|per cent|Office||4"));
    JsonStatReader named(Write(QByteArray(kJsonStat).replace("%1", R"({"3":"4","0":7,"99":1})")));
    EXPECT_THAT(RowsOf(named), ElementsAre(head, "Germany|DE|2001|2001|Unemployment|unr|per cent|Office||7",
                                           "France|FR|2002|2002|Unemployment|unr|per cent|Office||4"));
}

TEST_F(TableFilesTest, RefusesWhatIsNoJsonStat) {
    const QByteArray good = QByteArray(kJsonStat).replace("%1", "[1]");
    const QByteArray cases[] = {"",
                                "{}",
                                "[1,2]",
                                good.left(good.size() / 2),
                                QByteArray(good).replace("[2,2,1]", "[2,2]"),
                                QByteArray(good).replace("[2,2,1]", "[-2,2,1]"),
                                QByteArray(good).replace("[2,2,1]", "[9000000,9000000,9000000]")};
    for (const QByteArray& bytes : cases)
        EXPECT_THROW(JsonStatReader(Write(bytes)), ReadError) << bytes.left(80).constData();
}

TEST(CountryCodesTest, KnowsTheCodesOfCountries) {
    const auto found = std::ranges::find(CountryCodes(), QByteArray("KEN"), &CountryCode::alpha3);
    ASSERT_NE(found, CountryCodes().end());
    EXPECT_EQ(found->alpha2, "KE");
    EXPECT_EQ(found->numeric, "404");
}

} // namespace
} // namespace tessaro::test
