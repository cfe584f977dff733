#include "controls/HeldScreens.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>
#include <optional>

namespace tessaro::test {
namespace {

class CountingWidget : public QWidget {
  public:
    int paints = 0;

  protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
};

TEST(HeldScreensTest, ScreensAndTimersWaitAndComeAfterwards) {
    CountingWidget screen;
    screen.resize(50, 50);
    screen.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&screen));
    int ticks = 0;
    QTimer::singleShot(1, &screen, [&] { ++ticks; });
    screen.paints = 0;
    {
        const HeldScreens held(screen);
        screen.update();
        const QDeadlineTimer end(30);
        while (!end.hasExpired())
            QApplication::processEvents();
        EXPECT_EQ(screen.paints, 0);
        EXPECT_EQ(ticks, 0);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks == 1 && screen.paints > 0; }));
}

} // namespace
} // namespace tessaro::test
