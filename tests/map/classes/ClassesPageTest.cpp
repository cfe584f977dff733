#include "map/classes/ClassesPage.h"

#include "controls/ColorDialogs.h"
#include "controls/FileDialogs.h"
#include "map/MapTest.h"
#include "map/classes/BreakHistogram.h"
#include "map/classes/ColorSchemes.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace tessaro::test {

namespace {

class ClassesPageTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        SysNumFormat = false;
        PutValues(std::vector<QString>{QStringLiteral("1.2"), QStringLiteral("2.5"), QStringLiteral("3.5"),
                                       QStringLiteral("7"), QStringLiteral("8.1"), QStringLiteral("9.9")});
        page_ = std::make_unique<ClassesPage>();
        Find<QSpinBox>("txtBreakCount").setValue(3);
        page_->resize(720, 560);
        page_->show();
        page_->Start(ThemeKind::Polygons, 10, 0);
    }
    void TearDown() override {
        SetColorAnswerer({});
        page_.reset();
    }
    template <class Widget> [[nodiscard]] Widget& Find(const char* name) const {
        auto* found = page_->findChild<Widget*>(QLatin1String(name));
        if (!found) throw std::runtime_error(name);
        return *found;
    }
    [[nodiscard]] QTableWidget& Grid() const { return Find<QTableWidget>("grdClassBreaks"); }
    /// "1.2 - 2.5 (2)" of all rows, parted by "; ".
    [[nodiscard]] std::string Classes() const {
        QStringList rows;
        for (int row = 0; row < Grid().rowCount() - 2; ++row)
            rows << Grid().item(row, 0)->text() + QStringLiteral(" (%1)").arg(Counted(row));
        return rows.join(QStringLiteral("; ")).toStdString();
    }
    /// The Count of a row.
    [[nodiscard]] int Counted(int row) const { return QLocale().toInt(Grid().item(row, 3)->text()); }
    void Choose(BreakChoice choice) const { Find<QComboBox>("cboBBreak").setCurrentIndex(static_cast<int>(choice)); }
    void Apply() const { Find<QPushButton>("cmdApply").click(); }
    [[nodiscard]] std::string Notes() const {
        const auto& label = Find<QLabel>("lblNotes");
        return label.isHidden() ? std::string() : label.text().toStdString();
    }
    /// Activates a cell, types into the window that opens and presses OK; with "" Escape.
    void TypeIntoCell(int row, int column, const char* field, const QString& text) const {
        QTimer once; // ends with this call, also when no window opens
        once.setSingleShot(true);
        QObject::connect(&once, &QTimer::timeout, &once, [&] {
            auto* const window = QApplication::activeModalWidget();
            if (!window) return;
            if (text.isEmpty()) return void(QTest::keyClick(window, Qt::Key_Escape));
            window->findChild<QLineEdit*>(QLatin1String(field))->setText(text);
            window->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        });
        once.start(0);
        Q_EMIT Grid().cellActivated(row, column);
    }

    std::unique_ptr<ClassesPage> page_;
};

} // namespace

TEST_F(ClassesPageTest, StartsWithClassesOfTheData) {
    EXPECT_EQ(Find<QSpinBox>("txtDec").value(), 1);
    EXPECT_EQ(Find<QLineEdit>("txtMinValue").text(), QStringLiteral("1.2"));
    EXPECT_EQ(Find<QLineEdit>("txtMaxValue").text(), QStringLiteral("9.9"));
    EXPECT_EQ(Classes(), "1.2 - 2.5 (2); 2.6 - 7.0 (2); 7.1 - 9.9 (2)");
    EXPECT_EQ(Grid().columnCount(), 6);
    EXPECT_EQ(Grid().rowCount(), 5);
    EXPECT_EQ(Counted(4), 4); // ten outlines less six values
    EXPECT_FALSE(Find<QPushButton>("cmdApply").isEnabled());
    EXPECT_EQ(Notes(), "");
    page_->Start(ThemeKind::Points, 0, 2);
    EXPECT_EQ(Grid().columnCount(), 7);
    EXPECT_EQ(Counted(4), 0);
    EXPECT_NE(Notes(), "");
    page_->Start(ThemeKind::Both, 0, 0);
    EXPECT_EQ(Grid().columnCount(), 8);
}

