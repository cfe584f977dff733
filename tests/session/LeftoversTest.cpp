#include "session/Leftovers.h"

#include "platform/Files.h"
#include "session/JetCopies.h"
#include "session/Session.h"
#include "support/TestSession.h"

#include <QCoreApplication>
#include <QDir>

namespace tessaro::test {
namespace {

class LeftoversTest : public SessionTest {};

TEST_F(LeftoversTest, OnlyTheHalfMadeFilesOfDeadProcessesGo) {
    StartSample();
    const QString copies = FolderOfJetCopies();
    ASSERT_TRUE(QDir().mkpath(copies));
    const QString alive = QString::number(QCoreApplication::applicationPid());
    const struct {
        QString file;
        bool stays;
    } cases[] = {
        {FavoritesFolder + "/Africa.mdb", true},
        {FavoritesFolder + "/Africa.mdb.part", false},
        {FavoritesFolder + "/Africa.MDB.part.copying-journal", false},
        {FavoritesFolder + "/Africa.mdb.4194999.part-journal", false},
        {FavoritesFolder + "/Africa.mdb." + alive + ".part", true},
        {FavoritesFolder + "/Africa.mdb.partner", true},
        {FavoritesFolder + "/notes.part", true},
        {copies + "/a~1~2.mdb", true},
        {copies + "/a~1~2.mdb.4194999.part", false}, // above the largest process id
        {copies + "/a~1~2.mdb.4194999.part-journal", false},
        {copies + "/a~1~2.mdb." + alive + ".part", true},
        {AppPath + "/Data/Mine.mdb.4194999.part.copying", false},
        {AppPath + "/Data/Mine.mdb." + alive + ".part", true},
        {CacheFolder + "/Pref.ini.aBcDeF", false},
        {CacheFolder + "/Pref.ini.damaged", true},
        {CacheFolder + "/InfoSel.mdb.new", false},
        {CacheFolder + "/UserSelections.mdb-journal", true}, // the engine takes back with it what was half written
    };
    for (const auto& c : cases)
        ASSERT_TRUE(ReplaceFile(c.file, "x")) << c.file.toStdString();
    ClearLeftovers();
    for (const auto& c : cases)
        EXPECT_EQ(QFile::exists(c.file), c.stays) << c.file.toStdString();
}

} // namespace
} // namespace tessaro::test
