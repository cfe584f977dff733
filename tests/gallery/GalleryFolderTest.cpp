#include "gallery/GalleryFolder.h"

#include "GallerySession.h"

namespace tessaro {

namespace {

using GalleryFolderTest = test::GallerySession;

QStringList KeysOf(const std::vector<GalleryEntry>& entries) {
    QStringList keys;
    for (const GalleryEntry& entry : entries)
        keys << entry.key;
    return keys;
}

} // namespace

TEST_F(GalleryFolderTest, TheNameTellsTheKind) {
    struct {
        const char* name;
        char kind;
    } const cases[] = {
        {"Table - Health.Xls", 'T'},
        {"Graph - Health.Xls", 'G'},
        {"Map - Health.Xls", 'M'},
        {"Health - table.xls", 'T'},
        {"HEALTH - GRAPH.XLS", 'G'},
        {"Health - Map.xls", 'M'},
        {"Map - table.xls", 'M'}, // the last of the tests that match
        {"Table - x - map.xls", 'T'},
        {"Graph - a table - b.xls", 'G'},
        {"My vegetable - prices.xls", 'T'}, // holds "table -"
        {"Health.xls", 0},
        {"table.xls", 0},
        {"Health - tables.xls", 0},
        {"Table-Health.xls", 0},
        {"", 0},
    };
    for (const auto& [name, kind] : cases)
        EXPECT_EQ(PresentationKind(QLatin1String(name)), kind == 0 ? QChar() : QLatin1Char(kind)) << name;
}

TEST_F(GalleryFolderTest, TheWordsOfTheLanguageTellItToo) {
    UseLanguage(QStringLiteral("fr"));
    const QString french = KindWord(QLatin1Char('M'));
    ASSERT_NE(french, QStringLiteral("Map"));
    EXPECT_EQ(PresentationKind(french + QStringLiteral(" - Santé.Xls")), QLatin1Char('M'));
    EXPECT_EQ(PresentationKind(QStringLiteral("Graph - Santé.Xls")), QLatin1Char('G'));
}

TEST_F(GalleryFolderTest, OnlyFoldersAndWorkbooksAreListed) {
    MakeFolder(QStringLiteral("Old"));
    for (const char* name : {"Table - b.xls", "Graph - a.XLS", "Map - c.Xls", "notes.txt", "slides.ppt", "book.xlsx"})
        MakeFile(QLatin1String(name), "x");
    const auto entries = EntriesOf(Gallery());
    EXPECT_EQ(KeysOf(entries), (QStringList{QStringLiteral("FOld"), QStringLiteral("XGraph - a"),
                                            QStringLiteral("XMap - c"), QStringLiteral("XTable - b")}));
    EXPECT_EQ(entries[1].text, QStringLiteral("Graph - a"));
    EXPECT_EQ(entries[1].file, QStringLiteral("Graph - a.XLS"));
    EXPECT_EQ(entries[1].kind, QLatin1Char('G'));
    EXPECT_TRUE(entries[0].IsFolder());
    EXPECT_EQ(entries[3].size, 1);
}

TEST_F(GalleryFolderTest, AFolderThatIsNotThereIsEmptyAndLogged) {
    for (const QString& folder : {Folder() + QStringLiteral("/gone"), QString()})
        EXPECT_TRUE(EntriesOf(folder).empty());
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_TRUE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains("/gone"));
}

TEST_F(GalleryFolderTest, UpwardsEndsAtTheRoot) {
    MakeFolder(QStringLiteral("Old"));
    EXPECT_EQ(FolderAbove(Gallery() + QStringLiteral("/Old")), Gallery());
    EXPECT_EQ(FolderAbove(Gallery() + QStringLiteral("/gone/deeper")), Gallery());
    EXPECT_EQ(FolderAbove(QStringLiteral("/tmp")), QStringLiteral("/"));
    EXPECT_EQ(FolderAbove(QStringLiteral("/")), QString());
    EXPECT_EQ(FolderAbove({}), QString());
}

} // namespace tessaro
