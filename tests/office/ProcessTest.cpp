#include "OfficeTest.h"
#include "office/PagePictures.h"
#include "office/ProcessLink.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTimer>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tessaro::office {

namespace {

using namespace std::chrono_literals;

using ProcessTest = OfficeTest;

bool Lives(qint64 processId) {
    QFile state(QStringLiteral("/proc/%1/stat").arg(processId));
    return state.open(QIODevice::ReadOnly) && !state.readAll().contains(") Z ");
}

bool IsGoneWithin(qint64 processId, int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (Lives(processId) && timer.elapsed() < milliseconds)
        ::usleep(10000);
    return !Lives(processId);
}

/// Stops a child of ours, and waits until none of its threads runs.
void Freeze(qint64 processId) {
    siginfo_t info{};
    ::kill(static_cast<pid_t>(processId), SIGSTOP);
    ::waitid(P_PID, static_cast<id_t>(processId), &info, WSTOPPED | WNOWAIT);
}

/// The folder of the user profile, whose name is another at each start.
QString ProfileIn(const QString& folder) {
    const QStringList found = QDir(folder).entryList({QStringLiteral("profile-*")}, QDir::Dirs);
    return found.isEmpty() ? QString() : folder + QLatin1Char('/') + found.front();
}

/// What is to be removed with the process: its sockets, and the folder of one.
QStringList SocketsNoted(const QString& folder) {
    QFile file(folder + QStringLiteral("/process"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(1);
}

QStringList Existing(const QStringList& paths) {
    QStringList existing;
    for (const QString& path : paths)
        if (QFileInfo::exists(path)) existing << path;
    return existing;
}

} // namespace

TEST_F(ProcessTest, StartsAnewAfterItWasKilled) {
    Application().Start();
    const qint64 first = Application().ProcessId();
    ASSERT_GT(first, 0);
    Workbook book = Application().NewWorkbook();
    ::kill(static_cast<pid_t>(first), SIGKILL);
    ASSERT_TRUE(IsGoneWithin(first, 2000));
    EXPECT_EQ(FailureOf([&] { book.Sheet(1).Cells(1, 1).SetValue(1.0); }), Failure::Lost);
    EXPECT_FALSE(book.IsOpen());
    Workbook next = Application().NewWorkbook();
    next.Sheet(1).Cells(1, 1).SetValue(1.0);
    EXPECT_EQ(next.Sheet(1).Cells(1, 1).Value(), Cell(1.0));
    EXPECT_NE(Application().ProcessId(), first);
    next.Close(false);
    book.Close(false); // the dead one does no harm
}

TEST_F(ProcessTest, EndsAProcessThatHangs) {
    Workbook book = Application().NewWorkbook();
    const qint64 hung = Application().ProcessId();
    QSignalSpy lost(&Application(), &SpreadsheetApplication::Lost);
    Application().SetTimeLimit(500ms);
    Freeze(hung);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(FailureOf([&] { static_cast<void>(book.SheetCount()); }), Failure::TimedOut);
    EXPECT_LT(timer.elapsed(), 3000);
    Application().SetTimeLimit(30s);
    EXPECT_TRUE(IsGoneWithin(hung, 2000));
    EXPECT_EQ(lost.count(), 0); // not in the midst of a call
    QCoreApplication::processEvents();
    EXPECT_EQ(lost.count(), 1);
    EXPECT_EQ(Application().NewWorkbook().SheetCount(), 1);
}

TEST_F(ProcessTest, EndsAProcessThatDoesNothingLongBeforeTheLimit) {
    Workbook book = Application().NewWorkbook();
    Application().SetPatience(600ms);
    Freeze(Application().ProcessId());
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(FailureOf([&] { static_cast<void>(book.SheetCount()); }), Failure::TimedOut);
    EXPECT_LT(timer.elapsed(), 5000);
    // One that is at work has its time.
    Workbook next = Application().NewWorkbook();
    Application().SetPatience(50ms);
    next.Sheet(1).Cells(1, 1).SetValues(Block(40000, std::vector<Cell>(8, QStringLiteral("a text"))));
    EXPECT_FALSE(FailureOf([&] { next.Sheet(1).Cells(1, 1, 40000, 8).AutoFitColumns(); }));
    Application().SetPatience(6s);
}

TEST_F(ProcessTest, FindsAProcessThatHangsWhileNobodyCalls) {
    Workbook book = Application().NewWorkbook();
    QSignalSpy lost(&Application(), &SpreadsheetApplication::Lost);
    Application().SetPatience(600ms);
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &Application(), &SpreadsheetApplication::Probe);
    timer.start(100ms);
    EXPECT_FALSE(lost.wait(1500)) << "an idle one is none that hangs";
    Freeze(Application().ProcessId());
    ASSERT_TRUE(lost.wait(5000));
    EXPECT_TRUE(lost.front().front().toBool());
    EXPECT_FALSE(book.IsOpen());
    Application().SetPatience(6s);
    timer.stop();
    EXPECT_EQ(Application().NewWorkbook().SheetCount(), 1);
}

TEST_F(ProcessTest, ToldOfADeathInTheMidstOfACall) {
    Workbook book = Application().NewWorkbook();
    book.Sheet(1).Cells(1, 1).SetValues(Block(40000, std::vector<Cell>(8, QStringLiteral("a text"))));
    static_cast<void>(book.SheetCount());
    const qint64 process = Application().ProcessId();
    QSignalSpy lost(&Application(), &SpreadsheetApplication::Lost);
    std::jthread killer([process] {
        std::this_thread::sleep_for(50ms);
        ::kill(static_cast<pid_t>(process), SIGKILL);
    });
    EXPECT_EQ(FailureOf([&] {
                  for (int times = 0; times < 1000; ++times)
                      book.Sheet(1).Cells(1, 1, 40000, 8).AutoFitColumns();
              }),
              Failure::Lost);
    ASSERT_TRUE(lost.count() > 0 || lost.wait(3000));
    EXPECT_EQ(lost.count(), 1);
    EXPECT_EQ(Application().NewWorkbook().SheetCount(), 1);
}

TEST_F(ProcessTest, ToldOfADeathThatTheNextCallMeetsFirst) {
    Application().Start();
    const qint64 process = Application().ProcessId();
    QSignalSpy lost(&Application(), &SpreadsheetApplication::Lost);
    ::kill(static_cast<pid_t>(process), SIGKILL);
    ASSERT_TRUE(IsGoneWithin(process, 2000));
    EXPECT_EQ(Application().NewWorkbook().SheetCount(), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(lost.count(), 1);
}

// While a call waits timers run and windows paint, and an end of the program that comes meanwhile doesn't cut it off.
TEST_F(ProcessTest, WaitsWithTheWindowAlive) {
    Workbook book = Application().NewWorkbook();
    const qint64 process = Application().ProcessId();
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] {
        if (++ticks == 5) QCoreApplication::quit();
    });
    timer.start(20ms);
    Freeze(process);
    std::jthread waker([process] {
        std::this_thread::sleep_for(400ms);
        ::kill(static_cast<pid_t>(process), SIGCONT);
    });
    EXPECT_EQ(book.SheetCount(), 1);
    EXPECT_GE(ticks, 5);
    EXPECT_EQ(Application().ProcessId(), process);
}

