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
constexpr int kReadLines = kPivotFieldCount;
constexpr qint64 kLargestLayout = 1 << 20;
constexpr unsigned kInputPastEnd = 62;
constexpr unsigned kBadFileFormat = 321;
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

/// False when the line is neither empty nor names a list and a field.
bool TakeLine(const QByteArray& raw, RowsColumns& arrangement) {
    const QByteArray line = raw.trimmed();
    if (line.isEmpty()) return true;
    const auto field = FieldOfKey(QString::fromLatin1(line.mid(19)).trimmed());
    const QByteArray label = line.left(17).trimmed().toUpper();
    if (!field || (label != "ROWS" && label != "COLUMNS")) return false;
    if (arrangement.PlacementOf(*field) == Placement::Unused)
        arrangement.Place(*field, label == "ROWS" ? Placement::Row : Placement::Column);
    return true;
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

LayoutRead ReadLayout(const QByteArray& bytes, RowsColumns& arrangement) {
    RowsColumns read;
    qsizetype start = 0;
    int number = 0;
    for (; number < kHeadLines + kReadLines && start < bytes.size(); ++number) {
        const qsizetype end = bytes.indexOf('\n', start);
        const qsizetype length = (end < 0 ? bytes.size() : end) - start;
        if (number >= kHeadLines && !TakeLine(bytes.mid(start, length), read)) return LayoutRead::Damaged;
        start += length + 1;
    }
    if (read == RowsColumns()) return LayoutRead::Damaged;
    arrangement = read;
    return number < kHeadLines + kReadLines ? LayoutRead::Short : LayoutRead::Whole;
}

bool SaveRowsColumns(const QString& fileName, const RowsColumns& arrangement, WizardKind kind) {
    if (ReplaceFile(fileName, LayoutBytes(arrangement, kind))) return true;
    ReportError(FileError::NoAccess, QStringLiteral("Path/File access error: ") + fileName,
                QStringLiteral("SaveRowsColumns"));
    return false;
}

bool LoadRowsColumns(const QString& fileName, RowsColumns& arrangement) {
    const auto report = [&](auto number, const char* what) {
        ReportError(number, QLatin1String(what) + QStringLiteral(": ") + fileName, QStringLiteral("LoadRowsColumns"));
    };
    const auto bytes = ReadWholeFile(fileName, kLargestLayout);
    if (!bytes) {
        report(FileError::NotFound, "File not found");
        return false;
    }
    const LayoutRead read = ReadLayout(*bytes, arrangement);
    if (read == LayoutRead::Short) report(kInputPastEnd, "Input past end of file");
    if (read == LayoutRead::Damaged) report(kBadFileFormat, "Damaged layout");
    return read != LayoutRead::Damaged;
}

} // namespace tessaro
