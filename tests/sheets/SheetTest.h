#pragma once

#include "office/SpreadsheetApplication.h"
#include "support/ReadXls.h"
#include "support/TestSession.h"

namespace tessaro::test {

/// Real workbooks, read back by a reader that has nothing to do with the program that wrote them.
class SheetTest : public SessionTest {
  protected:
    void SetUp() override {
        StartSample();
        static const QTemporaryDir profile;
        office::SpreadsheetApplication::SetProfileFolder(profile.path());
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }
    static office::Workbook NewBook() { return office::SpreadsheetApplication::Instance().NewWorkbook(1); }
    std::vector<ReadSheet> SaveAndRead(office::Workbook& book) const {
        const QString file = Folder() + QStringLiteral("/book.xls");
        book.SaveAs(file);
        book.Close(false);
        return ReadXls(file);
    }
};

} // namespace tessaro::test