TEST_F(ProcessTest, StartsOnADamagedProfile) {
    const QTemporaryDir profile;
    ProcessLink connection(false);
    connection.SetProfileFolder(profile.path());
    connection.Start();
    connection.Quit();
    const QString registry = QStringLiteral("/user/registrymodifications.xcu");
    for (const QByteArray& content : {QByteArray(), QByteArray("<oor:items><item"), QByteArray(5000, '\x7f')}) {
        QFile file(ProfileIn(profile.path()) + registry);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();
        EXPECT_FALSE(FailureOf([&] { connection.Start(); })) << content.constData();
        connection.Quit();
    }
}

TEST_F(ProcessTest, TellsThatItCanNotStart) {
    const QTemporaryDir folder;
    QFile inTheWay(folder.filePath(QStringLiteral("profile")));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.close();
    ProcessLink connection(false);
    EXPECT_EQ(FailureOf([&] { connection.Start(); }), Failure::Start); // it has been told no folder
    connection.SetProfileFolder(inTheWay.fileName());
    EXPECT_EQ(FailureOf([&] { connection.Start(); }), Failure::Start);
    EXPECT_EQ(FailureOf([&] { connection.Run([&] { static_cast<void>(connection.Context()); }); }), Failure::Lost);
}

// The user has one open too: another process with a profile of its own.
TEST_F(ProcessTest, LeavesOthersAlone) {
    const QTemporaryDir profile;
    ProcessLink other(false);
    other.SetProfileFolder(profile.path());
    other.Start();
    const qint64 process = other.ProcessId();
    Application().Start();
    EXPECT_NE(Application().ProcessId(), process);
    ::kill(static_cast<pid_t>(Application().ProcessId()), SIGKILL);
    EXPECT_EQ(Application().NewWorkbook().SheetCount(), 1);
    Application().Quit();
    EXPECT_EQ(Application().NewWorkbook().SheetCount(), 1);
    EXPECT_TRUE(Lives(process));
    EXPECT_FALSE(FailureOf([&] { other.Run([&] { static_cast<void>(other.Context()); }); }));
}

