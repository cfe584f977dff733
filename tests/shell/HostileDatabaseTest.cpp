#include "controls/StageScreen.h"
#include "database/Schema.h"
#include "jet/engine/Connection.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/FrameTest.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QTest>
#include <QToolTip>

/// The whole program on databases whose every text holds what breaks statements, or markup.
namespace tessaro::test {
namespace {

class HostileDatabaseTest : public FrameTest, public testing::WithParamInterface<const char*> {
  protected:
    /// Puts a text before every text of the sample's tables but ids and the values themselves.
    void PutBeforeAllTexts(const QString& text) {
        const auto connection = jet::Connection::Open(SampleDatabase().toStdString(), DatabasePassword());
        const QString quoted = QString(text).replace(QLatin1String("'"), QLatin1String("''"));
        for (const schema::TableDefinition& table : schema::DataTables()) {
            const QString columns =
                QString::fromUtf8(table.columns.data(), static_cast<qsizetype>(table.columns.size()));
            const QString name = QString::fromUtf8(table.name.data(), static_cast<qsizetype>(table.name.size()));
            if (!table.perLanguage && name != QLatin1String("TimePeriod") && name != QLatin1String("Region")) continue;
            for (const QString& column : columns.split(QLatin1Char(','))) {
                const QString column1 = column.trimmed().section(QLatin1Char(' '), 0, 0).remove(u'[').remove(u']');
                const bool isText = column.contains(QLatin1String(" TEXT")) || column.contains(QLatin1String(" MEMO"));
                if (!isText || column1.endsWith(QLatin1String("Id"), Qt::CaseInsensitive) ||
                    column1 == QLatin1String("MapFile"))
                    continue;
                connection->Execute(
                    QStringLiteral("UPDATE [%1%2] SET [%3] = '%4' & [%3]")
                        .arg(name, table.perLanguage ? QStringLiteral("_en") : QString(), column1, quoted)
                        .toStdString());
            }
        }
    }
    /// Chooses everything on each screen, and goes on to the data.
    void ChooseAll() {
        for (int stage = 0; stage < 3; ++stage) {
            Click(QStringLiteral("picBannerButtons_%1").arg(stage));
            ASSERT_EQ(CurrentStage, stage);
            auto* button = Current()->findChild<QAbstractButton*>(QStringLiteral("cmdAllFilter"));
            ASSERT_NE(button, nullptr);
            ShowAutoSelectForm = false;
            button->click();
            ExpectPlainTexts();
        }
        Click(QStringLiteral("picBannerButtons_3"));
        EXPECT_EQ(CurrentStage, 3);
        ExpectPlainTexts();
    }
    [[nodiscard]] QWidget* Current() const { return Find(Screen()); }

    /// No label of the frame guesses at markup, and no tool tip of a list, tree or grid does.
    void ExpectPlainTexts() {
        QCoreApplication::processEvents();
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            if (!label->isVisible()) continue;
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
        }
        for (auto* view : window->findChildren<QAbstractItemView*>())
            if (view->isVisible() && view->model() != nullptr) PointAtAnItemOf(*view);
        for (const QWidget* tip : QApplication::topLevelWidgets()) {
            const auto* label = qobject_cast<const QLabel*>(tip);
            if (label == nullptr || !tip->inherits("QTipLabel")) continue;
            ++tips_;
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
        }
        QToolTip::hideText();
    }
    static void PointAtAnItemOf(QAbstractItemView& view) {
        const QModelIndex item = view.indexAt(QPoint(view.viewport()->width() / 4, 6));
        if (!item.isValid()) return;
        const QPoint place = view.visualRect(item).topLeft() + QPoint(3, 3);
        QHelpEvent help(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(view.viewport(), &help);
    }
    [[nodiscard]] static qint64 Rows(const char* table) {
        return Select(QStringLiteral("SELECT Count(*) FROM ") + QLatin1String(table)).Number(std::size_t{0});
    }

    int tips_ = 0; ///< tool tips looked at
};

TEST_P(HostileDatabaseTest, EveryScreenWorksWhateverTheTextsHold) {
    PutBeforeAllTexts(QString::fromUtf8(GetParam()));
    ASSERT_TRUE(StartInStages());
    ASSERT_TRUE(Connection && DatabaseOpen);
    ChooseAll();
    // The goals come first; one of their combinations has data: of one source, in two areas and two periods.
    EXPECT_EQ(Rows("_SelIUSNId"), 1);
    EXPECT_EQ(Rows("_SelTimePeriod"), 2);
    EXPECT_EQ(Rows("_SelArea"), 2);
    auto* grid = Find<QAbstractItemView>(QStringLiteral("DataGrid"));
    ASSERT_NE(grid, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return grid->model()->rowCount() == 3; })) << grid->model()->rowCount();
    EXPECT_GT(tips_, 0);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(QLatin1Char('|')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Texts, HostileDatabaseTest,
                         testing::Values("O'Brien's ''", "say \"this\" [", "]{[~]}{}{{}}|", "a\r\nb\t%1%2&&",
                                         "'; DROP TABLE x", "<b>b</b><img src='/none'>"));

} // namespace
} // namespace tessaro::test
