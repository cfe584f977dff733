#include "exchange/AreaTree.h"

#include "exchange/ImportSession.h"
#include "layers/MapFiles.h"
#include "session/Strings.h"
#include "support/ShapelibFiles.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::ElementsAre;

std::vector<std::string> IdsOf(const AreaTree& tree) {
    std::vector<std::string> ids;
    for (const TreeArea& area : tree.areas)
        ids.push_back(area.id + '|' + area.code + '|' + area.name + '|' + area.mapFile);
    return ids;
}

using AreaTreeTest = ImportSession;

TEST_F(AreaTreeTest, MakesIdsThatFitTheTree) {
    const struct {
        const char* file;
        std::vector<std::string> areas;
    } cases[] = {
        {"id,parent,name,map file\nP1,KEN,Coast,Kenya.shp\nKEN,,Kenya,World.shp\nP2,KEN,Rift "
         "Valley,\nCap,P1,Mombasa,\n",
         {"KEN001|P1|Coast|Kenya.shp", "KEN|KEN|Kenya|World.shp", "KEN002|P2|Rift Valley|", "KEN001Cap|Cap|Mombasa|"}},
        {"Niveau;Nom\n1;Maroc\n2;Nord\n3;Tanger\n2;Sud-Est\n1;Mali\n2;Ouest\n",
         {"001|Maroc|Maroc|", "001001|Nord|Nord|", "001001001|Tanger|Tanger|", "001002|Sud-Est|Sud-Est|",
          "002|Mali|Mali|", "002001|Ouest|Ouest|"}},
        {"Area ID,Area name\nAFR,Africa\nAFRKEN,Kenya\nAFRKEN01,A town\n",
         {"AFR|AFR|Africa|", "AFRKEN|AFRKEN|Kenya|", "001|AFRKEN01|A town|"}}};
    for (const auto& one : cases)
        EXPECT_EQ(IdsOf(ReadAreaTree(Write(one.file, QStringLiteral("Areas.csv")))), one.areas) << one.file;
}

TEST_F(AreaTreeTest, TellsWhatIsNoTree) {
    const std::pair<const char*, const char*> cases[] = {{"", "TS_TreeNoColumns"},
                                                         {"x,y\n1,2\n", "TS_TreeNoColumns"},
                                                         {"id,parent\nA,B\n", "TS_TreeNoParent"},
                                                         {"id,parent\nA,A\n", "TS_TreeNoParent"},
                                                         {"id,parent\nA,B\nB,A\n", "TS_TreeTooDeep"},
                                                         {"id,name\nA,x\na,y\n", "TS_TreeTwice"}};
    for (const auto& [file, key] : cases) {
        try {
            static_cast<void>(ReadAreaTree(Write(file, QStringLiteral("Areas.csv"))));
            ADD_FAILURE() << file;
        } catch (const ReadError& error) {
            const QString begin = PlainText(QLatin1String(key)).section(QLatin1Char('%'), 0, 0);
            EXPECT_TRUE(error.Text().startsWith(begin)) << file << ": " << error.what();
        }
    }
    EXPECT_THROW(static_cast<void>(ReadAreaTree(Write("no shapes", QStringLiteral("Areas.shp")))), ReadError);
}

TEST_F(AreaTreeTest, ANewDatabaseHasTheAreasOfAFile) {
    const QString file = Write("Year,Place,Population\n2001,P2,5\n2002,coast,6\n2002,Atlantis,7\n");
    ImportDraft draft = GuessDraft(file);
    draft.areaTree = Write("id,parent,name,map\nKEN,,Kenya,World.shp\nP1,KEN,Coast,\nP2,KEN,Rift Valley,\n",
                           QStringLiteral("Areas.csv"));
    const auto checked = CheckImport(file, draft, Into(ImportInto::Template));
    EXPECT_EQ(CountsOf(*checked), "new 2, same 0, changed 0, empty 0, refused 1");
    const WrittenImport written = WriteImport(*checked);
    ASSERT_TRUE(written.made) << written.message.toStdString();
    const PlainReader made(Target().toStdString());
    EXPECT_THAT(made.Rows("SELECT AreaID, AreaGId, AreaName, AreaLevel, MapFile, DataExists FROM Area_en ORDER BY 1"),
                ElementsAre("KEN|KEN|Kenya|1|World.shp|-1", "KEN001|P1|Coast|2||-1", "KEN002|P2|Rift Valley|2||-1"));
    // What the file calls them finds them in the new database too.
    ImportTarget again = Into(ImportInto::Copy);
    again.base = Target();
    EXPECT_EQ(CountsOf(*CheckImport(file, draft, again)), "new 0, same 2, changed 0, empty 0, refused 1");
}

TEST_F(AreaTreeTest, ANewDatabaseUsesTheShapefileOfItsAreasAsMap) {
    const QString stem = Folder() + QStringLiteral("/Provinces");
    const auto square = [](double x, double y) { return Rings{{{x, y}, {x, y + 1}, {x + 1, y + 1}, {x, y}}}; };
    WriteShapes(stem, SHPT_POLYGON, {square(0, 0), square(5, 5), square(7, 5)});
    WriteTable(stem, "UTF-8", {"CODE", "NAME"}, {{"ZA-GP", "Gauteng"}, {"ZA-WC", "Western Cape"}, {"ZA-WC", "x"}});
    const QString file = Write("Year,Province,Value\n2001,ZA-WC,5\n2001,Gauteng,6\n");
    ImportDraft draft = GuessDraft(file);
    draft.areaTree = stem + QStringLiteral(".shp");
    ImportTarget target = Into(ImportInto::Template);
    target.mapsFolder = Folder() + QStringLiteral("/Maps");
    const auto checked = CheckImport(file, draft, target);
    EXPECT_EQ(CountsOf(*checked), "new 2, same 0, changed 0, empty 0, refused 0");
    ASSERT_TRUE(WriteImport(*checked).made);
    EXPECT_THAT(PlainReader(Target().toStdString()).Rows("SELECT AreaID, AreaName, MapFile FROM Area_en ORDER BY 1"),
                ElementsAre("001|Gauteng|Provinces.shp", "002|Western Cape|Provinces.shp"));
    const LayerReading map = ReadLayer(target.mapsFolder + QStringLiteral("/Provinces.shp"));
    ASSERT_TRUE(map.layer);
    EXPECT_THAT(AreaIdsOf(*map.layer), ElementsAre("001", "002", "002"));
    EXPECT_EQ(map.layer->Text(1, map.layer->NameField()), "Western Cape");
    // A database that can't be made leaves no map.
    target.file = QStringLiteral("/proc/New.mdb");
    EXPECT_FALSE(WriteImport(*CheckImport(file, draft, target)).made);
    EXPECT_FALSE(QFileInfo::exists(target.mapsFolder + QStringLiteral("/Provinces_2.shp")));
}

} // namespace
} // namespace tessaro::test
