#pragma once

#include "office/CellStyle.h"
#include "office/DocumentModel.h"
#include "office/Limits.h"
#include "office/ProcessLink.h"

#include <QColor>
#include <QString>

#include <array>
#include <com/sun/star/frame/XFrame.hpp>
#include <functional>
#include <memory>

namespace tessaro::office {

struct PendingWrites;

/// An open document of the process, for this room alone: its model, the frame it is in, the writes that wait, and the
/// palette. Its last handle closes it when it isn't shown in a host.
class Document final {
  public:
    using Model = DocumentModel;
    using Frame = com::sun::star::uno::Reference<com::sun::star::frame::XFrame>;

    /// Kinds of documents, by the filter that reads and writes their files.
    static constexpr const char* kWorkbook = "MS Excel 97";
    static constexpr const char* kSlides = "MS PowerPoint 97";
    static constexpr const char* kOpenDocument = "calc8";             ///< .ods
    static constexpr const char* kOpenXml = "Calc MS Excel 2007 XML"; ///< .xlsx

    /// A new document of a factory ("private:factory/scalc"); into the frame of a host when one is given.
    [[nodiscard]] static std::shared_ptr<Document> New(std::shared_ptr<ProcessLink> connection, const char* factory,
                                                       const char* filter, const Frame& frame = {});
    /// A file that must be of the filter's kind; into the frame of a host when one is given.
    [[nodiscard]] static std::shared_ptr<Document> Open(std::shared_ptr<ProcessLink> connection, const QString& file,
                                                        const char* filter, const Frame& frame = {});
    Document(std::shared_ptr<ProcessLink> connection, QString file, const char* filter);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Runs work on the worker thread after the writes that wait have gone over; what is large gets more than the usual
    /// time. Failure::Lost when the process it was opened in is gone.
    void Run(const std::function<void(const Model&)>& work);
    /// Writes the file: into a work file beside it, which then takes its place.
    void Store(const QString& file);
    /// Stores a copy in another format ("calc_pdf_Export"), in the same way; `options` are the filter's own.
    void Export(const QString& file, const char* exportFilter, const QString& options = {});
    /// Closes without saving; never throws.
    void Close() noexcept;
    [[nodiscard]] bool IsOpen() const;
    [[nodiscard]] const QString& FileName() const { return file_; }
    [[nodiscard]] ProcessLink& connection() const { return *connection_; }

    // The writes that wait, at most so many that neither memory nor the next call suffers; sheets, rows and columns
    // are counted from 1. Failure::Limit outside the format.
    void Write(int sheet, int row, int column, const Block& values);
    void Style(int sheet, int row, int column, int lastRow, int lastColumn, const CellStyle& style);

    /// Failure::Limit for a text that is longer than a cell's.
    static void CheckText(const QString& text);

    /// Palette slots 1 to 56; no colour for others.
    [[nodiscard]] QColor ColorAt(int slot) const;
    void SetColor(int slot, const QColor& colour);
    /// Colour of a slot as the process takes it.
    [[nodiscard]] int ColorNumber(int slot) const;

  private:
    static std::shared_ptr<Document> Make(std::shared_ptr<ProcessLink> connection, const QString& file,
                                          const rtl::OUString& url, const char* filter, const Frame& frame);
    void Run(const std::function<void(const Model&)>& work, std::size_t cells);
    void OpenModel(const rtl::OUString& url, const Frame& frame);
    [[nodiscard]] bool Written(const QString& file, const char* exportFilter, const QString& options);
    void FlushOnWorker();
    void ShowTruths(int sheet, int row, int column, const Block& values);
    void FlushWhenMany();
    [[nodiscard]] std::chrono::milliseconds TimeFor(std::size_t cells) const;
    void CheckAlive() const;

    std::shared_ptr<ProcessLink> connection_;
    unsigned generation_ = 0;
    QString file_;
    const char* filter_;
    Model model_;
    std::unique_ptr<PendingWrites> pending_;
    std::size_t cellsWritten_ = 0;
    std::array<QColor, 57> palette_;
};

/// The document of a handle; Failure::Call for a handle of nothing.
[[nodiscard]] Document& Known(const std::shared_ptr<Document>& document);

} // namespace tessaro::office
