#pragma once

#include "office/Worksheet.h"

#include <QColor>
#include <QString>

#include <memory>

namespace tessaro::office {

class Document;

/// One open workbook. A handle: copies mean the same workbook; the last one that goes closes a workbook that is not
/// shown, without saving. Every function throws Error.
class Workbook final {
  public:
    Workbook() = default;
    explicit Workbook(std::shared_ptr<Document> document);

    /// False for a handle of nothing and after Close.
    [[nodiscard]] bool IsOpen() const;
    [[nodiscard]] QString FileName() const;

    [[nodiscard]] int SheetCount() const;
    /// Sheets are counted from 1.
    [[nodiscard]] Worksheet Sheet(int number) const;
    /// Failure::Call when there is none of this name.
    [[nodiscard]] Worksheet Sheet(const QString& name) const;
    [[nodiscard]] Worksheet AddSheet(const QString& name);
    void RemoveSheet(int number);
    /// The sheet that the file opens on.
    void ActivateSheet(int number);
    [[nodiscard]] Worksheet ActiveSheet() const;

    /// Palette slots 1 to 56, at first those of the file format's own palette. Set a slot before cells use it.
    [[nodiscard]] QColor Colors(int slot) const;
    void SetColors(int slot, const QColor& colour);
    /// Font of all cells that have no other.
    void SetDefaultFont(const QString& name, double points);

    /// Formulas that are written from now on have no results until the workbook is saved: then all are calculated,
    /// once.
    void PauseCalculation();
    /// Saves under its name without calculating what is paused: the file has formulas without results, for whoever
    /// opens it to calculate.
    void SaveWithoutResults();

    /// Writes the file under its name, or under a new one, as true ".xls"; the old file stays when that fails.
    /// Failure::Limit when a sheet has more than 65,536 rows, 256 columns or a name of over 31 characters.
    void Save();
    void SaveAs(const QString& file);
    void ExportPdf(const QString& file);
    /// Writes what it is now to another file; its own name and what is unsaved stay as they are.
    void SaveCopy(const QString& file) const;
    /// Prints on a printer by its system name; an empty name means the default printer. Failure::Printer when there
    /// is none of that name.
    void Print(const QString& printer = {});
    [[nodiscard]] bool IsModified() const;
    void Close(bool save);

    /// For the classes of this room.
    [[nodiscard]] const std::shared_ptr<Document>& document() const { return document_; }

  private:
    std::shared_ptr<Document> document_;
};

} // namespace tessaro::office
