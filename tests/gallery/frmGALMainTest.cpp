#include "gallery/frmGALMain.h"

#include "controls/FlatStyle.h"
#include "controls/OfficeHost.h"
#include "gallery/PresentationList.h"
#include "support/GallerySession.h"
#include "support/TimeBound.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTest>

#include <sys/stat.h>

namespace tessaro {

namespace {

/// The browser off screen: no workbook can be shown here, everything else works.
class frmGALMainTest : public test::GallerySession {
  protected:
    void SetUp() override {
        test::GallerySession::SetUp();
        MakeFolder(QStringLiteral("Old"));
        for (const char* name : {"Graph - a.Xls", "Map - b.Xls", "Table - c.Xls"})
            MakeFile(QLatin1String(name), "x");
    }

    struct Screen {
        Screen() {
            form.resize(900, 600);
            form.show();
            form.Enter();
            QTest::qWait(1);
        }
        template <class Control> [[nodiscard]] Control* Get(const char* name) const {
            return form.findChild<Control*>(QLatin1String(name));
        }
        [[nodiscard]] PresentationList* List() const { return Get<PresentationList>("lstPresentations"); }
        [[nodiscard]] QStringList Texts() const {
            QStringList texts;
            for (int row = 0; row < List()->model()->rowCount(); ++row)
                texts << List()->model()->index(row, 0).data().toString();
            return texts;
        }
        [[nodiscard]] QModelIndex Row(int row) const { return List()->model()->index(row, 0); }
        void ClickRow(int row, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) {
            QTest::mouseClick(List()->viewport(), button, modifiers, List()->visualRect(Row(row)).center());
        }
        void Press(Qt::Key key) { QTest::keyClick(List(), key); }
        [[nodiscard]] bool Offers(const char* button) const { return Get<QPushButton>(button)->isEnabled(); }

        frmGALMain form;
    };
};

} // namespace

TEST_F(frmGALMainTest, ListsFoldersAndWorkbooksAndOpensTheFirstWorkbook) {
    const Screen screen;
    EXPECT_EQ(screen.Texts(), (QStringList{QStringLiteral("Old"), QStringLiteral("Graph - a"),
                                           QStringLiteral("Map - b"), QStringLiteral("Table - c")}));
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Graph - a.Xls"));
    EXPECT_EQ(screen.form.windowTitle(), QStringLiteral("Gallery - Graph - a.Xls"));
    EXPECT_EQ(screen.Get<QLineEdit>("txtPresFolder")->text(), Gallery());
    EXPECT_TRUE(screen.Get<QLabel>("lblPresentations")
                    ->text()
                    .contains(QLatin1Char('(') + QLocale().toString(3) + QLatin1Char(')')));
    EXPECT_EQ(screen.form.FormName(), QStringLiteral("GALL"));
}

TEST_F(frmGALMainTest, OnlyALeftClickOpensAndAFolderOffersNothing) {
    Screen screen;
    screen.ClickRow(3);
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Table - c.Xls"));
    EXPECT_TRUE(screen.Offers("cmdDelete"));
    screen.ClickRow(2, {}, Qt::RightButton);
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Table - c.Xls"));
    screen.ClickRow(0);
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Table - c.Xls"));
    EXPECT_FALSE(screen.Offers("cmdDelete"));
    EXPECT_FALSE(screen.Offers("cmdCopyToPPT"));
}

TEST_F(frmGALMainTest, GoesDownAndUpByMouseKeysAndText) {
    Screen screen;
    QTest::mouseDClick(screen.List()->viewport(), Qt::LeftButton, {},
                       screen.List()->visualRect(screen.Row(0)).center());
    EXPECT_EQ(GalleryFolder(), Gallery() + QStringLiteral("/Old"));
    EXPECT_TRUE(screen.Texts().isEmpty());
    QTest::qWait(1);
    EXPECT_TRUE(screen.form.CurrentPresentation().isEmpty());
    screen.Press(Qt::Key_Backspace);
    EXPECT_EQ(GalleryFolder(), Gallery());
    screen.List()->setCurrentIndex(screen.Row(0));
    screen.Press(Qt::Key_Return);
    EXPECT_EQ(GalleryFolder(), Gallery() + QStringLiteral("/Old"));
    screen.form.cmdBrowseUp_Click();
    auto* folder = screen.Get<QLineEdit>("txtPresFolder");
    folder->setText(Gallery() + QStringLiteral("/Old"));
    QTest::keyClick(folder, Qt::Key_Return);
    EXPECT_EQ(GalleryCustomFolder, Gallery() + QStringLiteral("/Old"));
    SetFileAnswerer([this](const FileQuestion& question) {
        EXPECT_EQ(question.title, QStringLiteral("Locate Gallery Folder"));
        EXPECT_EQ(question.folder, Gallery() + QStringLiteral("/Old"));
        return Gallery();
    });
    screen.form.cmdBrowse_Click();
    EXPECT_EQ(screen.Texts().size(), 4);
}

TEST_F(frmGALMainTest, AboveTheRootIsNothing) {
    SetGalleryFolder(QStringLiteral("/"));
    Screen screen;
    screen.form.cmdBrowseUp_Click();
    EXPECT_EQ(GalleryFolder(), QStringLiteral("/"));
}

TEST_F(frmGALMainTest, AFolderThatHasGoneIsEmptyWithoutAnError) {
    Screen screen;
    QDir(Gallery()).removeRecursively();
    // One that is still listed leaves the list when it is clicked, and all of them with F5.
    screen.ClickRow(2);
    EXPECT_EQ(screen.Texts().size(), 3);
    screen.Press(Qt::Key_F5);
    EXPECT_TRUE(screen.Texts().isEmpty());
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_TRUE(screen.form.CurrentPresentation().isEmpty());
    EXPECT_TRUE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains("can't be read"));
    const Screen another;
    EXPECT_TRUE(another.Texts().isEmpty());
    screen.form.cmdBrowseUp_Click(); // to what is still there above it
    EXPECT_EQ(GalleryFolder(), QFileInfo(Gallery()).path());
}

