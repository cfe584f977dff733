#include "session/TempFiles.h"

#include "session/Session.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>

namespace tessaro {

namespace {

void Touch(const QString& file) {
    QFile made(file);
    ASSERT_TRUE(made.open(QIODevice::WriteOnly));
}

class TempFilesTest : public test::SessionTest {
  protected:
    void SetUp() override {
        TempFolder = Folder() + QStringLiteral("/Temp");
        ASSERT_TRUE(QDir().mkpath(TempFolder));
    }
};

} // namespace

TEST_F(TempFilesTest, AStemGrowsUntilItIsFree) {
    struct Case {
        QStringList files;
        const char* stem;
        const char* free;
    };
    const Case cases[] = {
        {{}, "A", "A.xls"},
        {{"A.xls"}, "A", "A_0.xls"},
        {{"A.xls", "A_0.xls"}, "A", "A_0_1.xls"},
        {{"A.xls", "A_0.xls", "A_0_1.xls", "A_1.xls"}, "A", "A_0_1_2.xls"},
        {{"a.XLS"}, "A", "A_0.xls"},
        {{"A_0.xls", "AB.xls"}, "A", "A.xls"},
        {{"Été 1 %1.xls"}, "Été 1 %1", "Été 1 %1_0.xls"},
    };
    for (const QString& folder : {QString(), Folder() + QStringLiteral("/Elsewhere")}) {
        const QString place = folder.isEmpty() ? TempFolder : folder;
        for (const Case& one : cases) {
            QDir(place).removeRecursively();
            ASSERT_TRUE(QDir().mkpath(place));
            for (const QString& file : one.files)
                Touch(place + QLatin1Char('/') + file);
            EXPECT_EQ(GetFreeFileName(QString::fromUtf8(one.stem), folder),
                      place + QLatin1Char('/') + QString::fromUtf8(one.free));
        }
    }
    const QString none = Folder() + QStringLiteral("/None");
    EXPECT_EQ(GetFreeFileName(QStringLiteral("A"), none), none + QStringLiteral("/A.xls"));
}

TEST_F(TempFilesTest, ClearingTakesFilesAndLeavesFolders) {
    ASSERT_TRUE(QDir().mkpath(TempFolder + QStringLiteral("/MData_")));
    Touch(TempFolder + QStringLiteral("/MData_/kept.shp"));
    Touch(TempFolder + QStringLiteral("/one.xls"));
    Touch(TempFolder + QStringLiteral("/two"));
    ClearTempFolder();
    EXPECT_EQ(QDir(TempFolder).entryList(QDir::Files), QStringList());
    EXPECT_TRUE(QFile::exists(TempFolder + QStringLiteral("/MData_/kept.shp")));
    TempFolder = Folder() + QStringLiteral("/None");
    ClearTempFolder(); // nothing there, nothing happens
    TempFolder.clear();
    const QString here = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(Folder()));
    Touch(QStringLiteral("mine"));
    ClearTempFolder(); // no folder is no place
    EXPECT_TRUE(QFile::exists(QStringLiteral("mine")));
    QDir::setCurrent(here);
}

} // namespace tessaro
