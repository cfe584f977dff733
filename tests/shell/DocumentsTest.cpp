#include "shell/Documents.h"

#include "TestPlaces.h"
#include "platform/ShellOpen.h"
#include "platform/SingleInstance.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "shell/FrameTest.h"
#include "shell/SoundLoop.h"
#include "shell/frmDocument.h"
#include "support/TestSession.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QShortcut>
#include <QTextBrowser>

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

/// The pages that the build made, on a running frame.
class PagesTest : public test::FrameTest {
  protected:
    ~PagesTest() override { SetShellOpener({}); }

    static QString Text(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    /// The keys that a page names, in its order: "Ctrl+O".
    static QStringList KeysIn(const QString& page) {
        QStringList keys;
        auto found =
            QRegularExpression(QStringLiteral("<span class=\"keys\" dir=\"ltr\">(.*?)</span>")).globalMatch(page);
        while (found.hasNext())
            keys << found.next().captured(1).remove(QRegularExpression(QStringLiteral("</?kbd>")));
        return keys;
    }
    QStringList ShortcutsOfTheFrame() {
        QStringList keys;
        for (const auto* entry : window->findChildren<QAction*>())
            keys << entry->shortcut().toString();
        for (const auto* button : window->findChildren<QAbstractButton*>())
            // A letter of access is a shortcut too, which the help tells of as such.
            if (!button->text().contains(QLatin1Char('&'))) keys << button->shortcut().toString();
        for (const auto* shortcut : window->findChildren<QShortcut*>())
            keys << shortcut->key().toString();
        keys.removeAll(QString());
        keys.removeDuplicates();
        return keys;
    }
    frmDocument* OpenPage() {
        for (QWidget* form : QApplication::topLevelWidgets())
            if (auto* page = qobject_cast<frmDocument*>(form); page && page->isVisible()) return page;
        return nullptr;
    }
};

TEST_F(PagesTest, TheHelpNamesEveryShortcutAndNoOther) {
    ASSERT_TRUE(StartInstalled());
    window->GoToStage(0);
    const QString help = Text(QStringLiteral(TESSARO_INSTALLATION "/Help/Help English en.htm"));
    const QStringList named = KeysIn(help);
    QStringList real = ShortcutsOfTheFrame();
    ASSERT_GT(real.size(), 20);
    for (const QString& keys : real)
        EXPECT_TRUE(named.contains(keys)) << keys.toStdString();
    // What lists, grids and gallery do with keys by themselves.
    real << QStringLiteral("Ctrl+Right,Ctrl+Left,Ctrl+Home,Ctrl+End,Alt+Up,Alt+Down,Ctrl+S,Shift+Tab,F2")
                .split(QLatin1Char(','));
    for (const QString& keys : named) {
        const bool plain = !keys.contains(QLatin1Char('+')) && !keys.startsWith(QLatin1Char('F'));
        EXPECT_TRUE(plain || real.contains(keys)) << keys.toStdString();
    }
}

TEST_F(PagesTest, PagesOpenInTheirOwnWindowWhereTheDesktopHasNoProgram) {
    ASSERT_TRUE(StartInstalled());
    SetShellOpener([](const QUrl&) { return false; });
    for (const LanguageFile& language : QList<LanguageFile>(LanguageFiles)) {
        window->Settings().ChangeLanguage(language.label);
        for (const int item : {0, 2}) {
            ShowHelpFileLinks(item);
            frmDocument* page = OpenPage();
            ASSERT_NE(page, nullptr) << language.label.toStdString() << item;
            auto* text = page->findChild<QTextBrowser*>(QStringLiteral("txtPage"));
            EXPECT_GT(text->toPlainText().size(), 400) << language.label.toStdString();
            EXPECT_TRUE(page->windowTitle().contains(QLatin1String("Tessaro")));
            page->close();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_FALSE(Text(LogFile()).contains(QLatin1String("no document")));
}

// A brace that a page shows is written as an entity, so one in the file is a placeholder that nothing replaced.
TEST_F(PagesTest, EveryPlaceholderIsReplaced) {
    int pages = 0;
    for (const char* name : {"Help", "Home", "Organization", "Product", "Tour"}) {
        const QDir folder(QStringLiteral(TESSARO_INSTALLATION "/") + QLatin1String(name));
        for (const QString& file : folder.entryList({QStringLiteral("*.htm")})) {
            const QString body = Text(folder.filePath(file)).section(QStringLiteral("<body>"), 1);
            EXPECT_GT(body.size(), 400) << file.toStdString();
            EXPECT_FALSE(body.contains(QRegularExpression(QStringLiteral("[{}]")))) << file.toStdString();
            ++pages;
        }
    }
    EXPECT_EQ(pages, 25);
}

TEST_F(PagesTest, APageThatIsOpenFollowsTheLanguage) {
    ASSERT_TRUE(StartInstalled());
    SetShellOpener([](const QUrl&) { return false; });
    ShowHelpFileLinks(0);
    frmDocument* page = OpenPage();
    ASSERT_NE(page, nullptr);
    const auto* close = page->findChild<QAbstractButton*>(QStringLiteral("cmdClose"));
    const QStringList english{page->windowTitle(), close->text()};
    window->Settings().ChangeLanguage(QStringLiteral("Arabic [ar]"));
    ASSERT_EQ(OpenPage(), page);
    EXPECT_NE(page->windowTitle(), english.at(0));
    EXPECT_NE(close->text(), english.at(1));
    EXPECT_EQ(page->layoutDirection(), Qt::RightToLeft);
    page->close();
}

TEST_F(PagesTest, WhatNothingOpensIsTold) {
    ASSERT_TRUE(StartInstalled());
    SetShellOpener([](const QUrl&) { return false; });
    window->Stages().ShowGallery(2);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages.first().contains(QLatin1String("installation")));
}

} // namespace tessaro
