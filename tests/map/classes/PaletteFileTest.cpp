#include "map/classes/PaletteFile.h"

#include "session/Session.h"
#include "support/FullDisk.h"
#include "support/TestSession.h"

#include <QFile>

namespace tessaro {

namespace {

constexpr int kWestern = 0;
constexpr int kArabic = 178;
constexpr int kRussian = 204;

PaletteRow Class(int number) {
    const QString text = QString::number(number);
    return {QString::number(number * 1000),
            text + QStringLiteral(".0"),
            text + QStringLiteral(".9"),
            QStringLiteral("Class ") + text,
            QStringLiteral("Arial"),
            QStringLiteral("9"),
            number == 1,
            false,
            true};
}

/// So many classes, the spacer and the row of missing data.
PaletteRows Grid(int classes, const QString& missingColor = QStringLiteral("16777215")) {
    PaletteRows rows;
    for (int i = 1; i <= classes; ++i)
        rows.push_back(Class(i));
    rows.push_back({QStringLiteral("16777215"), {}, {}, {}, QStringLiteral("Arial"), QStringLiteral("8")});
    rows.push_back(
        {missingColor, {}, {}, QStringLiteral("Missing Data"), QStringLiteral("Arial"), QStringLiteral("8")});
    return rows;
}

PaletteContents File(int classes, const QString& missingColor) {
    return ReadPalette(PaletteBytes(Grid(classes, missingColor), kWestern), kWestern);
}

std::string Colors(const PaletteRows& rows) {
    QStringList colors;
    for (const PaletteRow& row : rows)
        colors << row.color;
    return colors.join(QLatin1Char(' ')).toStdString();
}

class PaletteFileTest : public test::SessionTest {};

} // namespace

TEST(PaletteTest, TheseBytes) {
    EXPECT_EQ(PaletteBytes({Class(1)}, kWestern).toStdString(), "[MapWizard Color, Range  and Legend Palette]\r\n"
                                                                "No of Breaks     : 1\r\n"
                                                                " \r\n"
                                                                "[Labels] | [Range] | [Colors]\r\n"
                                                                "Color            : 1000\r\n"
                                                                "From             : 1.0\r\n"
                                                                "To               : 1.9\r\n"
                                                                "Legend           : Class 1\r\n"
                                                                "FontName         : Arial\r\n"
                                                                "FontSize         : 9\r\n"
                                                                "FontBold         : True\r\n"
                                                                "FontItalic       : False\r\n"
                                                                "FontUnderline    : True\r\n");
}

TEST(PaletteTest, TextsOfEveryScriptComeBack) {
    const struct {
        const char* legend;
        int charset;
        const char* bytes; ///< nothing for a file in UTF-8
    } cases[] = {{"Données manquantes", kWestern,
                  "Donn\xE9"
                  "es manquantes"},
                 {"Нет данных", kRussian, "\xCD\xE5\xF2 \xE4\xE0\xED\xED\xFB\xF5"},
                 {"بيانات", kArabic, "\xC8\xED\xC7\xE4\xC7\xCA"},
                 {"Нет данных", kWestern, nullptr},
                 {"5 – 7 €", kWestern, "5 \x96 7 \x80"},
                 {"図", kArabic, nullptr}};
    for (const auto& c : cases) {
        PaletteRows rows = Grid(2);
        rows[1].legend = QString::fromUtf8(c.legend);
        const QByteArray bytes = PaletteBytes(rows, c.charset);
        EXPECT_EQ(bytes.contains(c.bytes ? c.bytes : "\xEF\xBB\xBF"), true) << c.legend;
        EXPECT_EQ(ReadPalette(bytes, c.charset).rows, rows) << c.legend;
    }
    PaletteRows broken = Grid(1);
    broken[0].legend = QStringLiteral("two\r\nlines");
    EXPECT_EQ(ReadPalette(PaletteBytes(broken, kWestern), kWestern).rows[0].legend, QStringLiteral("two  lines"));
}

TEST(PaletteTest, EveryPrefixGivesItsWholeRecords) {
    const PaletteRows rows = Grid(2);
    const QByteArray whole = PaletteBytes(rows, kWestern);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const PaletteContents contents = ReadPalette(whole.left(length), kWestern);
        ASSERT_LE(contents.rows.size(), rows.size());
        for (std::size_t row = 0; row + 1 < contents.rows.size(); ++row)
            EXPECT_EQ(contents.rows[row], rows[row]) << length;
        const bool all = contents.rows.size() == rows.size();
        EXPECT_TRUE(all || !contents.complete) << length;
        PaletteRows grid = Grid(3);
        (void)ApplyPalette(contents, PaletteMode::Colors, grid);
        EXPECT_EQ(grid.size(), 5U);
    }
}

