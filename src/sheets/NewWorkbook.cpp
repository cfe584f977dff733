#include "sheets/NewWorkbook.h"

#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/TempFiles.h"
#include "session/Templates.h"
#include "sheets/TimeLimit.h"

#include <QFile>

namespace tessaro {

namespace {

/// A file that is removed again unless its maker comes to the end.
class UnfinishedFile final {
  public:
    explicit UnfinishedFile(QString path) : path_(std::move(path)) {}
    ~UnfinishedFile() {
        if (!kept_) QFile::remove(path_);
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    [[nodiscard]] const QString& Path() const { return path_; }
    void Keep() { kept_ = true; }

  private:
    QString path_;
    bool kept_ = false;
};

} // namespace

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
