#include "controls/ColorDialogs.h"
#include "controls/FileDialogs.h"
#include "controls/FontDialogs.h"
#include "map/classes/ClassesPage.h"
#include "map/wizard/DialogAnswers.h"
#include "map/wizard/MapWizardTest.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QSlider>

#include <random>

namespace tessaro::test {

namespace {

/// Somebody who presses whatever is there. The same number makes the same walk.
class Walker final {
  public:
    Walker(frmMapWizard& wizard, unsigned seed) : wizard_(wizard), random_(seed) {}

    void Step() {
        const auto controls = Usable();
        if (!controls.isEmpty()) Use(*controls.at(Below(static_cast<int>(controls.size()))));
    }
    /// In a dialog: some of its controls, then one of its buttons.
    void Walk(QDialog& dialog) {
        const auto controls = dialog.findChildren<QWidget*>();
        for (int i = 0; i < 6 && !controls.isEmpty() && dialog.isVisible(); ++i) {
            QWidget* const control = controls.at(Below(static_cast<int>(controls.size())));
            if (control->isVisible() && control->isEnabled()) Use(*control);
        }
    }
    int Below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    bool Chance(int percent) { return Below(100) < percent; }

  private:
    QList<QWidget*> Usable() const {
        QList<QWidget*> usable;
        for (QWidget* control : wizard_.findChildren<QWidget*>())
            if (control->isVisible() && control->isEnabled() && control->window() == &wizard_ && IsControl(*control))
                usable << control;
        return usable;
    }
    static bool IsControl(const QWidget& widget) {
        return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
               qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
               qobject_cast<const QSlider*>(&widget) || qobject_cast<const QAbstractItemView*>(&widget) ||
               qobject_cast<const MapCanvas*>(&widget);
    }
    void Use(QWidget& control) {
        if (auto* button = qobject_cast<QAbstractButton*>(&control))
            Press(*button);
        else if (auto* combo = qobject_cast<QComboBox*>(&control))
            Choose(*combo);
        else if (auto* field = qobject_cast<QLineEdit*>(&control))
            QTest::keyClicks(field, Chance(50) ? QStringLiteral("7") : QStringLiteral("x/*?"));
        else if (auto* slider = qobject_cast<QSlider*>(&control))
            slider->setValue(Below(slider->maximum() + 1));
        else if (auto* view = qobject_cast<QAbstractItemView*>(&control))
            Choose(*view);
        else if (auto* map = qobject_cast<MapCanvas*>(&control))
            Use(*map);
        else if (auto* number = qobject_cast<QAbstractSpinBox*>(&control))
            number->stepBy(Below(9) - 4);
    }
    void Press(QAbstractButton& button) {
        const QString name = button.objectName();
        // The preview takes seconds, and Finish goes through it.
        const bool slow =
            name == QLatin1String("CmdFinish") || (name == QLatin1String("CmdNext") && wizard_.Step() >= 3);
        if (!slow || Chance(5)) button.click();
    }
    void Choose(QComboBox& combo) {
        if (combo.count() == 0) return;
        combo.setCurrentIndex(Below(combo.count()));
        Q_EMIT combo.activated(combo.currentIndex());
    }
    void Choose(QAbstractItemView& view) {
        if (!view.model() || view.model()->rowCount() == 0 || view.model()->columnCount() == 0) return;
        const QModelIndex index =
            view.model()->index(Below(view.model()->rowCount()), Below(view.model()->columnCount()));
        view.setCurrentIndex(index);
        if (Chance(40)) QTest::keyClick(&view, Chance(50) ? Qt::Key_Return : Qt::Key_Space);
    }
    void Use(MapCanvas& map) {
        const QPoint at(Below(map.width()), Below(map.height()));
        if (Chance(30)) return QTest::mouseMove(&map, at);
        QTest::mousePress(&map, Qt::LeftButton, {}, at);
        QTest::mouseMove(&map, QPoint(Below(map.width()), Below(map.height())));
        QTest::mouseRelease(&map, Qt::LeftButton, {}, QPoint(Below(map.width()), Below(map.height())));
        QTest::keyClick(&map, static_cast<Qt::Key>(Qt::Key_Left + Below(4)));
    }

    frmMapWizard& wizard_;
    std::mt19937 random_;
};

class MapWizardWalksTest : public MapWizardTest {
  protected:
    void TearDown() override {
        SetFileAnswerer({});
        SetFontAnswerer({});
        SetColorAnswerer({});
        MapWizardTest::TearDown();
    }
    void Walk(unsigned seed) {
        SCOPED_TRACE(seed);
        Open();
        Walker walker(*wizard_, seed);
        const QDir folder(folder_.path());
        SetFileAnswerer([&](const FileQuestion& question) {
            const QString ending = question.filter.contains(QStringLiteral("shp"))
                                       ? QStringLiteral("shp")
                                       : question.name.section(QLatin1Char('.'), -1);
            if (ending == QLatin1String("shp")) return Base("Land_Points") + QStringLiteral(".shp");
            return walker.Chance(50) ? QString() : folder.filePath(QStringLiteral("walk.") + ending);
        });
        SetColorAnswerer([&](const QColor& color) { return walker.Chance(50) ? color.darker(120) : QColor(); });
        SetFontAnswerer([&](const QFont& font) { return walker.Chance(50) ? std::optional(font) : std::nullopt; });
        const DialogAnswers dialogs([&](QDialog& dialog) { walker.Walk(dialog); });
        for (int step = 0; step < 40 && wizard_->isVisible(); ++step) {
            walker.Step();
            QCoreApplication::processEvents();
            ASSERT_TRUE(ReadMapDraft(DraftText(wizard_->Draft()))) << seed << ", step " << step;
            ASSERT_EQ(frame.busy, 0) << seed << ", step " << step;
        }
        answers = {MessageCode::Yes};
        if (wizard_->isVisible()) wizard_->reject();
        wizard_.reset();
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }

    QTemporaryDir folder_;
};

} // namespace

TEST_F(MapWizardWalksTest, NoWalkLeadsAstray) {
    InstallMapTemplates();
    const int walks = qEnvironmentVariableIntValue("TESSARO_WALKS");
    const auto first = static_cast<unsigned>(qEnvironmentVariableIntValue("TESSARO_FIRST_WALK"));
    for (unsigned seed = first; seed < first + static_cast<unsigned>(walks > 0 ? walks : 6); ++seed)
        Walk(seed);
}

} // namespace tessaro::test
