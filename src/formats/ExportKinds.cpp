#include "formats/ExportKinds.h"

#include "formats/ValueTable.h"
#include "session/Strings.h"

#include <QFileInfo>

namespace tessaro {

namespace {

constexpr const char* kWorkbookEndings[] = {".xls", ".xlsx", ".ods"};

QString Caption(const char* key) {
    return PlainText(QLatin1String(key));
}

} // namespace

SaveKind PageKind() {
    return {Caption("TS_FilterWebPage"), {QStringLiteral(".htm"), QStringLiteral(".html")}};
}

std::vector<SaveKind> WorkbookKinds() {
    std::vector<SaveKind> kinds;
    for (const char* ending : kWorkbookEndings)
        kinds.push_back({Caption("TS_FilterWorkbook"), {QLatin1String(ending)}});
    return kinds;
}

SaveKind TextKind() {
    return {Caption("TS_FilterText"), {QStringLiteral(".txt")}};
}

std::vector<SaveKind> ValueKinds() {
    std::vector<SaveKind> kinds;
    for (const ValueForm& form : ValueForms())
        kinds.push_back({CaptionOf(form), {QLatin1String(form.ending)}, form.beside});
    return kinds;
}

std::vector<SaveKind> AllKinds() {
    std::vector<SaveKind> kinds{PageKind()};
    for (const SaveKind& kind : WorkbookKinds())
        kinds.push_back(kind);
    kinds.push_back(TextKind());
    for (const SaveKind& kind : ValueKinds())
        kinds.push_back(kind);
    return kinds;
}

bool IsWorkbookName(const QString& file) {
    for (const char* ending : kWorkbookEndings)
        if (file.endsWith(QLatin1String(ending), Qt::CaseInsensitive)) return true;
    return false;
}

} // namespace tessaro