TEST_F(frmGALMainTest, DeletesAfterAQuestionAndShowsTheNext) {
    Screen screen;
    screen.ClickRow(1);
    screen.ClickRow(2, Qt::ControlModifier);
    answers = {MessageCode::No, MessageCode::Yes};
    screen.Press(Qt::Key_Delete);
    EXPECT_TRUE(HasFile(QStringLiteral("Graph - a.Xls")));
    screen.form.cmdDelete_Click();
    EXPECT_EQ(messages, (QStringList{QStringLiteral("315"), QStringLiteral("315")}));
    EXPECT_FALSE(HasFile(QStringLiteral("Graph - a.Xls")));
    EXPECT_FALSE(HasFile(QStringLiteral("Map - b.Xls")));
    EXPECT_EQ(screen.Texts(), (QStringList{QStringLiteral("Old"), QStringLiteral("Table - c")}));
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Table - c.Xls"));
    answers = {MessageCode::Yes};
    screen.form.cmdDelete_Click();
    EXPECT_FALSE(screen.Offers("cmdDelete"));
    EXPECT_FALSE(screen.Offers("cmdCopyToPPT"));
    screen.form.cmdDelete_Click(); // nothing is selected: no question
    EXPECT_EQ(messages.size(), 3);
    EXPECT_TRUE(QDir(Gallery() + QStringLiteral("/Old")).exists());
}

TEST_F(frmGALMainTest, WhatCanNotBeDeletedStaysListed) {
    Screen screen;
    screen.ClickRow(3);
    // A folder of the same name has come meanwhile.
    QFile::remove(Gallery() + QStringLiteral("/Table - c.Xls"));
    MakeFolder(QStringLiteral("Table - c.Xls"));
    answers = {MessageCode::Yes};
    screen.form.cmdDelete_Click();
    EXPECT_EQ(screen.Texts().size(), 4);
    EXPECT_TRUE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains("cmdDelete_Click"));
}

TEST_F(frmGALMainTest, TheFilterHidesWithoutForgetting) {
    Screen screen;
    auto* filter = screen.Get<QLineEdit>("txtFilter");
    QTest::keyClicks(filter, QStringLiteral("TABLE"));
    EXPECT_EQ(screen.Texts(), QStringList{QStringLiteral("Table - c")});
    screen.ClickRow(0);
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Table - c.Xls"));
    filter->clear();
    EXPECT_EQ(screen.Texts().size(), 4);
    EXPECT_EQ(screen.List()->currentIndex().row(), 3);
}

