#include "shell/Favourite.h"

#include "database/Database.h"
#include "jet/engine/Connection.h"
#include "platform/Paths.h"
#include "session/FileNames.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/DataChanges.h"
#include "support/FullDisk.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>

namespace tessaro {

class FavouriteTest : public test::SessionTest {
  protected:
    void SetUp() override { ASSERT_TRUE(OpenSample()); }

    /// Selects combinations by "IUS:source" pairs, all periods and areas.
    static void SelectPairs(std::initializer_list<std::pair<int, int>> pairs) {
        for (const auto& [ius, source] : pairs)
            ASSERT_TRUE(
                Execute(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, SourceNId, Deleted) VALUES (%1, %2, False)")
                            .arg(ius)
                            .arg(source)));
        ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT "
                                           "TimePeriodNId, TimePeriod FROM TimePeriod")));
        ASSERT_TRUE(Execute(QStringLiteral(
            "INSERT INTO _SelArea (AreaGId, AreaNId, AreaID) SELECT AreaGId, AreaNId, AreaID FROM Area")));
    }
    static QString Lines(const QString& sql, jet::Connection* on) {
        Records rows = Select(sql, jet::CursorType::Static, on);
        return rows.isOpen() ? QString::fromStdString(rows.rows().GetString(-1, ",", ";")) : QStringLiteral("closed");
    }
    static QString Values(const QString& where, jet::Connection* on = nullptr) {
        return Lines(QStringLiteral("SELECT TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue FROM "
                                    "Data ") +
                         where + QStringLiteral(" ORDER BY TimePeriodNId, IUSNId, AreaNId, SourceNId"),
                     on);
    }
    static QString Keys(const char* column, const QString& table, jet::Connection* on) {
        return Lines(
            QStringLiteral("SELECT %1 FROM [%2] WHERE DataExists = True ORDER BY %1").arg(QLatin1String(column), table),
            on);
    }
    static QStringList Folder_() {
        return QDir(FavoritesFolder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
};

TEST_F(FavouriteTest, HoldsWhatTheDataViewShows) {
    SelectPairs({{1, 1}, {1, 2}, {2, 1}, {3, 2}});
    ASSERT_TRUE(Execute(QStringLiteral("UPDATE _SelIUSNId SET Deleted = True WHERE IUSNId = 3")));
    ASSERT_TRUE(Execute(QStringLiteral("DELETE * FROM _SelTimePeriod WHERE TimePeriod = '1990'")));
    DeletedRowNIds =
        Lines(QStringLiteral("SELECT RowNId FROM Data WHERE Datavalue = '3714' OR Datavalue = '61'"), nullptr)
            .chopped(1)
            .replace(QLatin1Char(';'), QLatin1Char(','));
    const QString expected =
        Values(QStringLiteral("WHERE IUSNId < 3 AND TimePeriodNId <> 1 AND Datavalue <> '3714' AND Datavalue <> '61'"));
    ASSERT_FALSE(expected.isEmpty());
    ASSERT_EQ(MakeFavourite(QStringLiteral(" Mine ")), FavouriteResult::Made);
    const QString path = FavouritePath(QStringLiteral("Mine"));
    {
        const auto copy = CreateTheConnection(path);
        ASSERT_TRUE(copy);
        EXPECT_EQ(Values({}, copy.get()), expected);
        EXPECT_EQ(Lines(QStringLiteral("SELECT Count(*) FROM Data WHERE RowNId Is Null"), copy.get()),
                  QStringLiteral("0;"));
        // The flags follow the rows; what describes them is whole.
        EXPECT_EQ(Keys("IUSNId", QStringLiteral("Indicator_Unit_Subpop"), copy.get()), QStringLiteral("1;2;"));
        EXPECT_EQ(Keys("TimePeriodNId", QStringLiteral("TimePeriod"), copy.get()), QStringLiteral("2;3;"));
        EXPECT_EQ(Keys("AreaNId", QStringLiteral("Area_fr"), copy.get()), QStringLiteral("1;2;3;4;"));
        EXPECT_EQ(Lines(QStringLiteral("SELECT Count(*) FROM Indicator_fr"), copy.get()), QStringLiteral("3;"));
    }
    EXPECT_FALSE(InValidFile(path)) << "it opens like any database";
    EXPECT_EQ(Folder_(), QStringList{QStringLiteral("Mine.mdb")}) << "nothing else is left there";
    EXPECT_EQ(frame.calls.count(QStringLiteral("progress start")), frame.calls.count(QStringLiteral("progress end")));
    EXPECT_EQ(Lines(QStringLiteral("SELECT Count(*) FROM Data"), Connection.get()), QStringLiteral("17;"))
        << "the source stands";
}

TEST_F(FavouriteTest, CanBeMadeWhileAQueryOfTheGridIsOpen) {
    SelectPairs({{1, 1}});
    Records open = Select(QStringLiteral("SELECT RowNId FROM Data"), jet::CursorType::ForwardOnly);
    ASSERT_FALSE(open.atEnd());
    EXPECT_EQ(MakeFavourite(QStringLiteral("Mine")), FavouriteResult::Made);
    open.MoveNext();
    EXPECT_FALSE(open.atEnd());
}

TEST_F(FavouriteTest, TakesNoRoomForRowsThatItDoesNotHave) {
    for (int times = 0; times < 10; ++times)
        test::ChangeData(
            QStringLiteral("INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue) "
                           "SELECT TimePeriodNId, 99, AreaNId, SourceNId, FootnoteNId, Datavalue FROM Data"));
    SelectPairs({{1, 1}});
    ASSERT_EQ(MakeFavourite(QStringLiteral("Mine")), FavouriteResult::Made);
    EXPECT_LT(QFile(FavouritePath(QStringLiteral("Mine"))).size() * 2, QFile(FindPath(CurrentDatabase)).size());
}

TEST_F(FavouriteTest, AnEmptyViewGivesADatabaseWithoutData) {
    ASSERT_EQ(MakeFavourite(QStringLiteral("Empty")), FavouriteResult::Made);
    const auto copy = CreateTheConnection(FavouritePath(QStringLiteral("Empty")));
    EXPECT_EQ(Values({}, copy.get()), QString());
    EXPECT_EQ(Keys("IUSNId", QStringLiteral("Indicator_Unit_Subpop"), copy.get()), QString());
}

TEST_F(FavouriteTest, NamesAreChecked) {
    for (const char* name : {"", "  ", "a/b", "a\\b", "a:b", "a*b", "a?", "<a>", "a|b", "[a]", "\"a\"", "../a"})
        EXPECT_EQ(MakeFavourite(QLatin1String(name)), FavouriteResult::BadName) << name;
    EXPECT_TRUE(Folder_().isEmpty());
    struct Case {
        const char *name, *file;
    };
    for (const Case& c : {Case{"a", "a.mdb"}, Case{"a.mdb", "a.mdb"}, Case{"a.MDB", "a.MDB"},
                          Case{"a.mdb copy", "a.mdb copy.mdb"}, Case{"It's \u0414", "It's \u0414.mdb"}})
        EXPECT_EQ(FileNameOf(FavouritePath(QString::fromUtf8(c.name))), QString::fromUtf8(c.file));
    EXPECT_EQ(CleanFileName(QStringLiteral("a\\/:*<>|?[]\"b'")), QStringLiteral("a___________b'"));
}

TEST_F(FavouriteTest, ATakenNameStaysAsItWas) {
    ASSERT_EQ(MakeFavourite(QStringLiteral("It's mine")), FavouriteResult::Made);
    const qint64 size = QFile(FavouritePath(QStringLiteral("It's mine"))).size();
    for (const char* name : {"It's mine", "it's MINE", "It's mine.mdb"})
        EXPECT_EQ(MakeFavourite(QLatin1String(name)), FavouriteResult::Taken) << name;
    EXPECT_EQ(QFile(FavouritePath(QStringLiteral("It's mine"))).size(), size);
}

TEST_F(FavouriteTest, AFailureLeavesNothing) {
    SelectPairs({{1, 1}});
    // The selection can't be read: the copy stands already then.
    const QString selections = JoinPath({CacheFolder, QStringLiteral("UserSelections.mdb")});
    ASSERT_TRUE(QFile::rename(selections, selections + QStringLiteral(".away")));
    EXPECT_EQ(MakeFavourite(QStringLiteral("Mine")), FavouriteResult::Failed);
    EXPECT_TRUE(Folder_().isEmpty());
    ASSERT_TRUE(QFile::rename(selections + QStringLiteral(".away"), selections));
    {
        const test::FullDisk full(32 * 1024);
        EXPECT_EQ(MakeFavourite(QStringLiteral("Mine")), FavouriteResult::Failed);
    }
    EXPECT_TRUE(Folder_().isEmpty());
    // No folder to write to.
    ASSERT_TRUE(QDir(FavoritesFolder).removeRecursively());
    EXPECT_EQ(MakeFavourite(QStringLiteral("Mine")), FavouriteResult::Failed);
    ASSERT_TRUE(QDir().mkpath(FavoritesFolder));
    // What a crash left behind is no obstacle.
    QFile rest(FavouritePath(QStringLiteral("Mine")) + QStringLiteral(".4194999.part")); // above the largest process id
    ASSERT_TRUE(rest.open(QIODevice::WriteOnly));
    rest.close();
    EXPECT_TRUE(FavouriteFiles().isEmpty());
    EXPECT_EQ(MakeFavourite(QStringLiteral("Mine")), FavouriteResult::Made);
    EXPECT_EQ(Folder_(), QStringList{QStringLiteral("Mine.mdb")});
}

TEST_F(FavouriteTest, ListsTheUsersAndTheProductsOnes) {
    const QString shipped = JoinPath({AppPath, QStringLiteral("Favorites")});
    ASSERT_TRUE(QDir().mkpath(shipped));
    for (const QString& path :
         {JoinPath({shipped, QStringLiteral("Ours.mdb")}), JoinPath({shipped, QStringLiteral("readme.txt")}),
          JoinPath({FavoritesFolder, QStringLiteral("Yours.MDB")})})
        ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    QStringList names;
    for (const QString& path : FavouritePaths())
        names << FileNameOf(path);
    EXPECT_EQ(names, (QStringList{QStringLiteral("Yours.MDB"), QStringLiteral("Ours.mdb")}));
    EXPECT_TRUE(RemoveFavourite(QStringLiteral("Yours.MDB")));
    EXPECT_TRUE(RemoveFavourite(QStringLiteral("Yours.MDB"))) << "gone already";
    EXPECT_TRUE(FavouriteFiles().isEmpty());
}

} // namespace tessaro