TEST_F(ClassesPageTest, AppliesWhatTheFieldsSay) {
    const QSignalSpy changed(page_.get(), &ClassesPage::Changed);
    Choose(BreakChoice::EqualSize);
    EXPECT_TRUE(Find<QPushButton>("cmdApply").isEnabled());
    Apply();
    EXPECT_EQ(Classes(), "1.2 - 4.1 (3); 4.2 - 7.1 (1); 7.2 - 9.9 (2)");
    Find<QSpinBox>("txtDec").setValue(0);
    Apply();
    EXPECT_EQ(Find<QLineEdit>("txtMinValue").text(), QStringLiteral("1"));
    EXPECT_EQ(Classes(), "1 - 4 (3); 5 - 8 (1); 9 - 10 (1)");
    EXPECT_NE(Notes(), ""); // 8.1 lies between two classes
    // With the decimals back, the least value is in a class again.
    Find<QSpinBox>("txtDec").setValue(1);
    Find<QSpinBox>("txtBreakCount").setValue(2);
    Apply();
    EXPECT_EQ(Classes(), "1.2 - 5.6 (3); 5.7 - 9.9 (3)");
    EXPECT_EQ(Notes(), "");
    EXPECT_EQ(changed.count(), 3);
}

TEST_F(ClassesPageTest, WritesTypedLimitsAsItWritesNumbers) {
    Find<QLineEdit>("txtMinValue").setText(QStringLiteral(" 1.25 "));
    Find<QLineEdit>("txtMaxValue").setText(QStringLiteral("8"));
    Apply();
    EXPECT_EQ(Find<QLineEdit>("txtMinValue").text(), QStringLiteral("1.25"));
    EXPECT_EQ(Find<QLineEdit>("txtMaxValue").text(), QStringLiteral("8.0"));
    Find<QSpinBox>("txtDec").setValue(0);
    Apply();
    EXPECT_EQ(Find<QLineEdit>("txtMinValue").text(), QStringLiteral("1"));
    EXPECT_EQ(Find<QLineEdit>("txtMaxValue").text(), QStringLiteral("8"));
    EXPECT_FALSE(Find<QPushButton>("cmdApply").isEnabled());
}

TEST_F(ClassesPageTest, AClickOpensTheWindowOfACell) {
    SetColorAnswerer([](const QColor&) { return QColor(1, 2, 3); });
    const auto click = [this](int row, int column) {
        const QModelIndex cell = Grid().model()->index(row, column);
        Grid().scrollTo(cell);
        QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, Grid().visualRect(cell).center());
    };
    click(1, 4);
    EXPECT_EQ(page_->Table().looks[1].color, QColor(1, 2, 3));
    click(4, 4);
    EXPECT_EQ(page_->Table().missing.color, QColor(1, 2, 3));
    click(0, 3); // counts can't be edited
    click(3, 4); // the spacer
    EXPECT_NE(page_->Table().looks[0].color, QColor(1, 2, 3));
}

TEST_F(ClassesPageTest, RefusesWhatIsNoRange) {
    const std::string before = Classes();
    const struct {
        const char* minimum;
        const char* maximum;
        const char* message;
    } cases[] = {{"9", "3", "231"}, {"abc", "3", ""}, {"", "", ""}, {"1", "1e999", ""}};
    for (const auto& [minimum, maximum, message] : cases) {
        messages.clear();
        Find<QLineEdit>("txtMinValue").setText(QLatin1String(minimum));
        Find<QLineEdit>("txtMaxValue").setText(QLatin1String(maximum));
        Apply();
        EXPECT_EQ(messages.join(QString()).toStdString(), message) << minimum;
        EXPECT_EQ(Classes(), before) << minimum;
        if (*message == '\0') {
            EXPECT_NE(Notes(), "") << minimum;
        }
    }
    Find<QLineEdit>("txtMinValue").setText(QStringLiteral("0"));
    Find<QLineEdit>("txtMaxValue").setText(QStringLiteral("0"));
    Apply();
    EXPECT_EQ(Classes(), before); // the data's own range
    EXPECT_EQ(Find<QLineEdit>("txtMaxValue").text(), QStringLiteral("9.9"));
}