TEST_F(ProcessTest, IsGoneAfterQuit) {
    Application().Start();
    const qint64 process = Application().ProcessId();
    Application().Quit();
    EXPECT_TRUE(IsGoneWithin(process, 100));
    EXPECT_FALSE(Application().IsRunning());
    EXPECT_EQ(Application().NewWorkbook().SheetCount(), 1);
}

TEST_F(ProcessTest, EndsWhatACrashedRunHasLeft) {
    const QTemporaryDir profile;
    const QString writer = profile.path() + QStringLiteral("/Writer");
    ASSERT_TRUE(QDir().mkpath(writer));
    // A process that looks like one of ours on this profile, and one that only got the same number.
    QProcess orphan;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("UserInstallation"), QStringLiteral("file://%1/profile-1").arg(writer));
    orphan.setProcessEnvironment(environment);
    orphan.start(QStringLiteral("bash"),
                 {QStringLiteral("-c"), QStringLiteral("sleep 60; :"), QStringLiteral("soffice.bin")});
    ASSERT_TRUE(orphan.waitForStarted());
    QProcess stranger;
    stranger.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    ASSERT_TRUE(stranger.waitForStarted());
    const auto remember = [&](qint64 processId) {
        QFile file(writer + QStringLiteral("/process"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::number(processId));
    };
    remember(stranger.processId());
    ProcessLink first(false);
    first.SetProfileFolder(writer);
    EXPECT_TRUE(Lives(stranger.processId()));
    remember(orphan.processId());
    ProcessLink second(false);
    second.SetProfileFolder(writer);
    EXPECT_TRUE(IsGoneWithin(orphan.processId(), 2000));
    stranger.kill();
    stranger.waitForFinished();
    orphan.waitForFinished();
}

TEST_F(ProcessTest, LeavesNothingBehindWhenItIsKilled) {
    const QTemporaryDir profile;
    ProcessLink connection(false);
    connection.SetProfileFolder(profile.path());
    connection.Start();
    const QStringList sockets = SocketsNoted(profile.path());
    EXPECT_EQ(sockets.size(), 3) << "one for us in a folder, one for whoever starts it on the same profile";
    EXPECT_EQ(Existing(sockets), sockets);
    const QString temporary = profile.path() + QStringLiteral("/Temp");
    EXPECT_FALSE(QDir(temporary).isEmpty()) << "its temporary files are with us";
    ::kill(static_cast<pid_t>(connection.ProcessId()), SIGKILL);
    connection.Quit();
    EXPECT_EQ(Existing(sockets), QStringList());
    EXPECT_FALSE(QDir(temporary).exists());
}

