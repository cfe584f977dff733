#include "office/PagePictures.h"

#include "office/CompoundFile.h"
#include "office/ProcessStart.h"
#include "office/Profile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QTimer>

#include <sys/resource.h>

namespace tessaro::office {

namespace {

constexpr int kTimeLimit = 60000; ///< milliseconds without a picture; the process lets all others go first
/// What the process ends with when it has just made a new profile usable: it is to be started again.
constexpr int kStartAgain = 81;
constexpr int kMostStarts = 3;
constexpr int kLeastPriority = 19;
constexpr rlim_t kMostMemory = 800u << 20; ///< bytes

} // namespace

PagePictures::PagePictures(QString profile, QObject* parent) : QObject(parent), profile_(std::move(profile)) {
    EndOrphan(profile_);
}

PagePictures::~PagePictures() {
    if (!process_) return;
    process_->disconnect(this);
    process_->kill();
    process_->waitForFinished(2000);
    ForgetProcess(profile_);
}

void PagePictures::Draw(const QStringList& files, const QString& folder) {
    if (busy_) return;
    busy_ = true;
    starts_ = 0;
    arguments_ = {QStringLiteral("--headless"),
                  QStringLiteral("--norestore"),
                  QStringLiteral("--nologo"),
                  QStringLiteral("--nolockcheck"),
                  QStringLiteral("--convert-to"),
                  QStringLiteral("png:calc_png_Export"),
                  QStringLiteral("--infilter=MS Excel 97"),
                  QStringLiteral("--outdir"),
                  folder};
    // Links of plain names: a file's own name may look like an option, and names of two folders may be the same.
    folder_ = folder;
    int number = 0;
    for (const QString& file : files) {
        const QString link = QStringLiteral("%1/%2.xls").arg(folder).arg(number++);
        if (IsCompoundFile(file) && QFile::link(file, link)) arguments_ << link;
    }
    Start();
}

void PagePictures::Start() {
    const QString program = ProgramFolder();
    const bool canDraw = !program.isEmpty() && arguments_.back() != folder_; // there are files
    const ProcessStart start = canDraw ? PrepareStart(profile_, false) : ProcessStart();
    if (start.profile.isEmpty()) {
        QMetaObject::invokeMethod(
            this, [this] { Ended(true); }, Qt::QueuedConnection);
        return;
    }
    ++starts_;
    if (process_) process_.release()->deleteLater(); // it is just telling that it has ended
    process_ = std::make_unique<QProcess>();
    SetUp(*process_, start, QStringLiteral("svp"), kLeastPriority);
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
    RememberProcess(profile_, process_->processId());
    // What a file unpacks to may be a thousand times its size.
    const rlimit most{kMostMemory, kMostMemory};
    ::prlimit(static_cast<pid_t>(process_->processId()), RLIMIT_DATA, &most, nullptr);
    Watch(process_.get(), 0);
}

/// Ends a process that has drawn nothing for as long as one file may take.
void PagePictures::Watch(const QPointer<QProcess>& process, qsizetype drawn) {
    QTimer::singleShot(kTimeLimit, this, [this, process, drawn] {
        if (!process || process_.get() != process) return;
        const qsizetype now = QDir(folder_).entryList({QStringLiteral("*.png")}).size();
        if (now == drawn) return process_->kill();
        Watch(process, now);
    });
}

void PagePictures::Ended(bool clean) {
    ForgetProcess(profile_);
    if (process_) process_.release()->deleteLater();
    busy_ = false;
    Q_EMIT Finished(clean);
}

} // namespace tessaro::office
