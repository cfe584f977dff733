#pragma once

#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"
#include "support/ReadXls.h"
#include "support/SelectionTest.h"

#include <QApplication>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

namespace tessaro {

/// The installed program with a small workbook to show. Where the tests have no X11 display, they are passed over.
class HostedTest : public test::SessionTest {
  protected:
    void SetUp() override {
        test::SessionTest::SetUp();
        StartInstallation();
        if (!OfficeHost::CanHost()) GTEST_SKIP() << "no X11 display";
        test::UseSpreadsheet();
        MakeFile();
    }
    void MakeFile() {
        office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook();
        book.Sheet(1).Cells(1, 1).SetValue(QStringLiteral("Findable words"));
        book.SaveAs(file_);
        book.Close(false);
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    QTemporaryDir folder_;
    QString file_ = folder_.filePath(QStringLiteral("Shown.xls"));
};

/// A form with a field and a place for the spreadsheet.
class OfficeHostTest : public HostedTest {
  protected:
    void SetUp() override {
        HostedTest::SetUp();
        if (IsSkipped()) return;
        auto* column = new QVBoxLayout(&form_);
        column->addWidget(&field_);
        column->addWidget(&host_);
        form_.resize(700, 500);
        form_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form_));
    }
    void TearDown() override {
        host_.CloseHostedExcel(false);
        HostedTest::TearDown();
    }

    /// Sends a signal to the hosted program, if it runs: the number 0 would mean all of us.
    static void Signal(int signal) {
        if (const qint64 process = office::SpreadsheetApplication::Hosted().ProcessId(); process > 0)
            ::kill(static_cast<pid_t>(process), signal);
    }
    /// The keys go to whatever has the keyboard on the display.
    static void Type(const QString& text) {
        QProcess::execute(QStringLiteral("xdotool"),
                          {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text});
        QTest::qWait(200);
    }
    static void Key(const char* key) {
        QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QLatin1String(key)});
        QTest::qWait(200);
    }
    static void ClickAt(const QPoint& place) {
        QProcess::execute(QStringLiteral("xdotool"),
                          {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                           QStringLiteral("click"), QStringLiteral("1")});
        QTest::qWait(300);
    }

    /// What stands below the menus, right of the selected cell.
    [[nodiscard]] QImage TopStrip() const {
        QTest::qWait(500);
        const QRect strip(host_.mapToGlobal(QPoint(300, 24)), QSize(host_.width() - 340, 60));
        const qreal scale = host_.devicePixelRatioF();
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage().copy(
            QRectF(strip.topLeft() * scale, QSizeF(strip.size()) * scale).toRect());
    }
    /// The foot of the place between two distances from its left edge.
    [[nodiscard]] QImage Foot(int from, int to) const {
        QTest::qWait(500);
        const QRect strip(host_.mapToGlobal(QPoint(from, host_.height() - 16)), QSize(to - from, 16));
        const qreal scale = host_.devicePixelRatioF();
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage().copy(
            QRectF(strip.topLeft() * scale, QSizeF(strip.size()) * scale).toRect());
    }
    /// What stands at the foot, right of the sheets' names: nothing.
    [[nodiscard]] QImage BottomStrip() const { return Foot(250, host_.width() - 20); }
    /// The same when it has come to rest: a loaded machine goes on drawing for a while.
    [[nodiscard]] QImage SettledBottomStrip() const {
        QImage strip = BottomStrip();
        const auto rests = [&] {
            const QImage last = std::exchange(strip, BottomStrip());
            return Alike(last, strip);
        };
        EXPECT_TRUE(QTest::qWaitFor(rests, 15000));
        return strip;
    }
    /// Something is written there: a line of pixels has several colours.
    static bool HasTexts(const QImage& image) {
        int different = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 1; x < image.width(); ++x)
                if (image.pixel(x, y) != image.pixel(0, y)) ++different;
        return different > 50;
    }
    /// The same but for single pixels, which a change of size may leave.
    static bool Alike(const QImage& a, const QImage& b) {
        int different = a.size() == b.size() ? 0 : a.width() * a.height();
        for (int y = 0; y < a.height() && different < 20; ++y)
            for (int x = 0; x < a.width(); ++x)
                if (a.pixel(x, y) != b.pixel(x, y)) ++different;
        return different < 20;
    }
    /// Sizes of the windows that are seen directly within a window.
    static std::vector<QSize> Children(WId window) {
        std::vector<QSize> sizes;
        auto* display = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        auto* tree = xcb_query_tree_reply(display, xcb_query_tree(display, static_cast<xcb_window_t>(window)), nullptr);
        for (int child = 0; tree && child < xcb_query_tree_children_length(tree); ++child) {
            const xcb_window_t id = xcb_query_tree_children(tree)[child];
            auto* looks = xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, id), nullptr);
            auto* place = xcb_get_geometry_reply(display, xcb_get_geometry(display, id), nullptr);
            if (looks && place && looks->map_state == XCB_MAP_STATE_VIEWABLE)
                sizes.emplace_back(place->width, place->height);
            std::free(looks);
            std::free(place);
        }
        std::free(tree);
        return sizes;
    }
    /// Windows on the display, those of other programs too.
    static std::size_t TopWindows() {
        auto* display = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        return Children(xcb_setup_roots_iterator(xcb_get_setup(display)).data->root).size();
    }
    /// Size of the foreign window within ours; nothing when there isn't one alone.
    [[nodiscard]] QSize HostedSize() const {
        const auto* place = host_.findChild<QWidget*>();
        const auto sizes = place ? Children(place->winId()) : std::vector<QSize>();
        return sizes.size() == 1 ? sizes.front() : QSize();
    }
    /// Numbers in the first sheet of the file, wherever they stand.
    [[nodiscard]] std::vector<double> NumbersOfFile() const {
        std::vector<double> numbers;
        const auto rows = test::ReadXls(file_).front().rows;
        for (const auto& row : rows) {
            const auto cells = row.toArray();
            for (const auto& cell : cells)
                if (cell.isDouble()) numbers.push_back(cell.toDouble());
        }
        return numbers;
    }

    QWidget form_;
    QLineEdit field_;
    OfficeHost host_;
};

} // namespace tessaro