TEST_F(ProcessTest, LeavesNothingBehindInTheMidstOfAPicture) {
    const QTemporaryDir profile;
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("large.xls"));
    Workbook book = Application().NewWorkbook();
    book.Sheet(1).Cells(1, 1).SetValues(Block(30000, std::vector<Cell>(20, QStringLiteral("a text"))));
    book.SaveAs(file);
    book.Close(false);
    QStringList sockets;
    {
        PagePictures pictures(profile.path());
        pictures.Draw({file}, folder.path());
        QElapsedTimer timer;
        timer.start();
        while (sockets.isEmpty() && timer.elapsed() < 30000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
            sockets = Existing(SocketsNoted(profile.path()));
        }
        EXPECT_TRUE(pictures.IsBusy());
        ASSERT_EQ(sockets.size(), 1);
    }
    EXPECT_EQ(Existing(sockets), QStringList());
}

// Whatever the user's own files are open to, and whatever names other users have seen in use.
TEST_F(ProcessTest, ListensWhereNoOtherUserCanEnter) {
    const QTemporaryDir profile;
    ProcessLink connection(false);
    connection.SetProfileFolder(profile.path());
    const mode_t mask = ::umask(0);
    connection.Start();
    ::umask(mask);
    const QStringList first = SocketsNoted(profile.path());
    ASSERT_EQ(first.size(), 3);
    for (const QString& path : first + QStringList{ProfileIn(profile.path())}) {
        struct stat what {};
        ASSERT_EQ(::lstat(QFile::encodeName(path).constData(), &what), 0) << path.toStdString();
        EXPECT_EQ(what.st_mode & 0777U, 0700U) << path.toStdString();
        EXPECT_EQ(what.st_uid, ::geteuid());
    }
    EXPECT_EQ(QFileInfo(first.at(1)).path(), first.at(2));
    QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(connection.ProcessId()));
    ASSERT_TRUE(commandLine.open(QIODevice::ReadOnly));
    const QByteArray said = commandLine.readAll();
    EXPECT_FALSE(said.contains("pipe") || said.contains("profile")) << said.constData();
    connection.Quit();
    connection.Start();
    for (const QString& path : SocketsNoted(profile.path()))
        EXPECT_FALSE(first.contains(path)) << path.toStdString();
}

TEST_F(ProcessTest, DiesWithUs) {
    const QTemporaryDir profile;
    // The child is this program again, which starts the process, tells its number and waits to be killed.
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TESSARO_TEST_PROFILE"), profile.path());
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_also_run_disabled_tests"),
                                                          QStringLiteral("--gtest_filter=*DISABLED_WaitsToBeKilled")});
    ASSERT_TRUE(child.waitForStarted());
    QByteArray said;
    while (!said.contains("process=") && child.waitForReadyRead(20000))
        said += child.readAllStandardOutput();
    const qint64 office = said.mid(said.indexOf("process=") + 8).split('\n').front().toLongLong();
    ASSERT_GT(office, 0) << said.constData();
    ASSERT_TRUE(Lives(office));
    ::kill(static_cast<pid_t>(child.processId()), SIGKILL);
    child.waitForFinished();
    EXPECT_TRUE(IsGoneWithin(office, 2000));

    const QString writer = profile.path() + QStringLiteral("/Writer");
    const QStringList sockets = SocketsNoted(writer);
    EXPECT_EQ(Existing(sockets), sockets) << "nobody is left who could have removed them";
    ProcessLink next(false);
    next.SetProfileFolder(writer);
    EXPECT_EQ(Existing(sockets), QStringList());
    EXPECT_FALSE(QDir(writer + QStringLiteral("/Temp")).exists());
}

TEST_F(ProcessTest, DISABLED_WaitsToBeKilled) {
    SpreadsheetApplication::SetProfileFolder(qEnvironmentVariable("TESSARO_TEST_PROFILE"));
    Application().Start();
    std::printf("process=%lld\n", static_cast<long long>(Application().ProcessId()));
    std::fflush(stdout);
    ::sleep(60);
}

TEST_F(ProcessTest, TellsThatItIsMissing) {
    Application().Quit();
    qputenv("TESSARO_OFFICE", "/nowhere");
    EXPECT_FALSE(SpreadsheetApplication::IsInstalled());
    EXPECT_EQ(FailureOf([&] { Application().Start(); }), Failure::Missing);
    qunsetenv("TESSARO_OFFICE");
    EXPECT_TRUE(SpreadsheetApplication::IsInstalled());
    Application().Start();
}

} // namespace tessaro::office
