#include "office/ProcessLink.h"

#include "office/Convert.h"
#include "office/ProcessStart.h"
#include "office/Profile.h"
#include "office/StuckWatch.h"
#include "office/Worker.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPalette>
#include <QProcess>
#include <QScopeGuard>
#include <QScreen>

#include <atomic>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <csignal>
#include <osl/file.hxx>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tessaro::office {

using namespace std::chrono_literals;
using com::sun::star::lang::DisposedException;
using com::sun::star::lang::XMultiComponentFactory;
using com::sun::star::uno::Reference;
using com::sun::star::uno::XComponentContext;
using com::sun::star::uno::XInterface;

namespace {

constexpr auto kStartLimit = 30s;
constexpr auto kQuitLimit = 2s;
/// What the process ends with when it has just made a new profile usable: it is to be started again.
constexpr int kStartAgain = 81;
constexpr int kMostStarts = 4;

/// The context of our own side, made once for the process.
Reference<XComponentContext> OwnContext() {
    // Never released: the threads of the bridge may outlast whatever is taken down at the end of the program.
    static const auto& context = *new Reference<XComponentContext>([] {
        if (!qEnvironmentVariableIsSet("URE_BOOTSTRAP"))
            qputenv("URE_BOOTSTRAP", "vnd.sun.star.pathname:" + ProgramFolder().toUtf8() + "/fundamentalrc");
        return cppu::defaultBootstrap_InitialComponentContext();
    }());
    return context;
}

/// As large as our own windows, also where their scale isn't the display's.
void SetScale(QProcess& process) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    QProcessEnvironment environment = process.processEnvironment();
    environment.insert(QStringLiteral("SAL_FORCEDPI"),
                       QString::number(qRound(screen->logicalDotsPerInch() * screen->devicePixelRatio())));
    process.setProcessEnvironment(environment);
}

