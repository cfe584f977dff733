#include "office/StuckWatch.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>

namespace tessaro::office {

namespace {

struct Activity {
    bool busy = false; ///< a thread runs, or waits for a disk
    qint64 used = 0;   ///< processor time of all threads
};

/// The fields behind the name, which stands in brackets and may hold blanks: the state is the first.
QList<QByteArray> FieldsOf(const QString& thread) {
    QFile file(thread + QStringLiteral("/stat"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

Activity ActivityOf(qint64 processId) {
    constexpr qsizetype kUserTime = 11;
    constexpr qsizetype kSystemTime = 12;
    Activity activity;
    const QDir threads(QStringLiteral("/proc/%1/task").arg(processId));
    for (const QString& name : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QList<QByteArray> fields = FieldsOf(threads.filePath(name));
        if (fields.size() <= kSystemTime) continue;
        activity.busy = activity.busy || fields[0] == "R" || fields[0] == "D";
        activity.used += fields[kUserTime].toLongLong() + fields[kSystemTime].toLongLong();
    }
    return activity;
}

} // namespace

StuckWatch::StuckWatch(qint64 processId, std::chrono::milliseconds patience)
    : processId_(processId), patience_(patience), since_(std::chrono::steady_clock::now()) {}

bool StuckWatch::IsStuck() {
    const Activity now = ActivityOf(processId_);
    const auto time = std::chrono::steady_clock::now();
    if (now.busy || now.used != used_) {
        used_ = now.used;
        since_ = time;
    }
    return time - since_ >= patience_;
}

} // namespace tessaro::office
