#include "platform/Registry.h"

#include "platform/Files.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

class RegistryTest : public testing::Test {
  protected:
    RegistryTest() { qputenv("TESSARO_HOME", home_.path().toUtf8()); }
    void Write(const QTemporaryDir& folder, const QByteArray& value) const {
        ASSERT_TRUE(ReplaceFile(folder.filePath("registry.ini"),
                                "[HKEY_LOCAL_MACHINE\\Software\\TESSARO]\nLanguage Path=" + value + "\n"));
    }
    [[nodiscard]] QString Read() const {
        return GetRegistryValue(application_.path(), kLocalMachine, "software\\tessaro", "language path", "default");
    }
    QTemporaryDir home_;
    QTemporaryDir application_;
};

TEST_F(RegistryTest, TheUsersFileComesBeforeTheApplications) {
    EXPECT_EQ(Read(), QString("default"));
    Write(application_, "Languages");
    EXPECT_EQ(Read(), QString("Languages"));
    Write(home_, "/home/of/languages");
    EXPECT_EQ(Read(), QString("/home/of/languages"));
}

TEST_F(RegistryTest, PassesOverWhatIsNoString) {
    Write(home_, "dword:00000001");
    EXPECT_EQ(Read(), QString("default"));
    Write(application_, "Languages");
    EXPECT_EQ(Read(), QString("Languages"));
}

TEST_F(RegistryTest, AStringEndsAtItsFirstZero) {
    Write(home_, QByteArray("Lang\0uages", 10));
    EXPECT_EQ(Read(), QString("Lang"));
}

TEST_F(RegistryTest, AnEmptyStringIsAValue) {
    Write(home_, "");
    Write(application_, "Languages");
    EXPECT_EQ(Read(), QString());
}

} // namespace
} // namespace tessaro
