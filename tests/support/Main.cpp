#ifdef TESSARO_TEST_WIDGETS
#include <QApplication>
#else
#include <QGuiApplication>
#endif

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const TESSARO_TEST_APPLICATION application(argc, argv);
    return RUN_ALL_TESTS();
}
