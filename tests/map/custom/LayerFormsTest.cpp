#include "controls/ColorDialogs.h"
#include "controls/FileDialogs.h"
#include "controls/FontDialogs.h"
#include "controls/SelectionLists.h"
#include "map/custom/CustomTest.h"
#include "map/custom/LabelFields.h"
#include "map/custom/LayerListFile.h"
#include "map/custom/LayerLooks.h"
#include "map/custom/frmMAPAdvLbl.h"
#include "map/custom/frmMAPBuffer.h"
#include "map/custom/frmMAPCustomize.h"
#include "map/custom/frmMapLabels.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace tessaro::test {

namespace {

/// The windows that change the layers of a map, driven by their controls.
class LayerFormsTest : public CustomTest {
  protected:
    void SetUp() override {
        CustomTest::SetUp();
        SysNumFormat = false;
        PutValues(std::vector<QString>{QStringLiteral("1.5")});
        AddTo(map_, MakeLayer(QStringLiteral("Areas"), SHPT_POLYGON, {"ID_", "Name1_"}, {{"A0001", "Own"}}), kDataTag);
        cities_ = MakeLayer(QStringLiteral("Cities"), SHPT_POINT, {"ID_", "Name1_"}, {{"A0001", "City"}});
    }
    void TearDown() override {
        SetColorAnswerer({});
        SetFontAnswerer({});
        SetFileAnswerer({});
        SetLastLayerFolder({});
        CustomTest::TearDown();
    }
    template <class Control> static Control& Find(const QWidget& form, const char* name) {
        auto* const found = form.findChild<Control*>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return *found;
    }
    static void Press(const QWidget& form, const char* name) { Find<QAbstractButton>(form, name).click(); }
    /// Does something in the window that opens while `open` runs.
    static void InWindow(const std::function<void()>& open, const std::function<void(QWidget&)>& work) {
        QTimer once; // ends with this call, also when no window opens
        once.setSingleShot(true);
        bool ran = false;
        QObject::connect(&once, &QTimer::timeout, &once, [&] {
            auto* const window = QApplication::activeModalWidget();
            ASSERT_TRUE(window);
            ran = true;
            work(*window);
        });
        once.start(0);
        open();
        EXPECT_TRUE(ran) << "no window opened";
    }
    std::unique_ptr<frmMAPCustomize> Customize() {
        return std::make_unique<frmMAPCustomize>(map_, formula_, [this] { ++refreshed_; });
    }
    static std::string Names(const frmMAPCustomize& form) {
        QStringList names;
        const auto& list = Find<QListWidget>(form, "LVLayers");
        for (int i = 0; i < list.count(); ++i)
            names << list.item(i)->text();
        return names.join(QLatin1Char(' ')).toStdString();
    }
    static std::string Cell(const frmMAPCustomize& form, int row, int column) {
        return Find<QTableWidget>(form, "grdCollection").item(row, column)->text().toStdString();
    }

    LayerStack map_;
    QString formula_;
    QString cities_;
    int refreshed_ = 0;
};

} // namespace

