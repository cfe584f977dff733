#include "wizards/frmSaveGalleryAdvance.h"

#include "support/FullDisk.h"
#include "support/GallerySession.h"

#include <QLineEdit>
#include <QListWidget>

namespace tessaro {

namespace {

class SaveGalleryTest : public test::GallerySession {
  protected:
    void SetUp() override {
        test::GallerySession::SetUp();
        ASSERT_TRUE(ReplaceFile(TempFolder + QStringLiteral("/Work.xls"), "new"));
    }

    /// A form as a wizard opens it, with a name typed into it.
    struct Form {
        explicit Form(const QString& name, QChar type = QLatin1Char('T')) {
            form.SetPresentationType(type);
            form.SetSourceFile(TempFolder + QStringLiteral("/Work.xls"));
            form.SetFileTitle(QStringLiteral("Work"));
            form.Initialize();
            form.findChild<QLineEdit*>(QStringLiteral("txtPresentationName"))->setText(name);
        }
        frmSaveGalleryAdvance* operator->() { return &form; }
        frmSaveGalleryAdvance form;
    };
};

} // namespace

TEST_F(SaveGalleryTest, NamesThatNoFileCanHaveAreRefused) {
    for (const QString& name : {QString(), QStringLiteral("   "), QStringLiteral("a/b"), QStringLiteral("a:b"),
                                QStringLiteral("what?"), QStringLiteral("tab\tbed"), QString(250, QChar(0x0627))}) {
        Form form(name);
        messages.clear();
        form->CmdFinish_Click();
        EXPECT_EQ(messages, QStringList{QStringLiteral("037")}) << name.toStdString();
        EXPECT_EQ(form->CloseStatus(), 0);
    }
    EXPECT_TRUE(QDir(Gallery()).isEmpty());
}

TEST_F(SaveGalleryTest, TheKindStandsBeforeTheName) {
    for (const auto& [type, file] : {std::pair{'T', "Table - Health.Xls"}, {'G', "Graph - Health.Xls"}}) {
        Form form(QStringLiteral("  Health "), QLatin1Char(type));
        form->CmdFinish_Click();
        EXPECT_EQ(form->CloseStatus(), 1);
        EXPECT_TRUE(FileExists(Gallery() + QLatin1Char('/') + QLatin1String(file)));
    }
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(PresentationsOf(Gallery()),
              (QStringList{QStringLiteral("Graph - Health"), QStringLiteral("Table - Health")}));
}

TEST_F(SaveGalleryTest, AnExistingOneIsReplacedOnlyOnYes) {
    const QString target = PresentationFile(Gallery(), QLatin1Char('T'), QStringLiteral("Health"));
    ASSERT_TRUE(ReplaceFile(target, "old"));
    Form form(QStringLiteral("Health"));
    answers = {MessageCode::No, MessageCode::Yes};
    form->CmdFinish_Click();
    EXPECT_EQ(*ReadWholeFile(target), QByteArray("old"));
    EXPECT_EQ(form->CloseStatus(), 0);
    form->CmdFinish_Click();
    EXPECT_EQ(*ReadWholeFile(target), QByteArray("new"));
    EXPECT_EQ(messages, (QStringList{QStringLiteral("285"), QStringLiteral("285")}));
    EXPECT_TRUE(FileExists(TempFolder + QStringLiteral("/Work.xls")));
}

TEST_F(SaveGalleryTest, TheNewNameEndsInXlsWhateverTheOldOneDid) {
    MakeFile(QStringLiteral("table - HEALTH.xls"), "old");
    Form form(QStringLiteral("Health"));
    answers = {MessageCode::Yes};
    form->CmdFinish_Click();
    EXPECT_EQ(messages, QStringList{QStringLiteral("285")});
    EXPECT_EQ(FilesOf(Gallery()), QStringList{QStringLiteral("Table - Health.Xls")});
    EXPECT_EQ(*ReadWholeFile(form->SavedFile()), QByteArray("new"));
}

TEST_F(SaveGalleryTest, AFullDiskKeepsTheOldOne) {
    ASSERT_TRUE(ReplaceFile(TempFolder + QStringLiteral("/Work.xls"), QByteArray(100000, 'x')));
    MakeFile(QStringLiteral("Table - Health.Xls"), "old");
    Form form(QStringLiteral("Health"));
    answers = {MessageCode::Yes};
    {
        const test::FullDisk full(4096);
        form->CmdFinish_Click();
    }
    EXPECT_EQ(messages, (QStringList{QStringLiteral("285"), QStringLiteral("TS_GalleryFull")}));
    EXPECT_EQ(form->CloseStatus(), 0);
    EXPECT_EQ(FilesOf(Gallery()), QStringList{QStringLiteral("Table - Health.Xls")}); // no remains
    EXPECT_EQ(*ReadWholeFile(Gallery() + QStringLiteral("/Table - Health.Xls")), QByteArray("old"));
    answers = {MessageCode::Yes};
    form->CmdFinish_Click();
    EXPECT_EQ(form->CloseStatus(), 1);
}

TEST_F(SaveGalleryTest, AFolderThatHasGoneAndASourceThatHasGone) {
    Form form(QStringLiteral("Health"));
    QDir(Gallery()).removeRecursively();
    form->CmdFinish_Click();
    EXPECT_EQ(form->CloseStatus(), 0);
    EXPECT_FALSE(FolderExists(Gallery()));
    QDir().mkpath(Gallery());
    QFile::remove(TempFolder + QStringLiteral("/Work.xls"));
    form->CmdFinish_Click();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages.back(), QStringLiteral("TS_GalleryFull"));
    EXPECT_EQ(form->CloseStatus(), 0);
}

TEST_F(SaveGalleryTest, BackCancelAndAnotherFolder) {
    const QString other = Folder() + QStringLiteral("/Other");
    QDir().mkpath(other);
    ASSERT_TRUE(ReplaceFile(other + QStringLiteral("/Map - Rain.XLS"), "x"));
    ASSERT_TRUE(ReplaceFile(other + QStringLiteral("/notes.txt"), "x"));
    SetFileAnswerer([&](const FileQuestion&) { return other; });
    Form form(QStringLiteral("Health"));
    form->cmdBrowse_Click();
    EXPECT_EQ(GalleryCustomFolder, other);
    auto* list = form->findChild<QListWidget*>(QStringLiteral("lstPresentations"));
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("Map - Rain"));
    answers = {MessageCode::No, MessageCode::Yes};
    form->CmdCancel_Click();
    EXPECT_EQ(form->CloseStatus(), 0);
    form->CmdCancel_Click();
    EXPECT_EQ(form->CloseStatus(), 1);
    EXPECT_TRUE(form->SavedFile().isEmpty());
    form->CmdBack_Click();
    EXPECT_EQ(form->CloseStatus(), 0);
}

} // namespace tessaro