TEST_F(ClassesPageTest, EditsBoundsWhereTheModeAllowsIt) {
    const struct {
        BreakChoice choice;
        int column;
        const char* typed;
        const char* classes;
        int messages;
    } cases[] = {
        {BreakChoice::EqualCount, 2, "3.5", "1.2 - 2.5 (2); 2.6 - 7.0 (2); 7.1 - 9.9 (2)", 0},
        {BreakChoice::Continuous, 1, "2", "1.2 - 2.5 (2); 2.6 - 7.0 (2); 7.1 - 9.9 (2)", 0},
        {BreakChoice::Continuous, 2, "3.5", "1.2 - 3.5 (3); 3.6 - 7.0 (1); 7.1 - 9.9 (2)", 0},
        {BreakChoice::Continuous, 2, "0.5", "1.2 - 3.5 (3); 3.6 - 7.0 (1); 7.1 - 9.9 (2)", 1},
        {BreakChoice::Continuous, 2, "abc", "1.2 - 3.5 (3); 3.6 - 7.0 (1); 7.1 - 9.9 (2)", 1},
        {BreakChoice::Continuous, 2, "", "1.2 - 3.5 (3); 3.6 - 7.0 (1); 7.1 - 9.9 (2)", 0},
        {BreakChoice::Discontinuous, 2, "2.0", "1.2 - 2.0 (1); 3.6 - 7.0 (1); 7.1 - 9.9 (2)", 0},
        {BreakChoice::Discontinuous, 1, "1.5", "1.5 - 2.0 (0); 3.6 - 7.0 (1); 7.1 - 9.9 (2)", 0},
    };
    for (const auto& c : cases) {
        messages.clear();
        Choose(c.choice);
        TypeIntoCell(0, c.column, "txtBreak", QLatin1String(c.typed));
        EXPECT_EQ(Classes(), c.classes) << c.typed;
        EXPECT_EQ(messages.size(), c.messages) << c.typed;
    }
    TypeIntoCell(3, 2, "txtBreak", QStringLiteral("5")); // the spacer and missing data have no bounds
    TypeIntoCell(4, 2, "txtBreak", QStringLiteral("5"));
    EXPECT_EQ(Classes(), cases[7].classes);
    Apply(); // keeps the classes
    EXPECT_EQ(Classes(), cases[7].classes);
}

TEST_F(ClassesPageTest, MovesBoundsInTheHistogram) {
    auto& histogram = Find<BreakHistogram>("picHistogram");
    int values = 0;
    for (const int bar : histogram.Bars())
        values += bar;
    EXPECT_EQ(values, 6);
    EXPECT_NEAR(histogram.ValueAt(histogram.PlaceOf(7)), 7, 0.05);
    const auto drag = [&](double from, double to) {
        QTest::mousePress(&histogram, Qt::LeftButton, {}, {histogram.PlaceOf(from), 20});
        QTest::mouseMove(&histogram, {histogram.PlaceOf(to), 20});
        QTest::mouseRelease(&histogram, Qt::LeftButton, {}, {histogram.PlaceOf(to), 20});
    };
    const std::string before = Classes();
    drag(2.5, 4);
    EXPECT_EQ(Classes(), before); // no mode to edit in
    Choose(BreakChoice::Continuous);
    drag(2.5, 4);
    EXPECT_NEAR(page_->Table().classes[0].to, 4, 0.1);
    EXPECT_NEAR(page_->Table().classes[1].from, page_->Table().classes[0].to + 0.1, 1e-9);
    EXPECT_EQ(page_->Table().classes[0].count, 3);
    const double end = page_->Table().classes[1].to;
    QTest::keyClick(&histogram, Qt::Key_PageDown);
    QTest::keyClick(&histogram, Qt::Key_Right);
    EXPECT_NEAR(page_->Table().classes[1].to, end + 0.1, 1e-9);
    for (int i = 0; i < 200; ++i)
        QTest::keyClick(&histogram, Qt::Key_Left); // stops at the class's beginning
    EXPECT_GE(page_->Table().classes[1].to, page_->Table().classes[1].from);
    EXPECT_FALSE(page_->grab().isNull());
}

TEST_F(ClassesPageTest, ChangesLooks) {
    SetColorAnswerer([](const QColor&) { return QColor(Qt::black); });
    Q_EMIT Grid().cellActivated(1, 4);
    EXPECT_EQ(page_->Table().looks[1].color, QColor(0, 0, 1));
    Q_EMIT Grid().cellActivated(4, 4);
    EXPECT_EQ(page_->Table().missing.color, QColor(0, 0, 1));
    SetColorAnswerer([](const QColor&) { return QColor(); });
    Q_EMIT Grid().cellActivated(0, 4);
    EXPECT_EQ(page_->Table().looks[0].color, SchemeColors(ColorSchemes()[0], 3)[0]);
    TypeIntoCell(0, 0, "txtLabelModify", QStringLiteral("منخفض"));
    EXPECT_EQ(page_->Table().looks[0].legend, QStringLiteral("منخفض"));
    Find<QPushButton>("cmdSmoothColors").click();
    EXPECT_NE(page_->Table().looks[1].color, QColor(0, 0, 1));
    auto& schemes = Find<QComboBox>("cboColorScheme");
    EXPECT_EQ(schemes.count(), static_cast<int>(ColorSchemes().size()));
    Q_EMIT schemes.activated(8);
    EXPECT_EQ(page_->Table().looks[2].color, SchemeColors(ColorSchemes()[8], 3)[2]);
    // More classes: rows that were there keep their colours, the others get the last one's.
    Find<QSpinBox>("txtBreakCount").setValue(5);
    Apply();
    EXPECT_EQ(page_->Table().looks[0].color, SchemeColors(ColorSchemes()[8], 3)[0]);
    EXPECT_EQ(page_->Table().looks[4].color, SchemeColors(ColorSchemes()[8], 3)[2]);
}

