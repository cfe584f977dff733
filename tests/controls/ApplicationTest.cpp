#include "controls/Application.h"

#include "jet/values/Error.h"
#include "platform/Files.h"
#include "session/Log.h"
#include "support/TestSession.h"

#include <QTimer>

#include <stdexcept>

namespace tessaro::test {
namespace {

using ApplicationTest = SessionTest;

TEST_F(ApplicationTest, WhatAHandlerThrowsIsOneLineOfTheLog) {
    QObject named;
    named.setObjectName("lstAvailable");
    auto passing = std::make_unique<QTimer>();
    EXPECT_FALSE(DeliverGuarded(named, []() -> bool { throw jet::Error(jet::ErrorNumber::SyntaxError, "torn row"); }));
    EXPECT_FALSE(DeliverGuarded(*passing, [&]() -> bool {
        passing.reset();
        throw std::runtime_error("gone");
    }));
    EXPECT_TRUE(DeliverGuarded(named, [] { return true; }));
    const QString log = QString::fromUtf8(ReadWholeFile(LogFile()).value_or(QByteArray()));
    EXPECT_TRUE(log.contains("\tlstAvailable\t0x80040E14\ttorn row\n")) << log.toStdString();
    EXPECT_TRUE(log.contains("\tQTimer\t0\tgone\n")) << log.toStdString();
}

} // namespace
} // namespace tessaro::test
