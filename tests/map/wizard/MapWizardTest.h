#pragma once

#include "TestPlaces.h"
#include "layers/MapCanvas.h"
#include "map/wizard/frmMapWizard.h"
#include "office/SpreadsheetApplication.h"
#include "presentation/PresentationTest.h"
#include "support/ShapelibFiles.h"

#include <QDir>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace tessaro::test {

/// Everything of the sample selected, with a map of squares: "Land" has a square for each of ASI, ASIIND, ASICHN and
/// NOWHERE, one beside the other from longitude 0 on, 10 degrees wide; "Land_Points" has their middles.
class MapWizardTest : public PresentationTest {
  protected:
    void SetUp() override {
        PresentationTest::SetUp();
        static const QTemporaryDir profile;
        office::SpreadsheetApplication::SetProfileFolder(profile.path());
        QDir().mkpath(AppPath + QStringLiteral("/Maps"));
        WriteLand({"ASI", "ASIIND", "ASICHN", "NOWHERE"});
        Run(QStringLiteral("UPDATE Area SET MapFile = 'Land.shp'"));
        SelectEverything();
    }
    void TearDown() override {
        wizard_.reset();
        PresentationTest::TearDown();
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    [[nodiscard]] static QString Base(const char* name) {
        return AppPath + QStringLiteral("/Maps/") + QLatin1String(name);
    }
    static void WriteLand(const std::vector<std::string>& ids, const char* idField = "ID_") {
        std::vector<Rings> squares;
        std::vector<Rings> points;
        std::vector<std::vector<std::string>> rows;
        for (std::size_t i = 0; i < ids.size(); ++i) {
            const double left = 10.0 * static_cast<double>(i);
            squares.push_back({{{left, 0}, {left, 10}, {left + 10, 10}, {left + 10, 0}, {left, 0}}});
            points.push_back({{{left + 5, 5}}});
            rows.push_back({ids[i], "Name of " + ids[i]});
        }
        WriteShapes(Base("Land"), SHPT_POLYGON, squares);
        WriteTable(Base("Land"), "UTF-8", {idField, "Name1_"}, rows);
        WriteShapes(Base("Land_Points"), SHPT_POINT, points);
        WriteTable(Base("Land_Points"), "UTF-8", {idField, "Name1_"}, rows);
    }
    static void InstallMapTemplates() {
        for (const char* layout : {"Square", "Vertical", "Horizontal"}) {
            const QString name = QStringLiteral("MapLayout%1.xls").arg(QLatin1String(layout));
            ASSERT_TRUE(CopyFileOver(FindPath(QStringLiteral(TESSARO_INSTALLATION "/Bin/Template/") + name),
                                     FindPath(AppPath + QStringLiteral("/Bin/Template/") + name)));
        }
    }

    /// Shows the wizard and waits until it has begun.
    frmMapWizard& Open() {
        wizard_ = std::make_unique<frmMapWizard>(save_);
        wizard_->show();
        const auto* next = Find<QAbstractButton>("CmdNext");
        EXPECT_TRUE(QTest::qWaitFor([next] { return next->isEnabled(); }, 20000));
        return *wizard_;
    }
    template <class Widget> Widget* Find(const char* name) const {
        auto* found = wizard_->findChild<Widget*>(QLatin1String(name));
        if (!found) throw std::runtime_error(name);
        return found;
    }
    void Click(const char* button) const { Find<QAbstractButton>(button)->click(); }
    [[nodiscard]] MapCanvas& Map() const { return *Find<MapCanvas>("Map1"); }
    /// The colour on the map at a place of it.
    [[nodiscard]] QColor ColourAt(double x, double y) const {
        const QImage picture = Map().grab().toImage();
        return picture.pixelColor((Map().FromMapPoint({x, y}) * picture.devicePixelRatioF()).toPoint());
    }
    /// Grabs the wizard into the folder that the environment names, to be looked at.
    void Picture(const char* name) const {
        const QString folder = qEnvironmentVariable("TESSARO_PICTURES");
        if (folder.isEmpty()) return;
        QTest::qWait(50);
        wizard_->grab().save(folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png"));
    }

    std::unique_ptr<frmMapWizard> wizard_;
    QList<FinishedPresentation> saved_;
    SavePresentation save_ = [this](const FinishedPresentation& finished, QWidget*) {
        saved_ << finished;
        return true;
    };
};

} // namespace tessaro::test