TEST_F(ClassesPageTest, TellsAndLightsUpRows) {
    page_->resize(520, 560);
    const auto over = [&](int row, int column) {
        QTest::mouseMove(Grid().viewport(), Grid().visualItemRect(Grid().item(row, column)).center());
    };
    const auto ground = [&](int row) { return Grid().item(row, 0)->background(); };
    const QSignalSpy hovered(page_.get(), &ClassesPage::RowHovered);
    over(1, 0);
    over(1, 4);
    over(4, 0);
    over(3, 0); // the empty row
    over(2, 0);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(Grid().viewport(), &leave);
    QList<int> rows;
    for (const QList<QVariant>& each : hovered)
        rows << each[0].toInt();
    EXPECT_EQ(rows, (QList<int>{1, 4, -1, 2, -1}));

    const QBrush plain = ground(0);
    page_->ShowRowOf(1);
    EXPECT_NE(ground(1), plain);
    EXPECT_EQ(Grid().item(1, 4)->background().color(), page_->Table().looks[1].color);
    page_->ShowRowOf(4);
    EXPECT_EQ(ground(1), plain);
    EXPECT_NE(ground(4), plain);
    page_->cmdApply_Click();
    EXPECT_NE(ground(4), plain) << "stays when the grid is filled anew";
    for (const int none : {3, 99, -1}) {
        page_->ShowRowOf(none);
        EXPECT_EQ(ground(4), plain) << none;
    }
}

TEST_F(ClassesPageTest, TakesTheUsersDefaultColours) {
    const ClassTable before = page_->Table();
    ClassTable table = before;
    for (ClassLook& look : table.looks)
        look.color = QColor(9, 8, 7);
    const QString folder = JoinPath({AppPath, QStringLiteral("Palettes")});
    ASSERT_FALSE(FolderExists(folder));
    page_->SetTable(table);
    SetFileAnswerer([&](const FileQuestion& question) {
        EXPECT_EQ(question.folder, folder);
        EXPECT_TRUE(FolderExists(folder));
        return JoinPath({question.folder, question.name});
    });
    page_->SSCmdSavePalette_Click();
    SetFileAnswerer({});
    page_->SetTable(before);
    EXPECT_TRUE(FileExists(folder + QStringLiteral("/Default.plf")));
    ClassesPage other;
    other.Start(ThemeKind::Polygons, 10, 0);
    EXPECT_EQ(other.Table().looks[0].color, QColor(9, 8, 7));
    // The same file, chosen by hand.
    QTimer::singleShot(0, [] {
        auto* const window = QApplication::activeModalWidget();
        ASSERT_TRUE(window);
        auto* const files = window->findChild<QListWidget*>(QStringLiteral("FileSourcePath"));
        auto* const ok = window->findChild<QPushButton*>(QStringLiteral("cmdOK"));
        ASSERT_TRUE(files && ok);
        EXPECT_FALSE(ok->isEnabled());
        EXPECT_EQ(files->count(), 1);
        files->setCurrentRow(0);
        ok->click();
    });
    Find<QPushButton>("SSCmdLoadPalette").click();
    EXPECT_EQ(page_->Table().looks[1].color, QColor(9, 8, 7));
}

TEST_F(ClassesPageTest, EnduresDataOfAnyKind) {
    const std::vector<std::vector<double>> kinds{{}, {5}, {5, 5, 5}, {-1e300, 1e300}, {0, 0, 1e-12}};
    for (const auto& values : kinds) {
        Execute(QStringLiteral("DELETE * FROM _MapData"));
        PutValues(values);
        for (const int choice : {0, 1, 2, 4, 5, 6, 7}) {
            page_->Start(ThemeKind::Polygons, 0, 0);
            Choose(static_cast<BreakChoice>(choice));
            Find<QSpinBox>("txtBreakCount").setValue(7);
            Apply();
            EXPECT_FALSE(page_->grab().isNull());
            EXPECT_FALSE(page_->Table().classes.empty()) << values.size() << " " << choice;
        }
        EXPECT_EQ(Notes().empty(), !values.empty() && page_->Table().classes.back().count > 0) << values.size();
    }
}

} // namespace tessaro::test