TEST_F(frmGALMainTest, ReadingAgainFindsWhatIsNewAndKeepsThePlace) {
    Screen screen;
    screen.ClickRow(3);
    MakeFile(QStringLiteral("Map - aa.xls"), "x");
    screen.form.Refresh();
    EXPECT_EQ(screen.Texts().size(), 5);
    EXPECT_EQ(screen.List()->currentIndex().data().toString(), QStringLiteral("Table - c"));
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Table - c.Xls"));
}

TEST_F(frmGALMainTest, APipeInThePlaceOfAFileIsNotOpened) {
    Screen screen;
    QFile::remove(Gallery() + QStringLiteral("/Table - c.Xls"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(Gallery() + QStringLiteral("/Table - c.Xls")).constData(), 0600), 0);
    QElapsedTimer clock;
    clock.start();
    screen.ClickRow(3);
    EXPECT_EQ(screen.Texts().size(), 3);
    EXPECT_LE(clock.elapsed(), test::TimeBound(1000));
}

TEST_F(frmGALMainTest, NamesOfFilesAreNoMarkup) {
    MakeFile(QStringLiteral("<img src=x>.Xls"), "x");
    Screen screen;
    screen.form.ShowCurrentPresentation(QStringLiteral("<img src=x>.Xls"), false);
    const auto labels = screen.form.findChildren<QLabel*>();
    ASSERT_FALSE(labels.isEmpty());
    FlatStyle style; // of the program
    for (QLabel* label : labels) {
        style.polish(label);
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
    }
    EXPECT_TRUE(screen.Get<QLabel>("lblCaption")->text().contains(QStringLiteral("<img src=x>")));
}

TEST_F(frmGALMainTest, AnotherLanguageGoesThroughTheWholeScreen) {
    MakeFile(QStringLiteral("Tableau - d.Xls"), "x");
    Screen screen;
    const auto kindOf = [&](int row) {
        return screen.Row(row).data(Qt::AccessibleTextRole).toString().section(QStringLiteral(", "), 1);
    };
    EXPECT_EQ(kindOf(4), QString()); // its word is of another language
    const QString button = screen.Get<QPushButton>("cmdCopyToPPT")->text();
    const QString tip = screen.Get<QLineEdit>("txtFilter")->placeholderText();
    const OfficeHost* place = screen.form.findChild<OfficeHost*>(QStringLiteral("PicExcel"));
    const QString reason = place->accessibleDescription();
    ASSERT_EQ(reason, place->ErrorText()) << "there is no display to show it on";
    UseLanguage(QStringLiteral("fr"));
    screen.form.SetFormCaptions();
    EXPECT_EQ(kindOf(4), QStringLiteral("Tableau"));
    EXPECT_EQ(kindOf(1), KindWord(QLatin1Char('G')));
    EXPECT_NE(screen.Get<QPushButton>("cmdCopyToPPT")->text(), button);
    EXPECT_NE(screen.Get<QLineEdit>("txtFilter")->placeholderText(), tip);
    EXPECT_EQ(place->accessibleDescription(), place->ErrorText());
    EXPECT_NE(place->accessibleDescription(), reason);
    EXPECT_TRUE(screen.form.windowTitle().startsWith(QStringLiteral("Galerie")))
        << screen.form.windowTitle().toStdString();
    EXPECT_EQ(screen.form.CurrentPresentation(), QStringLiteral("Graph - a.Xls"));
}

TEST_F(frmGALMainTest, TenThousandWorkbooksAreListedAtOnce) {
    for (int n = 0; n < 10000; ++n)
        MakeFile(QStringLiteral("Table - %1.Xls").arg(n), "x");
    QElapsedTimer clock;
    clock.start();
    const frmGALMain form;
    const auto* list = form.findChild<PresentationList*>();
    EXPECT_EQ(list->model()->rowCount(), 10004);
    EXPECT_LE(clock.elapsed(), test::TimeBound(1000));
}

} // namespace tessaro
