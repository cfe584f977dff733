#pragma once

#include "office/CellStyle.h"
#include "office/Connection.h"

#include <QColor>
#include <QString>

#include <array>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <functional>
#include <memory>

namespace tessaro::office {

/// An open document of the process, for this room alone: its model, the frame it is in, the writes that wait, and the
/// palette. Its last handle closes it when it isn't shown in a host.
class Document final {
  public:
    using Model = com::sun::star::uno::Reference<com::sun::star::frame::XModel>;

    /// `url` is empty for a new document of `factory` ("private:factory/scalc").
    [[nodiscard]] static std::shared_ptr<Document> New(std::shared_ptr<Connection> connection, const QString& factory);
    /// `filter` names the kind that the file must have ("MS Excel 97").
    [[nodiscard]] static std::shared_ptr<Document> Open(std::shared_ptr<Connection> connection, const QString& file,
                                                        const QString& filter);
    /// The same into a frame of a host.
    [[nodiscard]] static std::shared_ptr<Document>
    OpenInFrame(std::shared_ptr<Connection> connection, const QString& file, const QString& filter,
                const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame);
    Document(std::shared_ptr<Connection> connection, QString file, QString filter);
    ~Document();

    /// Runs work on the worker thread after the writes that wait have gone over. Failure::Lost when the process it was
    /// opened in is gone.
    void Run(const std::function<void(const Model&)>& work);
    void Flush();
    void Store(const QString& file);
    void Close();
    [[nodiscard]] bool IsOpen() const;

    // The writes that wait; a range collects here.
    void Write(int sheet, int row, int column, const Block& values);
    void Style(int sheet, int row, int column, int lastRow, int lastColumn, const CellStyle& style);

    QString file;
    QString filter;
    std::array<QColor, 57> palette; ///< slots 1 to 56

  private:
    struct Waiting;
    std::shared_ptr<Connection> connection_;
    unsigned generation_ = 0;
    Model model_;
    std::unique_ptr<Waiting> waiting_;
};

} // namespace tessaro::office
