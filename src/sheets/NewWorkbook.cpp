#include "sheets/NewWorkbook.h"

#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/TempFiles.h"
#include "session/Templates.h"
#include "sheets/TimeLimit.h"
#include "sheets/UnfinishedFile.h"

namespace tessaro {

QString MakeWorkbook(const WorkbookPlan& plan, const std::function<void(office::Workbook&)>& write) {
    const QString templateFile = TemplateFile(plan.templateName);
    if (!FileExists(templateFile)) return {};
    UnfinishedFile file(GetFreeFileName(plan.stem));
    GiveTimeFor(plan.values);
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(templateFile, file.Path());
    write(book);
    book.Close(false);
    file.Keep();
    return file.Path();
}

} // namespace tessaro