TEST_F(LayerFormsTest, LabelsOfALayer) {
    frmMapLabels form(map_, 0, formula_);
    EXPECT_FALSE(Find<QCheckBox>(form, "chkLabel").isChecked());
    auto& fields = Find<QComboBox>(form, "cmbLabelField");
    EXPECT_EQ(fields.count(), 7);
    SetColorAnswerer([](const QColor&) { return QColor(Qt::yellow); });
    SetFontAnswerer([](QFont font) {
        font.setPointSize(20);
        return std::optional(font);
    });
    Find<QCheckBox>(form, "chkLabel").setChecked(true);
    fields.setCurrentIndex(2);
    Press(form, "cmdLabelColor");
    Press(form, "cmdLabelFont");
    Find<QCheckBox>(form, "chkHideColliding").setChecked(false);
    Press(form, "cmdOKLabel");
    EXPECT_EQ(form.result(), QDialog::Accepted);
    const LayerLabels& labels = map_.At(0).labels;
    EXPECT_EQ(labels.field, QStringLiteral("Comm_Datavalue"));
    EXPECT_EQ(labels.texts, std::vector<QString>{QStringLiteral("1.5")});
    EXPECT_EQ(labels.color, QColor(Qt::yellow));
    EXPECT_EQ(labels.halo, QColor(Qt::black).toRgb());
    EXPECT_EQ(labels.font.pointSize(), 20);
    EXPECT_TRUE(labels.on && labels.overlaps);
    frmMapLabels again(map_, 0, formula_);
    EXPECT_TRUE(Find<QCheckBox>(again, "chkLabel").isChecked());
    EXPECT_EQ(Find<QComboBox>(again, "cmbLabelField").currentIndex(), 2);
    Find<QCheckBox>(again, "chkLabel").setChecked(false);
    Find<QCheckBox>(again, "chkHalo").setChecked(false);
    Press(again, "cmdOKLabel");
    EXPECT_TRUE(labels.texts.empty() && !labels.halo.isValid());
    EXPECT_EQ(labels.field, QStringLiteral("Comm_Datavalue"));
}

