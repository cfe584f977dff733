#include "controls/KeyedTree.h"
#include "selection/AreaSelection.h"
#include "selection/ClassificationViews.h"
#include "selection/ScreenDriver.h"
#include "selection/TimeSelection.h"
#include "selection/frmAreas.h"
#include "selection/frmIndicators.h"
#include "selection/frmTime.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QElapsedTimer>
#include <QTabBar>

/// The three screens on databases whose texts and ids are what nobody would write.
namespace tessaro::test {
namespace {

constexpr int kTooLongMilliseconds = 5000;

/// Texts that break a statement, a key or a line when they are taken for more than a text.
const QStringList& Texts() {
    static const QStringList texts{
        QStringLiteral("O'Brien's"),
        QStringLiteral("''"),
        QStringLiteral("say \"this\""),
        QStringLiteral("a [bracket] b"),
        QStringLiteral("]"),
        QStringLiteral("{[~]}S{[~]}1"),
        QStringLiteral("a{}b{{}}c"),
        QStringLiteral("a|b"),
        QStringLiteral("100%1%2"),
        QStringLiteral("a\nb\r\nc\td"),
        QStringLiteral("'; DELETE * FROM Data; --"),
        QStringLiteral("#2001-01-01#*?[!a]"),
        QStringLiteral("&x && y"),
        QStringLiteral("\u202Etxet\u202C \u200F"),
        QStringLiteral("<b>bold</b>&amp;"),
        QString(255, QLatin1Char('W')),
    };
    return texts;
}

QString Doubled(QString text) {
    return text.replace(QLatin1String("'"), QLatin1String("''"));
}

template <class Screen> class HostileTest : public ScreenTest<Screen> {
  protected:
    void Set(const char* table, const char* column, const QString& text) {
        this->Run(QStringLiteral("UPDATE [%1] SET [%2] = '%3'")
                      .arg(QLatin1String(table), QLatin1String(column), Doubled(text)));
    }
};

class HostilePeriodTest : public HostileTest<frmTime> {};

TEST_F(HostilePeriodTest, EveryPeriodCanBeChosenAndTakenBack) {
    for (const QString& text : Texts()) {
        Run(QStringLiteral("DELETE * FROM _SelTimePeriod"));
        Run(QStringLiteral("UPDATE TimePeriod SET TimePeriod = '%1'").arg(Doubled(text.left(60))));
        Open();
        Click("cmdAddAll");
        EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2,3,4")) << text.toStdString();
        EXPECT_EQ(Select(QStringLiteral("SELECT TimePeriod FROM _SelTimePeriod")).Text(std::size_t{0}),
                  text.left(60).trimmed())
            << text.toStdString();
        screen->ShowPeriodDetails();
        Click("cmdRemoveAll");
        EXPECT_EQ(ChosenPeriods(), QString());
        DoubleClick(List("lstAvailable"), QStringLiteral("T2"));
        EXPECT_EQ(ChosenPeriods(), QStringLiteral("2")) << text.toStdString();
    }
    EXPECT_TRUE(messages.isEmpty()) << messages.join(QLatin1Char(' ')).toStdString();
}

class HostileIndicatorTest : public HostileTest<frmIndicators> {
  protected:
    void SetUp() override { IndicatorOpenWith = QStringLiteral("0"); }
    /// Gives the indicator of combinations 1 and 2 another id.
    void Rename(const QString& before, const QString& after) {
        for (const char* table : {"Indicator", "Indicator_Sector", "Indicator_Unit_Subpop"})
            Run(QStringLiteral("UPDATE [") + QLatin1String(table) + QStringLiteral("] SET IndicatorGId = '") +
                Doubled(after) + QStringLiteral("' WHERE IndicatorGId = '") + Doubled(before) + QLatin1Char('\''));
    }
};

TEST_F(HostileIndicatorTest, EveryIdAndNameCanBeChosenInEachView) {
    QString id = QStringLiteral("-I1");
    for (const long by : {0L, 1L})
        for (const QString& text : Texts()) {
            IndicatorSelectBy = by;
            Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
            // Ids are trimmed wherever they go into a statement; their columns hold 60 characters.
            const QString next = QLatin1Char('x') + text.left(50) + QLatin1Char('x');
            Rename(id, next);
            id = next;
            for (const char* table : {"Indicator", "Unit", "Source", "SectorLabel1", "SectorLabel2", "GoalLabel1",
                                      "GoalLabel3", "ConventionLabel2"})
                Set(table, table, text);
            Open();
            Click("cmdAddAll");
            EXPECT_TRUE(ChosenIus().startsWith(QStringLiteral("1/10,1/11,2/10"))) << text.toStdString();
            screen->SortSelIndsBySector();
            Click("cmdRemoveAll");
            auto& strip = Find<QTabBar>("lblIndicatorOptions");
            for (int tab = 0; tab < strip.count(); ++tab) {
                strip.setCurrentIndex(tab);
                screen->SeacrhIndStrings(text);
                EXPECT_GT(List("lstAvailable").Items().Count(), 0) << tab << " " << text.toStdString();
            }
        }
    EXPECT_TRUE(messages.isEmpty()) << messages.join(QLatin1Char(' ')).toStdString();
}

TEST_F(HostileIndicatorTest, NamesOfAnyLengthAreListedInTime) {
    for (const char* table : {"Indicator", "SectorLabel1", "SectorLabel2"}) {
        // Columns without a width, as a file of a stranger has them.
        Run(QStringLiteral("SELECT * INTO Kept FROM [%1]").arg(QLatin1String(table)));
        Run(QStringLiteral("DROP TABLE [%1]").arg(QLatin1String(table)));
        Run(QStringLiteral("CREATE TABLE [%1] (%1GId TEXT(60), [%1] MEMO)").arg(QLatin1String(table)));
        Run(QStringLiteral("INSERT INTO [%1] SELECT %1GId, [%1] FROM Kept").arg(QLatin1String(table)));
        Run(QStringLiteral("DROP TABLE Kept"));
    }
    for (const QString& name : {QString(1000000, QLatin1Char('m')), QStringLiteral(" "), QStringLiteral("\n\n"),
                                QStringLiteral("\u202E"), QStringLiteral("<table>").repeated(3000)}) {
        for (const char* table : {"Indicator", "SectorLabel1", "SectorLabel2"})
            Set(table, table, name);
        QElapsedTimer clock;
        clock.start();
        Open();
        Click("cmdAddAll");
        screen->grab();
        List("lstSelected").selectAll();
        screen->Copy();
        EXPECT_LT(clock.elapsed(), kTooLongMilliseconds) << name.left(20).toStdString();
        EXPECT_GT(List("lstAvailable").Items().Count(), 0);
        EXPECT_FALSE(ChosenIus().isEmpty());
        Click("cmdRemoveAll");
    }
}

TEST_F(HostileIndicatorTest, DoubledIdsAreListedOnce) {
    Run(QStringLiteral("INSERT INTO [Indicator] (IndicatorGId, [Indicator]) VALUES ('-I1', 'Population again')"));
    Run(QStringLiteral("INSERT INTO SectorLabel1 (SectorLabel1GId, SectorLabel1) VALUES ('-A', 'Economy again')"));
    Open();
    Click("cmdAddAll");
    EXPECT_EQ(screen->SelectedCount(), List("lstAvailable").Items().Count());
    EXPECT_TRUE(ChosenIus().startsWith(QStringLiteral("1/10")));
    EXPECT_TRUE(messages.isEmpty());
}

class HostileAreaTest : public HostileTest<frmAreas> {
  protected:
    void AddArea(int number, const QString& id, const QString& name, int level) {
        Run(QStringLiteral("INSERT INTO Area (AreaNId, AreaGId, AreaID, AreaName, AreaLevel) VALUES (%1,'g%1',")
                .arg(number) +
            QStringLiteral("'") + Doubled(id) + QStringLiteral("','") + Doubled(name) + QStringLiteral("',") +
            QString::number(level) + QLatin1Char(')'));
    }
    void WalkTree(const QModelIndex& above = {}, int depth = 0) {
        KeyedTree& tree = Find<KeyedTree>("TV_Areas");
        ASSERT_LT(depth, 100);
        for (int row = 0; row < tree.model()->rowCount(above); ++row) {
            const QModelIndex node = tree.model()->index(row, 0, above);
            tree.setCurrentIndex(node);
            tree.expand(node);
            WalkTree(node, depth + 1);
        }
    }
};

TEST_F(HostileAreaTest, EveryIdAndNameCanBeChosen) {
    int number = 100;
    for (const QString& text : Texts()) {
        const QString id = QLatin1Char('x') + (text.trimmed() + QStringLiteral("xx")).left(2);
        AddArea(number++, id, text, 1);
        AddArea(number++, id + QStringLiteral("'\"]"), text, 2);
    }
    Open();
    WalkTree();
    Find<KeyedTree>("TV_Areas").setCurrentIndex(Find<KeyedTree>("TV_Areas").model()->index(0, 0));
    screen->SelectAreasOfLevel(2, false);
    EXPECT_EQ(ChosenAreas().count(QLatin1Char(',')), 2 + Texts().size()) << ChosenAreas().toStdString();
    List("lstSelected1").selectAll();
    screen->RemoveSelectedAreas(false);
    EXPECT_EQ(ChosenAreas(), QString());
    EXPECT_TRUE(messages.isEmpty()) << messages.join(QLatin1Char(' ')).toStdString();
}

TEST_F(HostileAreaTest, GapsOrphansAndWildLevelsDoNoHarm) {
    AddArea(100, QStringLiteral("XXXYYYZZZ"), QStringLiteral("without parents"), 3);
    AddArea(101, QString(), QStringLiteral("without an id"), 1);
    AddArea(102, QStringLiteral("ASI"), QStringLiteral("Asia once more"), -5);
    AddArea(103, QStringLiteral("ASIIND"), QStringLiteral("India once more"), 2000000000);
    AddArea(104, QStringLiteral("ABC").repeated(85), QStringLiteral("too deep"), 1);
    for (int level = 1; level <= 85; ++level)
        AddArea(200 + level, QStringLiteral("DEE").repeated(level), QStringLiteral("level %1").arg(level), level);
    QElapsedTimer clock;
    clock.start();
    Open();
    WalkTree();
    EXPECT_LT(clock.elapsed(), 2 * kTooLongMilliseconds) << "a hundred branches";
    screen->SeacrhAreaStrings(QStringLiteral("too deep"));
    EXPECT_EQ(Shown(List("lstAvailable1")), "A104");
    Click("cmdAddAll");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("104"));
}

TEST_F(HostileAreaTest, AHundredThousandAreasUnderOneNodeAreListedInTime) {
    Connection->Begin();
    Run(QStringLiteral(
        "INSERT INTO Area (AreaNId, AreaGId, AreaID, AreaName, AreaLevel) VALUES (100,'g','BIG','Big',1)"));
    const char digits[] = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJ";
    for (int number = 0; number < 100000; ++number) {
        const QString id = QStringLiteral("BIG") + QLatin1Char(digits[number / 2116 % 48 % 46]) +
                           QLatin1Char(digits[number / 46 % 46]) + QLatin1Char(digits[number % 46]);
        AddArea(1000 + number, id, QStringLiteral("Area %1").arg(number), 2);
    }
    Connection->Commit();
    Open();
    QElapsedTimer clock;
    clock.start();
    KeyedTree& tree = Find<KeyedTree>("TV_Areas");
    tree.setCurrentIndex(tree.Nodes().IndexOfKey(QStringLiteral("ABIG")));
    EXPECT_EQ(List("lstAvailable1").Items().Count(), 100000);
    EXPECT_LT(clock.elapsed(), kTooLongMilliseconds);
    clock.restart();
    tree.expand(tree.currentIndex());
    screen->grab();
    EXPECT_LT(clock.elapsed(), kTooLongMilliseconds) << "expanding";
    clock.restart();
    Click("cmdAddAll");
    EXPECT_LT(clock.elapsed(), 2 * kTooLongMilliseconds) << "choosing";
    EXPECT_EQ(List("lstSelected1").Items().Count(), 100000);
}

} // namespace
} // namespace tessaro::test
