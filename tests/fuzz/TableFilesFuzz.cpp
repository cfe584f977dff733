#include "exchange/DraftGuess.h"
#include "exchange/FileSample.h"
#include "exchange/Observations.h"
#include "exchange/OpenSource.h"
#include "exchange/RowRules.h"
#include "formats/CsvLook.h"
#include "formats/JsonStatReader.h"
#include "formats/PxReader.h"
#include "formats/ReadError.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace tessaro {

QString GetText(const QString& key, bool) {
    return key;
}
QString PlainText(const QString& key) {
    return key;
}
QString FilledText(const QString& key, const QStringList& fillings) {
    return key + fillings.join(QLatin1Char(' '));
}

// Workbooks are read by another program.
FileKind KindOf(const QString&) {
    return FileKind::Csv;
}
std::unique_ptr<TableReader> OpenSource(const QString& file, const ImportDraft& draft) {
    if (draft.kind == FileKind::Px) return std::make_unique<PxReader>(file);
    if (draft.kind == FileKind::JsonStat) return std::make_unique<JsonStatReader>(file);
    return OpenCsv(file, draft.csv);
}

namespace {

/// The values of a file as its draft says. Each has its number and its period, or a reason why not.
void ReadValues(const QString& file, const ImportDraft& draft) {
    const ItemNames periods;
    RowRules rules(draft, periods);
    const std::unique_ptr<TableReader> reader = OpenSource(file, draft);
    Observations observations(*reader, draft);
    Observation one;
    for (std::int64_t last = 0; observations.Next(one);) {
        if (one.row < last || reader->Percent() < 0 || reader->Percent() > 100) std::abort();
        last = one.row;
        if (rules.Read(one) == RowRules::Outcome::Taken && (rules.Number().empty() || rules.Period().empty()))
            std::abort();
    }
}

} // namespace

} // namespace tessaro

/// Any bytes as a table: the first one tells whether they are CSV, PX or JSON-stat, and whether blank cells repeat what
/// is above. Its columns are guessed, the guess is written down and read again, and all values are read by it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaro;
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/tables-XXXXXX"));
    if (size < 2) return 0;
    const QString path = folder.filePath(QStringLiteral("table"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(data) + 1, static_cast<qint64>(size) - 1) < 0)
        std::abort();
    file.close();
    static constexpr FileKind kinds[] = {FileKind::Csv, FileKind::Px, FileKind::JsonStat, FileKind::Csv};
    try {
        ImportDraft draft;
        draft.kind = kinds[data[0] % 4];
        if (draft.kind == FileKind::Csv) draft.csv = FindCsvForm(path);
        GuessColumns(SampleOf(*OpenSource(path, draft)), draft);
        draft.repeatsAbove = data[0] >= 128;
        ImportDraft again;
        if (!ReadDraft(WrittenDraft(draft), again) || !(again == draft)) std::abort();
        ReadValues(path, again);
    } catch (const ReadError&) {
        // refused, which is as good as read
    }
    return 0;
}
