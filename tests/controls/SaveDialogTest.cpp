#include "controls/SaveDialog.h"

#include "controls/SaveRun.h"
#include "platform/Files.h"
#include "session/ExportChoice.h"
#include "session/MessageAnswer.h"
#include "support/TestSession.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace tessaro::test {
namespace {

std::vector<SaveKind> Kinds() {
    return {{QStringLiteral("Web page"), {QStringLiteral(".htm"), QStringLiteral(".html")}},
            {QStringLiteral("CSV"), {QStringLiteral(".csv")}, {QStringLiteral(".notes.csv")}},
            {QStringLiteral("CSV, wide"), {QStringLiteral(".wide.csv")}, {QStringLiteral(".notes.csv")}},
            {QStringLiteral("PX"), {QStringLiteral(".px")}}};
}

TEST(SaveKindsTest, TheNameAndTheChosenKindAgree) {
    struct Case {
        const char* name;
        std::size_t chosen;
        std::size_t kind;
        const char* made;
    };
    const Case cases[] = {{"Values", 1, 1, "Values.csv"},
                          {"Values 2.5", 1, 1, "Values 2.5.csv"},
                          {"Values.PX", 1, 3, "Values.PX"},
                          {"Values.csv", 2, 2, "Values.wide.csv"},
                          {"Values.wide.csv", 1, 2, "Values.wide.csv"},
                          {"Values.html", 0, 0, "Values.html"},
                          {"Values.wide.csv", 0, 2, "Values.wide.csv"}};
    for (const Case& test : cases) {
        const QString name = QLatin1String(test.name);
        const std::size_t kind = KindOfName(Kinds(), name, test.chosen);
        EXPECT_EQ(kind, test.kind) << test.name;
        EXPECT_EQ(WithKind(Kinds(), name, kind), QLatin1String(test.made)) << test.name;
    }
    EXPECT_EQ(WithKind(Kinds(), QStringLiteral("Values.wide.csv"), 3), QStringLiteral("Values.px"));
    EXPECT_EQ(WithKind(Kinds(), QStringLiteral("Values.wide.csv"), 1), QStringLiteral("Values.csv"));
}

class SaveDialogTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        StartInstallation();
        LastExport() = {Folder(), QStringLiteral(".csv")};
    }
    [[nodiscard]] static SaveQuestion Question() { return {QStringLiteral("Save"), QStringLiteral("Values"), Kinds()}; }
    [[nodiscard]] static QString Beside(const SaveDialog& dialog) {
        return dialog.findChild<QLabel*>(QStringLiteral("lblBeside"))->text().trimmed();
    }
    [[nodiscard]] static QLineEdit& Name(const SaveDialog& dialog) {
        return *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    }
    /// Chooses a kind as the user does in the list of kinds.
    static void Choose(SaveDialog& dialog, int kind) {
        auto* list = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
        list->setCurrentIndex(kind);
        Q_EMIT list->textActivated(list->currentText());
        Q_EMIT list->activated(kind);
    }
};

TEST_F(SaveDialogTest, TheEndingAndTheFilesBesideFollowTheKind) {
    SaveDialog dialog(Question(), nullptr);
    dialog.show();
    EXPECT_EQ(Name(dialog).text(), "Values.csv") << "the kind of the last time";
    EXPECT_TRUE(Beside(dialog).contains("Values.notes.csv")) << Beside(dialog).toStdString();
    Choose(dialog, 3);
    EXPECT_EQ(Name(dialog).text(), "Values.px");
    EXPECT_EQ(Beside(dialog), QString());
    Name(dialog).setText(QStringLiteral("Mine.csv"));
    EXPECT_TRUE(Beside(dialog).contains("Mine.notes.csv")) << "what was typed counts";
    dialog.accept();
    EXPECT_EQ(dialog.File(), Folder() + "/Mine.csv");
    EXPECT_EQ(LastExport().ending, ".csv");
    EXPECT_EQ(messages, QStringList());
}

TEST_F(SaveDialogTest, AsksBeforeAnyFileIsReplaced) {
    ASSERT_TRUE(ReplaceFile(Folder() + "/Values.notes.csv", "notes"));
    SaveDialog dialog(Question(), nullptr);
    dialog.show();
    answers = {MessageCode::No, MessageCode::Yes};
    QTest::keyClick(&Name(dialog), Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible()) << "No leads back";
    EXPECT_EQ(dialog.File(), QString());
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages.front().contains("Values.notes.csv")) << messages.front().toStdString();
    QTest::keyClick(&Name(dialog), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.File(), Folder() + "/Values.csv");
}

TEST_F(SaveDialogTest, WhatCanNotBeWrittenIsToldAtOnce) {
    const QString file = Folder() + "/Values.csv";
    ASSERT_TRUE(ReplaceFile(file, "old"));
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));
    const bool isRoot = QFileInfo(file).isWritable();
    SaveDialog dialog(Question(), nullptr);
    dialog.show();
    if (!isRoot) {
        dialog.accept();
        EXPECT_EQ(messages.size(), 1);
        EXPECT_TRUE(dialog.isVisible());
    }
    Name(dialog).setText(QStringLiteral("gone/Values.csv"));
    messages.clear();
    dialog.accept();
    EXPECT_EQ(messages.size(), 1);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Name(dialog).text(), "gone/Values.csv") << "and can be corrected";
    EXPECT_EQ(ReadWholeFile(file), QByteArray("old"));
}

} // namespace
} // namespace tessaro::test
