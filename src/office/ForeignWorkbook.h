#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace tessaro::office {

class Document;
class Workbook;

/// A workbook of any maker (.xls, .xlsx, .ods), opened for reading by the program that never shows a window, with
/// bounded memory, without macros and links to other files. Every function throws Error.
class ForeignWorkbook final {
  public:
    /// Failure::File for what is no workbook, asks for a password, or would unpack to gigabytes.
    explicit ForeignWorkbook(const QString& file);
    ~ForeignWorkbook();
    ForeignWorkbook(const ForeignWorkbook&) = delete;
    ForeignWorkbook& operator=(const ForeignWorkbook&) = delete;

    [[nodiscard]] QStringList SheetNames() const;
    /// Writes what a sheet (from 1) holds, as if typed: comma-separated, UTF-8, texts in quotation marks; numbers with
    /// all their digits, results for formulas, dates as dates.
    void SaveSheetAsText(int sheet, const QString& file) const;

  private:
    std::shared_ptr<Document> document_;
};

/// Writes what a workbook is now to another file, in the format of its ending: .ods, or else .xlsx.
void SaveCopyAs(const Workbook& book, const QString& file);
/// True for a file that begins as a workbook of one of these kinds does.
[[nodiscard]] bool IsWorkbookFile(const QString& path);

} // namespace tessaro::office
