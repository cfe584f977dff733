#include "exchange/OpenSource.h"

#include "formats/CsvLook.h"
#include "formats/JsonStatReader.h"
#include "formats/PxReader.h"
#include "formats/ReadError.h"
#include "office/ForeignWorkbook.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "sheets/UnfinishedFile.h"

#include <QFileInfo>

#include <algorithm>
#include <unistd.h>

namespace tessaro {

namespace {

/// A sheet that was written out as a text, which goes with its reader.
class SheetReader final : public TableReader {
  public:
    explicit SheetReader(std::unique_ptr<UnfinishedFile> text)
        : text_(std::move(text)), reader_(OpenCsv(text_->Path(), {"UTF-8", ','})) {}
    bool Next(TableRow& row) override { return reader_->Next(row); }
    [[nodiscard]] int Percent() const override { return reader_->Percent(); }

  private:
    std::unique_ptr<UnfinishedFile> text_;
    std::unique_ptr<TableReader> reader_;
};

std::unique_ptr<TableReader> OpenSheet(const QString& file, const QString& name) {
    static int made = 0;
    const QString path = JoinPath({TempFolder, QStringLiteral("Sheet_%1_%2.csv").arg(::getpid()).arg(++made)});
    auto text = std::make_unique<UnfinishedFile>(path);
    const office::ForeignWorkbook book(file);
    const qsizetype number = name.isEmpty() ? 0 : book.SheetNames().indexOf(name);
    if (number < 0) throw ReadError(QStringLiteral("TS_ReadNoSheet"), {file, name});
    book.SaveSheetAsText(static_cast<int>(number) + 1, path);
    return std::make_unique<SheetReader>(std::move(text));
}

} // namespace

FileKind KindOf(const QString& file) {
    const QString ending = QFileInfo(file).suffix().toLower();
    if (office::IsWorkbookFile(file)) return FileKind::Workbook;
    if (ending == QLatin1String("px")) return FileKind::Px;
    if (ending == QLatin1String("json")) return FileKind::JsonStat;
    return BeginningOf(file, 256).trimmed().startsWith('{') ? FileKind::JsonStat : FileKind::Csv;
}

QStringList SheetsOf(const QString& file) {
    return office::ForeignWorkbook(file).SheetNames();
}

std::unique_ptr<TableReader> OpenSource(const QString& file, const ImportDraft& draft) {
    switch (draft.kind) {
    case FileKind::Workbook:
        return OpenSheet(file, draft.sheet);
    case FileKind::Px:
        return std::make_unique<PxReader>(file);
    case FileKind::JsonStat:
        return std::make_unique<JsonStatReader>(file);
    case FileKind::Csv:
        break;
    }
    return OpenCsv(file, draft.csv);
}

} // namespace tessaro