/// A message written to a process that has just died is to be an error of that call, not the end of our own program.
void KeepBrokenPipesFromEndingUs() {
    struct sigaction action {};
    if (::sigaction(SIGPIPE, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

rtl::OUString FileUrl(const QString& path) {
    rtl::OUString url;
    osl::FileBase::getFileURLFromSystemPath(ToUno(QDir::toNativeSeparators(QDir().absoluteFilePath(path))), url);
    return url;
}

namespace {

/// An answer that the process owes.
struct SignOfLife {
    StuckWatch watch;
    std::atomic<bool> given = false;
};

} // namespace

struct ProcessLink::State {
    bool shown = false;
    QString folder;
    QString pipe;
    std::unique_ptr<QProcess> process;
    qint64 processId = 0;
    unsigned generation = 0;
    bool connected = false;
    bool ending = false;
    int calls = 0;          ///< that are under way
    bool lostWaits = false; ///< to be told
    bool hung = false;      ///< that is why it was ended
    std::chrono::milliseconds patience = 6s;
    std::shared_ptr<SignOfLife> sign; ///< that is waited for
    std::chrono::milliseconds limit = 30s;
    Reference<XComponentContext> context; ///< for the worker
    std::unique_ptr<Worker> worker = std::make_unique<Worker>();
};

ProcessLink::ProcessLink(bool shown) : state_(std::make_unique<State>()) {
    state_->shown = shown;
}

ProcessLink::~ProcessLink() {
    Quit();
}

void ProcessLink::SetProfileFolder(const QString& folder) {
    state_->folder = folder;
    EndOrphan(folder);
}

// The state of the process itself, since its end is told by an event that may not have come yet.
bool ProcessLink::IsRunning() const {
    if (!state_->process || state_->processId == 0) return false;
    siginfo_t info{};
    const int result = ::waitid(P_PID, static_cast<id_t>(state_->processId), &info, WEXITED | WNOHANG | WNOWAIT);
    return result == 0 && info.si_pid == 0;
}

qint64 ProcessLink::ProcessId() const {
    return IsRunning() ? state_->processId : 0;
}

unsigned ProcessLink::Generation() const {
    return state_->generation;
}

void ProcessLink::LimitMemory(qint64 bytes) {
    const rlimit limit{static_cast<rlim_t>(bytes), RLIM_INFINITY};
    if (IsRunning()) ::prlimit(static_cast<pid_t>(state_->processId), RLIMIT_DATA, &limit, nullptr);
}

void ProcessLink::SetTimeLimit(std::chrono::milliseconds limit) {
    state_->limit = limit;
}

std::chrono::milliseconds ProcessLink::TimeLimit() const {
    return state_->limit;
}

void ProcessLink::StartProcess() {
    EndProcess();
    KeepBrokenPipesFromEndingUs();
    const QString program = ProgramFolder();
    if (program.isEmpty()) throw Error(Failure::Missing, QStringLiteral("the spreadsheet program is not installed"));
    const ProcessStart start =
        state_->folder.isEmpty()
            ? ProcessStart()
            : PrepareStart(state_->folder, true,
                           state_->shown ? QGuiApplication::palette().color(QPalette::Window) : QColor());
    if (start.profile.isEmpty())
        throw Error(Failure::Start, QStringLiteral("no profile can be made in \"%1\"").arg(state_->folder));
    ++state_->generation;
    state_->hung = false;
    state_->sign.reset();
    state_->pipe = start.pipe;
    auto process = std::make_unique<QProcess>();
    QStringList arguments{QStringLiteral("--norestore"), QStringLiteral("--nologo"), QStringLiteral("--nodefault"),
                          QStringLiteral("--nofirststartwizard"), QStringLiteral("--nolockcheck")};
    if (!state_->shown) arguments.prepend(QStringLiteral("--headless"));
    SetUp(*process, start, state_->shown ? QStringLiteral("gen") : QStringLiteral("svp"));
    if (state_->shown) SetScale(*process);
    connect(process.get(), &QProcess::finished, this, [this, generation = state_->generation] {
        if (generation != state_->generation || !state_->connected) return;
        state_->connected = false;
        ForgetProcess(state_->folder);
        if (!state_->ending) TellLost();
    });
    process->start(program + QStringLiteral("/soffice.bin"), arguments);
    if (!process->waitForStarted(5000))
        throw Error(Failure::Start,
                    QStringLiteral("the spreadsheet program can't be started: ") + process->errorString());
    state_->processId = process->processId();
    state_->process = std::move(process);
    RememberProcess(state_->folder, state_->processId);
}

void ProcessLink::EndProcess() {
    if (!state_->process) return;
    const bool wasConnected = std::exchange(state_->connected, false);
    const bool ending = std::exchange(state_->ending, true);
    state_->process->kill();
    state_->process->waitForFinished(5000);
    state_->process.reset();
    state_->processId = 0;
    state_->sign.reset();
    ForgetProcess(state_->folder);
    state_->ending = ending;
    if (!wasConnected) return;
    Post([state = state_.get()] { state->context.clear(); });
    if (!ending) TellLost();
}

// Only while it surely is our child: the number of an ended one may belong to somebody else.
void ProcessLink::KillProcess() const {
    if (IsRunning()) ::kill(static_cast<pid_t>(state_->processId), SIGKILL);
}

// Whoever hears it may let handles go, so it is never told in the midst of a call.
void ProcessLink::TellLost() {
    state_->lostWaits = true;
    if (state_->calls == 0) PassLostOn();
}

void ProcessLink::PassLostOn() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (state_->calls == 0 && std::exchange(state_->lostWaits, false)) Q_EMIT Lost(state_->hung);
        },
        Qt::QueuedConnection);
}

bool ProcessLink::TryConnect() {
    if (!IsOwnPipe(state_->pipe)) return false; // it doesn't listen yet
    try {
        const auto resolver = com::sun::star::bridge::UnoUrlResolver::create(OwnContext());
        const Reference<XInterface> context = resolver->resolve(
            ToUno(QStringLiteral("uno:pipe,name=%1;urp;StarOffice.ComponentContext").arg(state_->pipe)));
        state_->context.set(context, com::sun::star::uno::UNO_QUERY);
        return state_->context.is();
    } catch (const com::sun::star::uno::Exception&) {
        return false; // it is about to
    }
}

void ProcessLink::Connect() {
    QElapsedTimer timer;
    timer.start();
    for (int starts = 1; std::chrono::milliseconds(timer.elapsed()) < kStartLimit;) {
        bool connected = false;
        // A few tries at a time, so that the window can paint between them and an ended process is noticed.
        const bool late = RunOnWorker(
            [this, &connected] {
                for (int tries = 0; tries < 5 && !connected; ++tries) {
                    connected = TryConnect();
                    if (!connected) std::this_thread::sleep_for(10ms);
                }
            },
            state_->limit);
        if (connected && !late) {
            state_->connected = true;
            Q_EMIT Connected();
            return;
        }
        if (IsRunning()) continue;
        state_->process->waitForFinished(1000);
        const bool asked =
            state_->process->exitStatus() == QProcess::NormalExit && state_->process->exitCode() == kStartAgain;
        // One that ends on its own before it listens, as on a busy machine right after another was killed, gets a
        // second chance.
        if (starts >= (asked ? kMostStarts : 2)) break;
        ++starts;
        StartProcess();
    }
    EndProcess();
    throw Error(Failure::Start, QStringLiteral("the spreadsheet program does not answer after its start"));
}

