#include "session/WriteFailure.h"

#include "session/Log.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

namespace tessaro {

namespace {

constexpr qint64 kHardlyAny = qint64{1} << 20; // bytes: a disk with less is full

QString Native(const QString& path) {
    return QDir::toNativeSeparators(path);
}

} // namespace

QString WhyNotWritable(const QString& file) {
    const QFileInfo info(file);
    const QFileInfo folder(info.absolutePath());
    if (!folder.isDir()) return FilledText(QStringLiteral("TS_WhyFolderGone"), {Native(folder.filePath())});
    if (info.isDir()) return FilledText(QStringLiteral("TS_WhyIsFolder"), {info.fileName()});
    if (info.exists() && !info.isWritable()) return FilledText(QStringLiteral("TS_WhyReadOnly"), {info.fileName()});
    if (!folder.isWritable()) return FilledText(QStringLiteral("TS_WhyFolderReadOnly"), {Native(folder.filePath())});
    const QStorageInfo disk(folder.filePath());
    if (disk.isValid() && disk.bytesAvailable() < kHardlyAny) return GetText(QStringLiteral("TS_WhyDiskFull"));
    return {};
}

// What was written of a file is away again when this is told, so that a disk that was full need not be so any more.
void TellNotWritten(const QString& file) {
    const QString known = WhyNotWritable(file);
    const QString why = known.isEmpty() ? GetText(QStringLiteral("TS_WhyPerhapsFull")) : known;
    LogNote(QStringLiteral("%1 can't be written. %2").arg(file, why));
    const QString text = FilledText(QStringLiteral("TS_ExportFailed"), {Native(file)});
    ShowMessage(text + QLatin1Char('\n') + why, MessageType::Ok, MessageIcon::Warning, {}, false);
}

} // namespace tessaro
