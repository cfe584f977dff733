#include "presentation/RowsColumnsFile.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QDir>

namespace tessaro {

namespace {

constexpr int kHeadLines = 4;
constexpr int kReadLines = PivotFieldCount;
constexpr qint64 kLargestLayout = 1 << 20;
constexpr unsigned kInputPastEnd = 62;
constexpr unsigned kFileNotFound = 53;
constexpr unsigned kPathFileAccess = 75;
const char* const kRows = "Rows             : ";
const char* const kColumns = "Columns          : ";

QString AppDataFolder() {
    return JoinPath({AppPath, Setting(QStringLiteral("App Data Folder"))});
}

/// Key lines of one list. The key is set off by the blanks that its caption has around it.
QByteArray Lines(const char* label, const RowsColumns::FieldList& fields) {
    QByteArray lines;
    for (const PivotField field : fields) {
        const QString caption = CaptionOf(field);
        lines += label;
        lines += QByteArray(caption.size() - caption.trimmed().size(), ' ');
        lines += InfoOf(field).key;
        lines += "\r\n";
    }
    return lines;
}

void TakeLine(const QByteArray& raw, RowsColumns& arrangement) {
    const QByteArray line = raw.trimmed();
    const auto field = FieldOfKey(QString::fromLatin1(line.mid(19)).trimmed());
    const QByteArray label = line.left(17).trimmed().toUpper();
    if (!field || arrangement.PlacementOf(*field) != Placement::Unused) return;
    if (label == "ROWS") arrangement.Place(*field, Placement::Row);
    if (label == "COLUMNS") arrangement.Place(*field, Placement::Column);
}

} // namespace

QString LayoutExtension(WizardKind kind) {
    return kind == WizardKind::Table ? QStringLiteral(".twf") : QStringLiteral(".xyf");
}

QString LayoutFolder() {
    const QString own = WritablePlace(AppDataFolder(), AppPath, CacheFolder);
    return FolderExists(own) ? FindPath(own) : FindPath(AppDataFolder());
}

QString LayoutFolderForWriting() {
    const QString folder = WritablePlace(AppDataFolder(), AppPath, CacheFolder);
    if (!FolderExists(folder)) QDir().mkpath(folder);
    return FindPath(folder);
}

QByteArray LayoutBytes(const RowsColumns& arrangement, WizardKind kind) {
    QByteArray bytes = kind == WizardKind::Table ? "[TableWizard Selection]" : "[GraphWizard Selection]";
    bytes += "\r\n \r\n \r\nRows | Columns\r\n";
    bytes += Lines(kRows, arrangement.Rows());
    bytes += Lines(kColumns, arrangement.Columns());
    return bytes;
}

bool ReadLayout(const QByteArray& bytes, RowsColumns& arrangement) {
    arrangement.Reset();
    qsizetype start = 0;
    for (int number = 0; number < kHeadLines + kReadLines; ++number) {
        if (start >= bytes.size()) return false;
        const qsizetype end = bytes.indexOf('\n', start);
        const qsizetype length = (end < 0 ? bytes.size() : end) - start;
        if (number >= kHeadLines) TakeLine(bytes.mid(start, length), arrangement);
        start += length + 1;
    }
    return true;
}

bool SaveRowsColumns(const QString& fileName, const RowsColumns& arrangement, WizardKind kind) {
    if (ReplaceFile(fileName, LayoutBytes(arrangement, kind))) return true;
    ReportError(kPathFileAccess, QStringLiteral("Path/File access error: ") + fileName,
                QStringLiteral("SaveRowsColumns"));
    return false;
}

void LoadRowsColumns(const QString& fileName, RowsColumns& arrangement) {
    const auto bytes = ReadWholeFile(fileName, kLargestLayout);
    if (!bytes)
        ReportError(kFileNotFound, QStringLiteral("File not found: ") + fileName, QStringLiteral("LoadRowsColumns"));
    else if (!ReadLayout(*bytes, arrangement))
        ReportError(kInputPastEnd, QStringLiteral("Input past end of file: ") + fileName,
                    QStringLiteral("LoadRowsColumns"));
}

} // namespace tessaro
