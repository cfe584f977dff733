#include "exchange/DatabaseExport.h"

#include "controls/FileDialogs.h"
#include "controls/WorkProgress.h"
#include "exchange/ImportSession.h"
#include "platform/Files.h"
#include "session/MessageAnswer.h"
#include "support/DataChanges.h"

#include <QApplication>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <QTimer>

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

class DatabaseExportTest : public ImportSession {
  protected:
    void TearDown() override {
        SetFileAnswerer({});
        ImportSession::TearDown();
    }
};

// Two values that are no numbers, for which a PX file has no room.
TEST_F(DatabaseExportTest, SaysBeforeWhatAFormCanNotHold) {
    ChangeData(QStringLiteral("UPDATE Data SET Datavalue = 'few' WHERE RowNId < 3"));
    const QString file = Folder() + QStringLiteral("/All.px");
    answers = {MessageCode::No};
    EXPECT_FALSE(SaveDatabaseValues(file, nullptr));
    EXPECT_FALSE(QFileInfo::exists(file));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages.front().contains(QLocale::system().toString(2))) << messages.front().toStdString();
    answers = {MessageCode::Yes};
    EXPECT_TRUE(SaveDatabaseValues(file, nullptr));
    EXPECT_EQ(CheckImport(file, GuessDraft(file), Into(ImportInto::Copy))->counts.same, 15);
}

TEST_F(DatabaseExportTest, AsksForTheFileAndTellsWhatFails) {
    FileQuestion asked;
    SetFileAnswerer([&](const FileQuestion& question) {
        asked = question;
        return Folder() + QStringLiteral("/All.csv");
    });
    const QScopedValueRollback<qint64> atOnce(WorkProgress::FirstShown, 0);
    ExportDatabase(nullptr);
    EXPECT_EQ(messages, QStringList());
    EXPECT_EQ(frame.busy, 0) << "the wait pointer is gone";
    EXPECT_EQ(asked.name, "Base.csv");
    EXPECT_TRUE(QFileInfo::exists(Folder() + QStringLiteral("/All.notes.csv")));
    EXPECT_TRUE(QFileInfo::exists(Folder() + QStringLiteral("/All.sources.csv")));
    EXPECT_TRUE(frame.calls.join(QLatin1Char(' ')).contains(QStringLiteral("All.notes.csv")));
    EXPECT_TRUE(asked.filter.contains(QStringLiteral("(*.geojson)")));
    EXPECT_EQ(Bytes(Folder() + QStringLiteral("/All.csv")).count('\n'), 18);
    EXPECT_FALSE(SaveDatabaseValues(QStringLiteral("/proc/All.csv"), nullptr));
    EXPECT_FALSE(SaveDatabaseValues(Folder() + QStringLiteral("/All.unknown"), nullptr));
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(DatabaseExportTest, CancelledItLeavesAllFilesAsTheyWere) {
    const QStringList names{QStringLiteral("/All.csv"), QStringLiteral("/All.notes.csv")};
    for (const QString& name : names)
        ASSERT_TRUE(ReplaceFile(Folder() + name, "old"));
    const QScopedValueRollback<qint64> atOnce(WorkProgress::FirstShown, 0);
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* progress = qobject_cast<WorkProgress*>(window)) progress->cancel();
    });
    user.start(0);
    EXPECT_FALSE(SaveDatabaseValues(Folder() + names.front(), nullptr));
    for (const QString& name : names)
        EXPECT_EQ(Bytes(Folder() + name), QByteArray("old"));
    EXPECT_FALSE(QFileInfo::exists(Folder() + QStringLiteral("/All.sources.csv")));
    EXPECT_EQ(messages, QStringList());
    EXPECT_EQ(frame.busy, 0);
}

} // namespace
} // namespace tessaro::test
