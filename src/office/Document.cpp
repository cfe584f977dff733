#include "office/Document.h"

#include "office/CompoundFile.h"
#include "office/Convert.h"
#include "office/Palette.h"
#include "office/PendingWrites.h"
#include "office/WorkFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/io/IOException.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/task/ErrorCodeIOException.hpp>
#include <com/sun/star/task/XInteractionAbort.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <cppuhelper/implbase1.hxx>

namespace tessaro::office {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;

namespace {

/// Gives up whatever is asked while a file is read: for a password, about a repair. Nobody would see the question.
class NoAnswer final : public cppu::WeakImplHelper1<com::sun::star::task::XInteractionHandler> {
  public:
    void SAL_CALL handle(const Reference<com::sun::star::task::XInteractionRequest>& request) override {
        const auto ways = request->getContinuations();
        for (sal_Int32 n = 0; n < ways.getLength(); ++n) {
            const Reference<com::sun::star::task::XInteractionAbort> abort(ways[n], com::sun::star::uno::UNO_QUERY);
            if (abort.is()) return abort->select();
        }
    }
};

/// What the program may use to show a file of a stranger: enough for itself and for the cells of any file of its size,
/// but not for a small one that unpacks to gigabytes. In bytes.
constexpr qint64 kMemoryToShow = 800 << 20;
constexpr qint64 kMemoryOfByte = 10;

const char* ServiceOf(const char* filter) {
    return qstrcmp(filter, Document::kSlides) == 0 ? "com.sun.star.presentation.PresentationDocument"
                                                   : "com.sun.star.sheet.SpreadsheetDocument";
}

} // namespace

Document::Document(std::shared_ptr<ProcessLink> connection, QString file, const char* filter)
    : connection_(std::move(connection)), generation_(connection_->Generation()), file_(std::move(file)),
      filter_(filter), pending_(std::make_unique<PendingWrites>()), palette_(DefaultPalette()) {}

std::shared_ptr<Document> Document::New(std::shared_ptr<ProcessLink> connection, const char* factory,
                                        const char* filter, const Frame& frame) {
    return Make(std::move(connection), QString(), Ascii(factory), filter, frame);
}

std::shared_ptr<Document> Document::Open(std::shared_ptr<ProcessLink> connection, const QString& file,
                                         const char* filter, const Frame& frame) {
    if (!QFileInfo::exists(file)) throw Error(Failure::File, QStringLiteral("there is no file \"%1\"").arg(file));
    const bool isOurs = qstrcmp(filter, kWorkbook) == 0 || qstrcmp(filter, kSlides) == 0;
    if (isOurs ? !IsCompoundFile(file) : !IsZipFile(file))
        throw Error(Failure::File, QStringLiteral("\"%1\" can't be read as what its name says").arg(file));
    return Make(std::move(connection), file, FileUrl(file), filter, frame);
}

// A process that dies just now still looks alive at the start; nothing is lost by asking its successor.
std::shared_ptr<Document> Document::Make(std::shared_ptr<ProcessLink> connection, const QString& file,
                                         const rtl::OUString& url, const char* filter, const Frame& frame) {
    for (bool again = !frame.is();; again = false) {
        connection->Start();
        auto document = std::make_shared<Document>(connection, file, filter);
        try {
            document->OpenModel(url, frame);
            return document;
        } catch (const Error& error) {
            if (error.failure != Failure::Lost || !again) throw;
        }
    }
}

void Document::OpenModel(const rtl::OUString& url, const Frame& frame) {
    const bool isFile = !file_.isEmpty();
    if (isFile && frame.is()) connection_->LimitMemory(kMemoryToShow + kMemoryOfByte * QFileInfo(file_).size());
    bool good = false;
    connection_->Run([&] {
        const Reference<com::sun::star::frame::XComponentLoader> loader =
            frame.is() ? Need<com::sun::star::frame::XComponentLoader>(frame)
                       : Need<com::sun::star::frame::XComponentLoader>(
                             com::sun::star::frame::Desktop::create(connection_->Context()));
        const auto arguments =
            isFile ? Properties({Property("Hidden", Any(!frame.is())), Property("FilterName", Any(Ascii(filter_))),
                                 Property("Silent", Any(true)), // a question about a damaged file would wait for ever
                                 Property("InteractionHandler",
                                          Any(Reference<com::sun::star::task::XInteractionHandler>(new NoAnswer))),
                                 Property("MacroExecutionMode", Any(sal_Int16(0))),
                                 Property("UpdateDocMode", Any(sal_Int16(0)))})
                   : Properties({Property("Hidden", Any(!frame.is()))});
        try {
            const auto component =
                loader->loadComponentFromURL(url, frame.is() ? Ascii("_self") : Ascii("_blank"), 0, arguments);
            model_.set(component, com::sun::star::uno::UNO_QUERY);
        } catch (const com::sun::star::io::IOException&) {
            // Told below.
        } catch (const com::sun::star::lang::IllegalArgumentException&) {
        }
        const Reference<com::sun::star::lang::XServiceInfo> kind(model_, com::sun::star::uno::UNO_QUERY);
        good = kind.is() && kind->supportsService(Ascii(ServiceOf(filter_)));
    });
    if (good) return;
    Close();
    throw Error(Failure::File, QStringLiteral("\"%1\" can't be read").arg(file_));
}

Document& Known(const std::shared_ptr<Document>& document) {
    if (!document) throw Error(Failure::Call, QStringLiteral("there is no document"));
    return *document;
}

Document::~Document() {
    Close();
}

void Document::Close() noexcept {
    if (!model_.is()) return;
    const bool alive = IsOpen();
    connection_->Post([model = std::move(model_), alive] {
        if (!alive) return;
        const Reference<com::sun::star::util::XModifiable> changes(model, com::sun::star::uno::UNO_QUERY);
        if (changes.is()) changes->setModified(false);
        const Reference<com::sun::star::util::XCloseable> closeable(model, com::sun::star::uno::UNO_QUERY);
        if (closeable.is()) closeable->close(true);
    });
    model_.clear();
}

bool Document::IsOpen() const {
    return model_.is() && connection_->Generation() == generation_ && connection_->IsRunning();
}

void Document::CheckAlive() const {
    if (!model_.is()) throw Error(Failure::Call, QStringLiteral("the document is closed"));
    if (!IsOpen()) throw Error(Failure::Lost, QStringLiteral("the spreadsheet program has ended"));
}

void Document::Run(const std::function<void(const Model&)>& work) {
    Run(work, pending_->Cells());
}

void Document::Run(const std::function<void(const Model&)>& work, std::size_t cells) {
    CheckAlive();
    connection_->Run(
        [&] {
            FlushOnWorker();
            work(model_);
        },
        TimeFor(cells));
}

// An export of a million rows is slow, not stuck.
std::chrono::milliseconds Document::TimeFor(std::size_t cells) const {
    constexpr std::size_t kCellsOfMillisecond = 10;
    return connection_->TimeLimit() + std::chrono::milliseconds(cells / kCellsOfMillisecond);
}

void Document::FlushOnWorker() {
    if (!pending_->IsEmpty()) pending_->Flush(model_, [this](int slot) { return ColorNumber(slot); });
}

void Document::Store(const QString& file) {
    Export(file, filter_);
    file_ = file;
    Run([](const Model& model) { Need<com::sun::star::util::XModifiable>(model)->setModified(false); });
}

void Document::Export(const QString& file, const char* exportFilter, const QString& options) {
    WorkFile work(file);
    if (!Written(work.Name(), exportFilter, options) || !work.IsWritten())
        throw Error(Failure::File, QStringLiteral("\"%1\" can't be written").arg(file));
    work.Replace();
}

bool Document::Written(const QString& file, const char* exportFilter, const QString& options) {
    bool written = true;
    const auto store = [&](const Model& model) {
        try {
            Need<com::sun::star::frame::XStorable>(model)->storeToURL(
                FileUrl(file),
                Properties({Property("FilterName", Any(Ascii(exportFilter))),
                            Property("FilterOptions", Any(ToUno(options))), Property("Overwrite", Any(true))}));
        } catch (const com::sun::star::io::IOException&) {
            written = false;
        }
    };
    Run(store, cellsWritten_);
    return written;
}

void Document::Write(int sheet, int row, int column, const Block& values) {
    CheckAlive();
    if (values.empty() || values.front().empty()) return;
    if (row < 1 || column < 1 || row + static_cast<int>(values.size()) - 1 > kMaxRows ||
        column + static_cast<int>(values.front().size()) - 1 > kMaxColumns)
        throw Error(Failure::Limit,
                    QStringLiteral("a sheet has at most %1 rows and %2 columns").arg(kMaxRows).arg(kMaxColumns));
    for (const auto& cells : values) {
        if (cells.size() != values.front().size())
            throw Error(Failure::Call, QStringLiteral("the rows of a block have different lengths"));
        for (const Cell& cell : cells)
            if (const auto* text = std::get_if<QString>(&cell)) CheckText(*text);
    }
    pending_->Write(sheet, row, column, values);
    ShowTruths(sheet, row, column, values);
    cellsWritten_ += values.size() * values.front().size();
    FlushWhenMany();
}

// True and false are numbers that a format shows as such; the file has a kind of cells for them.
void Document::ShowTruths(int sheet, int row, int column, const Block& values) {
    for (std::size_t down = 0; down < values.size(); ++down)
        for (std::size_t right = 0; right < values[down].size(); ++right) {
            if (!std::holds_alternative<bool>(values[down][right])) continue;
            const int atRow = row + static_cast<int>(down);
            const int atColumn = column + static_cast<int>(right);
            pending_->Style({sheet, atRow, atColumn, atRow, atColumn}, {.numberFormat = QStringLiteral("BOOLEAN")});
        }
}

void Document::CheckText(const QString& text) {
    if (text.size() > kMaxCellText)
        throw Error(Failure::Limit, QStringLiteral("a cell holds at most %1 characters").arg(kMaxCellText));
}

void Document::Style(int sheet, int row, int column, int lastRow, int lastColumn, const CellStyle& style) {
    CheckAlive();
    pending_->Style({sheet, row, column, lastRow, lastColumn}, style);
    FlushWhenMany();
}

void Document::FlushWhenMany() {
    if (pending_->IsLarge()) Run([](const Model&) {});
}

QColor Document::ColorAt(int slot) const {
    return slot >= 1 && slot <= 56 ? palette_.at(static_cast<std::size_t>(slot)) : QColor();
}

void Document::SetColor(int slot, const QColor& colour) {
    if (slot >= 1 && slot <= 56) palette_.at(static_cast<std::size_t>(slot)) = colour;
}

int Document::ColorNumber(int slot) const {
    if (slot < 1 || slot > 56) return -1;
    return static_cast<int>(ColorAt(slot).rgb() & 0xFFFFFFU);
}

} // namespace tessaro::office
