#include "CsvTable.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace tessaro::content {

TEST(CsvTableTest, RefusesWhatIsNoTable) {
    EXPECT_THROW(static_cast<void>(CsvTable::Parse("")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(CsvTable::Parse("\n\n")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(CsvTable::Parse("a,b\n\"never ends,1\n")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(CsvTable::Read("/nowhere/table.csv")), std::runtime_error);
}

TEST(CsvTableTest, ReadsCells) {
    struct Case {
        const char* text;
        const char* expected; ///< cells of the first row joined with ";"
    };
    for (const Case& c : {Case{"a,b,c\n1,2,3\n", "1;2;3"}, Case{"a,b,c\r\n1,2,3\r\n", "1;2;3"},
                          Case{"a,b,c\n1,,3", "1;;3"}, Case{"a,b,c\n1\n", "1;;"}, Case{"a,b,c\n,,\n", ";;"},
                          Case{"\xEF\xBB\xBF"
                               "a,b,c\n\n\n1,2,3\n",
                               "1;2;3"},
                          Case{"a,b,c\n\"1,1\",\"say \"\"two\"\"\",\"3\n4\"\n", "1,1;say \"two\";3\n4"},
                          Case{"a,b,c\n\"\",x,\"\"\n", ";x;"}}) {
        const CsvTable table = CsvTable::Parse(c.text);
        ASSERT_EQ(table.rowCount(), 1U) << c.text;
        EXPECT_EQ(table.Cell(0, "a") + ";" + table.Cell(0, "b") + ";" + table.Cell(0, "c"), c.expected) << c.text;
    }
}

TEST(CsvTableTest, NamesAMissingColumn) {
    const CsvTable table = CsvTable::Parse("a\n1\n");
    EXPECT_FALSE(table.ColumnIndex("A"));
    EXPECT_THROW(static_cast<void>(table.Cell(0, "b")), std::runtime_error);
}

TEST(CsvTableTest, CutsListsAtBlanks) {
    EXPECT_EQ(Words(""), std::vector<std::string>{});
    EXPECT_EQ(Words("  a  b "), (std::vector<std::string>{"a", "b"}));
}

} // namespace tessaro::content
