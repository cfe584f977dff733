#include "formats/CsvLook.h"

#include "formats/Encodings.h"
#include "formats/KeyedTable.h"

#include <algorithm>
#include <map>

namespace tessaro {

namespace {

constexpr qint64 kLooked = 128 * 1024;
constexpr int kRowsLooked = 200;

/// How well a delimiter cuts the lines: the share of those with the commonest number of fields, and that number.
struct Cut {
    double share = 0;
    std::size_t fields = 0;
};

Cut CutBy(const std::string& text, char delimiter) {
    CsvReader reader(std::make_unique<TextInMemory>(text), delimiter);
    std::map<std::size_t, int> rowsOf;
    TableRow row;
    int rows = 0;
    for (; rows < kRowsLooked && reader.Next(row); ++rows)
        ++rowsOf[row.count];
    Cut best;
    int most = 0;
    for (const auto& [fields, count] : rowsOf) {
        if (fields < 2 || count < most) continue;
        most = count;
        best = {double(count) / rows, fields};
    }
    return best;
}

} // namespace

char FindDelimiter(const std::string& beginning) {
    // The last line may be cut.
    const std::size_t end = beginning.rfind('\n');
    const std::string text = end == std::string::npos ? beginning : beginning.substr(0, end + 1);
    if (const std::size_t tab = text.find('\t'); tab != std::string::npos && IsKeyHead(text.substr(0, tab)))
        return '\t';
    char found = ',';
    Cut best;
    for (const char delimiter : {',', ';', '\t', '|'}) {
        const Cut cut = CutBy(text, delimiter);
        const bool better = cut.share > best.share + 0.1 || (cut.share > best.share - 0.1 && cut.fields > best.fields);
        if (!better) continue;
        best = cut;
        found = delimiter;
    }
    return found;
}

CsvForm FindCsvForm(const QString& path) {
    QByteArray beginning = BeginningOf(path, kLooked);
    CsvForm form;
    form.encoding = FindEncoding(beginning);
    form.delimiter = FindDelimiter(TextOf(beginning, form.encoding));
    return form;
}

std::unique_ptr<TableReader> OpenCsv(const QString& path, const CsvForm& form) {
    auto reader = std::make_unique<CsvReader>(std::make_unique<TextFile>(path, form.encoding), form.delimiter);
    if (form.delimiter != '\t') return reader;
    return std::make_unique<KeyedTable>(std::move(reader));
}

} // namespace tessaro
