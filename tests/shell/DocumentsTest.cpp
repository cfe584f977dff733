#include "shell/Documents.h"

#include "session/Session.h"
#include "shell/SoundLoop.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tessaro {

class DocumentsTest : public test::SessionTest {
  protected:
    void Write(const char* name) {
        QDir().mkpath(AppPath + QLatin1String("/Help"));
        QFile file(AppPath + QLatin1String("/Help/") + QString::fromUtf8(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("page");
    }
    static QString Found() {
        return QFileInfo(DocumentFile(QStringLiteral("Help Folder"), QStringLiteral("Help File Name"),
                                      QStringLiteral(".hlp")))
            .fileName();
    }
};

TEST_F(DocumentsTest, LanguageFirstThenTheBaseAndTheKindAskedForFirst) {
    StartSample();
    EXPECT_EQ(Found(), QString());
    Write("Help English en.htm");
    EXPECT_EQ(Found(), QStringLiteral("Help English en.htm"));
    Write("Help English en.hlp");
    EXPECT_EQ(Found(), QStringLiteral("Help English en.hlp"));
    Language = QStringLiteral("Français [fr]");
    EXPECT_EQ(Found(), QStringLiteral("Help English en.hlp"));
    Write("Help Français fr.hlp");
    EXPECT_EQ(Found(), QStringLiteral("Help Français fr.hlp"));
}

TEST_F(DocumentsTest, NothingOpensWithoutAHelpDesk) {
    StartSample();
    EXPECT_FALSE(HasHelpLink(3));
    ShowHelpFileLinks(3);
    ShowHelpFileLinks(99);
    EXPECT_TRUE(messages.isEmpty());
}

// A machine without a sound device, a missing file and a file that is no sound are all no error.
TEST_F(DocumentsTest, SoundsThatCannotPlayAreQuiet) {
    StartSample();
    Write("noise.wav");
    for (const QString& file :
         {QString(), AppPath + QLatin1String("/none.wav"), AppPath + QLatin1String("/Help/noise.wav")}) {
        SoundLoop sound;
        sound.Load(file);
        sound.Tick();
        sound.SetMuted(false);
        sound.Tick();
        sound.Tick();
    }
    EXPECT_TRUE(messages.isEmpty());
}

} // namespace tessaro
