#pragma once

#include "support/Locales.h"

#include <QTemporaryDir>

#include <clocale>
#include <gtest/gtest.h>
#include <string>

namespace tessaro::test {

/// While it lives, the C library of this process writes numbers as German does: "1,5".
class DecimalComma final {
  public:
    DecimalComma() : before_(std::setlocale(LC_NUMERIC, nullptr)) {
        EXPECT_FALSE(EnvironmentOf(QStringLiteral("de_DE"), locales_.path()).isEmpty()) << "localedef is missing";
        qputenv("LOCPATH", locales_.path().toUtf8());
        EXPECT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
    }
    ~DecimalComma() {
        std::setlocale(LC_NUMERIC, before_.c_str());
        qunsetenv("LOCPATH");
    }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

  private:
    QTemporaryDir locales_;
    std::string before_;
};

} // namespace tessaro::test