void ProcessLink::Start() {
    if (IsRunning() && state_->connected) return;
    if (!IsRunning()) StartProcess();
    Connect();
}

void ProcessLink::StartInAdvance() {
    try {
        if (!IsRunning()) StartProcess();
    } catch (const Error&) {
        // Whoever needs it tells.
    }
}

void ProcessLink::Quit() {
    // What was left to be released is released now, and not while the program's libraries are taken down.
    const auto drain =
        qScopeGuard([this] { static_cast<void>(state_->worker->Run([] {}, kQuitLimit, [] { return false; }, [] {})); });
    if (!state_->process) return;
    state_->ending = true;
    if (IsRunning() && state_->connected) {
        try {
            static_cast<void>(
                RunOnWorker([this] { com::sun::star::frame::Desktop::create(Context())->terminate(); }, kQuitLimit));
            state_->process->waitForFinished(static_cast<int>(std::chrono::milliseconds(kQuitLimit).count()));
        } catch (...) {
            // It died under the call, which is what was wanted.
        }
    }
    EndProcess();
    state_->ending = false;
}

void ProcessLink::Run(const std::function<void()>& work) {
    Run(work, state_->limit);
}

void ProcessLink::Run(const std::function<void()>& work, std::chrono::milliseconds limit) {
    ++state_->calls;
    const auto end = qScopeGuard([this] {
        if (--state_->calls == 0 && state_->lostWaits) PassLostOn();
    });
    try {
        if (!RunOnWorker(work, limit)) return;
    } catch (const Error&) {
        throw;
    } catch (const DisposedException&) {
        if (Answers()) throw Error(Failure::Call, QStringLiteral("the document has been closed"));
        EndProcess(); // the system may take its time over a process that has ended
        throw Error(Failure::Lost, QStringLiteral("the spreadsheet program has ended"));
    } catch (const com::sun::star::uno::Exception& exception) {
        if (!IsRunning()) throw Error(Failure::Lost, QStringLiteral("the spreadsheet program has ended"));
        throw Error(Failure::Call, QStringLiteral("the spreadsheet program refuses: ") + FromUno(exception.Message));
    }
    EndHung();
    throw Error(Failure::TimedOut, QStringLiteral("the spreadsheet program did not answer in time and was ended"));
}

// The system may be slow, the process at work or waiting for a disk: then it has all its time.
bool ProcessLink::RunOnWorker(const std::function<void()>& work, std::chrono::milliseconds limit) {
    StuckWatch watch(state_->processId, state_->patience);
    return state_->worker->Run(
        work, limit, [&watch] { return watch.IsStuck(); }, [this] { KillProcess(); });
}

void ProcessLink::EndHung() {
    state_->hung = true;
    EndProcess();
}

void ProcessLink::Probe() {
    if (!state_->connected || state_->calls > 0) return state_->sign.reset();
    if (state_->sign && !state_->sign->given) {
        if (state_->sign->watch.IsStuck()) EndHung();
        return;
    }
    state_->sign = std::make_shared<SignOfLife>(StuckWatch(state_->processId, state_->patience));
    // A question that the process answers only when its windows' lock is free.
    Post([this, sign = state_->sign] {
        static_cast<void>(
            Need<com::sun::star::awt::XExtendedToolkit>(Service("com.sun.star.awt.Toolkit"))->getTopWindowCount());
        sign->given = true;
    });
}

void ProcessLink::SetPatience(std::chrono::milliseconds patience) {
    state_->patience = patience;
}

bool ProcessLink::Answers() {
    try {
        bool answers = false;
        const bool late = RunOnWorker([&] { answers = Context()->getServiceManager().is(); }, state_->limit);
        return answers && !late;
    } catch (const com::sun::star::uno::Exception&) {
        return false;
    }
}

void ProcessLink::Post(std::function<void()> work) {
    state_->worker->Post([work = std::move(work)] {
        try {
            work();
        } catch (const com::sun::star::uno::Exception&) {
            // The process is gone, and with it what was to be released.
        }
    });
}

Reference<XComponentContext> ProcessLink::Context() const {
    if (!state_->context.is()) throw DisposedException();
    return state_->context;
}

Reference<XInterface> ProcessLink::Service(const char* name) const {
    const Reference<XMultiComponentFactory> factory = Context()->getServiceManager();
    const Reference<XInterface> service = factory->createInstanceWithContext(Ascii(name), Context());
    if (!service.is()) throw Error(Failure::Call, QStringLiteral("no service ") + QLatin1String(name));
    return service;
}

} // namespace tessaro::office
