#include "gallery/GalleryFolder.h"

#include "support/GallerySession.h"

#include <QRegularExpression>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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

TEST_F(GalleryFolderTest, OnlyFilesThatCanBeReadWithoutWaitingAreWorkbooks) {
    const QByteArray folder = QFile::encodeName(Gallery()) + '/';
    ASSERT_EQ(::mkfifo((folder + "pipe.xls").constData(), 0600), 0);
    ASSERT_EQ(::symlink("/dev/zero", (folder + "zero.xls").constData()), 0);
    ASSERT_EQ(::symlink("pipe.xls", (folder + "to a pipe.xls").constData()), 0);
    ASSERT_EQ(::symlink("nowhere", (folder + "to nothing.xls").constData()), 0);
    ASSERT_EQ(::symlink("round.xls", (folder + "round.xls").constData()), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = folder + "socket.xls";
    ASSERT_LT(static_cast<std::size_t>(name.size()), sizeof(address.sun_path));
    std::copy(name.begin(), name.end(), address.sun_path);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ::close(socket);
    MakeFolder(QStringLiteral("Map - folder.Xls"));
    const QString longest = QStringLiteral("Table - ") + QString(243, QLatin1Char('x')); // 255 bytes with ".xls"
    MakeFile(longest + QStringLiteral(".xls"), "x");
    MakeFile(QStringLiteral("<img src=x>.Xls"), "x");
    const QByteArray noText = folder + "\xff\xfe.xls";
    ASSERT_EQ(::close(::open(noText.constData(), O_CREAT | O_WRONLY, 0600)), 0);
    const auto entries = EntriesOf(Gallery());
    const QStringList keys = KeysOf(entries);
    EXPECT_EQ(keys.first(), QStringLiteral("FMap - folder.Xls"));
    EXPECT_TRUE(keys.contains(QLatin1Char('X') + longest));
    EXPECT_TRUE(keys.contains(QStringLiteral("X<img src=x>")));
    EXPECT_LE(keys.size(), 4); // a name that isn't UTF-8 can be listed or not
    EXPECT_EQ(PresentationsOf(Gallery()).filter(QRegularExpression(QStringLiteral("pipe|zero|socket|nothing"))),
              QStringList());
    ::unlink(noText.constData()); // the folder of the test can't be removed with it
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
