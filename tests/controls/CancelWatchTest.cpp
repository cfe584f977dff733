#include "controls/CancelWatch.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>
#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

/// A window with the button that stops the work and another one that must not be hit meanwhile.
class CancelWatchTest : public testing::Test {
  protected:
    CancelWatchTest() : stop("Stop", &window), other("Other", &window) {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&stop);
        column->addWidget(&other);
        QObject::connect(&other, &QPushButton::clicked, &window, [this] { ++hits; });
        QObject::connect(&stop, &QPushButton::clicked, &window, [this] { ++hits; });
        window.show();
    }
    /// What comes of input that arrives while the work looks for it.
    bool AskedAfter(const std::function<void()>& input) {
        CancelWatch watch(window, &stop);
        QTimer::singleShot(0, &window, input);
        return watch.Asked();
    }

    QWidget window;
    QPushButton stop;
    QPushButton other;
    int hits = 0;
};

TEST_F(CancelWatchTest, EscapeTheButtonAndClosingAskAndNothingElseHits) {
    struct Case {
        const char* name;
        std::function<void()> input;
        bool asks;
    };
    const std::vector<Case> cases{
        {"Escape", [this] { QTest::keyClick(&other, Qt::Key_Escape); }, true},
        {"click on the button", [this] { QTest::mouseClick(&stop, Qt::LeftButton); }, true},
        {"space on the button", [this] { QTest::keyClick(&stop, Qt::Key_Space); }, true},
        {"return on the button", [this] { QTest::keyClick(&stop, Qt::Key_Return); }, true},
        {"closing the window", [this] { window.close(); }, true},
        {"pressing without letting go", [this] { QTest::mousePress(&stop, Qt::LeftButton); }, false},
        {"click beside it", [this] { QTest::mouseClick(&other, Qt::LeftButton); }, false},
        {"space beside it", [this] { QTest::keyClick(&other, Qt::Key_Space); }, false},
        {"nothing", [] {}, false},
    };
    for (const bool enabled : {true, false}) {
        stop.setEnabled(enabled);
        for (const Case& c : cases) {
            if (!enabled && std::string(c.name).find("on the button") != std::string::npos) continue; // has no focus
            EXPECT_EQ(AskedAfter(c.input), c.asks) << c.name;
            EXPECT_TRUE(window.isVisible()) << c.name;
        }
    }
    EXPECT_EQ(hits, 0);
    QTest::mouseClick(&other, Qt::LeftButton);
    EXPECT_EQ(hits, 1) << "the work is over";
}

TEST_F(CancelWatchTest, AMessageOfTheWorkGetsItsInputAndTheWindowTheWorkBeganInDoesNot) {
    QDialog began;
    began.open();
    QPushButton inBegan(QStringLiteral("Apply"), &began);
    QObject::connect(&inBegan, &QPushButton::clicked, &began, [this] { ++hits; });
    EXPECT_FALSE(AskedAfter([&] { QTest::mouseClick(&inBegan, Qt::LeftButton); }));
    EXPECT_EQ(hits, 0);
    QDialog message;
    EXPECT_FALSE(AskedAfter([&] {
        message.open();
        QTest::keyClick(&message, Qt::Key_Escape);
    })) << "Escape answers the message";
    EXPECT_FALSE(message.isVisible());
}

TEST_F(CancelWatchTest, LooksAtOnceAndThenNotTooOften) {
    CancelWatch watch(window, &stop);
    int looks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] { ++looks; });
    timer.start(0);
    EXPECT_FALSE(watch.Asked());
    EXPECT_EQ(looks, 1);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 200)
        EXPECT_FALSE(watch.Asked());
    EXPECT_GE(looks, 3);
    EXPECT_LE(looks, 7);
}

} // namespace
} // namespace tessaro::test