TEST(PaletteTest, AHeadMayCountTheHeadings) {
    QByteArray bytes = PaletteBytes(Grid(2), kWestern);
    bytes.replace("No of Breaks     : 4", "No of Breaks     : 5");
    EXPECT_TRUE(ReadPalette(bytes, kWestern).complete);
    bytes.replace("No of Breaks     : 5", "No of Breaks     : 6");
    EXPECT_FALSE(ReadPalette(bytes, kWestern).complete);
}

TEST(PaletteTest, ColorsGoToGridsOfAnyNumberOfClasses) {
    const struct {
        int file;
        int grid;
        const char* colors;
    } cases[] = {
        {3, 3, "1000 2000 3000 16777215 77"},
        {6, 4, "1000 2000 3000 4000 16777215 77"},
        {2, 4, "1000 2000 5 5 16777215 77"},
        {0, 2, "5 5 16777215 77"},
        {5, 0, "16777215 77"},
    };
    for (const auto& c : cases) {
        PaletteRows grid = Grid(c.grid);
        for (int row = 0; row < c.grid; ++row)
            grid[static_cast<std::size_t>(row)].color = QStringLiteral("5");
        (void)ApplyPalette(File(c.file, QStringLiteral("77")), PaletteMode::Colors, grid);
        EXPECT_EQ(Colors(grid), c.colors) << c.file << " into " << c.grid;
    }
    PaletteRows nothing;
    EXPECT_TRUE(ApplyPalette(File(3, QStringLiteral("77")), PaletteMode::Colors, nothing).empty());
}

TEST(PaletteTest, WhiteOrNothingInAClassEndsTheClasses) {
    PaletteContents file = File(4, QStringLiteral("77"));
    file.rows[1].color = QStringLiteral("16777215");
    PaletteRows grid = Grid(4);
    for (PaletteRow& row : grid)
        row.color = QStringLiteral("5");
    EXPECT_EQ(ApplyPalette(file, PaletteMode::Colors, grid), (std::vector<int>{0, 4, 5}));
    EXPECT_EQ(Colors(grid), "1000 5 5 5 16777215 77");
    file.rows[2].legend.clear();
    EXPECT_EQ(ApplyPalette(file, PaletteMode::Labels, grid), (std::vector<int>{0, 1, 5}));
}

TEST(PaletteTest, EachModeTakesItsOwn) {
    PaletteContents file = File(2, QStringLiteral("77"));
    file.rows[0] = {QStringLiteral("1"),
                    QStringLiteral("2"),
                    QStringLiteral("3"),
                    QStringLiteral("four"),
                    QStringLiteral("Serif"),
                    QStringLiteral("12"),
                    false,
                    true,
                    false};
    const PaletteRow before = Class(1);
    for (const PaletteMode mode : {PaletteMode::Labels, PaletteMode::Range, PaletteMode::Colors}) {
        PaletteRows grid = Grid(2);
        (void)ApplyPalette(file, mode, grid);
        PaletteRow expected = mode == PaletteMode::Labels ? file.rows[0] : before;
        expected.color = mode == PaletteMode::Colors ? file.rows[0].color : before.color;
        expected.from = mode == PaletteMode::Range ? file.rows[0].from : before.from;
        expected.to = mode == PaletteMode::Range ? file.rows[0].to : before.to;
        EXPECT_EQ(grid[0], expected);
    }
}

TEST_F(PaletteFileTest, IsSavedAndLoaded) {
    const QString name = Folder() + QStringLiteral("/own.plf");
    ASSERT_TRUE(SavePalette(name, Grid(3)));
    const auto loaded = LoadPalette(name);
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loaded->complete);
    EXPECT_EQ(loaded->rows, Grid(3));
    {
        const test::FullDisk full(100);
        EXPECT_FALSE(SavePalette(name, Grid(5)));
    }
    EXPECT_EQ(LoadPalette(name)->rows, Grid(3));
    EXPECT_FALSE(LoadPalette(Folder() + QStringLiteral("/none.plf")));
    EXPECT_FALSE(LoadPalette(Folder()));
}

} // namespace tessaro