TEST_F(LayerFormsTest, CombinedLabelsAreComposedFirst) {
    frmMapLabels form(map_, 0, formula_);
    Find<QCheckBox>(form, "chkLabel").setChecked(true);
    Find<QComboBox>(form, "cmbLabelField").setCurrentIndex(6);
    const auto ok = [&] { Press(form, "cmdOKLabel"); };
    InWindow(ok, [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
    EXPECT_TRUE(map_.At(0).labels.field.isEmpty()) << "nothing is applied";
    InWindow(ok, [](QWidget& window) {
        auto& available = Find<KeyedList>(window, "LVAvailable");
        EXPECT_EQ(available.Items().Count(), 6);
        Q_EMIT available.ItemActivated(QStringLiteral("datavalue"));
        Q_EMIT available.ItemActivated(QStringLiteral("areaid"));
        EXPECT_EQ(available.Items().Count(), 4);
        Press(window, "cmdOK");
    });
    EXPECT_EQ(formula_, QStringLiteral("Trim(datavalue)+' '+Trim(areaid)+' '"));
    EXPECT_EQ(map_.At(0).labels.texts, std::vector<QString>{QStringLiteral("1.5 A0001")});
}

TEST_F(LayerFormsTest, OtherLayersHaveIdsAndNames) {
    AddTo(map_, cities_, "Customize - x");
    frmMapLabels form(map_, 1, formula_);
    EXPECT_EQ(Find<QComboBox>(form, "cmbLabelField").count(), 2);
    EXPECT_EQ(Find<QComboBox>(form, "cmbLabelField").currentIndex(), 1);
    InWindow([&] { Press(form, "cmdAdvField"); },
             [](QWidget& window) {
                 Press(window, "cmdAddAll");
                 Press(window, "cmdOK");
             });
    EXPECT_EQ(Find<QComboBox>(form, "cmbLabelField").count(), 3);
    Press(form, "cmdOKLabel"); // does not ask again
    EXPECT_EQ(map_.At(1).labels.field, QStringLiteral("Advanced Labels"));
    EXPECT_FALSE(map_.At(1).labels.on);
}

TEST_F(LayerFormsTest, FieldsMoveBetweenTheLists) {
    frmMAPAdvLbl form(QStringLiteral("Trim(unit)+' '+Trim(areaid)+' '"));
    form.show();
    auto& available = Find<KeyedList>(form, "LVAvailable");
    auto& selected = Find<KeyedList>(form, "LVSelected");
    EXPECT_EQ(available.Items().Count(), 4);
    available.HighlightKey(QStringLiteral("timeperiod"));
    Q_EMIT selected.ItemsDropped();
    EXPECT_EQ(form.Formula(), QStringLiteral("Trim(unit)+' '+Trim(areaid)+' '+Trim(timeperiod)+' '"));
    selected.HighlightKey(QStringLiteral("unit"));
    Q_EMIT available.ItemsDropped();
    Q_EMIT selected.ItemActivated(QStringLiteral("areaid"));
    EXPECT_EQ(form.Formula(), QStringLiteral("Trim(timeperiod)+' '"));
    Q_EMIT selected.PopupRequested(QPoint(1, 1));
    auto* const menu = form.findChild<QMenu*>(QStringLiteral("Lst_SEL_PopUpMenuOptions"));
    ASSERT_TRUE(menu);
    menu->actions().front()->trigger();
    EXPECT_EQ(form.Formula(), QString());
    EXPECT_EQ(available.Items().Items().front().key, QStringLiteral("areaid")) << "the fields have their order back";
    Press(form, "cmdOK");
    EXPECT_EQ(Rows("SELECT AdvancedLabels FROM _MapData"), "");
}

TEST_F(LayerFormsTest, AsksForARadius) {
    frmMAPBuffer form(QStringLiteral("Cities"));
    auto& field = Find<QLineEdit>(form, "txtBufferRadius");
    const struct {
        const char* typed;
        const char* message;
        const char* left;
        float radius;
    } cases[] = {{"ten", "228", "ten", 0},     {"", "228", "", 0}, {"-7", "229", "5", 0},     {"4.9", "229", "5", 0},
                 {"1000.1", "229", "1000", 0}, {"5", "", "5", 5},  {"1000", "", "1000", 1000}};
    for (const auto& [typed, message, left, radius] : cases) {
        messages.clear();
        field.setText(QLatin1String(typed));
        Press(form, "cmdBufferOK");
        EXPECT_EQ(messages.join(QString()).toStdString(), message);
        EXPECT_EQ(field.text().toStdString(), left);
        EXPECT_EQ(form.Radius(), radius) << typed;
    }
    auto& steps = Find<QAbstractSpinBox>(form, "UpDownLineSize");
    steps.stepDown();
    EXPECT_EQ(field.text(), QStringLiteral("995"));
    field.setText(QStringLiteral("x"));
    steps.stepUp();
    EXPECT_EQ(field.text(), QStringLiteral("10"));
}

TEST_F(LayerFormsTest, AddsAndOrdersLayers) {
    const auto form = Customize();
    EXPECT_EQ(Names(*form), "Areas");
    EXPECT_FALSE(Find<QPushButton>(*form, "cmdRemoveLayer").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(*form, "cmdBuffer").isEnabled());
    SetFileAnswerer([this](const FileQuestion& question) {
        EXPECT_EQ(question.folder, maps_);
        return cities_;
    });
    Press(*form, "cmdAddLayers");
    EXPECT_EQ(Names(*form), "Cities Areas");
    EXPECT_TRUE(Find<QPushButton>(*form, "cmdRemoveLayer").isEnabled());
    Press(*form, "SSCmdDemoteLayer");
    EXPECT_EQ(Names(*form), "Areas Cities");
    EXPECT_EQ(map_.At(0).data.name, QStringLiteral("Cities"));
    EXPECT_FALSE(Find<QToolButton>(*form, "SSCmdDemoteLayer").isEnabled());
    Press(*form, "SSCmdPromoteLayer");
    EXPECT_EQ(Names(*form), "Cities Areas");
    Find<QListWidget>(*form, "LVLayers").item(1)->setCheckState(Qt::Unchecked);
    EXPECT_FALSE(map_.At(0).visible);
    EXPECT_EQ(refreshed_, 4);
    SetFileAnswerer([this](const FileQuestion& question) {
        EXPECT_EQ(question.folder, FolderOf(cities_)) << "the last folder used";
        return maps_ + QStringLiteral("/gone.shp");
    });
    Press(*form, "cmdAddLayers");
    EXPECT_EQ(messages, QStringList{QStringLiteral("TS_LayerNotAdded")});
    Press(*form, "cmdRemoveLayer");
    EXPECT_EQ(Names(*form), "Areas");
    EXPECT_EQ(map_.Count(), 1);
}

TEST_F(LayerFormsTest, ChangesTheLooksOfTheActiveLayer) {
    AddTo(map_, cities_, "Customize - x");
    const auto form = Customize();
    EXPECT_EQ(Cell(*form, 0, 2), "No");
    Press(*form, "cmdPointStyle2");
    Find<QDoubleSpinBox>(*form, "txtBorderWidth").setValue(17);
    SetColorAnswerer([](const QColor&) { return QColor(1, 2, 3); });
    Press(*form, "cmdColor");
    Press(*form, "cmdOutlineColor");
    const LayerSymbol& symbol = map_.At(1).symbols.symbols[0];
    EXPECT_EQ(symbol.marker, Marker::Triangle);
    EXPECT_EQ(symbol.markerSize, 17);
    EXPECT_EQ(symbol.color, QColor(1, 2, 3));
    EXPECT_EQ(symbol.outline, QColor(1, 2, 3));
    EXPECT_EQ(Cell(*form, 0, 3), "Triangle Marker");
    EXPECT_EQ(Cell(*form, 0, 5), QLocale().toString(17).toStdString());
    Find<QTableWidget>(*form, "grdCollection").setCurrentCell(1, 0);
    EXPECT_EQ(Find<QListWidget>(*form, "LVLayers").currentRow(), 1);
    EXPECT_FALSE(Find<QToolButton>(*form, "cmdPolygonStyle3").isEnabled()) << "the classes decide";
    EXPECT_FALSE(Find<QPushButton>(*form, "cmdColor").isEnabled());
    Find<QDoubleSpinBox>(*form, "txtBorderWidth").setValue(2.5);
    EXPECT_EQ(map_.At(0).symbols.symbols[0].outlineWidth, 2.5);
    EXPECT_EQ(Cell(*form, 1, 5), QLocale().toString(2.5).toStdString());
    InWindow([&] { Press(*form, "cmdLabels"); },
             [](QWidget& window) {
                 Find<QCheckBox>(window, "chkLabel").setChecked(true);
                 Press(window, "cmdOKLabel");
             });
    EXPECT_EQ(Cell(*form, 1, 2), "Yes (Area name)");
    EXPECT_EQ(map_.At(0).labels.texts, std::vector<QString>{QStringLiteral("Area 0001")});
}

TEST_F(LayerFormsTest, MakesBuffersAndRemembersThem) {
    AddTo(map_, cities_, "Customize - x");
    {
        const auto form = Customize();
        const auto buffer = [&] { Press(*form, "cmdBuffer"); };
        InWindow(buffer, [](QWidget& window) { Press(window, "cmdBufferCancel"); });
        EXPECT_EQ(Names(*form), "Cities Areas");
        InWindow(buffer, [](QWidget& window) { Press(window, "cmdBufferOK"); });
        EXPECT_EQ(Names(*form), "Buffer_Cities Cities Areas");
        EXPECT_EQ(Find<QListWidget>(*form, "LVLayers").currentRow(), 1);
        Press(*form, "cmdBuffer");
        EXPECT_EQ(messages, QStringList{QStringLiteral("225")});
        Find<QListWidget>(*form, "LVLayers").setCurrentRow(0);
        Press(*form, "chkRemember");
        Press(*form, "cmdDone");
    }
    LayerStack next;
    AddTo(next, maps_ + QStringLiteral("/Areas.shp"), kDataTag);
    const frmMAPCustomize form(next, formula_, [] {});
    EXPECT_EQ(Names(form), "Buffer_Cities Areas");
    EXPECT_TRUE(Find<QCheckBox>(form, "chkRemember").isChecked());
}

TEST_F(LayerFormsTest, EnduresAMapWithoutLayers) {
    map_.Clear();
    const auto form = Customize();
    for (const char* name :
         {"cmdRemoveLayer", "cmdBuffer", "cmdLabels", "SSCmdPromoteLayer", "SSCmdDemoteLayer", "chkRemember"})
        EXPECT_FALSE(Find<QWidget>(*form, name).isEnabled()) << name;
    Press(*form, "cmdApply");
    EXPECT_FALSE(form->grab().isNull());
}

} // namespace tessaro::test
