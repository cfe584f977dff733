#include "office/PagePictures.h"

#include "office/Profile.h"

#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <QUrl>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tessaro::office {

namespace {

constexpr int kTimeLimit = 20000; ///< milliseconds for a file, of a process that lets all others go first
constexpr int kListenDelay = 300; ///< milliseconds between two looks for its socket
/// What the process ends with when it has just made a new profile usable: it is to be started again.
constexpr int kStartAgain = 81;
constexpr int kMostStarts = 3;
constexpr int kLeastPriority = 19;

} // namespace

PagePictures::PagePictures(QString profile, QObject* parent) : QObject(parent), profile_(std::move(profile)) {
    EndOrphan(profile_);
}

PagePictures::~PagePictures() {
    if (!process_) return;
    process_->disconnect(this);
    Kill();
    process_->waitForFinished(2000);
    ForgetProcess(profile_);
}

// It leaves the socket behind that it has made since its start.
void PagePictures::Kill() {
    if (process_->state() == QProcess::Running) RememberProcess(profile_, process_->processId());
    process_->kill();
}

void PagePictures::Draw(const QStringList& files, const QString& folder) {
    if (busy_) return;
    busy_ = true;
    starts_ = 0;
    arguments_ = {QStringLiteral("--headless"),
                  QStringLiteral("--norestore"),
                  QStringLiteral("--nologo"),
                  QStringLiteral("--nolockcheck"),
                  QStringLiteral("-env:UserInstallation=") +
                      QString::fromLatin1(QUrl::fromLocalFile(profile_).toEncoded()),
                  QStringLiteral("--convert-to"),
                  QStringLiteral("png:calc_png_Export"),
                  QStringLiteral("--infilter=MS Excel 97"),
                  QStringLiteral("--outdir"),
                  folder};
    // Links of plain names: a file's own name may look like an option, and names of two folders may be the same.
    files_ = static_cast<int>(files.size());
    int number = 0;
    for (const QString& file : files) {
        const QString link = QStringLiteral("%1/%2.xls").arg(folder).arg(number++);
        if (QFile::link(file, link)) arguments_ << link;
    }
    Start();
}

void PagePictures::Start() {
    const QString program = ProgramFolder();
    if (program.isEmpty() || !SeedProfile(profile_)) {
        QMetaObject::invokeMethod(
            this, [this] { Ended(true); }, Qt::QueuedConnection);
        return;
    }
    ++starts_;
    if (process_) process_.release()->deleteLater(); // it is just telling that it has ended
    process_ = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("URE_BOOTSTRAP"));
    environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"), QStringLiteral("svp"));
    process_->setProcessEnvironment(environment);
    process_->setStandardInputFile(QProcess::nullDevice());
    process_->setStandardOutputFile(QProcess::nullDevice());
    process_->setStandardErrorFile(QProcess::nullDevice());
    process_->setChildProcessModifier([parent = ::getpid()] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) ::_exit(1);
        ::setpriority(PRIO_PROCESS, 0, kLeastPriority);
        ::signal(SIGXFSZ, SIG_IGN);
    });
    connect(process_.get(), &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        const bool clean = status == QProcess::NormalExit;
        if (clean && code == kStartAgain && starts_ < kMostStarts)
            Start();
        else
            Ended(clean);
    });
    connect(process_.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) Ended(true);
    });
    process_->start(program + QStringLiteral("/soffice.bin"), arguments_);
    NoteProcess();
    const QPointer<QProcess> process = process_.get();
    QTimer::singleShot(kTimeLimit * files_, this, [this, process] {
        if (process && process_.get() == process) Kill();
    });
}

// Again until it has made its socket, so that the next start of ours finds it if this one crashes.
void PagePictures::NoteProcess() {
    if (!process_ || process_->state() == QProcess::NotRunning) return;
    if (!RememberProcess(profile_, process_->processId()))
        QTimer::singleShot(kListenDelay, this, &PagePictures::NoteProcess);
}

void PagePictures::Ended(bool clean) {
    ForgetProcess(profile_);
    if (process_) process_.release()->deleteLater();
    busy_ = false;
    Q_EMIT Finished(clean);
}

} // namespace tessaro::office
